#include "support/RuntimeProject.h"

#include "widgets/actions/qBasicAction.h"
#include "widgets/actions/running/ActionQueue.h"

#include <QMessageBox>
#include <QTemporaryDir>

#include <thread>

using namespace Widgets;

namespace {

constexpr int manyActions = 10000;

constexpr const char *screens = R"(
<memorySignal id="30" name="S" type="int" writable="true"/>
<actionWriteValue id="31" name="W" signal="30" value="1"/>
<window id="10" name="Restless" width="50" height="50" onOpen="33" onClose="33"/>
<actionShowWindow id="32" name="show" window="10"/>
<actionToggleWindow id="33" name="toggle" window="10"/>
<window id="35" name="Endless" width="50" height="50" onOpen="36 31"/>
<actionShowWindow id="36" name="another" window="35" open="always"/>
<label id="34" name="no action"/>)";

class Counted : public qBasicAction
{
public:
    Counted(int number, QVector<int> &order)
        : qBasicAction(nullptr), m_number(number), m_order(order)
    {
    }
    ~Counted() override { ++deleted; }
    void Execute() override { m_order.append(m_number); }
    static inline int deleted = 0;

private:
    int m_number;
    QVector<int> &m_order;
};

} // namespace

class TestActionQueue : public QObject
{
    Q_OBJECT

private slots:
    void handsOverInBoundedBatches();
    void executesOnlyWhatWasHandedOver_data();
    void executesOnlyWhatWasHandedOver();
    void thousandsLeaveTheGuiLive();
    void everyThreadMayPush();
    void deadLinksAreDropped();
    void actionsThatPushActionsLeaveTheGuiLive();
    void aListThatPushesItselfIsEnded();
    void aFullQueueRefuses();
    void pendingActionsGoWithTheManager();
    void aModalWindowStopsNoActions();
    void closingActionsRunBeforeTheEnd();
};

void TestActionQueue::handsOverInBoundedBatches()
{
    ActionQueue queue;
    QVector<int> order, expected;
    QVector<qBasicAction *> actions, inFlight;
    for (int i = 0; i < manyActions; ++i) {
        actions.append(new Counted(i, order));
        expected.append(i);
    }
    queue.append(actions);
    Counted::deleted = 0;
    while (!queue.isEmpty()) {
        inFlight.clear();
        for (int walk = 0; walk < 2; ++walk) // the second hands nothing over
            queue.walk([&inFlight](qBasicAction *action) { inFlight.append(action); });
        QVERIFY(inFlight.size() <= ActionQueue::MaximumInFlight);
        for (qBasicAction *action : qAsConst(inFlight)) {
            QCOMPARE(action->GetState(), ActionHandedOver);
            action->Execute();
            action->setState(ActionFinished);
        }
    }
    QCOMPARE(order, expected);
    QCOMPARE(Counted::deleted, manyActions);
}

void TestActionQueue::executesOnlyWhatWasHandedOver_data()
{
    QTest::addColumn<int>("state");
    QTest::newRow("created") << int(ActionCreated);
    QTest::newRow("handed over") << int(ActionHandedOver);
    QTest::newRow("executing") << int(ActionExecuting);
    QTest::newRow("finished") << int(ActionFinished);
}

void TestActionQueue::executesOnlyWhatWasHandedOver()
{
    QFETCH(int, state);
    const RuntimeProject project(screens);
    auto *configured = project.node<Nodes::BasicAction>(31);
    const std::unique_ptr<qBasicAction> action(project.manager->CreateQAction(configured));
    QVERIFY(action->getNode() != configured);
    action->setState(enActionState(state));
    project.manager->OnActionExecuted(action.get());
    const bool ran = state == ActionHandedOver;
    QCOMPARE(action->GetState(), ran ? ActionFinished : enActionState(state));
    QCOMPARE(project.value(30).IsEmpty(), !ran);
    QCOMPARE(action->getNode()->GetState() == Nodes::NodeState::Finished, ran);
    QVERIFY(configured->GetState() == Nodes::NodeState::Stopped);
}

void TestActionQueue::thousandsLeaveTheGuiLive()
{
    RuntimeProject project(screens);
    int turns = 0;
    QTimer heart;
    connect(&heart, &QTimer::timeout, this, [&turns] { ++turns; });
    heart.start(0);
    project.record({30});
    project.manager->PushActions(Nodes::NodeLinks(manyActions, Nodes::NodeLink(31)));
    QTRY_COMPARE_WITH_TIMEOUT(project.recorded.size(), manyActions, 60000);
    QVERIFY2(turns >= manyActions / ActionQueue::MaximumInFlight,
             qPrintable(QString::number(turns)));
}

void TestActionQueue::everyThreadMayPush()
{
    RuntimeProject project(screens);
    project.record({30});
    constexpr int threads = 4, each = 250;
    std::vector<std::thread> pushing;
    for (int i = 0; i < threads; ++i)
        pushing.emplace_back([&project, i] {
            for (int n = 0; n < each; ++n) {
                if (i % 2)
                    project.manager->PushAction(project.node<Nodes::BasicAction>(31));
                else
                    project.manager->PushActions({Nodes::NodeLink(31)});
            }
        });
    for (std::thread &thread : pushing)
        thread.join();
    QTRY_COMPARE_WITH_TIMEOUT(project.recorded.size(), threads * each, 30000);
}

