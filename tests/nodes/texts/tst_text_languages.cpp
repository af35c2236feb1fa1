#include "nodes/ProjectFixture.h"

#include "nodes/model/validation/ValidationResults.h"
#include "nodes/project/ProjectProblem.h"
#include "nodes/scripts/LuaSandbox.h"
#include "nodes/texts/LuaTokens.h"
#include "nodes/texts/TextLanguage.h"
#include "support/Rows.h"

#include <QtTest>

using namespace Nodes;

namespace {

/// One node of each kind that has such texts, with two signals for them.
struct Plant : ProjectFixture
{
    Plant()
    {
        ConfigNode *driver = add("simulatorDriver", root(), "Имитатор");
        ConfigNode *folder = add("folder", driver, "Котёл");
        add("simulatorSignal", folder, "T", {{"minimum", "0"}, {"maximum", "100"}});
        add("simulatorSignal", add("folder", driver, "Насос"), "T");
        formula = add("simulatorSignal", driver, "F", {{"unit", "°C"}});
        pump = add("memorySignal", root(), "Пуск", {{"type", "bool"}});
        script = add("actionExecuteScript", root(), "Сценарий", {{"signals", idOf(pump)}});
        alarm = add("alarmDiscrete", pump, "Стоит", {{"suppressInputs", idOf(pump)}});
        report = add("reportSchedule", root(), "Сутки");
        window = add("windowTemplate", root(), "Насосы");
        add("templateParameter", window, "насос");
        device = add("modbusDriver", root(), "ПЛК", {{"host", "${plc.host}"}});
        axis = add("chartAxis", nullptr, "Ось");
    }
    ConfigNode *nodeOf(const QByteArray &hint) const
    {
        const std::map<QByteArray, ConfigNode *> nodes{
            {"formula", formula}, {"condition", alarm}, {"script", script},    {"fileName", report},
            {"title", window},    {"defines", device},  {"numberFormat", axis}};
        return nodes.at(hint);
    }

    ConfigNode *formula, *pump, *script, *alarm, *report, *window, *device, *axis;
};

const TextLanguage &language(const QByteArray &hint)
{
    return *FindTextLanguage(hint.toStdString());
}

QString told(const std::vector<TextProblem> &problems, const std::string &text)
{
    QStringList all;
    for (const TextProblem &problem : problems)
        all << QString::fromStdString((problem.isRemark ? "(" : "[") +
                                      text.substr(problem.begin, problem.length) +
                                      (problem.isRemark ? ") " : "] ") + problem.message);
    return all.join("; ");
}

} // namespace

class TextLanguagesTest : public QObject
{
    Q_OBJECT

private slots:
    void tokens_data()
    {
        const Rows<std::string, QStringList> row("text", "tokens");
        row("words", "if a1 then", {"Kif", "Na1", "Kthen"});
        row("numbers", "1.5e-3+0x1Fp+2..7", {"N1.5e-3", "S+", "N0x1Fp+2..7"});
        row("quotes", "f('a\\'b')..\"x", {"Nf", "S(", "T'a\\'b'", "S)", "S..", "T\"x"});
        row("long", "[==[a]]]==] --[[b\nc]] d", {"T[==[a]]]==]", "C--[[b\nc]]", "Nd"});
        row("comment ends with its line", "x -- y\nz", {"Nx", "C-- y", "Nz"});
        row("letters of another script", "a ~= ё", {"Na", "S~=", "Sё"});
        row("cut off", "\"\\", {"T\"\\"});
    }

    void tokens()
    {
        QFETCH(std::string, text);
        QFETCH(QStringList, tokens);
        QStringList read;
        for (const LuaToken &token : LuaTokens(text))
            read << QLatin1Char("NKNTCS"[token.sort]) +
                        QString::fromStdString(std::string(token.In(text)));
        QCOMPARE(read, tokens);
    }

    void wordsOfScriptsExist()
    {
        LuaSandbox sandbox;
        const auto &keywords = LuaKeywords();
        for (const TextWord &word : language("condition").words(nullptr)) {
            const bool isKeyword =
                std::find(keywords.begin(), keywords.end(), word.text) != keywords.end();
            QCOMPARE(word.sort == TextWord::Keyword, isKeyword);
            LuaSandbox::Script script = 0;
            SignalValue type;
            QVERIFY(isKeyword || sandbox.Compile("w", "type(" + word.text + ")", script));
            QVERIFY(isKeyword || sandbox.Run(script, type));
            QVERIFY2(isKeyword || type.ToString() != "nil", word.text.c_str());
            QVERIFY2(!word.meaning.empty(), word.text.c_str());
        }
    }

