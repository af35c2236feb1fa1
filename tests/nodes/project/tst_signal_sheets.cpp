#include "nodes/ProjectFixture.h"
#include "nodes/drivers/modbus/modbusGroup.h"
#include "nodes/drivers/modbus/modbusSignal.h"
#include "nodes/project/signals/CellText.h"
#include "nodes/project/signals/DelimitedText.h"
#include "nodes/project/signals/NamePattern.h"
#include "nodes/project/signals/SheetImport.h"
#include "support/Rows.h"

using namespace Nodes;

namespace {

/// "a|b||c|" -> {{a, b}, {c, ""}}
TextTable tableOf(const QString &text)
{
    TextTable table;
    for (const QString &row : text.split("||")) {
        table.emplace_back();
        for (const QString &field : row.split('|'))
            table.back().push_back(field.toStdString());
    }
    return table;
}

/// A device with two signals in a group, in a table of its group.
struct Sheet : ProjectFixture
{
    Sheet()
        : device(add("modbusDriver", root(), "ПЛК")),
          group(add("modbusGroup", device, "Г1", {{"count", "100"}})),
          first(add("modbusSignal", group, "Т01", {{"offset", "1"}, {"scale", "0.5"}})),
          second(add("modbusSignal", group, "Т02")),
          kinds(FindSheetKinds(*group, NodeType::TypeSignal)),
          columns(kinds)
    {
    }
    Result plan(const QString &text)
    {
        return SheetImport(*group, NodeType::TypeSignal, columns, kinds)
            .PlanTable(tableOf(text), made);
    }
    std::string refused() const
    {
        std::string text;
        for (const SheetRefusal &refusal : made.refusals)
            text += std::to_string(refusal.row) + ":" + refusal.column + " ";
        return text;
    }
    ConfigNode *clone(std::size_t index) const { return made.additions[index].clone.GetNode(); }

    ConfigNode *device;
    ConfigNode *group;
    ConfigNode *first;
    ConfigNode *second;
    std::vector<const KindInfo *> kinds;
    SheetColumns columns;
    SheetPlan made;
};

} // namespace

class SignalSheetsTest : public QObject
{
    Q_OBJECT

private slots:
    void newSignalsOfADeviceGetTheirGroups_data()
    {
        const Rows<QString, QString> row("rows", "groups");
        row("a folder becomes its group", "Котёл/А|200|uint16||Котёл/Б|203|float32",
            "Котёл:holding 200+5");
        row("registers far apart", "Котёл/А|200|uint16||Котёл/Б|300|uint16",
            "Котёл/Регистры с 200:holding 200+1 Котёл/Регистры с 300:holding 300+1");
        row("more than one request reads",
            "К/А|0|uint16||К/Б|15|uint16||К/В|31|uint16||К/Г|47|uint16||К/Д|63|uint16||"
            "К/Е|79|uint16||К/Ж|95|uint16||К/З|111|uint16||К/И|125|uint16|",
            "К/Регистры с 0:holding 0+112 К/Регистры с 125:holding 125+1");
        row("two tables", "К/А|5|bool|Дискретные входы||К/Б|5|int16|input",
            "К/Дискретные входы с 5:discrete 5+1 К/Входные регистры с 5:input 5+1");
        row("without a folder", "А|7|uint16|", "Регистры с 7:holding 7+1");
        row("the last address", "К/А|65534|int32|", "К:holding 65534+2");
    }
    void newSignalsOfADeviceGetTheirGroups()
    {
        QFETCH(QString, rows);
        QFETCH(QString, groups);
        Sheet s;
        SheetSettings::AddTo(s.columns, *s.group, NodeType::TypeSignal);
        SheetImport import(*s.device, NodeType::TypeSignal, s.columns, s.kinds);
        QVERIFY(import.PlanTable(tableOf("Имя|Адрес|Тип данных|Таблица||" + rows), s.made));
        QCOMPARE(s.refused(), std::string());
        std::string made;
        NodeLinks all;
        for (const SheetPlan::Addition &added : s.made.additions) {
            all.push_back(added.clone);
            for (const NodeLink &below : added.clone.GetNode()->GetNodes(true))
                all.push_back(below);
        }
        for (const NodeLink &link : all) {
            const auto *group = dynamic_cast<const modbusGroup *>(link.GetNode());
            if (!group)
                continue;
            const std::string parent = group->GetParent() && group->GetParent() != s.device
                                           ? group->GetParent()->GetName() + "/"
                                           : "";
            made += (made.empty() ? "" : " ") + parent + group->GetName() + ":" +
                    textOf(*group, "table") + " " + std::to_string(group->GetFirstAddress()) + "+" +
                    std::to_string(group->GetPointCount());
            for (const auto &child : group->Children())
                QVERIFY(dynamic_cast<const modbusSignal &>(*child).CheckPlace());
        }
        QCOMPARE(QString::fromStdString(made), groups);
    }

