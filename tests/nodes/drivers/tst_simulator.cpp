#include "nodes/ProjectFixture.h"
#include "nodes/drivers/simulator/SimulatorEngine.h"
#include "nodes/signals/BasicSignal.h"
#include "support/Rows.h"

#include <QtTest>

using namespace Nodes;

namespace {

/// An engine that remembers what it reported.
struct Trial
{
    std::size_t add(const std::string &path, const std::string &formula, SignalValue initial = 0.)
    {
        SimulatedSignal signal;
        signal.path = "plant/" + path;
        signal.relativePath = path;
        signal.formula = formula;
        signal.initial = std::move(initial);
        return engine.Add(signal);
    }
    std::string shown(std::size_t index) const { return engine.GetOutcome(index).ToString(); }
    bool isBad(std::size_t index) const { return engine.GetOutcome(index).IsError(); }

    std::vector<std::string> reports;
    SimulatorEngine engine{[this](const SimulatedSignal &signal, const Result &error) {
                               reports.push_back(signal.relativePath + ": " + error.ToString());
                           },
                           {20000, 100, 1u << 20}};
};

} // namespace

class TestSimulator : public QObject
{
    Q_OBJECT

private slots:
    void formulas_data()
    {
        // value: after steps at 0 s and 0.5 s; "" for an error
        const Rows<QString, QString> row("formula", "value");
        row("expression", "50 + 10 * sin(0)", "50");
        row("time", "t * 4", "2");
        row("integration", "value + dt * 10", "15");
        row("own state", "n = (n or 0) + 1; return n", "2");
        row("division by zero", "1 / (t - t)", "");
        row("no number", "0 / 0 * t", "");
        row("nothing", "nil", "");
        row("text for a number", "'open'", "");
        row("unknown name", "pressure * 2", "");
        row("unknown signal", "signal('nowhere')", "");
        row("signal without a name", "signal(1)", "");
    }

    void formulas()
    {
        QFETCH(QString, formula);
        QFETCH(QString, value);
        Trial trial;
        const std::size_t index = trial.add("a", formula.toStdString(), 10.);
        trial.engine.Step(0, 0);
        trial.engine.Step(0.5, 0.5);
        QCOMPARE(trial.isBad(index), value.isEmpty());
        QCOMPARE(trial.reports.size(), std::size_t(value.isEmpty()));
        if (!value.isEmpty())
            QCOMPARE(QString::fromStdString(trial.shown(index)), value);
    }

    void failuresStayApart()
    {
        Trial trial;
        const auto failing =
            trial.add("failing", "if t > 0.5 and t < 3 then error('at ' .. t) end return 1");
        const auto dependent = trial.add("dependent", "signal('failing') + 1");
        const auto fine = trial.add("fine", "t");
        for (int step = 0; step < 5; ++step) {
            trial.engine.Step(step, 1);
            const bool isFailing = step == 1 || step == 2;
            QCOMPARE(trial.isBad(failing), isFailing);
            QCOMPARE(trial.isBad(dependent), isFailing);
            QCOMPARE(trial.engine.GetOutcome(fine).ToDouble(), double(step));
        }
        // Each of the two: once when it failed, though the text changes, and once when it
        // recovered.
        QCOMPARE(trial.reports.size(), std::size_t(4));
        QVERIFY(trial.reports[0].find("at 1") != std::string::npos);
    }

    void circlesBegin_data()
    {
        const Rows<QString, QString> row("flow", "levels"); // step by step, "-" while bad
        row("of each other", "10 - signal('level')", "15 20 10 10");
        row("one fails for a while",
            "if t == 1 or t == 2 then error('x') end return 10 - signal('level')", "15 20 - 25");
        row("one fails by itself", "signal('level') + nil", "- - - -");
    }