    // [error] or (remark) with the piece of the text it points at.
    void checks_data()
    {
        const Rows<QByteArray, std::string, QString> row("hint", "text", "told");
        row("nothing", "formula", "", "");
        row("blank", "formula", "  ", "[] значения нет: нужно выражение или return");
        row("comment", "condition", "-- s1", "[] значения нет: нужно выражение или return");
        row("without return", "formula", "local x = t",
            "[] значения нет: нужно выражение или return");
        row("block without return yet", "formula", "local n = 0\nwhile t > n do\nn = n + )",
            "[)] «)»: здесь не ожидается");
        row("long line", "formula", "'" + std::string(300000, 'x'),
            "[] конец текста: текст в кавычках не закрыт");
        row("long piece", "formula", "1 " + std::string(300000, 'x'),
            "[" + QString(300000, 'x') + "] «" + QString(60, 'x') +
                "…»: лишнее: здесь текст должен кончаться");
        row("letter of another script", "formula", "50 + t\n+ х",
            "[х] «х»: такого знака здесь быть не может, имена пишут латинскими буквами");
        row("formula", "formula", "50 + 10 * sin(t / 60) + value * dt", "");
        row("block", "formula", "local x = t\nif x > 5 then return 1 end\nreturn x", "");
        row("bracket", "formula", "sin(t", "[] конец текста: перед этим нужно «)»");
        row("cut off", "formula", "2 *", "[] текст обрывается, здесь должно стоять ещё что-то");
        row("too much", "formula", "(1 + 2))", "[)] «)»: лишнее: здесь текст должен кончаться");
        row("place among lookalikes", "formula", "(1) + (2) ) (3)",
            "[)] «)»: лишнее: здесь текст должен кончаться");
        row("line", "formula", "local a = 1\nif a > 0 then\nreturn a",
            "[] конец текста: нет «end», закрывающего «if» из строки 2");
        row("name", "formula", "sin(tt)", "(tt) имени «tt» здесь нет, оно не имеет значения");
        row("own names", "formula",
            "local a, b = 1, 2\nlocal function f(x) return x end\nc = f(a) return c + b", "");
        row("several at once", "formula", "a, b = 1, 2 return a + b", "");
        row("label, constant", "script",
            "local top <const> = 3\nfor i = 1, top do goto next ::next:: end", "");
        row("signal by its way", "formula", "signal('Котёл/T')", "");
        row("name put together", "formula", "signal(\"P\" .. 1)", "");
        row("name with escapes", "formula", "signal('\\x46')", "");
        row("number put together", "script", "read(2 - 1)", "");
        row("no signal", "formula", "signal(\"P\")", "[\"P\"] сигнала «P» в этом имитаторе нет");
        row("two signals", "formula", "signal(\"T\")",
            "[\"T\"] «T» называются несколько сигналов: укажите путь");
        row("in a comment", "formula", "1 -- signal(\"P\") zz", "");
        row("condition", "condition", "not s1", "");
        row("input that there is not", "condition", "s2 and s1",
            "(s2) имени «s2» здесь нет, оно не имеет значения");
        row("script", "script", "if read(1) then write('Пуск', false) end", "");
        row("value for a script", "script", "1 + 1", "[1] «1»: здесь не ожидается");
        row("end too many", "script", "read(1) end",
            "[end] «end»: лишнее: здесь текст должен кончаться");
        row("number of no signal", "script", "write(2, 1)",
            "[2] сигнала с номером 2 нет, их 1: добавьте в «Сигналы по номерам»");
        row("path of no signal", "script", "journal(read('Нет'))",
            "['Нет'] сигнала «Нет» в проекте нет");
        row("file name", "fileName", "{report} {yyyy}-{MM}", "");
        row("field", "fileName", "{отчёт} {yyyy",
            "({отчёт}) поля «{отчёт}» нет, оно останется в "
            "тексте как есть; ({yyyy) скобка { не закрыта");
        row("sign", "fileName", "a/b",
            "(/) этот знак в именах файлов не допускается, вместо него будет _");
        row("parameter", "title", "Насос {насос}", "");
        row("no parameter", "title", "{x}",
            "({x}) поля «{x}» нет, оно останется в тексте как есть");
        row("definition", "defines", "${plc.host}:${",
            "(${) скобка { не закрыта, текст останется как есть");
        row("definition of no name", "defines", "${}", "[${}] между { и } нужно имя");
        row("number", "numberFormat", "%.1f °C", "");
    }

    void checks()
    {
        QFETCH(QByteArray, hint);
        QFETCH(std::string, text);
        QFETCH(QString, told);
        const Plant plant;
        QCOMPARE(::told(language(hint).check(text, plant.nodeOf(hint)), text), told);
    }

