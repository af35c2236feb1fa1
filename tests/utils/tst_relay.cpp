#include "nodes/ProjectFixture.h"

#include "utils/relay/NodeRelay.h"
#include "utils/relay/QueueRelay.h"
#include "utils/relay/RelayDispatcher.h"

#include "nodes/model/properties/BasicProperty.h"
#include "nodes/signals/BasicSignal.h"
#include "nodes/values/ValueCell.h"
#include "nodes/visual/BasicWidget.h"

#include <QEventLoop>
#include <QThread>
#include <QtTest>

#include <atomic>
#include <thread>

using Utils::NodeRelay;

namespace {

/// A started label with its signal.
struct Bound : ProjectFixture
{
    Bound()
    {
        if (!node->Start())
            throw std::logic_error("label");
    }
    /// Publishes `count` values on another thread and waits for it.
    void publish(int count)
    {
        std::thread([&] {
            for (int i = 1; i <= count; ++i)
                signal->GetCell()->Publish(i);
        }).join();
    }
    /// Connects the relay with what is to follow the node's value.
    void follow(NodeRelay &relay, std::function<void()> valueChanged) const
    {
        NodeRelay::Handlers handlers;
        handlers.valueChanged = std::move(valueChanged);
        relay.connect(node, handlers);
    }

    Nodes::BasicSignal *signal = add<Nodes::BasicSignal>("memorySignal", add("folder", root()));
    Nodes::BasicWidget *node = add<Nodes::BasicWidget>("label", add("window", root()), nullptr,
                                                       {{"signal", idOf(signal)}});
};

} // namespace

class RelayTest : public QObject
{
    Q_OBJECT

private slots:
    void valuesCollapseToTheLast()
    {
        Bound bound;
        QVector<int> shown;
        QVector<QThread *> threads;
        NodeRelay relay;
        bound.follow(relay, [&] {
            shown << bound.node->GetValue().ToInt();
            threads << QThread::currentThread();
        });
        auto &dispatcher = Utils::RelayDispatcher::instance();
        QTRY_COMPARE(dispatcher.waiting(), 0);
        bound.publish(1000);
        QCOMPARE(dispatcher.waiting(), 1);
        QTRY_COMPARE(shown, QVector<int>{1000});
        QCOMPARE(dispatcher.waiting(), 0);
        bound.publish(7);
        QTRY_COMPARE(shown, (QVector<int>{1000, 7}));
        QCOMPARE(threads, QVector<QThread *>(2, thread()));
    }

    void propertiesCrossThreads()
    {
        Bound bound;
        QVector<unsigned> ids;
        NodeRelay relay;
        NodeRelay::Handlers handlers;
        handlers.propertyChanged = [&ids](Nodes::BasicProperty *property) {
            ids << (property ? property->GetValueId() : 0);
        };
        relay.connect(bound.node, handlers);
        bound.node->SetPosition(5, 0);                            // only x changes
        QCOMPARE(ids, QVector<unsigned>{Nodes::GeometryProp::X}); // at once on this thread
        std::thread([&] {
            bound.node->NotifyPropertyChanged(
                bound.node->GetPropertyByValueId(Nodes::BasicWidget::Prop::Visible));
            bound.node->NotifyPropertyChanged(nullptr);
        }).join();
        QCOMPARE(ids.size(), 1);
        QTRY_COMPARE(ids,
                     (QVector<unsigned>{Nodes::GeometryProp::X, 0})); // re-read everything, once
    }

    void childrenAndActivity()
    {
        Bound bound;
        QStringList heard;
        NodeRelay relay;
        NodeRelay::Handlers handlers;
        handlers.childAdded = [&](Nodes::NodeLink) { heard << QStringLiteral("added"); };
        handlers.childRemoved = [&](Nodes::NodeLink) { heard << QStringLiteral("removed"); };
        handlers.activityChanged = [&](bool on) { heard << (on ? "active" : "idle"); };
        Nodes::ConfigNode *window = bound.node->GetParent();
        relay.connect(window, handlers);
        const auto *added = bound.add("label", window);
        QVERIFY(window->DeleteNode(added->GetId()));
        std::thread([window] { window->SetState(Nodes::NodeState::Running); }).join();
        QTRY_COMPARE(heard, (QStringList{"added", "removed", "active"}));
    }

