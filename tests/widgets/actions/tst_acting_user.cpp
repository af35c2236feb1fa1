#include "support/Rows.h"
#include "support/RuntimeProject.h"
#include "support/VisibleBoxes.h"
#include "support/WhenShown.h"

#include "widgets/actions/ActionManager.h"
#include "widgets/actions/qBasicAction.h"
#include "widgets/dialogs/AuthenticationWindow.h"
#include "widgets/windows/WindowBasic.h"

#include "nodes/auth/systemAuthentication.h"

#include <QPushButton>

using namespace Widgets;

namespace {

constexpr const char *plant = R"xml(
<station id="20" name="St"><authentication id="21" name="Users" guestRole="22" accessDenied="disable">
  <role id="22" name="Guest"><grant id="23" privileges="view"/></role>
  <role id="24" name="Operator"><grant id="25" privileges="all"/></role>
  <user id="26" name="anna" roles="24" passwordless="true"/></authentication></station>
<memorySignal id="30" name="S" type="int" writable="true"/>
<operationTimer id="32" name="T" autostart="false"/>
<window id="10" name="W" width="50" height="50"><button id="11" name="K" width="50" height="50"
  pressActions="40" releaseActions="46"/></window>
<window id="12" name="L" width="50" height="50"><button id="13" name="K" width="50" height="50"
  pressActions="48 40" releaseActions="46"/></window>
<actionWriteValue id="40" name="write" signal="30" value="1"/>
<actionWriteValue id="46" name="release" signal="30" value="3"/>
<actionExecuteScript id="41" name="script" script="write(1, 2)" signals="30"/>
<actionNodeCommand id="42" name="command" command="start" target="32"/>
<actionShowWindow id="43" name="open" window="10"/>
<actionCreateEvent id="49" name="else" text="другое"/>
<actionCloseWindow id="44" name="close" window="10" display="1"/>
<actionAuthUser id="45" name="log in" user="26"/>
<actionAuthUser id="48" name="ask"/>
<actionAuthUser id="47" name="log out" logout="true"/>)xml";

/// The plant with a journal, and anna logged in or nobody.
class Plant : public RuntimeProject
{
public:
    explicit Plant(bool isLoggedIn) : RuntimeProject(plant)
    {
        QVERIFY(core.GetJournal().Open(data.filePath("j.sqlite").toStdString()));
        log(isLoggedIn);
    }
    void log(bool isIn)
    {
        auto *users = node<Nodes::systemAuthentication>(21);
        if (isIn)
            QVERIFY(users->Authenticate(node(26)));
        else
            users->Logout();
    }
    QString state() const
    {
        const bool isRunning = node(32)->GetState() == Nodes::NodeState::Running;
        return QString::fromStdString(value(30).ToString()) + (isRunning ? " running" : "") +
               (openWindows(10) ? " open" : "");
    }
    /// Users in whose name there are entries of that text.
    QSet<QString> usersOf(const char *text) const
    {
        std::vector<Nodes::BasicEvent> events;
        (void)core.GetJournal().Flush();
        (void)core.GetJournal().Query({}, events);
        QSet<QString> users;
        for (const Nodes::BasicEvent &event : events) {
            if (event.text.find(text) != std::string::npos)
                users << QString::fromStdString(event.user);
        }
        return users;
    }
};

} // namespace

