#include "nodes/CoreFixture.h"
#include "nodes/ManualClock.h"
#include "nodes/signals/BasicSignal.h"
#include "nodes/system/StaleMonitor.h"
#include "nodes/values/ValueCell.h"

#include <QtTest>

using namespace Nodes;

class TestStaleMonitor : public QObject
{
    Q_OBJECT

private slots:
    void degrades()
    {
        ManualClock &clock = ManualClock::Use();
        const auto cell = [] { return std::make_shared<ValueCell>(); };
        const auto silent = cell(), fed = cell(), slow = cell(), bad = cell(), empty = cell();
        for (const auto &published : {silent, fed, slow})
            published->Publish(1.5);
        bad->Publish(Result(Result::NotConnected));
        StaleMonitor monitor;
        monitor.Start({{silent, 1000}, {fed, 1000}, {slow, 5000}, {bad, 1000}, {empty, 1000}});
        for (int i = 0; i < 4; ++i) {
            clock.Advance(300000);
            fed->Publish(2.5);
        }
        QTRY_VERIFY(silent->Value().GetQuality() == Quality::Stale);
        QCOMPARE(silent->Value().ToDouble(), 1.5);
        QVERIFY(fed->Value().IsGood() && slow->Value().IsGood());
        QVERIFY(bad->Value().GetError() == Result::NotConnected);
        QVERIFY(empty->Value().IsEmpty());

        silent->Publish(3.5);
        QVERIFY(silent->Value().IsGood());
        clock.Advance(5000000);
        QTRY_VERIFY(slow->Value().GetQuality() == Quality::Stale);
        QTRY_VERIFY(silent->Value().GetQuality() == Quality::Stale);
        monitor.Stop();
    }

    void keepsFreshValue()
    {
        ManualClock &clock = ManualClock::Use();
        ValueCell cell;
        cell.Publish(1.0);
        const Timestamp seen = cell.LastPublished();
        clock.Advance(1);
        cell.Publish(2.0);
        QVERIFY2(!cell.Expire(seen), "published between the look and the verdict");
        QVERIFY(cell.Value().IsGood());
        QVERIFY(cell.Expire(cell.LastPublished()) && !cell.Expire(cell.LastPublished()));
    }

    void kindsThatPublishOnChange()
    {
        const QTemporaryDir directory;
        CoreFixture f(directory);
        std::vector<BasicSignal *> signalNodes;
        for (const char *kind : {"driverStatus", "memorySignal", "hostSignal"}) {
            signalNodes.push_back(
                f.add<BasicSignal>(kind, f.root(), nullptr, {{"staleAfter", "1000"}}));
            signalNodes.back()->GetCell()->Publish(1.0);
        }
        QVERIFY(f.core.Start());
        ManualClock::Use().Advance(3000000);
        QTRY_VERIFY(signalNodes[2]->GetValue().GetQuality() == Quality::Stale);
        QVERIFY(signalNodes[0]->GetValue().IsGood() && signalNodes[1]->GetValue().IsGood());
    }
};

QTEST_APPLESS_MAIN(TestStaleMonitor)
#include "tst_stale_monitor.moc"
