// The parts of the window manager, each without the rest.
#include "support/FakeScreens.h"
#include "support/Rows.h"
#include "support/RuntimeProject.h"

#include "widgets/actions/qBasicAction.h"
#include "widgets/actions/running/ActionDispatcher.h"
#include "widgets/actions/running/ActionKinds.h"
#include "widgets/actions/running/LastingWork.h"
#include "widgets/actions/running/WindowManagerWorkerThread.h"
#include "widgets/windows/OpenWindows.h"

#include <QCloseEvent>

using namespace Widgets;

namespace {

constexpr const char *actions = R"(
<actionCreateEvent id="30" name="a"/><actionCreateEvent id="31" name="b"/>
<actionPlaySound id="32" name="unknown"/>)";

/// Runs any event action by noting its name.
struct Names : ActionKinds
{
    struct Run : qBasicAction
    {
        Run(Nodes::BasicAction *node, QString &ran) : qBasicAction(node), m_ran(ran) {}
        void Execute() override { m_ran += QString::fromStdString(getNode()->GetName()); }
        QString &m_ran;
    };

    bool knows(const Nodes::NodeType &type) const override { return type.GetCode() == 0x10006; }
    qBasicAction *create(Nodes::BasicAction *copy) const override { return new Run(copy, ran); }

    mutable QString ran;
};

struct Work : LastingWork
{
    bool isIdle() const override { return isDone || isAbandoned; }
    void abandon() override { isAbandoned = !isIdle(); }
    bool isDone = false;
    bool isAbandoned = false;
};

/// Dispatcher of a project whose window manager is gone.
struct Dispatching
{
    Dispatching() : project(actions)
    {
        project.manager.reset();
        dispatcher = std::make_unique<ActionDispatcher>(kinds, &project.core, &owner);
        QObject::connect(&dispatcher->worker(), &WindowManagerWorkerThread::ActionExecuted,
                         dispatcher.get(),
                         [this](qBasicAction *action) { dispatcher->execute(*action); });
    }
    void start() const { dispatcher->worker().start(); }
    void push(unsigned long action, ActionOrigin origin) const
    {
        (void)dispatcher->push({Nodes::NodeLink(action)}, dispatcher->triggerNow(origin));
    }

    RuntimeProject project;
    QObject owner;
    Names kinds;
    std::unique_ptr<ActionDispatcher> dispatcher;
};

struct Stubborn : QWidget
{
    void closeEvent(QCloseEvent *event) override { event->setAccepted(mayClose); }
    bool mayClose = false;
};

} // namespace

class TestWindowParts : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { FakeScreens::install(2); }
    void findsWhatIsOpen_data();
    void findsWhatIsOpen();
    void keepsWhatRefusesToClose();
    void runsOperatorsActionsFirst();
    void endsWhenAllIsDone_data();
    void endsWhenAllIsDone();
};

void TestWindowParts::findsWhatIsOpen_data()
{
    const Rows<unsigned long, int, QString> row("id", "display", "found");
    row("everywhere", 10, -1, "1 2");
    row("on the first display", 10, 1, "1");
    row("on the second display", 10, 2, "2");
    row("instances of a template", 20, -1, "3");
    row("an instance by its own node", 21, 2, "3");
    row("without an active window", 10, 0, "");
    row("nothing", 11, -1, "");
}

void TestWindowParts::findsWhatIsOpen()
{
    QFETCH(unsigned long, id);
    QFETCH(int, display);
    OpenWindows windows;
    QWidget widgets[3];
    for (int i = 0; i < 3; ++i) {
        widgets[i].setGeometry(QRect(FakeScreens::topLeft(i > 0), QSize(50, 50)));
        widgets[i].setWindowTitle(QString::number(i + 1));
        windows.add({i < 2 ? 10UL : 21UL, &widgets[i]});
    }
    windows.setOrigin(widgets[2], 20);
    QStringList found;
    for (const WidgetLink &link : windows.of(id, display))
        found << link.widget->windowTitle();
    QTEST(found.join(' '), "found");
}

void TestWindowParts::keepsWhatRefusesToClose()
{
    OpenWindows windows;
    auto *window = new Stubborn;
    windows.add({10, window});
    window->show();
    windows.closeAll(10, -1);
    QCOMPARE(windows.find(10), window);
    window->mayClose = true;
    QVERIFY(windows.close(10, window) && !windows.close(10, window));
    windows.add({10, window});
    delete window;
    QVERIFY(windows.links().isEmpty());
}

void TestWindowParts::runsOperatorsActionsFirst()
{
    Dispatching test;
    test.push(30, ActionOrigin::Timer);
    test.push(32, ActionOrigin::Gesture);
    test.push(31, ActionOrigin::Gesture);
    QCOMPARE(test.dispatcher->queued(), 2);
    test.start();
    QTRY_COMPARE(test.kinds.ran, QString("ba"));
    QTRY_COMPARE(test.dispatcher->queued(), 0);
    QVERIFY(!test.dispatcher->hasActionBelow(*test.project.core.GetNodesCollection()->GetRoot()));
}

void TestWindowParts::endsWhenAllIsDone_data()
{
    const Rows<bool, bool, QString> row("isWorkDone", "isAbandoned", "ran");
    row("in time", true, false, "b");
    row("work that does not end", false, true, "b");
}

void TestWindowParts::endsWhenAllIsDone()
{
    QFETCH(bool, isWorkDone);
    Dispatching test;
    Work work;
    test.dispatcher->track(work);
    work.isDone = isWorkDone;
    test.start();
    test.push(30, ActionOrigin::Timer); // stale by then
    test.dispatcher->finish(100, [&] { test.push(31, ActionOrigin::OnClose); });
    QTEST(test.kinds.ran, "ran");
    QTEST(work.isAbandoned, "isAbandoned");
}

QTEST_MAIN(TestWindowParts)
#include "tst_window_parts.moc"