    void columnsAreKnownByWhatListsCallThem_data()
    {
        const Rows<QString, QString> row("written", "column");
        row("title", "нижний ПРЕДЕЛ", "Нижний предел");
        row("key", "offsetValue", "Слагаемое");
        row("begin", "Единица", "Единица измерения");
        row("words in another order", "Запись разрешена", "Разрешена запись");
        row("begin of several", "Т", ""); // Тип данных, Тип значения
        row("usual", "Максимум", "Верхний предел");
        row("somebody's own", "Шкаф", "");
        row("none", "", "");
    }
    void columnsAreKnownByWhatListsCallThem()
    {
        QFETCH(QString, written);
        QFETCH(QString, column);
        const Sheet s;
        const int guessed = s.columns.Guess(written.toStdString());
        QCOMPARE(guessed < 0 ? QString()
                             : QString::fromStdString(s.columns[std::size_t(guessed)].title),
                 column);
    }

    void columnsHaveTitlesOfTheirOwn()
    {
        Sheet s;
        s.add("hostSignal", s.add("hostDriver", s.root()), "Ц");
        s.add("simulatorSignal", s.add("simulatorDriver", s.root()), "И");
        s.add("memorySignal", s.root(), "П");
        SheetColumns columns(FindSheetKinds(*s.root(), NodeType::TypeSignal));
        SheetSettings::AddTo(columns, *s.root(), NodeType::TypeSignal);
        for (std::size_t i = 0; i < columns.GetCount(); ++i)
            QCOMPARE(
                QString::fromStdString(columns[std::size_t(columns.Guess(columns[i].title))].title +
                                       std::to_string(columns.Guess(columns[i].title))),
                QString::fromStdString(columns[i].title + std::to_string(i)));
    }

    void headersAreToldFromSignals_data()
    {
        const Rows<QString, bool> row("cells", "isHeader");
        row("own title", "Имя|Шкаф|Клемма", true);
        row("own title alone", "имя", true);
        row("usual title with another", "Тег|Ед. изм.|Лист", true);
        row("in any order", "Адрес|Tag", true);
        row("a signal called so", "Tag|5|uint16", false);
        row("a signal called so among names", "name", false);
        row("a signal called so, of a known unit", "Имя|0,5|бар", false);
        row("the beginning of a title", "И|Адрес", false);
        row("no name", "Адрес|Тип данных", false);
        row("nothing", "", false);
    }
    void headersAreToldFromSignals()
    {
        QFETCH(QString, cells);
        QFETCH(bool, isHeader);
        Sheet s;
        SheetSettings::AddTo(s.columns, *s.group, NodeType::TypeSignal);
        QCOMPARE(s.columns.IsHeader(tableOf(cells)[0]), isHeader);
    }

    void aListTakenAgainChangesTheSameSignals()
    {
        Sheet s;
        SheetSettings::AddTo(s.columns, *s.group, NodeType::TypeSignal);
        s.add("modbusSignal", s.add("modbusGroup", s.add("folder", s.device, "К"), "Г2"), "А");
        for (const char *group : {"Г3", "Г4"})
            s.add("modbusSignal", s.add("modbusGroup", s.device, group), "Два");
        SheetImport import(*s.device, NodeType::TypeSignal, s.columns, s.kinds);
        QVERIFY(import.PlanTable(tableOf("Имя|unit||К/А|бар||Т01|°C||Г1/Т01|%||Два|м||Г4/Два|м"),
                                 s.made));
        QCOMPARE(s.made.updated, std::size_t(3));
        QVERIFY(s.made.additions.empty());
        QCOMPARE(s.refused(), std::string("4:Имя 5:Имя ")); // said already; two are called so
    }