    void circlesBegin()
    {
        QFETCH(QString, flow);
        Trial trial;
        const auto level = trial.add("level", "value + signal('flow')", 5.);
        (void)trial.add("flow", flow.toStdString(), 10.);
        QStringList levels;
        for (int time = 0; time < 4; ++time) {
            trial.engine.Step(time, 1);
            levels += trial.isBad(level) ? "-" : QString::fromStdString(trial.shown(level));
        }
        QTEST(levels.join(' '), "levels");
    }

    void ownValueIsWritten()
    {
        Trial trial;
        const auto setpoint = trial.add("setpoint", "", 20.);
        const auto ramp = trial.add("ramp", "value + 1");
        const auto sine = trial.add("sine", "3");
        trial.engine.Step(0, 0);
        QCOMPARE(trial.shown(setpoint), std::string("20"));
        for (const auto index : {setpoint, ramp, sine})
            trial.engine.Write(index, 65.);
        trial.engine.Step(1, 1);
        QCOMPARE(trial.shown(setpoint), std::string("65"));
        QCOMPARE(trial.shown(ramp), std::string("66"));
        QCOMPARE(trial.shown(sine), std::string("3"));
    }

    void firstStepIsShort()
    {
        Trial trial;
        constexpr int length = 200;
        const std::string counted = "n = (n or 0) + 1; return n + 0 * signal('";
        for (int i = 0; i < length; ++i)
            trial.add(std::to_string(i), counted + std::to_string(i + 1) + "')");
        trial.add(std::to_string(length), "0");
        QVERIFY(trial.engine.Step(0, 0));
        for (std::size_t i = 0; i < length; ++i)
            QCOMPARE(trial.shown(i), std::string("2")); // how often it ran
        QVERIFY(trial.reports.empty());
        trial.engine.Abort();
        QVERIFY(!trial.engine.Step(1, 1));
        QCOMPARE(trial.shown(0), std::string("2"));
    }

    void namesAndOrder()
    {
        Trial trial;
        const auto ahead =
            trial.add("sum", "signal('b1/flow') + signal('plant/b2/flow') + signal('top')");
        trial.add("b1/flow", "signal('top') * 2");
        trial.add("b2/flow", "3");
        trial.add("top", "10");
        const auto unclear = trial.add("unclear", "signal('flow')");
        const auto circle = trial.add("circle", "(signal('circle') or 0) + 1");
        trial.engine.Step(0, 0);
        QCOMPARE(trial.shown(ahead), std::string("33"));
        QVERIFY(trial.isBad(unclear));
        QCOMPARE(trial.shown(circle), std::string("1"));
        QCOMPARE(trial.reports.size(), std::size_t(1));
    }

    void driver()
    {
        ProjectFixture project;
        ConfigNode *driver =
            project.add("simulatorDriver", project.root(), "sim", {{"period", "10"}});
        const auto add = [&](const char *name, const char *formula) {
            return project.add<BasicSignal>("simulatorSignal", driver, name,
                                            {{"formula", formula}, {"writable", "1"}});
        };
        BasicSignal *setpoint = add("setpoint", "");
        BasicSignal *twice = add("twice", "signal('setpoint') * 2");
        BasicSignal *wrong = add("wrong", "os.exit(1)");
        QCOMPARE(setpoint->WriteValue(5).GetType(), Result::NotAvailable);
        QVERIFY(driver->Start().IsSuccess());
        QTRY_VERIFY(twice->GetValue().IsGood());
        QVERIFY(setpoint->WriteValue(30).IsSuccess());
        QTRY_COMPARE(twice->GetValue().ToDouble(), 60.);
        QVERIFY(!wrong->GetValue().IsGood());
        QVERIFY(driver->Stop().IsSuccess());
        QCOMPARE(setpoint->WriteValue(5).GetType(), Result::NotConnected);
        QVERIFY(!twice->GetValue().IsGood());
    }
};

QTEST_GUILESS_MAIN(TestSimulator)
#include "tst_simulator.moc"
