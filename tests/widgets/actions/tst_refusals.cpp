#include "support/RuntimeProject.h"
#include "support/VisibleBoxes.h"

#include "widgets/actions/running/ActionQueue.h"
#include "widgets/context/SceneContext.h"
#include "widgets/dialogs/AuthenticationWindow.h"
#include "widgets/elements/input/ValueWriter.h"
#include "widgets/menus/MirelMenu.h"

#include "nodes/timers/operationTimer.h"

#include <thread>

using namespace Widgets;

namespace {

constexpr int many = 300; // more than may be in flight
constexpr const char *denied = "Ошибка: Недостаточно прав для выполнения действия";

constexpr const char *plant = R"xml(
<station id="20" name="St"><authentication id="22" name="U" guestRole="23"/></station>
<role id="23" name="Guest"><grant id="24" privileges="all"/>
  <grant id="25" privileges="write open" scope="31 ..." mode="deny"/></role>
<user id="26" name="op"/>
<memorySignal id="30" name="Limited" type="int" writable="true" minimum="0" maximum="10"/>
<memorySignal id="32" name="A" type="int" writable="true"/>
<memorySignal id="33" name="B" type="int" writable="true"/>
<memorySignal id="34" name="C" type="int" writable="true"/>
<actionWriteValue id="40" name="out of range" signal="30" value="11"/>
<actionWriteValue id="42" name="a" signal="32" value="1"/>
<actionWriteValue id="43" name="b" signal="33" value="1"/>
<actionWriteValue id="44" name="c" signal="34" value="1"/>
<actionWriteValue id="45" name="gone" signal="999" value="1"/>
<actionAuthUser id="50" name="log in"/>
<menu id="51" name="M"><menuItem id="52" name="I" actions="42"/></menu>
<actionShowMenu id="53" name="menu" menus="51"/>
<actionArchiverDBMgr id="54" name="files"/>
<window id="10" name="W" width="50" height="50" onOpen="40" onClose="44"/>
<actionShowWindow id="55" name="show" window="10"/>
<operationTimer id="60" name="refused" autostart="false" actions="40 45"/>
<operationTimer id="61" name="works" autostart="false" actions="42 43"/>
<operationTimer id="62" name="modal" autostart="false" actions="50 53 54"/>
<operationTimer id="63" name="opens" autostart="false" actions="55"/>)xml";

/// The plant with a journal.
class Plant : public RuntimeProject
{
public:
    Plant() : RuntimeProject(QString(plant).replace("31 ...", "34").toUtf8().constData())
    {
        QVERIFY(core.GetJournal().Open(data.filePath("j.sqlite").toStdString()));
    }
    void fire(unsigned long timer) const
    {
        emit manager->timerFinished(node<Nodes::operationTimer>(timer));
    }
    /// Every action pushed until now has run.
    bool isDone() const { return !manager->hasActionBelow(*core.GetNodesCollection()->GetRoot()); }
};

ActionTrigger ofTimer()
{
    ActionTrigger trigger;
    trigger.origin = trigger.root = ActionOrigin::Timer;
    return trigger;
}

} // namespace

class TestRefusals : public QObject
{
    Q_OBJECT

private slots:
    void whatNobodyAskedForIsOnlyJournalled();
    void refusalsOfGesturesShareOneNotice();
    void refusalsOfElementsDoNotStack();
    void modalActionsStopNoOthers();
    void aTimerDoesNotQueueBehindItself();
    void noticesLieAboveWhatIsOnTop();
    void gesturesOvertakeAFlood();
    void theEndDropsWhatIsStale();
    void everyThreadKeepsItsOrder();
};

void TestRefusals::whatNobodyAskedForIsOnlyJournalled()
{
    Plant plant;
    const Nodes::NodeLinks refused{Nodes::NodeLink(40), Nodes::NodeLink(45)};
    for (int i = 1; i < many; ++i)
        (void)plant.manager->PushActions(refused, ofTimer());
    plant.fire(60);
    plant.fire(63); // the list of a window that a timer opens
    plant.run(42);  // the operator's action runs as ever
    QCOMPARE(plant.value(32), Nodes::SignalValue(1));
    QCOMPARE(visibleBoxes(), QStringList());
    QCOMPARE(plant.journalled("Limited: Запись отклонена"), many + 1);
    QCOMPARE(plant.journalled("gone: Действие не выполнено"), 1);
}

void TestRefusals::refusalsOfGesturesShareOneNotice()
{
    Plant plant;
    for (int i = 0; i < many; ++i)
        plant.push(44);
    plant.push(45);
    plant.run(42); // nobody has answered
    QCOMPARE(plant.value(32), Nodes::SignalValue(1));
    const QString both = QString("%1 (повторилось 300 раз)\n\ngone: Не найдено").arg(denied);
    QCOMPARE(visibleBoxes().size(), 1);
    QVERIFY2(visibleBoxes().first().startsWith(both), qPrintable(visibleBoxes().first()));
    plant.manager.reset();
    QCOMPARE(visibleBoxes(), QStringList());
}

