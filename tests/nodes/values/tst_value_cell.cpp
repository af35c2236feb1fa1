#include "nodes/ManualClock.h"
#include "nodes/ProjectFixture.h"
#include "nodes/drivers/SignalSink.h"
#include "nodes/model/validation/ValidationResults.h"
#include "nodes/signals/BasicSignal.h"
#include "nodes/values/SampleOrder.h"
#include "nodes/values/SampleTap.h"
#include "nodes/values/ValueCell.h"
#include "support/Rows.h"

#include <QtTest>

#include <thread>

using namespace Nodes;

namespace {

constexpr Timestamp second = ManualClock::second;

/// "number@seconds", with a mark where the quality is not good.
std::string textOf(const SignalValue &value, Timestamp time, Timestamp origin)
{
    const std::string number = value.IsError() ? "error" : value.ToString();
    const std::string mark = value.IsGood() ? "" : QualityToken(value.GetQuality());
    return number + mark + "@" + std::to_string(double(time - origin) / second).substr(0, 4) + " ";
}

struct Tape : SampleTap
{
    void Offer(Timestamp time, const SignalValue &value) override
    {
        text += textOf(value, time, origin);
        isAscending &= time > last;
        last = time;
    }
    Timestamp origin = Clock::Current().Now();
    Timestamp last = 0;
    bool isAscending = true;
    std::string text;
};

/// A signal of a driver, with all who may listen to it.
struct Fed : ProjectFixture
{
    explicit Fed(const char *deadband, const char *type = "double")
    {
        set(signal, {{"deadband", deadband}, {"type", type}});
        signal->GetCell()->AddTap(tape);
    }
    const std::shared_ptr<ValueCell> &cell() const { return signal->GetCell(); }

    ManualClock &clock = ManualClock::Use();
    std::shared_ptr<Tape> tape = std::make_shared<Tape>();
    BasicSignal *signal = add<BasicSignal>("hostSignal", add("hostDriver", root()), "T");
    std::string published, measured;
    ScopedConnection toPublished = cell()->Subscribe(
        [this](const SignalValue &value) { published += value.ToString() + " "; });
    ScopedConnection toMeasured =
        cell()->Subscribe([this](const SignalValue &value) { measured += value.ToString() + " "; },
                          ValueFeed::Measured);
};

} // namespace

class TestValueCell : public QObject
{
    Q_OBJECT

private slots:
    void qualityHasATimeOfItsOwn()
    {
        ManualClock &clock = ManualClock::Use();
        const Timestamp start = clock.Now();
        ValueCell cell;
        const auto tape = std::make_shared<Tape>();
        cell.AddTap(tape);
        const auto times = [&] {
            const SignalValue value = cell.Value();
            std::string text;
            for (const Timestamp time :
                 {value.GetSourceTime(), value.GetReceiveTime(), value.GetQualityTime()})
                text += std::to_string(time == 0 ? -1 : (time - start) / second) + " ";
            return text;
        };
        const auto publish = [&](double number) {
            SignalValue value(number);
            value.SetTimes(clock.Now() - second, clock.Now());
            cell.Publish(value);
        };
        cell.Degrade(Quality::Bad, Result::NotConnected);
        QCOMPARE(times(), std::string("-1 -1 0 "));
        clock.Advance(10 * second);
        publish(1);
        QCOMPARE(times(), std::string("9 10 10 "));
        clock.Advance(10 * second);
        publish(2);
        QCOMPARE(times(), std::string("19 20 10 "));
        clock.Advance(10 * second);
        QVERIFY(cell.Expire(cell.LastPublished()));
        QCOMPARE(times(), std::string("19 20 30 "));
        clock.Advance(10 * second);
        cell.Degrade(Quality::Bad, Result::NotConnected);
        cell.Degrade(Quality::Bad, Result::NotConnected);
        QCOMPARE(times(), std::string("19 20 40 "));
        QCOMPARE(cell.Value().ConvertedTo(enSignalValueType::Int).GetQualityTime(),
                 cell.Value().GetQualityTime());
        QCOMPARE(tape->text, std::string("errorbad@0.00 1@9.00 2@19.0 2stale@30.0 2bad@40.0 "));

        const auto late = std::make_shared<Tape>();
        cell.AddTap(late);
        QCOMPARE((late->last - start) / second, Timestamp(40));
        cell.RemoveTap(*late);
        clock.Advance(10 * second);
        publish(3);
        QCOMPARE((late->last - start) / second, Timestamp(40));
        QCOMPARE(times(), std::string("49 50 50 "));

        cell.Publish(Result(Result::NotFound));
        clock.Advance(10 * second);
        cell.Degrade(Quality::Good, Result()); // errors stay bad, as before
        QCOMPARE(times(), std::string("50 50 50 "));

        ProjectFixture f;
        auto *written = f.add<BasicSignal>("memorySignal", f.root(), "W", {{"writable", "true"}});
        SignalValue old(7.0);
        old.SetTimes(start, start);
        QVERIFY(written->WriteValue(old));
        QCOMPARE(written->GetValue().GetQualityTime(), clock.Now());
        QCOMPARE(written->GetValue().GetSourceTime(), clock.Now());
    }