void TestActionQueue::deadLinksAreDropped()
{
    RuntimeProject project(screens);
    project.record({30});
    std::vector<Nodes::NodeLink> actions{Nodes::NodeLink(), Nodes::NodeLink(999),
                                         Nodes::NodeLink(34), Nodes::NodeLink(31)};
    QVERIFY(project.manager->PushActions(&actions).IsSuccess());
    QVERIFY(project.manager->PushActions(nullptr).IsSuccess());
    QTRY_COMPARE(project.recorded.size(), 1);
    QCOMPARE(actions.size(), std::size_t(4));
}

void TestActionQueue::actionsThatPushActionsLeaveTheGuiLive()
{
    const RuntimeProject project(screens);
    project.push(32); // from here on the window hides and shows itself
    QTRY_COMPARE(project.openWindows(10), 1);
    QWidget *window = project.manager->GetWindow(10);
    int hidden = 0;
    int turns = 0;
    QTimer heart;
    connect(&heart, &QTimer::timeout, this, [&] {
        ++turns;
        hidden += window->isHidden();
    });
    heart.start(1);
    QTRY_VERIFY_WITH_TIMEOUT(turns > 100 && hidden > 5 && hidden < turns, 30000);
}

void TestActionQueue::aListThatPushesItselfIsEnded()
{
    RuntimeProject project(screens);
    project.record({30});
    project.push(36); // opens a window that opens another one, and so on
    QTRY_COMPARE_WITH_TIMEOUT(project.recorded.size(), WindowManager::MaximumChain, 60000);
    project.run(31);
    QCOMPARE(project.recorded.size(), WindowManager::MaximumChain + 1);
    QCOMPARE(project.openWindows(35), WindowManager::MaximumChain + 1);
    QTemporaryDir directory;
    QVERIFY(project.core.GetJournal().Open(directory.filePath("j.sqlite").toStdString()));
    QCOMPARE(project.journalled("бесконечно"), 1);
    QCOMPARE(project.journalled("another: "), 1);
    project.push(36); // the operator may begin again
    QTRY_VERIFY(project.openWindows(35) > WindowManager::MaximumChain + 1);
}

void TestActionQueue::aFullQueueRefuses()
{
    RuntimeProject project(screens);
    project.record({30});
    const Nodes::NodeLinks one{Nodes::NodeLink(31)};
    Nodes::NodeLinks many(ActionQueue::MaximumQueued + 1, Nodes::NodeLink(31));
    QVERIFY(project.manager->PushActions(many) == Nodes::Result::LimitExceeded);
    QCOMPARE(project.ran(), QString()); // nothing of the list
    many.pop_back();
    QVERIFY(project.manager->PushActions(many));
    QVERIFY(project.manager->PushAction(project.node<Nodes::BasicAction>(31)) ==
            Nodes::Result::LimitExceeded);
    ActionTrigger release;
    release.isRelease = true;
    QVERIFY(project.manager->PushActions(one, release));
    QTRY_VERIFY(!project.recorded.isEmpty());
}

void TestActionQueue::pendingActionsGoWithTheManager()
{
    RuntimeProject project(screens);
    project.record({30});
    project.manager->PushActions(Nodes::NodeLinks(1000, Nodes::NodeLink(31)));
    project.manager.reset();
    QCoreApplication::processEvents();
    QVERIFY(project.recorded.isEmpty());
    QVERIFY(project.core.RequestAction(project.node<Nodes::BasicAction>(31)) ==
            Nodes::Result::NotAvailable);
}

// A message of another action comes up while an action lets events run, and nobody answers it.
void TestActionQueue::aModalWindowStopsNoActions()
{
    RuntimeProject project(screens);
    int answers = 0;
    QTimer::singleShot(0, project.manager.get(), [&] {
        QMessageBox message;
        connect(project.manager.get(), &WindowManager::actionsFreed, &message, &QDialog::reject);
        QTimer::singleShot(10000, &message, &QDialog::accept);
        project.push(31);
        answers = message.exec() == QDialog::Rejected ? 1 : 2;
    });
    project.manager->letEventsRun();
    QCOMPARE(answers, 1);
    QCOMPARE(project.value(30), Nodes::SignalValue(1));
}

void TestActionQueue::closingActionsRunBeforeTheEnd()
{
    RuntimeProject project(R"xml(<memorySignal id="30" name="S" type="int" writable="true"/>
<actionArchiverDBMgr id="31" name="a dialog"/>
<actionWriteValue id="32" name="silent" signal="30" value="2"/>
<memorySignal id="34" name="of the script" type="int" writable="true"/>
<actionExecuteScript id="35" name="script" script="for i = 1, 100000 do end write(1, 3)" signals="34"/>
<window id="10" name="W" width="50" height="50" onClose="31 32 35"/>
<actionShowWindow id="33" name="show" window="10"/>)xml");
    project.push(33);
    QTRY_COMPARE(project.openWindows(10), 1);
    QVERIFY(project.value(30).IsEmpty());
    project.manager->finishActions(5000);
    QCOMPARE(project.value(30), Nodes::SignalValue(2));
    QCOMPARE(project.value(34), Nodes::SignalValue(3));
}

QTEST_MAIN(TestActionQueue)
#include "tst_action_queue.moc"
