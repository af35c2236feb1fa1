#include "nodes/scripts/LuaSandbox.h"

#include <QtTest>

using namespace Nodes;

namespace {

constexpr LuaLimits limits{100000, 2000, 1u << 20};

Result run(LuaSandbox &sandbox, const QString &text, SignalValue &value)
{
    LuaSandbox::Script script = 0;
    const Result compiled = sandbox.Compile("trial", text.toStdString(), script);
    return compiled ? sandbox.Run(script, value) : compiled;
}

} // namespace

class TestLuaSandbox : public QObject
{
    Q_OBJECT

private slots:
    void values_data();
    void values();
    void escapes_data();
    void escapes();
    void limitsStop_data();
    void limitsStop();
    void scriptsAreApart();
    void hostFunctions();
    void errorsSayWhere();
};

void TestLuaSandbox::values_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("type");
    QTest::addColumn<QString>("value");

    const auto row = [](const char *text, enSignalValueType type, const char *value) {
        QTest::newRow(text) << text << int(type) << value;
    };
    row("1 + 1", enSignalValueType::Int, "2");
    row("7 / 2", enSignalValueType::Double, "3.5");
    row("1 << 40", enSignalValueType::Double, "1099511627776");
    row("1 < 2", enSignalValueType::Bool, "true");
    row("'a' .. ('b'):upper()", enSignalValueType::String, "aB");
    row("nil", enSignalValueType::None, "");
    row("return 5", enSignalValueType::Int, "5");
    row("local s = 0 for i = 1, 10 do s = s + i end return s", enSignalValueType::Int, "55");
    row("type(sin) .. math.type(1)", enSignalValueType::String, "functioninteger");
    row("table.concat({1, 2}, '-')", enSignalValueType::String, "1-2");
}

void TestLuaSandbox::values()
{
    QFETCH(QString, text);
    QFETCH(int, type);
    QFETCH(QString, value);
    LuaSandbox sandbox(limits);
    SignalValue result("untouched");
    const Result outcome = run(sandbox, text, result);
    QVERIFY2(outcome.IsSuccess(), outcome.ToString().c_str());
    QCOMPARE(int(result.GetType()), type);
    QCOMPARE(QString::fromStdString(result.ToString()), value);
}

void TestLuaSandbox::escapes_data()
{
    QTest::addColumn<QString>("text");
    for (const char *name :
         {"io",         "os",          "package",        "debug",          "coroutine",
          "utf8",       "_G",          "load",           "loadfile",       "loadstring",
          "dofile",     "require",     "collectgarbage", "print",          "pcall",
          "xpcall",     "rawset",      "rawget",         "getmetatable",   "setmetatable",
          "string.rep", "string.dump", "string.find",    "string.gsub",    "string.match",
          "('').rep",   "table.move",  "table.sort",     "math.randomseed"})
        QTest::newRow(name) << QString("return 1 + (%1 == nil and error('absent') or 1)").arg(name);
    QTest::newRow("compiled bytes") << QString("\x1bLua");
    QTest::newRow("library replaced") << "math.sin = nil return 1";
    QTest::newRow("library extended") << "string.x = 1 return 1";
}

void TestLuaSandbox::escapes()
{
    QFETCH(QString, text);
    LuaSandbox sandbox(limits);
    SignalValue value("untouched");
    const Result outcome = run(sandbox, text, value);
    QVERIFY(!outcome.IsSuccess());
    QCOMPARE(value.ToString(), std::string("untouched"));
    QVERIFY(run(sandbox, "sin(0)", value).IsSuccess());
}

void TestLuaSandbox::limitsStop_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("endless loop") << "while true do end";
    QTest::newRow("endless goto") << "::a:: goto a";
    QTest::newRow("endless recursion") << "local function f() return f() end return f()";
    QTest::newRow("growing table") << "local t = {} for i = 1, 1e9 do t[i] = i end";
    QTest::newRow("growing text") << "local s = 'x' while true do s = s .. s end";
    QTest::newRow("many texts") << "local t = {} for i = 1, 1e9 do t[i] = ('x' .. i) end";
    QTest::newRow("error as a loop") << "for i = 1, 1e9 do assert(true) end";
}

void TestLuaSandbox::limitsStop()
{
    QFETCH(QString, text);
    LuaSandbox sandbox(limits);
    SignalValue value;
    for (int repeat = 0; repeat < 3; ++repeat) {
        const Result outcome = run(sandbox, text, value);
        QCOMPARE(outcome.GetType(), Result::LimitExceeded);
        QVERIFY(run(sandbox, "('still'):len()", value).IsSuccess());
        QCOMPARE(value.ToInt(), 5);
    }
}

void TestLuaSandbox::scriptsAreApart()
{
    LuaSandbox sandbox(limits);
    SignalValue value;
    QVERIFY(run(sandbox, "secret = 5 sin = 3 return secret", value).IsSuccess());
    QVERIFY(run(sandbox, "secret", value).IsSuccess());
    QVERIFY(value.IsEmpty());
    QVERIFY(run(sandbox, "sin(0)", value).IsSuccess());

    LuaSandbox::Script counter = 0;
    QVERIFY(sandbox.Compile("counter", "n = (n or start) + 1 return n", counter).IsSuccess());
    sandbox.SetVariable(counter, "start", 10);
    for (int expected : {11, 12, 13}) {
        QVERIFY(sandbox.Run(counter, value).IsSuccess());
        QCOMPARE(value.ToInt(), expected);
    }
}

void TestLuaSandbox::hostFunctions()
{
    LuaSandbox sandbox(limits);
    sandbox.AddFunction("twice", [](const LuaSandbox::Arguments &arguments) -> SignalValue {
        if (arguments.size() != 1 || !arguments[0].IsNumber())
            return Result(Result::InvalidArgument, "twice() wants a number");
        return arguments[0].ToDouble() * 2;
    });
    SignalValue value;
    QVERIFY(run(sandbox, "twice(21)", value).IsSuccess());
    QCOMPARE(value.ToDouble(), 42.);
    const Result refused = run(sandbox, "twice('a')", value);
    QCOMPARE(refused.GetType(), Result::Failed);
    QVERIFY2(refused.GetDetail().find("twice() wants a number") != std::string::npos,
             refused.GetDetail().c_str());
    QCOMPARE(run(sandbox, "while true do twice(1) end", value).GetType(), Result::LimitExceeded);
}

void TestLuaSandbox::errorsSayWhere()
{
    LuaSandbox sandbox(limits);
    SignalValue value;
    const Result syntax = run(sandbox, "1 +* 2", value);
    QCOMPARE(syntax.GetType(), Result::ParseError);
    QVERIFY2(syntax.GetDetail().find("trial:1:") == 0, syntax.GetDetail().c_str());
    const Result block = run(sandbox, "local a = 1\nif a then\nreturn a", value);
    QVERIFY2(block.GetDetail().find("trial:3:") == 0, block.GetDetail().c_str());
    QCOMPARE(run(sandbox, "error({})", value).GetType(), Result::Failed);
    QCOMPARE(run(sandbox, "{}", value).GetType(), Result::WrongType);
}

QTEST_APPLESS_MAIN(TestLuaSandbox)
#include "tst_lua_sandbox.moc"
