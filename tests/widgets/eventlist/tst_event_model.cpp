// Rows of an event list against a naive model: order, filter, appends, and what views are told.
#include "nodes/ProjectFixture.h"
#include "support/Rows.h"
#include "support/RuntimeProject.h"

#include "widgets/eventlist/EventRowColors.h"
#include "widgets/eventlist/EventTextKey.h"
#include "widgets/eventlist/EventTexts.h"
#include "widgets/eventlist/WidgetEventModel.h"
#include "widgets/eventlist/WidgetEventSortModel.h"

#include "nodes/events/EventColorProperties.h"
#include "nodes/visual/events/widgetEventList.h"

#include <QAbstractItemModelTester>
#include <QRegularExpression>

#include <random>

using namespace Widgets;
using Nodes::ColumnInfo;
using Nodes::EventInfo;

namespace {

constexpr const char *nodes = R"(
<memorySignal id="10" name="T"/><memorySignal id="11" name="P"/>
<layer id="2" name="L"><eventList id="20" name="E" sources="10"/></layer>)";

using Events = std::vector<EventInfo>;

/// Events whose fields repeat and whose times do not come in order.
class Chance
{
public:
    int below(int count) { return int(m_engine() % unsigned(count)); }
    Events events(int count)
    {
        static const char *const texts[] = {
            "Насос 1: пуск", "насос 1: Стоп", "Ёмкость полна", "Клапан", "",
            "Valve 中 open", "клапан ёлка"};
        static const char *const users[] = {"", "Иванов", "petrov"};
        Events made;
        for (int i = 0; i < count; ++i) {
            Nodes::BasicEvent event;
            event.id = ++m_id;
            event.time = 1700000000000000 + below(500) * 1000;
            event.level = Nodes::EventLevel(1 + below(8));
            event.type = Nodes::EventType(1 + below(7));
            event.text = texts[below(7)];
            if (below(3) == 0)
                event.text += " №" + std::to_string(below(40));
            event.user = users[below(3)];
            event.source = below(2) ? "К1/T" : "К1/P";
            made.emplace_back(event);
        }
        return made;
    }

private:
    std::mt19937 m_engine{7};
    unsigned long m_id = 0;
};

/// The key of a text whose numbers were filled up with zeros, so that they stand by value.
std::string filledKey(const std::string &text)
{
    static const QRegularExpression number("0*([0-9]+)");
    QString whole = QString::fromStdString(text);
    int from = 0;
    for (auto hit = number.match(whole); hit.hasMatch(); hit = number.match(whole, from)) {
        const QString digits = hit.captured(1).rightJustified(100, '0');
        whole.replace(hit.capturedStart(), hit.capturedLength(), digits);
        from = hit.capturedStart() + digits.size();
    }
    return EventTextKey(whole.toStdString());
}

struct Rig : RuntimeProject
{
    Rig() : RuntimeProject(nodes)
    {
        model = std::make_unique<WidgetEventModel>(node<Nodes::widgetEventList>(20));
        sorted = std::make_unique<WidgetEventSortModel>(node<Nodes::widgetEventList>(20));
        sorted->setSourceModel(model.get());
    }
    void append(const Events &events)
    {
        model->appendItems(events);
        all.insert(all.end(), events.begin(), events.end());
    }
    QVector<qulonglong> shown() const
    {
        QVector<qulonglong> ids;
        for (int row = 0; row < sorted->rowCount(); ++row)
            ids << sorted->item(row).id();
        return ids;
    }
    /// The same by plain means.
    QVector<qulonglong> expected() const
    {
        QVector<Nodes::BasicEvent> kept;
        const EventRowFilter &filter = sorted->filter();
        const auto isIn = [](const auto &list, const auto &value) {
            return list.empty() || std::count(list.begin(), list.end(), value) > 0;
        };
        for (const EventInfo &info : all) {
            const Nodes::BasicEvent &event = info.GetEvent();
            const QString texts =
                QString::fromStdString(event.text + "\n" + event.user + "\n" + event.source);
            if (isIn(filter.levels, int(event.level)) && isIn(filter.types, int(event.type)) &&
                isIn(filter.users, QString::fromStdString(event.user)) &&
                texts.contains(filter.text, Qt::CaseInsensitive))
                kept << event;
        }
        const int kind = WidgetEventModel::kindOf(sorted->sortColumn());
        const bool isRising = sorted->sortOrder() == Qt::AscendingOrder;
        std::sort(kept.begin(), kept.end(), [&](const auto &left, const auto &right) {
            const auto byTime = [](const auto &e) { return std::make_pair(e.time, e.id); };
            if (kind == ColumnInfo::ColumnTime)
                return isRising ? byTime(left) < byTime(right) : byTime(right) < byTime(left);
            const auto key = [kind](const auto &e) {
                return kind == ColumnInfo::ColumnLevel
                           ? std::to_string(int(e.level))
                           : filledKey(kind == ColumnInfo::ColumnUser ? e.user : e.text);
            };
            if (key(left) != key(right))
                return isRising == (key(left) < key(right));
            return byTime(right) < byTime(left);
        });
        QVector<qulonglong> ids;
        for (const Nodes::BasicEvent &event : qAsConst(kept))
            ids << event.id;
        return ids;
    }