    void samplesAreUniqueAndOrdered_data()
    {
        // source@arrival in ms: times given
        const Rows<QString, QString> row("came", "placed");
        row("as measured", "10@20 30@40 50@60", "10000 30000 50000");
        row("one instant", "10@20 10@20 10@20", "10000 10001 10002");
        row("a jitter stays beside", "900@901 899@902 950@951", "900000 900001 950000");
        row("device set back", "7200000@7200001 100@7200501 600@7201001",
            "7200000000 7200501000 7201001000");
        row("old time comes first", "10@7200000 20@7200010 7200015@7200020",
            "10000 20000 7200015000");
        row("device far ahead", "90000@20 90001@30 60@70", "20000 30000 60000");
        row("a little ahead", "9000@20 9100@120", "9000000 9100000");
        row("station set back", "7200000@7200000 100@100 200@200 7200001@7200001",
            "7200000000 7200000001 7200000002 7200001000");
    }

    void samplesAreUniqueAndOrdered()
    {
        QFETCH(QString, came);
        SampleOrder order;
        QStringList placed;
        for (const QString &sample : came.split(' ')) {
            const QStringList times = sample.split('@');
            placed << QString::number(
                order.Place(times[0].toLongLong() * 1000, times[1].toLongLong() * 1000));
        }
        QTEST(placed.join(' '), "placed");
    }

    void publishersNeverBreakTheOrder()
    {
        ValueCell cell;
        const auto tape = std::make_shared<Tape>();
        cell.AddTap(tape);
        std::vector<std::thread> threads;
        for (int t = 0; t < 3; ++t)
            threads.emplace_back([&cell, t] {
                for (int i = 0; i < 2000; ++i) {
                    SignalValue value(t * 10000 + i);
                    value.SetTimes(Clock::Current().Now() - i % 3, Clock::Current().Now());
                    if (i % 7 == 0)
                        cell.Degrade(Quality::Stale, Result());
                    else
                        cell.Publish(value);
                }
            });
        for (std::thread &thread : threads)
            thread.join();
        QVERIFY(tape->isAscending && tape->last != 0);
    }

    void deadband_data()
    {
        // One value a second; s: turns stale, b: device lost, n: not a number
        const Rows<QString, QString, QString, QString, QString> row("deadband", "type", "values",
                                                                    "published", "tape");
        row("none", "0", "double", "1 1.5 1.5", "1 1.5 1.5 ", "1@0.00 1.5@1.00 1.5@2.00 ");
        row("small changes", "2", "double", "10 11 9 10", "10 ", "10@0.00 ");
        row("at the border", "2", "double", "10 12", "10 12 ", "10@0.00 12@1.00 ");
        row("drift adds up", "2", "double", "10 11 11.9 12.5 13", "10 12.5 ",
            "10@0.00 11.9@2.00 12.5@3.00 ");
        row("a step stays a step", "2", "double", "10 10 10 50", "10 50 ",
            "10@0.00 10@2.00 50@3.00 ");
        row("quality always passes", "2", "double", "10 11 s 10.5 b 10", "10 11 10.5 10.5 10 ",
            "10@0.00 11@1.00 11stale@2.00 10.5@3.00 10.5bad@4.00 10@5.00 ");
        row("lost while held back", "2", "double", "10 11 b 11", "10 11 11 ",
            "10@0.00 11@1.00 11bad@2.00 11@3.00 ");
        row("no number passes", "2", "double", "10 n 10", "", "10@0.00 errorbad@1.00 10@2.00 ");
        row("whole numbers", "2", "int", "10 11 12", "10 12 ", "10@0.00 11@1.00 12@2.00 ");
        row("logical", "2", "bool", "1 0 1", "true false true ", "true@0.00 false@1.00 true@2.00 ");
        row("text", "2", "string", "1 2", "1 2 ", "1@0.00 2@1.00 ");
    }