// A window above all others, as that of alarms is, must not bury what the operator is told.
void TestRefusals::noticesLieAboveWhatIsOnTop()
{
    Plant plant;
    QDialog before;
    before.setWindowFlag(Qt::WindowStaysOnTopHint);
    const auto notice = [] {
        const QWidgetList windows = QApplication::topLevelWidgets();
        const auto found = std::find_if(windows.begin(), windows.end(), [](const QWidget *window) {
            return qobject_cast<const QMessageBox *>(window) && window->isVisible();
        });
        return found == windows.end() ? nullptr : *found;
    };
    plant.run(44);
    QVERIFY(notice() && notice()->parentWidget() != &before);
    before.show();
    plant.run(44);
    QVERIFY(notice() && notice()->parentWidget() == &before);
    notice()->close();
    plant.run(44);
    QVERIFY(notice() && notice()->parentWidget() == &before);
    QVERIFY(visibleBoxes().size() == 1);
}

void TestRefusals::refusalsOfElementsDoNotStack()
{
    const Plant plant;
    const auto report = [] {
        ValueWriter::report(*SceneContext::process(), Nodes::Result(Nodes::Result::AccessDenied));
    };
    QStringList told;
    QTimer::singleShot(0, this, [&] {
        report(); // returns at once
        told = visibleBoxes();
        QApplication::activeModalWidget()->close();
    });
    report();
    QCOMPARE(told, QStringList("!Внимание: Недостаточно прав (повторилось 2 раза)"));
    QCOMPARE(visibleBoxes(), QStringList());
}

void TestRefusals::modalActionsStopNoOthers()
{
    Plant plant;
    for (int i = 0; i < many; ++i)
        (void)plant.manager->PushActions(
            {Nodes::NodeLink(50), Nodes::NodeLink(53), Nodes::NodeLink(54)}, ofTimer());
    (void)plant.manager->PushActions({Nodes::NodeLink(43)}, ofTimer());
    plant.push(42);
    QStringList shown;
    QTimer closer;
    connect(&closer, &QTimer::timeout, this, [&] {
        if (plant.value(32).IsEmpty() || plant.value(33).IsEmpty())
            return;
        for (const QWidget *widget : QApplication::topLevelWidgets()) {
            if (widget->isVisible())
                shown << widget->metaObject()->className();
        }
        closer.stop();
        plant.manager->finishActions(1000);
    });
    closer.start(5);
    QTRY_VERIFY(plant.isDone());
    QCOMPARE(shown.count("AuthenticationWindow"), 1);
    QCOMPARE(shown.count("Widgets::MirelMenu"), 1);
    QCOMPARE(shown.count("Widgets::ArchiverDBMgrDialog"), 1);
}

void TestRefusals::aTimerDoesNotQueueBehindItself()
{
    Plant plant;
    plant.record({32, 33});
    for (int i = 0; i < many; ++i)
        plant.fire(61);
    QCOMPARE(plant.ran(), QString("A B"));
    QCOMPARE(plant.journalled("works: Таймер пропускает срабатывания"), 1);
    plant.fire(61);
    QCOMPARE(plant.ran(), QString("A B"));
}

void TestRefusals::gesturesOvertakeAFlood()
{
    Plant plant;
    plant.record({32, 33, 34});
    const Nodes::NodeLinks flood(ActionQueue::MaximumQueued, Nodes::NodeLink(42));
    QVERIFY(plant.manager->PushActions(flood, ofTimer()));
    QVERIFY(plant.manager->PushActions({Nodes::NodeLink(42)}, ofTimer()) ==
            Nodes::Result::LimitExceeded);
    QVERIFY(plant.manager->PushActions(
        {Nodes::NodeLink(43), Nodes::NodeLink(42), Nodes::NodeLink(43)}));
    QTRY_COMPARE(plant.recorded.count("B"), 2);
    QVERIFY2(plant.recorded.lastIndexOf("B") < 3 * ActionQueue::MaximumInFlight,
             qPrintable(QString::number(plant.recorded.size())));
    QCOMPARE(plant.recorded.lastIndexOf("B") - plant.recorded.indexOf("B"), 2);
}

void TestRefusals::theEndDropsWhatIsStale()
{
    Plant plant;
    plant.set(25, "privileges", "open"); // C may be written
    plant.run(55);
    QCOMPARE(plant.openWindows(10), 1);
    plant.record({32, 33, 34});
    (void)plant.manager->PushActions(Nodes::NodeLinks(5000, Nodes::NodeLink(42)), ofTimer());
    plant.push(43);
    plant.manager->finishActions(5000);
    QCOMPARE(plant.ran(), QString("B C"));
    QCOMPARE(plant.journalled("не выполнены ожидавшие действия, 5000"), 1);
    QCOMPARE(plant.journalled("раньше, чем выполнены все"), 0);
    plant.fire(61);
    QCOMPARE(plant.ran(), QString());
}

void TestRefusals::everyThreadKeepsItsOrder()
{
    Plant plant;
    plant.record({32, 33});
    std::thread([&plant] {
        for (int i = 0; i < 2; ++i) {
            (void)plant.manager->PushActions({Nodes::NodeLink(42)});
            (void)plant.manager->PushAction(plant.node<Nodes::BasicAction>(43));
        }
    }).join();
    QTRY_COMPARE(plant.recorded.size(), 4);
    QCOMPARE(plant.ran(), QString("A B A B"));
}

QTEST_MAIN(TestRefusals)
#include "tst_refusals.moc"