    void nothingAfterDestruction()
    {
        Bound bound;
        std::atomic<bool> isDone{false};
        std::thread publisher([&] {
            while (!isDone)
                bound.signal->GetCell()->Publish(1);
        });
        auto alive = std::make_shared<int>(0);
        for (int i = 0; i < 60; ++i) {
            bool isThere = true;
            {
                NodeRelay relay;
                bound.follow(relay, [&isThere, alive] {
                    if (!isThere)
                        qFatal("called after destruction");
                    ++*alive;
                });
                const int before = *alive;
                if (i % 3 == 0)
                    QTRY_VERIFY(*alive > before);
            }
            isThere = false;
            QCoreApplication::processEvents();
        }
        isDone = true;
        publisher.join();
        QTRY_COMPARE(alive.use_count(), 1L); // no connection keeps a handler
    }

    void nothingForADeletedNode()
    {
        Bound bound;
        int calls = 0;
        NodeRelay relay;
        bound.follow(relay, [&calls] { ++calls; });
        bound.publish(1);
        QVERIFY(bound.node->GetParent()->DeleteNode(bound.node->GetId()));
        QTest::qWait(20);
        QCOMPARE(calls, 0);
    }

    void destroyedInItsOwnHandler()
    {
        Bound bound;
        auto relay = std::make_unique<NodeRelay>();
        const std::string kept =
            "long enough to live on the heap, beyond the handler's own storage";
        std::string seen;
        bound.follow(*relay, [&relay, kept, &seen] {
            relay.reset();
            seen = kept;
        });
        bound.publish(1);
        QTRY_VERIFY(!seen.empty());
        QCOMPARE(seen, kept);
    }

    void othersGoOnDuringADialog()
    {
        Bound first;
        Bound second;
        QEventLoop dialog;
        int calls = 0;
        NodeRelay blocked;
        first.follow(blocked, [&dialog] { dialog.exec(); });
        NodeRelay relay;
        second.follow(relay, [&] {
            if (++calls == 2)
                dialog.quit();
            else
                second.publish(1);
        });
        Nodes::NodesCollection::SetCurrent(&first.project);
        first.publish(1);
        second.publish(1);
        QTRY_COMPARE(calls, 2);
    }

    void queueKeepsEverything()
    {
        int count = 0;
        bool isOrdered = true;
        QVector<int> last(2, 0);
        using Item = std::pair<int, int>;
        Utils::QueueRelay<Item> relay([&](const std::vector<Item> &items) {
            for (const auto &[publisher, number] : items) {
                isOrdered = isOrdered && number == last[publisher] + 1;
                last[publisher] = number;
                ++count;
            }
        });
        const auto push = [inlet = relay.inlet()](int publisher) {
            for (int i = 1; i <= 20000; ++i)
                inlet({publisher, i});
        };
        std::thread one(push, 0);
        std::thread two(push, 1);
        QTRY_COMPARE(count, 40000);
        one.join();
        two.join();
        QVERIFY(isOrdered);
        QCOMPARE(relay.takeLost(), std::size_t(0));
    }

    void queueIsBounded()
    {
        std::vector<int> taken;
        auto relay = std::make_unique<Utils::QueueRelay<int>>(
            [&taken](std::vector<int> items) { taken = std::move(items); }, 3);
        const auto inlet = relay->inlet();
        for (int i = 0; i < 5; ++i)
            inlet(i);
        QTRY_COMPARE(taken, (std::vector<int>{0, 1, 2}));
        QCOMPARE(relay->takeLost(), std::size_t(2));
        inlet(9);
        relay.reset();
        inlet(10);
        QTest::qWait(20);
        QCOMPARE(taken.size(), std::size_t(3));
    }
};

QTEST_MAIN(RelayTest)
#include "tst_relay.moc"
