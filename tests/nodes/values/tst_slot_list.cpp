#include "nodes/values/SlotList.h"

#include <QtTest>

#include <atomic>
#include <thread>

using namespace Nodes;

namespace {

/// Slots that note their name.
struct Log
{
    Connection add(const QString &name)
    {
        return list.Connect([this, name](int value) { calls += name + QString::number(value); });
    }
    QString after(int value)
    {
        calls.clear();
        list(value);
        return calls.join(' ');
    }
    SlotList<int> list;
    QStringList calls;
};

} // namespace

class tst_slot_list : public QObject
{
    Q_OBJECT

private slots:
    void callsInTheOrderOfConnecting()
    {
        Log log;
        QCOMPARE(log.after(1), QString());
        QVector<Connection> connections;
        for (const char *name : {"a", "b", "c", "d", "e"})
            connections << log.add(name);
        QCOMPARE(log.after(2), QString("a2 b2 c2 d2 e2"));
        connections[1].Disconnect();
        QCOMPARE(log.after(3), QString("a3 c3 d3 e3"));
        connections[1].Disconnect(); // again: nothing else may end
        Connection copy = connections[3];
        copy.Disconnect();
        QVERIFY(!connections[3].IsConnected());
        QVERIFY(connections[4].IsConnected());
        QCOMPARE(log.after(4), QString("a4 c4 e4"));
        connections << log.add("f");
        QCOMPARE(log.after(5), QString("a5 c5 e5 f5"));
        for (Connection &connection : connections)
            connection.Disconnect();
        QCOMPARE(log.after(6), QString());
        log.add("g");
        QCOMPARE(log.after(7), QString("g7"));
    }

    void changesWhileItCalls()
    {
        Log log;
        Connection own;
        Connection next;
        Connection added;
        own = log.list.Connect([&](int) {
            log.calls += "own";
            own.Disconnect();
            next.Disconnect();
            if (!added.IsConnected())
                added = log.add("added");
        });
        next = log.add("next");
        const Connection last = log.add("last");
        QCOMPARE(log.after(1), QString("own last1"));
        QCOMPARE(log.after(2), QString("last2 added2"));
    }

    void endsWithItsOwnerOrItsList()
    {
        auto held = std::make_shared<int>(0);
        const std::weak_ptr<int> watched = held;
        auto list = std::make_unique<SlotList<int>>();
        ScopedConnection kept;
        {
            const ScopedConnection scoped = list->Connect([held](int value) { *held = value; });
            kept = list->Connect([held](int value) { *held = value; });
            kept = list->Connect([](int) {});
        }
        (*list)(5);
        QCOMPARE(*held, 0);
        held.reset();
        QVERIFY(watched.expired());
        QVERIFY(kept.IsConnected());
        list.reset();
        QVERIFY(!kept.IsConnected());
        kept.Disconnect();
    }

    void slotsOwnWhatTheyLike_data()
    {
        QTest::addColumn<int>("others");
        QTest::newRow("goes with its connection") << 0;
        QTest::newRow("goes with those of others") << 4;
    }
    void slotsOwnWhatTheyLike()
    {
        struct Owner
        {
            Connection connection;
        };
        SlotList<int> list;
        auto owner = std::make_shared<Owner>();
        Owner *raw = owner.get();
        const std::weak_ptr<Owner> watched = owner;
        // With its own handle, and with that of another slot of the same list.
        owner->connection =
            list.Connect([owner, other = std::make_shared<ScopedConnection>(
                                     list.Connect([](int) { QFAIL("not ended"); }))](int) {});
        owner.reset();
        QFETCH(int, others);
        QVector<Connection> more;
        for (int i = 0; i < others; ++i)
            more << list.Connect([](int) {});
        QVERIFY(!watched.expired());
        raw->connection.Disconnect();
        for (Connection &connection : more)
            connection.Disconnect();
        QVERIFY(watched.expired());
        list(1);
    }

    // Whoever else comes and goes meanwhile, a slot that stays is called every time.
    void losesNoneAmongThreads()
    {
        constexpr int rounds = 50000;
        constexpr int every = 1000;
        constexpr int threads = 3;
        SlotList<int> list;
        std::atomic<int> heard{0};
        std::atomic<int> heardLast{0};
        const ScopedConnection staying = list.Connect([&](int) { ++heard; });
        std::vector<std::thread> visitors;
        for (int t = 0; t < threads; ++t)
            visitors.emplace_back([&] {
                for (int i = 0; i < rounds; ++i) {
                    const ScopedConnection first = list.Connect([](int) {});
                    const ScopedConnection second = list.Connect([](int) {});
                    if (i % every == 0)
                        list.Connect([&](int value) { heardLast += value < 0; });
                }
            });
        for (int i = 0; i < rounds; ++i)
            list(i);
        for (std::thread &visitor : visitors)
            visitor.join();
        list(-1);
        QCOMPARE(heard.load(), rounds + 1);
        QCOMPARE(heardLast.load(), threads * rounds / every);
    }
};

QTEST_APPLESS_MAIN(tst_slot_list)

#include "tst_slot_list.moc"