    void deadband()
    {
        QFETCH(QString, values);
        QFETCH(QString, deadband);
        QFETCH(QString, type);
        Fed fed(deadband.toUtf8(), type.toUtf8());
        const SignalSink sink(*fed.signal);
        for (const QString &value : values.split(' ')) {
            if (value == "s")
                fed.cell()->Expire(fed.cell()->LastPublished());
            else if (value == "b")
                sink.Lose(Result::NotConnected);
            else
                sink.Publish(value == "n" ? qQNaN() : value.toDouble());
            fed.clock.Advance(second);
        }
        QTEST(QString::fromStdString(fed.tape->text), "tape");
        if (!values.contains('n'))
            QTEST(QString::fromStdString(fed.published), "published");
    }

    void heldBackValuesAreFreshAndMeasured()
    {
        Fed fed("2");
        const SignalSink sink(*fed.signal);
        sink.Publish(10);
        fed.clock.Advance(5 * second);
        sink.Publish(11.5);
        QCOMPARE(fed.signal->GetValue().ToDouble(), 10.);
        QCOMPARE(fed.signal->GetValue().GetSourceTime(), fed.clock.Now());
        QCOMPARE(fed.cell()->LastPublished(), fed.clock.Steady());
        QCOMPARE(fed.cell()->Measured().ToDouble(), 11.5);
        QCOMPARE(fed.measured, std::string("10 11.5 "));
        sink.Lose(Result::NotConnected);
        QCOMPARE(fed.cell()->Measured().GetQuality(), Quality::Bad);
        QCOMPARE(fed.cell()->Measured().ToDouble(), 11.5);
    }

    void heldBackValuesOfAWrongClockCountWhenTheyCame()
    {
        Fed fed("2");
        const SignalSink sink(*fed.signal);
        for (const double number : {10., 11., 50.}) {
            sink.Publish(number, fed.clock.Now() + 3600 * second);
            fed.clock.Advance(second);
        }
        QCOMPARE(fed.tape->text, std::string("10@0.00 11@1.00 50@2.00 "));
    }

    void repeatedSampleIsRecordedOnce()
    {
        Fed fed("0");
        const SignalSink sink(*fed.signal);
        const Timestamp measured = fed.clock.Now();
        for (int poll = 0; poll < 3; ++poll) {
            fed.clock.Advance(second);
            sink.Publish(1, measured);
        }
        QCOMPARE(fed.published, std::string("1 1 1 "));
        QCOMPARE(fed.tape->text, std::string("1@0.00 "));
        // The device still knows nothing newer after it was lost: it is good from now on.
        sink.Lose(Result::NotConnected);
        fed.clock.Advance(second);
        sink.Publish(1, measured);
        QCOMPARE(fed.tape->text, std::string("1@0.00 1bad@3.00 1@4.00 "));
    }

    void badDeadbandIsRefusedOrReported_data()
    {
        const Rows<QString, QString, int> row("kind", "type", "findings");
        row("measured number", "hostSignal", "double", 0);
        row("logical", "hostSignal", "bool", 1);
        row("text", "hostSignal", "string", 1);
        row("written", "memorySignal", "double", 1);
    }

    void badDeadbandIsRefusedOrReported()
    {
        QFETCH(QString, kind);
        QFETCH(QString, type);
        ProjectFixture f;
        auto *signal = f.add<BasicSignal>(kind.toUtf8(), f.add("hostDriver", f.root()), "T",
                                          {{"type", type.toStdString()}});
        for (const double wrong : {-1., qQNaN(), qInf()}) {
            QCOMPARE(signal->SetProperty(5008, wrong).GetType(), Result::OutOfRange);
            QCOMPARE(signal->GetDeadband(), 0.);
        }
        const std::size_t before = signal->isValid().size();
        QVERIFY(signal->SetProperty(5008, 0.5));
        QTEST(int(signal->isValid().size() - before), "findings");
    }
};

QTEST_APPLESS_MAIN(TestValueCell)
#include "tst_value_cell.moc"