    void tries_data()
    {
        // inputs: name=value, in place of what the trial begins with.
        const Rows<QByteArray, std::string, QString, QString> row("hint", "text", "inputs", "out");
        row("formula", "formula", "t / 2", "t=8", "+4 °C");
        row("sample of a signal", "formula", "signal('Котёл/T') + 1", "", "+51 °C");
        row("nothing", "formula", "local x = 1", "",
            "-значение не получено: нужно выражение или return");
        row("no number", "formula", "1 / 0", "",
            "-получается не число: деление на ноль или корень из отрицательного?");
        row("unknown", "formula", "t + tt", "", "-строка 1: «tt» не имеет значения");
        row("endless", "formula", "while true do end", "",
            "-слишком много действий: бесконечный цикл?");
        row("tells at length", "formula",
            "local s = 'a' for i = 1, 19 do s = s .. s end error(s, 0)", "",
            "-" + QString(300, 'a') + "…");
        row("name is not a variable", "formula", "signal('F') + F", "",
            "-строка 1: «F» не имеет значения");
        row("two names", "formula", "signal('F', 'T')", "",
            "-строка 1: signal: нужно одно имя в кавычках");
        row("value of no number", "formula", "t", "t=abc",
            "-значение «abc» для «t» не подходит: нужно число");
        row("no value", "script", "journal(quality(1)) write(1, read(1) == nil)",
            "1=", "+выполнен|в журнал: bad|записать true в сигнал 1");
        row("longer than a formula may be", "script",
            "local n = 0 for i = 1, 200000 do n = n + i end", "", "+выполнен, ничего не записано");
        row("too long for a condition", "condition",
            "(function() for i = 1, 50000 do end return true end)()", "",
            "-слишком много действий: бесконечный цикл?");
        row("too many messages", "script", "for i = 1, 101 do journal('x') end", "",
            "-строка 1: слишком много сообщений в журнал" + QString("|в журнал: x").repeated(100));
        row("condition", "condition", "s1", "s1=true", "+да: тревога подавлена");
        row("no condition", "condition", "1", "",
            "-«1» не подходит: нужно да или нет (true или false)");
        row("script", "script", "if read(1) then write(1, false) journal('стоп') end", "1=true",
            "+выполнен|записать false в сигнал 1|в журнал: стоп");
        row("title", "title", "Насос {насос}", "", "+Насос ?");
        row("format", "numberFormat", "%.1f °C", "", "+1234.6 °C");
    }

    void tries()
    {
        QFETCH(QByteArray, hint);
        QFETCH(std::string, text);
        QFETCH(QString, inputs);
        QFETCH(QString, out);
        const Plant plant;
        const TextLanguage &tried = language(hint);
        const ConfigNode *node = plant.nodeOf(hint);
        std::vector<TrialInput> values;
        if (tried.inputs)
            values = tried.inputs(text, node);
        for (TrialInput &input : values) {
            if (inputs.section('=', 0, 0).toStdString() == input.name)
                input.value = inputs.section('=', 1).toStdString();
        }
        const TrialOutcome outcome = tried.run(text, node, values);
        QStringList shown{(outcome.isDone ? "+" : "-") + QString::fromStdString(outcome.text)};
        for (const std::string &step : outcome.steps)
            shown << QString::fromStdString(step);
        QCOMPARE(shown.join('|'), out);
    }

    void offersWhatTheProjectHas()
    {
        const Plant plant;
        const auto has = [&](const char *hint, const char *text) {
            const auto words = language(hint).words(plant.nodeOf(hint));
            return std::any_of(words.begin(), words.end(),
                               [&](const TextWord &word) { return word.text == text; });
        };
        QVERIFY(has("formula", "\"F\""));
        QVERIFY(!has("formula", "\"T\"")); // of several signals
        QVERIFY(has("formula", "\"Котёл/T\""));
        QVERIFY(has("script", "\"Имитатор/Котёл/T\""));
        QVERIFY(has("condition", "s1") && !has("condition", "s2"));
        QVERIFY(has("title", "{насос}"));
        QVERIFY(has("defines", "${plc.host}"));
    }

    void isReportedWithItsProperty()
    {
        Plant plant;
        plant.set(plant.formula, {{"formula", "1 +\n+ )"}});
        plant.set(plant.report, {{"fileName", "{x}"}});
        ValidationResults results;
        plant.formula->Validate(results);
        plant.report->Validate(results);
        QStringList found;
        for (const ValidationMessage &message : results) {
            const ProjectProblem problem = ProjectProblem::Of(message);
            if (problem.property == "formula" || problem.property == "fileName")
                found << QString::fromStdString(
                    problem.code + (problem.severity ? " remark " : " error ") + problem.text);
        }
        QCOMPARE(found, (QStringList{"bad-text error свойство «Формула», строка 2: «+»: здесь не "
                                     "ожидается.",
                                     "advice remark свойство «Имя файла»: поля «{x}» нет, оно "
                                     "останется в тексте как есть."}));
    }

    void isOfTextsOnly()
    {
        for (const KindInfo &kind : KindTable::Instance().GetKinds()) {
            for (const PropertyDescriptor &d : kind.properties)
                QVERIFY2(!FindTextLanguage(d.editorHint) || d.binding.type == PropertyType::String,
                         (kind.key + "." + d.key).c_str());
        }
    }
};

QTEST_GUILESS_MAIN(TextLanguagesTest)
#include "tst_text_languages.moc"