    std::unique_ptr<WidgetEventModel> model;
    std::unique_ptr<WidgetEventSortModel> sorted;
    Events all;
};

EventInfo eventOf(unsigned long source)
{
    Nodes::BasicEvent event;
    event.sourceNode = Nodes::NodeLink(source);
    return EventInfo(event);
}

} // namespace

class TestEventModel : public QObject
{
    Q_OBJECT

private slots:
    void equalsANaiveModel_data();
    void equalsANaiveModel();
    void selectedRowsStaySelected();
    void aFilteredAppendTakesItsSourcesOnly();
    void changedEventsAreShown();
    void longTextsAreKeptInPart();
    void sourcesWithoutANodeAreNamedInRussian_data();
    void sourcesWithoutANodeAreNamedInRussian();
    void textsAreOneLine_data();
    void textsAreOneLine();
    void textsStandInOrder();
    void numbersInTextsStandByValue();
    void rowsHaveReadableColors_data();
    void rowsHaveReadableColors();
    void sourcesHaveColors_data();
    void sourcesHaveColors();
};

void TestEventModel::equalsANaiveModel_data()
{
    const Rows<int> row("kind");
    row("time", ColumnInfo::ColumnTime);
    row("level", ColumnInfo::ColumnLevel);
    row("text", ColumnInfo::ColumnText);
    row("user", ColumnInfo::ColumnUser);
}

void TestEventModel::equalsANaiveModel()
{
    QFETCH(int, kind);
    Rig rig;
    const QAbstractItemModelTester ofModel(rig.model.get(),
                                           QAbstractItemModelTester::FailureReportingMode::Fatal);
    const QAbstractItemModelTester ofSorted(rig.sorted.get(),
                                            QAbstractItemModelTester::FailureReportingMode::Fatal);
    Chance chance;
    const std::vector<QString> parts{"", "НАСОС", "ёмк", "中", "№1", "иванов", "К1/T", "нет"};
    for (int step = 0; step < 60; ++step) {
        switch (chance.below(4)) {
        case 0:
            rig.sorted->sort(WidgetEventModel::columnOf(kind),
                             chance.below(2) ? Qt::AscendingOrder : Qt::DescendingOrder);
            break;
        case 1: {
            EventRowFilter filter;
            filter.text = parts[std::size_t(chance.below(int(parts.size())))];
            if (chance.below(2))
                filter.levels = {1, 2, 3, 4 + chance.below(5)};
            if (chance.below(3) == 0)
                filter.users = QStringList{"", "Иванов"};
            rig.sorted->setFilter(filter);
            break;
        }
        default:
            rig.append(chance.events(1 + chance.below(30)));
        }
        QCOMPARE(rig.shown(), rig.expected());
    }
    QVERIFY(rig.all.size() > 200);
    for (int row = 0; row < rig.sorted->rowCount(); ++row)
        QCOMPARE(rig.sorted->rowOf(rig.sorted->sourceRow(row)), row);
}

void TestEventModel::selectedRowsStaySelected()
{
    Rig rig;
    Chance chance;
    rig.append(chance.events(50));
    const QPersistentModelIndex kept = rig.sorted->index(20, 3);
    const unsigned long id = rig.sorted->item(20).id();
    rig.append(chance.events(50)); // scattered over all places
    rig.sorted->sort(WidgetEventModel::columnOf(ColumnInfo::ColumnText));
    QVERIFY(kept.isValid());
    QCOMPARE(rig.sorted->item(kept.row()).id(), id);
    QCOMPARE(kept.column(), 3);
}

void TestEventModel::aFilteredAppendTakesItsSourcesOnly()
{
    Rig rig;
    QSignalSpy inserted(rig.model.get(), &QAbstractItemModel::rowsInserted);
    rig.model->appendItems({eventOf(11), eventOf(0), eventOf(999)}, true);
    QCOMPARE(inserted.count(), 0);
    QCOMPARE(rig.model->rowCount(), 0);
    rig.model->appendItems({eventOf(11), eventOf(10), eventOf(10)}, true);
    QCOMPARE(inserted.count(), 1);
    QCOMPARE(inserted[0].mid(1), (QVariantList{0, 1}));
    rig.model->appendItems({eventOf(11)}, false);
    QCOMPARE(inserted[1].mid(1), (QVariantList{2, 2}));
}