    void everyRowIsToldWhatBecomesOfIt()
    {
        Sheet s;
        SheetSettings::AddTo(s.columns, *s.group, NodeType::TypeSignal);
        const int unit = s.columns.Find("unit");
        const int offset = s.columns.Find("offset");
        SheetImport import(*s.group, NodeType::TypeSignal, s.columns, s.kinds);
        const TextTable table{{"бар", "Т01", "Шкаф 1", "1"},
                              {"м", "Т02", "", "много"},
                              {"", ""},
                              {"°C", "Новый", "Шкаф", "3"},
                              {"мм", ""},
                              {"%", "Т02"}};
        QVERIFY(import.PlanRows(table, 0, {unit, 0, -1, offset}, s.made));
        using Plan = SheetPlan;
        const std::vector<Plan::Fate> fates{Plan::Changed, Plan::Changed, Plan::LeftOut,
                                            Plan::Added,   Plan::Refused, Plan::Refused};
        QCOMPARE(s.made.fates, fates);
        QCOMPARE(s.refused(), std::string("2:Смещение в группе 5:Имя 6:Имя "));
        QCOMPARE(s.made.marks.size(), std::size_t(2)); // Т01 has that offset already
        QCOMPARE(s.made.marks[1].row, std::size_t(2));
        QCOMPARE(s.made.marks[1].column, std::size_t(0));
        QCOMPARE(s.made.marks[1].before, std::string());
    }

    void columnsAreGivenOnce_data()
    {
        const Rows<QString, bool> row("columns", "isFit");
        row("as they should be", "Имя unit", true);
        row("no name", "offset unit", false);
        row("twice", "Имя unit unit", false);
        row("twice not read", "Имя - -", true);
    }
    void columnsAreGivenOnce()
    {
        QFETCH(QString, columns);
        QFETCH(bool, isFit);
        Sheet s;
        std::vector<int> places;
        for (const QString &column : columns.split(' '))
            places.push_back(column == "-" ? -1 : s.columns.Find(column.toStdString()));
        SheetImport import(*s.group, NodeType::TypeSignal, s.columns, s.kinds);
        QCOMPARE(bool(import.PlanRows({{"Т01", "бар", "м"}}, 0, places, s.made)), isFit);
        QVERIFY(isFit || s.made.isEmpty());
    }

    void rowsLeftOutLeaveNoGroups()
    {
        Sheet s;
        SheetSettings::AddTo(s.columns, *s.group, NodeType::TypeSignal);
        SheetImport import(*s.device, NodeType::TypeSignal, s.columns, s.kinds);
        QVERIFY(import.PlanTable(tableOf("Имя|Адрес||К/А|10||К/А|900"), s.made));
        QCOMPARE(s.refused(), std::string("3:Имя "));
        QCOMPARE(s.made.additions.size(), std::size_t(1));
        QCOMPARE(s.clone(0)->GetNodes(true).size(), std::size_t(1)); // no group of 900
    }

    void signalsWithoutAnAddressAreNotMade()
    {
        Sheet s;
        SheetSettings::AddTo(s.columns, *s.group, NodeType::TypeSignal);
        SheetImport import(*s.device, NodeType::TypeSignal, s.columns, s.kinds);
        QVERIFY(import.PlanTable(tableOf("Имя|Адрес|Тип данных||К/А|abc|uint16||К/Б|65535|int32||"
                                         "К/В|7|int17||Г1/Новый|9|uint16||Г1/Вне|100|uint16||"
                                         "Г1/Т02|100|"),
                                 s.made));
        QCOMPARE(s.refused(), std::string("2:Адрес 3:Адрес 4:Адрес 6:Адрес 7:Адрес "));
        QCOMPARE(s.made.added, std::size_t(1)); // into the group that is there
        QCOMPARE(textOf(*s.clone(0), "offset"), std::string("9"));
    }

    void textIsTakenApart_data()
    {
        const Rows<QString, QString> row("text", "table");
        row("tabs", "a\tb\nc\t\n", "a|b||c|");
        row("semicolons and a decimal comma", "a;1,5\r\nb;2,5\r\n", "a|1,5||b|2,5");
        row("commas", "a,b\nc,d", "a|b||c|d");
        row("byte order mark", "\xEF\xBB\xBFИмя;Вид\n", "Имя|Вид");
        row("quotes", "\"a;b\";\"say \"\"c\"\"\"\n", "a;b|say \"c\"");
        row("inches open no quotes", "DN 2\"\t5\nDN 3\"; a; b\t6", "DN 2\"|5||DN 3\"; a; b|6");
        row("line end in quotes", "\"a\nb\";c\n", "a\nb|c");
        row("separator of the first line only in quotes", "\"a;b;c\",d\n", "a;b;c|d");
        row("old line ends", "a;b\rc;d\r", "a|b||c|d");
        row("blanks belong to fields", " a ;b\n", " a |b");
    }
    void textIsTakenApart()
    {
        QFETCH(QString, text);
        QFETCH(QString, table);
        const std::string bytes = text.toStdString();
        TextTable read;
        QVERIFY(DelimitedText::Read(bytes, DelimitedText::RecogniseSeparator(bytes), read));
        QCOMPARE(read, tableOf(table));
        for (const char separator : {'\t', ';', ','}) {
            TextTable again;
            QVERIFY(DelimitedText::Read(DelimitedText::Write(read, separator), separator, again));
            QCOMPARE(again, read);
        }
    }

