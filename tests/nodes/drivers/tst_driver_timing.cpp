#include "nodes/drivers/PollSchedule.h"
#include "nodes/drivers/modbus/Backoff.h"

#include <QtTest>

using namespace Nodes;

class TestDriverTiming : public QObject
{
    Q_OBJECT

private slots:
    void schedule_data();
    void schedule();
    void backoff();
};

void TestDriverTiming::schedule_data()
{
    QTest::addColumn<qint64>("served");
    QTest::addColumn<qint64>("next");
    QTest::newRow("in time") << qint64(1000000) << qint64(1500000);
    QTest::newRow("late: the grid stays") << qint64(1499999) << qint64(1500000);
    QTest::newRow("at the next slot") << qint64(1500000) << qint64(2000000);
    QTest::newRow("slots missed") << qint64(9700000) << qint64(10000000);
    QTest::newRow("early: still due") << qint64(999999) << qint64(1000000);
}

void TestDriverTiming::schedule()
{
    QFETCH(qint64, served);
    QFETCH(qint64, next);
    PollSchedule schedule(500000, 1000000);
    schedule.Advance(served);
    QCOMPARE(qint64(schedule.GetNext()), next);
    QVERIFY(schedule.IsDue(next) && !schedule.IsDue(next - 1));
}

void TestDriverTiming::backoff()
{
    for (unsigned seed = 0; seed < 50; ++seed) {
        Backoff backoff(100, 1500, seed);
        for (const int full : {100, 200, 400, 800, 1500, 1500, 1500}) {
            const int wait = backoff.Next();
            QVERIFY2(wait >= full * 3 / 4 && wait <= full, qPrintable(QString::number(wait)));
        }
        backoff.Reset();
        QVERIFY(backoff.Next() <= 100);
    }
    QVERIFY(Backoff(1000, 10, 1).Next() <= 1000);
}

QTEST_APPLESS_MAIN(TestDriverTiming)
#include "tst_driver_timing.moc"