void TestEventModel::changedEventsAreShown()
{
    Rig rig;
    Chance chance;
    rig.append(chance.events(5));
    QSignalSpy changed(rig.model.get(), &QAbstractItemModel::dataChanged);
    rig.model->updateItems({rig.all[2]});
    QCOMPARE(changed.count(), 0);
    Nodes::BasicEvent event = rig.all[2].GetEvent();
    event.text = "другой";
    rig.model->updateItems({EventInfo(event)});
    QCOMPARE(changed.count(), 1);
    const int column = WidgetEventModel::columnOf(ColumnInfo::ColumnText);
    QCOMPARE(rig.model->index(2, column).data().toString(), QStringLiteral("другой"));
}

void TestEventModel::longTextsAreKeptInPart()
{
    EventTexts texts;
    std::string whole;
    while (whole.size() < (std::size_t(1) << 20))
        whole += "я";
    const EventTexts::Number number = texts.add(whole);
    QVERIFY(texts.isCut(number));
    QVERIFY(texts.view(number).size() <= EventTexts::LongestText);
    QCOMPARE(texts.string(number), QString(texts.string(number).size(), QChar(u'я')));
    QVERIFY(!texts.isCut(texts.add("я")));
}

// Files and other stations rely on the names that are stored.
void TestEventModel::sourcesWithoutANodeAreNamedInRussian_data()
{
    const Rows<QString, unsigned long, QString> row("source", "node", "shown");
    row("of the system", "System", 0, "Система");
    row("acknowledgement", "Acknowledgement", 0, "Квитирование");
    row("a node of such a name", "System", 10, "System");
    row("another one", "Systems", 0, "Systems");
}

void TestEventModel::sourcesWithoutANodeAreNamedInRussian()
{
    QFETCH(QString, source);
    QFETCH(unsigned long, node);
    Rig rig;
    Nodes::BasicEvent event;
    event.source = source.toStdString();
    if (node != 0)
        event.sourceNode = Nodes::NodeLink(node);
    rig.model->appendItems({EventInfo(event)});
    const int column = WidgetEventModel::columnOf(ColumnInfo::ColumnSource);
    QTEST(rig.model->index(0, column).data().toString(), "shown");
}

void TestEventModel::textsAreOneLine_data()
{
    const Rows<QString, QString> row("text", "shown");
    row("lines", "a\nb\r\nc\td", "a b  c d");
    row("escape", QString("a\x1b[31mb"), "a [31mb");
    row("override", QString("a") + QChar(0x202e) + "b", QString("a") + QChar(0x25af) + "b");
    row("long", QString(2000, 'x'), QString(400, 'x') + "…");
    row("markup", "<b>a</b>", "<b>a</b>");
}

void TestEventModel::textsAreOneLine()
{
    QFETCH(QString, text);
    Rig rig;
    Nodes::BasicEvent event;
    event.text = text.toStdString();
    rig.model->appendItems({EventInfo(event)});
    const int column = WidgetEventModel::columnOf(ColumnInfo::ColumnText);
    QTEST(rig.model->index(0, column).data().toString(), "shown");
}

// As in a dictionary, ё behind е, capitals like small ones.
void TestEventModel::textsStandInOrder()
{
    const QStringList rising{" ", "(a)", "1", "2", "A", "b", "Д", "е", "Ё", "ж", "я", "中"};
    for (int i = 1; i < rising.size(); ++i)
        QVERIFY2(EventTextKey(rising[i - 1].toStdString()) < EventTextKey(rising[i].toStdString()),
                 qPrintable(rising[i]));
    QCOMPARE(EventTextKey("НАСОС Ё"), EventTextKey("насос ё"));
    QVERIFY(EventTextKey("\xff\xd0").find('\0') == std::string::npos); // broken UTF-8
}