    void damagedTextSaysWhere_data()
    {
        const Rows<QByteArray, QString> row("text", "where");
        row("quote never closed", "a;b\n\"c;d\ne;f\n", "строка 2");
        row("another encoding", "a;b\n\xD2\xE5\xEC;c\n", "строка 2");
    }
    void damagedTextSaysWhere()
    {
        QFETCH(QByteArray, text);
        QFETCH(QString, where);
        TextTable read{{"old"}};
        const Result result = DelimitedText::Read(text.toStdString(), ';', read);
        QVERIFY(result == Result::ParseError);
        QVERIFY2(QString::fromStdString(result.GetDetail()).contains(where),
                 result.GetDetail().c_str());
        QVERIFY(read.empty());
    }

    void patternsMakeNames_data()
    {
        const Rows<QString, QString> row("pattern", "names");
        row("plain", "Насос", "Насос");
        row("counted", "Т{8..11}", "Т8 Т9 Т10 Т11");
        row("as wide as written", "Т{08..11}", "Т08 Т09 Т10 Т11");
        row("down", "{2..0}", "2 1 0");
        row("below zero", "{-1..1}", "-1 0 1");
        row("last changes fastest", "К{1..2}/Т{01..02}", "К1/Т01 К1/Т02 К2/Т01 К2/Т02");
        row("list", "{вход,выход}.Т", "вход.Т выход.Т");
        row("empty item", "Т{,.SP}", "Т Т.SP");
        row("brace itself", "{{1}", "{1}");
        row("not closed", "Т{1..4", "");
        row("no range", "Т{14}", "");
        row("no numbers", "Т{а..в}", "");
        row("too many", "{1..1000}{1..1000}", "");
        row("too long a range", "{1..9223372036854775807}", "");
    }
    void patternsMakeNames()
    {
        QFETCH(QString, pattern);
        QFETCH(QString, names);
        std::vector<std::string> made{"old"};
        const Result result = NamePattern::Expand(pattern.toStdString(), made);
        QStringList list;
        for (const std::string &name : made)
            list << QString::fromStdString(name);
        QCOMPARE(list.join(' '), names);
        QCOMPARE(result.IsSuccess(), !names.isEmpty());
        QVERIFY(result || !result.GetDetail().empty());
    }

    void renamesInBulk_data()
    {
        const Rows<QString, QString, QString, QString> row("search", "by", "form", "name");
        row("replaced everywhere", "К1", "К2", "", "К2/К2.Т");
        row("nothing to search for", "", "x", "", "К1/К1.Т");
        row("longer by itself", "К", "КК", "", "КК1/КК1.Т");
        row("numbered", "", "", "{имя}_{001}", "К1/К1.Т_008");
        row("numbered from", "/", ".", "{10}-{имя}", "17-К1.К1.Т");
        row("unknown brace stays", "", "", "{имя}{x}{", "К1/К1.Т{x}{");
    }
    void renamesInBulk()
    {
        QFETCH(QString, search);
        QFETCH(QString, by);
        QFETCH(QString, form);
        QFETCH(QString, name);
        QCOMPARE(QString::fromStdString(NamePattern::Renamed("К1/К1.Т", 7, search.toStdString(),
                                                             by.toStdString(), form.toStdString())),
                 name);
    }

