#include "nodes/scripts/LuaSandbox.h"
#include "support/Rows.h"

#include <QtTest>

Q_DECLARE_METATYPE(Nodes::enSignalValueType)

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
    void values_data()
    {
        const Rows<enSignalValueType, std::string> row("type",
                                                       "value"); // of the script that names it
        using Type = enSignalValueType;
        row("1 + 1", Type::Int, "2");
        row("7 / 2", Type::Double, "3.5");
        row("1 << 40", Type::Double, "1099511627776");
        row("1 < 2", Type::Bool, "true");
        row("'a' .. ('b'):upper()", Type::String, "aB");
        row("nil", Type::None, "");
        row("return 5", Type::Int, "5");
        row("local s = 0 for i = 1, 10 do s = s + i end return s", Type::Int, "55");
        row("type(sin) .. math.type(1)", Type::String, "functioninteger");
        row("table.concat({1, 2}, '-')", Type::String, "1-2");
    }

    void values()
    {
        LuaSandbox sandbox(limits);
        SignalValue result("untouched");
        const Result outcome = run(sandbox, QTest::currentDataTag(), result);
        QVERIFY2(outcome.IsSuccess(), outcome.ToString().c_str());
        QTEST(result.GetType(), "type");
        QTEST(result.ToString(), "value");
    }

    void escapes_data()
    {
        const Rows<QString> row("text");
        for (const char *name :
             {"io",         "os",          "package",        "debug",          "coroutine",
              "utf8",       "_G",          "load",           "loadfile",       "loadstring",
              "dofile",     "require",     "collectgarbage", "print",          "pcall",
              "xpcall",     "rawset",      "rawget",         "getmetatable",   "setmetatable",
              "string.rep", "string.dump", "string.find",    "string.gsub",    "string.match",
              "('').rep",   "table.move",  "table.sort",     "math.randomseed"})
            row(name, QString("return 1 + (%1 == nil and error('absent') or 1)").arg(name));
        row("compiled bytes", "\x1bLua");
        row("library replaced", "math.sin = nil return 1");
        row("library extended", "string.x = 1 return 1");
    }

    void escapes()
    {
        QFETCH(QString, text);
        LuaSandbox sandbox(limits);
        SignalValue value("untouched");
        const Result outcome = run(sandbox, text, value);
        QVERIFY(!outcome.IsSuccess());
        QCOMPARE(value.ToString(), std::string("untouched"));
        QVERIFY(run(sandbox, "sin(0)", value).IsSuccess());
    }

    void limitsStop_data()
    {
        const Rows<QString> row("text");
        row("endless loop", "while true do end");
        row("endless goto", "::a:: goto a");
        row("endless recursion", "local function f() return f() end return f()");
        row("growing table", "local t = {} for i = 1, 1e9 do t[i] = i end");
        row("growing text", "local s = 'x' while true do s = s .. s end");
        row("many texts", "local t = {} for i = 1, 1e9 do t[i] = ('x' .. i) end");
        row("error as a loop", "for i = 1, 1e9 do assert(true) end");
    }

    void limitsStop()
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

    void scriptsAreApart()
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

    void hostFunctions()
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
        QCOMPARE(run(sandbox, "while true do twice(1) end", value).GetType(),
                 Result::LimitExceeded);
    }

    void errorsSayWhere()
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
};

QTEST_APPLESS_MAIN(TestLuaSandbox)
#include "tst_lua_sandbox.moc"
