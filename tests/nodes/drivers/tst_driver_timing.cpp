#include "nodes/drivers/PollSchedule.h"
#include "nodes/drivers/modbus/Backoff.h"
#include "support/Rows.h"

#include <QtTest>

using namespace Nodes;

class TestDriverTiming : public QObject
{
    Q_OBJECT

private slots:
    void schedule_data()
    {
        const Rows<qint64, qint64> row("served", "next");
        row("in time", 1000000, 1500000);
        row("late: the grid stays", 1499999, 1500000);
        row("at the next slot", 1500000, 2000000);
        row("slots missed", 9700000, 10000000);
        row("early: still due", 999999, 1000000);
    }

    void schedule()
    {
        QFETCH(qint64, served);
        QFETCH(qint64, next);
        PollSchedule schedule(500000, 1000000);
        schedule.Advance(served);
        QCOMPARE(qint64(schedule.GetNext()), next);
        QVERIFY(schedule.IsDue(next) && !schedule.IsDue(next - 1));
    }

    void backoff()
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
};

QTEST_APPLESS_MAIN(TestDriverTiming)
#include "tst_driver_timing.moc"
