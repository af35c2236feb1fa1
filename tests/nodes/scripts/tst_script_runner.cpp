#include "nodes/ProjectFixture.h"

#include "nodes/scripts/ScriptRunner.h"
#include "nodes/signals/BasicSignal.h"
#include "nodes/values/ValueCell.h"
#include "support/Rows.h"

#include <QtTest>

Q_DECLARE_METATYPE(Nodes::Result::ResultType)

using namespace Nodes;

namespace {

SignalValue withQuality(SignalValue value, Quality quality)
{
    value.SetQuality(quality);
    return value;
}

/// A folder of signals, and a runner whose tree thread is this test's.
struct Plant : ProjectFixture
{
    Plant() : folder(add("folder", root(), "Котёл"))
    {
        publish("Good", 7.5);
        publish("Stale", withQuality(7.5, Quality::Stale));
        publish("Bad", withQuality(7.5, Quality::Bad));
        publish("Uncertain", withQuality(7.5, Quality::Uncertain));
        target = signal("Target");
        QVERIFY(target->SetPropertyText("writable", "true"));
        signal("Twin");
        signal("Twin");
    }
    BasicSignal *signal(const char *name)
    {
        return static_cast<BasicSignal *>(add("memorySignal", folder, name));
    }
    void publish(const char *name, const SignalValue &value)
    {
        signal(name)->GetCell()->Publish(value);
    }
    Result start(const QString &text, unsigned long owner = 1, int timeLimit = 5000)
    {
        ScriptJob job;
        job.owner = owner;
        job.name = "trial";
        job.text = text.toStdString();
        job.inputs = {NodeLink(target)};
        job.timeLimit = timeLimit;
        job.journal = [this](const std::string &message) {
            messages << QString::fromStdString(message);
        };
        job.done = [this](const Result &result) { ended.push_back(result); };
        return runner->Run(std::move(job));
    }

    ConfigNode *folder;
    BasicSignal *target;
    QStringList messages;
    std::vector<Result> ended;
    QObject context;
    std::unique_ptr<ScriptRunner> runner =
        std::make_unique<ScriptRunner>([this](ScriptRunner::Task task) {
            QMetaObject::invokeMethod(&context, std::move(task), Qt::QueuedConnection);
        });
};

} // namespace

class TestScriptRunner : public QObject
{
    Q_OBJECT

private slots:
    void scripts_data()
    {
        // messages: parted by '|'; detail: of what the run ends with
        const Rows<QString, QString, Result::ResultType, QString> add("text", "messages", "result",
                                                                      "detail");
        const auto row = [&add](const char *name, const char *text, const char *messages,
                                Result::ResultType result = Result::Success,
                                const char *detail = "") {
            add(name, text, messages, result, detail);
        };
        row("reads", "journal(read('Котёл/Good') * 2)", "15");
        row("early return", "if read('Котёл/Good') > 1 then return end journal('no')", "");
        row("bad is no value", "journal(tostring(read('Котёл/Bad')))", "nil");
        row("stale is no value", "journal(tostring(read('Котёл/Stale')))", "nil");
        row("uncertain is one", "journal(read('Котёл/Uncertain'))", "7.5");
        row("quality", "journal(quality('Котёл/Stale')) journal(quality('Котёл/Target'))",
            "stale|bad");
        row("writes", "write('Котёл/Target', 5) journal(read('Котёл/Target'))", "5");
        row("by number", "write(1, 6) journal(read(1))", "6");
        row("number beyond", "read(2)", "", Result::Failed, "no signal '2'");
        row("no such signal", "read('Котёл/None')", "", Result::Failed, "no signal 'Котёл/None'");
        row("no signal but a folder", "read('Котёл')", "", Result::Failed, "no signal");
        row("ambiguous", "read('Котёл/Twin')", "", Result::Failed, "several signals");
        row("read-only", "write('Котёл/Good', 1) journal('no')", "", Result::Failed, "read only");
        row("out of range", "write('Котёл/Target', 1e6)", "", Result::Failed, "out of range");
        row("wrong use", "write('Котёл/Target')", "", Result::Failed, "two arguments");
        row("syntax", "journal(1)\nlocal = 2", "", Result::ParseError, "trial:2:");
        row("run-time error says where", "\n\nnosuch()", "", Result::Failed, "trial:3:");
        row("endless", "while true do end", "", Result::LimitExceeded, "");
        row("endless with calls", "while true do read('Котёл/Good') end", "", Result::LimitExceeded,
            "");
    }

    void scripts()
    {
        QFETCH(QString, text);
        QFETCH(Result::ResultType, result);
        QFETCH(QString, detail);
        Plant plant;
        QVERIFY(plant.start(text));
        QTRY_COMPARE_WITH_TIMEOUT(plant.ended.size(), std::size_t(1), 20000);
        QTEST(plant.messages.join('|'), "messages");
        const QString told = QString::fromStdString(plant.ended.front().ToString());
        QVERIFY2(plant.ended.front() == result, qPrintable(told));
        QVERIFY2(told.contains(detail), qPrintable(told));
    }

    void oneRunOfAnOwnerAtATime()
    {
        Plant plant;
        // The first waits for this thread, which does not return to its events before all are
        // pushed.
        QVERIFY(plant.start("journal('a')", 1));
        QVERIFY(plant.start("journal('a')", 1) == Result::Duplicate);
        QVERIFY(plant.start("journal('b')", 2));
        QTRY_COMPARE(plant.ended.size(), std::size_t(2));
        QCOMPARE(plant.messages, (QStringList{"a", "b"}));
        QVERIFY(plant.start("journal('c')", 1));
        QTRY_COMPARE(plant.ended.size(), std::size_t(3));
        unsigned long owner = 10;
        Result last;
        while (last && owner < 10 + 2 * ScriptRunner::MaximumWaiting)
            last = plant.start("journal('d')", owner++);
        QVERIFY(last == Result::LimitExceeded);
    }

    void aHeldUpTreeDelaysNobody()
    {
        Plant plant;
        QVERIFY(plant.start("write(1, 9)", 1, 50));
        QVERIFY(plant.start("local x = 1", 2)); // runs once the first has given up
        QElapsedTimer held;
        held.start();
        while (plant.start("local x = 1", 1) == Result::Duplicate && held.elapsed() < 20000)
            QThread::yieldCurrentThread(); // no events: the tree's thread is busy
        QTRY_COMPARE(plant.ended.size(), std::size_t(3));
        QVERIFY2(plant.ended[0].GetDetail().find("takes too long") != std::string::npos,
                 plant.ended[0].ToString().c_str());
        QVERIFY2(plant.target->GetValue().IsEmpty(), "written after the script was given up");
    }

    void endsWithTheStation_data()
    {
        const Rows<QString> row("text");
        row("waits for the tree", "journal('late')");
        row("computes", "while true do end");
    }

    void endsWithTheStation()
    {
        QFETCH(QString, text);
        Plant plant;
        QVERIFY(plant.start(text, 1, 60000));
        QVERIFY(plant.start("journal('never')", 2, 60000));
        QElapsedTimer timer;
        timer.start();
        plant.runner.reset();
        QVERIFY(timer.elapsed() < 30000);
        QCoreApplication::processEvents();
        QVERIFY(plant.messages.isEmpty());
    }
};

QTEST_GUILESS_MAIN(TestScriptRunner)
#include "tst_script_runner.moc"