    void cellsAreRead_data()
    {
        // shown: what the cell reads then; "" when it is refused
        const Rows<QString, QString, QString> row("key", "text", "shown");
        row("decimal comma", "scale", "0,25", "0,25");
        row("decimal point", "scale", "0.25", "0,25");
        row("blanks for the eye", "maximum", "1 234 567,5", "1234567,5");
        row("no-break blanks", "maximum", "1\u00A0234", "1234");
        row("two commas", "maximum", "1,234,5", "");
        row("no number", "maximum", "много", "");
        row("choice by its name", "dataType", "вещественный 32 бит", "Вещественный 32 бит");
        row("choice by its token", "dataType", "float32", "Вещественный 32 бит");
        row("no such choice", "dataType", "float64", "");
        row("yes", "writable", "ДА", "да");
        row("as spreadsheets write it", "writable", "ИСТИНА", "да");
        row("neither yes nor no", "writable", "может быть", "");
        row("whole number", "decimals", "3", "3");
        row("beyond the range", "decimals", "10", "");
        row("no whole number", "decimals", "1,5", "");
        row("text as it is", "unit", " °C", " °C");
    }
    void cellsAreRead()
    {
        QFETCH(QString, key);
        QFETCH(QString, text);
        QFETCH(QString, shown);
        Sheet s;
        const PropertyDescriptor *d = s.first->GetKind()->FindProperty(key.toStdString());
        boost::any value;
        const Result read = CellText::Read(*d, text.toStdString(), NodePaths(&s.project), value);
        QCOMPARE(read.IsSuccess(), !shown.isEmpty());
        const QString why = QString::fromStdString(read.GetDetail());
        QVERIFY2(read || (why.contains(text) && why.contains("допустимо")), qPrintable(why));
        if (!read)
            return;
        QVERIFY(s.first->SetProperty(d->valueId, value));
        QCOMPARE(QString::fromStdString(CellText::Show(*d, *s.first)), shown);
    }

    void linksGoByPath()
    {
        Sheet s;
        ConfigNode *alarm = s.add("alarmLimit", s.first, "Высокая");
        const PropertyDescriptor *d = alarm->GetKind()->FindProperty(std::string_view("signal"));
        boost::any value;
        QVERIFY(CellText::Read(*d, "ПЛК/Г1/Т02", NodePaths(&s.project), value));
        QVERIFY(alarm->SetProperty(d->valueId, value));
        QCOMPARE(CellText::Show(*d, *alarm), std::string("ПЛК/Г1/Т02"));
        QVERIFY(CellText::Read(*d, "Т03", NodePaths(&s.project), value) == Result::NotFound);
        QVERIFY(CellText::Read(*d, "ПЛК", NodePaths(&s.project), value) == Result::WrongType);
        s.second->SetName("Т01");
        QVERIFY(!CellText::Read(*d, "ПЛК/Г1/Т01", NodePaths(&s.project), value));
    }

    void whatIsExportedChangesNothing()
    {
        Sheet s;
        s.first->SetDescription("с; \"кавычками\"");
        s.add("alarmLimit", s.first, "Высокая");
        TextTable table(1);
        for (std::size_t i = 0; i < s.columns.GetCount(); ++i)
            table[0].push_back(s.columns[i].title);
        for (const ConfigNode *node : {s.first, s.second}) {
            table.emplace_back();
            for (std::size_t i = 0; i < s.columns.GetCount(); ++i)
                table.back().push_back(SheetColumns::GetText(s.columns[i], *node, *s.group));
        }
        SheetPlan plan;
        QVERIFY(
            SheetImport(*s.group, NodeType::TypeSignal, s.columns, s.kinds).PlanTable(table, plan));
        QVERIFY(plan.isEmpty());
        QVERIFY(plan.refusals.empty());
        QVERIFY(s.columns.Find("смещение в группе") > 0);
        QVERIFY(s.columns.Find("OFFSET") < s.columns.Find("unit"));
    }

    void rowsUpdateAndAdd()
    {
        Sheet s;
        QVERIFY(s.plan("Единица измерения|Имя|offset|Описание||бар|Т01|1|давление||°C|К1/Т03|7|"));
        QCOMPARE(s.made.updated, std::size_t(1));
        QCOMPARE(s.made.changes.size(), std::size_t(1));
        QCOMPARE(s.made.descriptions.size(), std::size_t(1));
        QCOMPARE(s.made.added, std::size_t(1));
        QCOMPARE(s.made.additions.size(), std::size_t(1));
        QCOMPARE(s.clone(0)->GetName(), std::string("К1"));
        const ConfigNode *added = s.clone(0)->GetSubObject("Т03");
        QVERIFY(dynamic_cast<const modbusSignal *>(added));
        QCOMPARE(textOf(*added, "offset"), std::string("7"));
        QCOMPARE(s.made.refusals.size(), std::size_t(0));
        const NodeLink clone = s.made.additions[0].clone;
        s.made.Discard();
        QVERIFY(!clone.isValid());
    }