// All that many texts with numbers in them make, beside keys whose numbers were filled up with
// zeros.
void TestEventModel::numbersInTextsStandByValue()
{
    EventTexts texts;
    QStringList all{QString()};
    const QStringList numbers{"0",
                              "1",
                              "2",
                              "10",
                              "007",
                              "7",
                              "99",
                              "100",
                              "20261122101500",
                              "20261122101501",
                              QString(30, '8'),
                              QString(80, '4'),
                              QString(80, '4') + '2',
                              QString(81, '4'),
                              "рядом"};
    for (const char *begin : {"Насос ", "Бак ", "Бак 2, насос ", "Бак 10, насос ", ""}) {
        for (const QString &number : numbers) {
            for (const char *end : {"", " стоп", ".5", ".12", "中", " 3 из 12"})
                all << begin + number + end;
        }
    }
    for (const QString &text : qAsConst(all))
        (void)texts.add(text.toStdString());
    std::vector<std::pair<std::string, std::string>> keys;
    for (EventTexts::Number text = 0; text < texts.count(); ++text) {
        const std::string whole(texts.view(text));
        keys.emplace_back(filledKey(whole), EventTextKey(whole));
    }
    std::vector<std::vector<int>> compared(keys.size()); // before places are known
    for (EventTexts::Number one = 0; one < texts.count(); ++one) {
        for (EventTexts::Number other = 0; other < texts.count(); ++other)
            compared[one].push_back(texts.compare(one, other));
    }
    const auto &places = texts.places();
    for (std::size_t one = 0; one < keys.size(); ++one) {
        for (std::size_t other = 0; other < keys.size(); ++other) {
            const bool isBefore = keys[one] < keys[other];
            if ((places[one] < places[other]) != isBefore || (compared[one][other] < 0) != isBefore)
                QFAIL(qPrintable(texts.string(EventTexts::Number(one)) + " | " +
                                 texts.string(EventTexts::Number(other))));
        }
    }
}

void TestEventModel::rowsHaveReadableColors_data()
{
    const Rows<QColor, QColor> row("background", "text");
    const auto hsv = [](int h, int s, int v) { return QColor::fromHsv(h, s, v); };
    row("black", Qt::black, hsv(240, 0, 255));
    row("white", Qt::white, hsv(240, 0, 63));
    row("grey, dark", hsv(0, 0, 63), hsv(240, 0, 255));
    row("grey, middle", hsv(0, 0, 64), hsv(240, 0, 192));
    row("grey, light", hsv(0, 0, 193), hsv(240, 0, 1));
    row("red", hsv(0, 255, 255), hsv(240, 255, 255));
    row("red, dark", hsv(0, 255, 10), hsv(240, 255, 202));
    row("red, half", hsv(0, 255, 127), hsv(240, 255, 255));
    row("red, bright", hsv(0, 255, 191), hsv(240, 255, 255));
    row("green", hsv(120, 255, 255), hsv(0, 255, 255));
    row("green, dark", hsv(120, 200, 100), hsv(0, 200, 164));
    row("green, v half", hsv(120, 200, 128), hsv(0, 200, 255));
    row("edge of green", hsv(61, 64, 20), hsv(301, 64, 84));
    row("outside of green", hsv(60, 64, 20), hsv(300, 64, 212));
    row("blue", hsv(210, 255, 60), hsv(90, 255, 252));
}

void TestEventModel::rowsHaveReadableColors()
{
    QFETCH(QColor, background);
    QFETCH(QColor, text);
    QCOMPARE(EventRowColors::readableOn(background).rgba(), text.rgba());
    QCOMPARE(EventRowColors::of(background, background).text.rgba(), text.rgba());
    QCOMPARE(EventRowColors::of(background, Qt::darkCyan).text, QColor(Qt::darkCyan));
}

void TestEventModel::sourcesHaveColors_data()
{
    QTest::addColumn<bool>("isSource");
    for (const char *kind :
         {"memorySignal", "modbusDriver", "modbusGroup", "folder", "user", "alarming", "alarmLimit",
          "report", "reportSchedule", "actionWriteValue", "operationTimer", "station"})
        QTest::newRow(kind) << true;
    QTest::newRow("label") << false;
    QTest::newRow("templateParameter") << false;
}

void TestEventModel::sourcesHaveColors()
{
    QFETCH(bool, isSource);
    ProjectFixture f;
    auto node = f.project.CreateDetached(f.kind(QTest::currentDataTag()));
    QCOMPARE(EventRowColors::of(node.get()).background, QColor(Qt::white));
    QCOMPARE(bool(node->SetPropertyText("eventBackground", "#102030")), isSource);
    if (!isSource)
        return;
    const auto copy = Nodes::NodesArray::CreateNodeCopy(node->GetNodeType(), node.get());
    QVERIFY(node->SetProperty(Nodes::EventColorProperties::Prop::Text, Nodes::NColor(255, 0, 1)));
    const EventRowColors colors = EventRowColors::of(node.get());
    QCOMPARE(colors.background, QColor(0x10, 0x20, 0x30));
    QCOMPARE(colors.text, QColor(255, 0, 1));
    QCOMPARE(EventRowColors::of(copy.get()).background, QColor(0x10, 0x20, 0x30));
    QCOMPARE(EventRowColors::of(copy.get()).text, QColor(Qt::black));
}

QTEST_MAIN(TestEventModel)
#include "tst_event_model.moc"