class TestActingUser : public QObject
{
    Q_OBJECT

private slots:
    void rightsAreThoseOfTheTrigger_data()
    {
        const Rows<unsigned, QString, QString> row("action", "done", "entry");
        row("write", 40u, "1", "Запись");
        row("script", 41u, "2", "Запись");
        row("command", 42u, " running", "Команда «Пуск»");
        row("open", 43u, " open", "открытие окна");
    }
    void rightsAreThoseOfTheTrigger()
    {
        QFETCH(unsigned, action);
        QFETCH(QString, done);
        QFETCH(QString, entry);
        for (const bool isLoggedIn : {true, false}) {
            Plant plant(isLoggedIn);
            plant.push(action);
            plant.log(!isLoggedIn); // before it runs
            QTRY_VERIFY(!plant.usersOf(entry.toUtf8().constData()).isEmpty());
            QCOMPARE(plant.usersOf(entry.toUtf8().constData()),
                     QSet<QString>{isLoggedIn ? "anna" : ""});
            QCOMPARE(plant.state(), isLoggedIn ? done : QString());
            QTRY_COMPARE(visibleBoxes().size(), isLoggedIn ? 0 : 1);
        }
    }
    void closingIsOfTheTriggerToo()
    {
        Plant plant(true);
        plant.run(43);
        plant.log(false);
        plant.push(44);
        plant.log(true);
        plant.ran();
        QCOMPARE(plant.openWindows(10), 1);
        plant.push(44);
        plant.log(false);
        plant.ran();
        QCOMPARE(plant.openWindows(10), 0);
    }
    void aLogInCountsForWhatFollowsInItsList()
    {
        Plant plant(false);
        (void)plant.manager->PushActions({Nodes::NodeLink(45), Nodes::NodeLink(40)});
        plant.ran();
        QCOMPARE(plant.usersOf("Запись"), QSet<QString>{"anna"});
        QCOMPARE(plant.value(30), Nodes::SignalValue(1));
    }
    void whatFollowsALogInWaitsForTheAnswer_data()
    {
        const Rows<QString, QString, int> row("button", "user", "value");
        row("logged in", "btnOk", "anna", 1);
        row("cancelled", "btnCancel", "", 0);
    }
    void whatFollowsALogInWaitsForTheAnswer()
    {
        QFETCH(QString, button);
        QFETCH(QString, user);
        Plant plant(false);
        QVERIFY(plant.node(30)->Start());
        const WhenShown<AuthenticationWindow> operatorAsked([&](AuthenticationWindow &window) {
            (void)plant.manager->PushAction(
                plant.node<Nodes::BasicAction>(49)); // holds up nobody else
            QTRY_COMPARE(plant.usersOf("другое"), QSet<QString>{""});
            QCOMPARE(plant.usersOf("Запись"), QSet<QString>());
            QTest::mouseClick(window.findChild<QPushButton *>(button), Qt::LeftButton);
        });
        (void)plant.manager->PushActions({Nodes::NodeLink(48), Nodes::NodeLink(40)});
        plant.ran();
        QCOMPARE(plant.usersOf("Запись"), QSet<QString>{user});
        QTEST(plant.value(30).ToInt(), "value");
    }
    // What a press list that ends with it has started, the release list still has to stop.
    void aLogOutTakesNothingFromItsList()
    {
        Plant plant(true);
        (void)plant.manager->PushActions({Nodes::NodeLink(47), Nodes::NodeLink(40)});
        plant.ran();
        QCOMPARE(plant.usersOf("Запись"), QSet<QString>{"anna"});
        QCOMPARE(plant.value(30), Nodes::SignalValue(1));
        plant.run(46);
        QCOMPARE(plant.value(30), Nodes::SignalValue(1));
    }
    void gesturesOnOneNodeNeverMix()
    {
        Plant plant(true);
        QVector<qBasicAction *> made;
        for (const int display : {1, 2}) {
            ActionTrigger trigger =
                ActionManager::getInstance().triggerAt(nullptr, QPoint(display, 0));
            trigger.display = display;
            made += plant.manager->makeActions({Nodes::NodeLink(40)}, trigger);
            plant.log(false);
        }
        plant.node<Nodes::BasicAction>(40)->setCurrentDisplay(3);
        QStringList seen;
        for (const qBasicAction *action : qAsConst(made)) {
            const ActionTrigger &trigger = action->trigger();
            seen << QString("%1 %2 %3 %4")
                        .arg(action->getNode()->currentDisplay())
                        .arg(*trigger.display)
                        .arg(trigger.point->x())
                        .arg(QString::fromStdString(trigger.user->name));
        }
        QCOMPARE(seen.join(", "), QString("1 1 1 anna, 2 2 2 "));
        plant.manager->queue(made);
        QTRY_COMPARE(plant.usersOf("Запись"), (QSet<QString>{"anna", ""}));
    }
    // The modal window ends the press before anybody has logged in.
    void aReleaseIsTheLastOfItsPress()
    {
        Plant plant(true);
        QVERIFY(plant.node(30)->Start());
        const WhenShown<AuthenticationWindow> operatorAsked([&](AuthenticationWindow &window) {
            QTRY_COMPARE(plant.usersOf("Запись").size(), 1);
            QTest::mouseClick(window.findChild<QPushButton *>("btnOk"), Qt::LeftButton);
        });
        QWidget *window = plant.manager->createWindow(plant.node(12), nullptr).widget;
        window->show();
        QVERIFY(QTest::qWaitForWindowActive(window));
        auto *view = qobject_cast<WindowBasic *>(window)->viewport();
        QTest::mousePress(view, Qt::LeftButton, {}, {20, 20});
        QTest::mouseRelease(view, Qt::LeftButton, {}, {20, 20});
        plant.ran();
        QTRY_VERIFY(!plant.usersOf("кнопка отпущена раньше входа").isEmpty());
        QVERIFY(plant.value(30) == Nodes::SignalValue(3));
    }
    void aHeldButtonIsReleasedByWhoPressed_data()
    {
        const Rows<QString> row("end");
        row("logged out, let go", "release");
        row("logged out, kept on", "hold");
        row("logged out, window gone", "destroy");
    }
    void aHeldButtonIsReleasedByWhoPressed()
    {
        QFETCH(QString, end);
        Plant plant(true);
        const QPointer<WindowBasic> window = qobject_cast<WindowBasic *>(
            plant.manager->createWindow(plant.node(10), nullptr).widget);
        window->show();
        QVERIFY(QTest::qWaitForWindowActive(window));
        QTest::mousePress(window->viewport(), Qt::LeftButton, {}, {20, 20});
        QTRY_COMPARE(plant.value(30), Nodes::SignalValue(1));
        plant.node<Nodes::systemAuthentication>(21)->Logout("idle");
        if (end == "release")
            QTest::mouseRelease(window->viewport(), Qt::LeftButton, {}, {20, 20});
        else if (end == "destroy")
            delete window;
        QTRY_COMPARE(plant.value(30), Nodes::SignalValue(3));
        QCOMPARE(plant.usersOf("Запись"), QSet<QString>{"anna"});
    }
};

QTEST_MAIN(TestActingUser)
#include "tst_acting_user.moc"