    void rowsAreRefusedOneByOne_data()
    {
        const Rows<QString, QString> row("table", "refused");
        row("unknown column", "Имя|Шкаф||Т01|красный", "1:Шкаф ");
        row("column twice", "Имя|Бит|bit||Т01|1|2", "1:bit ");
        row("no name", "Имя|Бит|||1||Т02|1", "2:Имя ");
        row("name twice", "Имя|Бит||Т01|1||Т01|2", "3:Имя ");
        row("new name twice", "Имя||Т09||Т09", "3:Имя ");
        row("bad cell, the rest counts", "Имя|Бит|Множитель||Т01|16|2", "2:Бит ");
        row("cell beyond the columns", "Имя||Т01|x", "2: ");
        row("another kind", "Имя|Вид||Т01|Сигнал имитатора", "2:Вид ");
        row("no such kind", "Имя|Вид||Т09|Насос", "2:Вид ");
        row("below a signal", "Имя||Т01/Т02", "2:Имя ");
        row("empty name in the path", "Имя||К1//Т02", "2:Имя ");
    }
    void rowsAreRefusedOneByOne()
    {
        QFETCH(QString, table);
        QFETCH(QString, refused);
        Sheet s;
        QVERIFY(s.plan(table));
        QCOMPARE(QString::fromStdString(s.refused()), refused);
        for (const SheetRefusal &refusal : s.made.refusals)
            QVERIFY(!refusal.reason.empty());
        const bool isTaken = QByteArray(QTest::currentDataTag()) == "bad cell, the rest counts";
        QVERIFY(!isTaken || s.made.changes.size() == 1);
    }

    void newRowsAreOfTheUsualKind()
    {
        Sheet s;
        ConfigNode *folder = s.add("folder", s.root(), "Папка");
        s.add("driverStatus", folder, "Связь");
        s.add("memorySignal", folder, "М1");
        s.add("memorySignal", folder, "М2");
        const auto kinds = FindSheetKinds(*folder, NodeType::TypeSignal);
        QCOMPARE(kinds.size(), std::size_t(2));
        QCOMPARE(kinds[0]->key, std::string("memorySignal"));
        const auto *empty = s.add("folder", s.group, "Пусто");
        QCOMPARE(FindSheetKinds(*empty, NodeType::TypeSignal)[0]->key,
                 std::string("modbusSignal")); // of its driver
        QCOMPARE(FindSheetKinds(*s.device, NodeType::TypeDriverGroup)[0]->key,
                 std::string("modbusGroup"));
    }

    void tableWithoutNamesIsRefused()
    {
        Sheet s;
        QVERIFY(s.plan("Бит|Множитель||1|2") == Result::InvalidArgument);
        QVERIFY(s.plan("") == Result::InvalidArgument);
        QVERIFY(s.made.isEmpty());
    }

    static std::vector<int> from(const SheetColumns &columns, const char *first)
    {
        std::vector<int> places;
        for (int i = columns.Find(first); i < int(columns.GetCount()); ++i)
            places.push_back(i);
        return places;
    }
    void blocksGoWhereTheyArePasted()
    {
        Sheet s;
        const auto block = [&s](const QString &text, const char *column) {
            s.made = SheetPlan();
            SheetImport(*s.group, NodeType::TypeSignal, s.columns, s.kinds)
                .PlanBlock(tableOf(text), {s.first, s.second}, from(s.columns, column), s.made);
        };
        block("1|x||3|5", "bit");
        QCOMPARE(s.made.changes.size(), std::size_t(2));
        QCOMPARE(QString::fromStdString(s.refused()), "1:Порядок байтов 2:Порядок байтов ");
        block("1||2||3", "bit");
        QCOMPARE(s.made.changes.size(), std::size_t(2));
        QCOMPARE(QString::fromStdString(s.refused()), "3: ");
        block("П01||Т01||П03", "Имя");
        QCOMPARE(s.made.names.size(), std::size_t(1)); // the second wants the name of the first
        QCOMPARE(s.made.added, std::size_t(1));
        QCOMPARE(QString::fromStdString(s.refused()), "2:Имя ");
        s.made.Discard();
    }
};

QTEST_GUILESS_MAIN(SignalSheetsTest)
#include "tst_signal_sheets.moc"
