#include "support/MessageBoxes.h"
#include "support/Rows.h"
#include "support/RuntimeProject.h"
#include "support/WhenShown.h"

#include "widgets/dialogs/AuthenticationDialog.h"
#include "widgets/dialogs/AuthenticationWindow.h"
#include "widgets/dialogs/VirtualNumpad.h"

#include "nodes/auth/systemAuthentication.h"
#include "utils/convert/MetaTypes.h"

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QToolButton>

using namespace Nodes;

namespace {

constexpr const char *plant = R"(
<visualization id="9" name="V"/><authentication id="10" name="Users" logoutAfter="1">
<user id="11" name="Оператор"/><user id="12" name="Гость" passwordless="true"/>
</authentication>
<actionAuthUser id="20" name="ask"/><actionAuthUser id="21" name="out" logout="true"/>
<actionAuthUser id="22" name="guest" user="12"/><actionAuthUser id="23" name="named" user="11"/>
<currentUser id="30" name="Who"/><currentUser id="31" name="Is" show="present"/>)";

struct Rig : RuntimeProject
{
    explicit Rig(const char *nodes = plant) : RuntimeProject(nodes)
    {
        static const std::string hash = systemAuthentication::HashPassword("12345");
        if (node(11))
            set(11, "passwordHash", QString::fromStdString(hash));
        dialog.setNode(node(20));
        dialog.show();
    }
    systemAuthentication *users() const { return core.GetSystemAuthentication(); }
    QString current() const { return QString::fromStdString(users()->GetCurrentUserName()); }
    template <class Widget> Widget *part(const char *name) const
    {
        return dialog.findChild<Widget *>(name);
    }
    QString outcome() const { return part<QLabel>("lblResult")->text(); }
    void logIn(const QString &password, bool isUserGone = false) const
    {
        auto *field = part<QLineEdit>("lineEdit");
        field->clear();
        QTest::keyClicks(field, password);
        if (isUserGone)
            QVERIFY(node(10)->DeleteNode(11, true, true));
        QTest::keyClick(field, Qt::Key_Return);
    }

    AuthenticationDialog dialog;
};

} // namespace

class AuthenticationDialogTest : public QObject
{
    Q_OBJECT

private slots:
    void withoutUsersNobodyLogsIn()
    {
        const Rig rig(R"(<actionAuthUser id="20" name="ask"/>)");
        QCOMPARE(rig.part<QComboBox>("comboBox")->count(), 0);
        QTest::keyClicks(rig.part<QLineEdit>("lineEdit"), "12345");
        QVERIFY(!rig.part<QPushButton>("btnOk")->isEnabled());
    }
    void tellsTheOutcome_data()
    {
        const Rows<QString, QStringList, QString, bool> row("user", "passwords", "message",
                                                            "isAccepted");
        row("right", "Оператор", {"12345"}, "", true);
        row("right at the second go", "Оператор", {"1", "12345"}, "", true);
        row("wrong", "Оператор", {"1"}, "Неверный пароль", false);
        row("nothing typed is no attempt", "Оператор", {"", "", "", "", "12345"}, "", true);
        row("needs none", "Гость", {""}, "", true);
        row("needs none, got one", "Гость", {"1"}, "Неверный пароль", false);
        row("too often", "Оператор", {"1", "2", "3", "12345"}, "Ошибка: много попыток, ждите 1 с",
            false);
        row("gone meanwhile", "", {"12345"}, "Пользователь не найден", false);
    }
    void tellsTheOutcome()
    {
        QFETCH(QString, user);
        QFETCH(QStringList, passwords);
        QFETCH(bool, isAccepted);
        Rig rig;
        auto *users = rig.part<QComboBox>("comboBox");
        QCOMPARE(users->count(), 2);
        users->setCurrentText(user);
        for (const QString &password : passwords)
            rig.logIn(password, user.isEmpty());
        QTEST(rig.outcome(), "message");
        QVERIFY(rig.dialog.isVisible()); // a success shows for half a second
        QCOMPARE(rig.current(), isAccepted ? user : QString());
        QCOMPARE(rig.part<QLineEdit>("lineEdit")->text(), passwords.last());
        if (isAccepted)
            QTRY_COMPARE_WITH_TIMEOUT(rig.dialog.result(), int(QDialog::Accepted), 2000);
        const QColor colour = rig.part<QLabel>("lblResult")->palette().color(QPalette::WindowText);
        QCOMPARE(colour.green() > colour.red(), isAccepted);
    }
    void outlivesNodeAndProject_data()
    {
        const Rows<bool, QString> row("isProject", "loggedIn");
        row("node", false, "Гость");
        row("project", true, "");
    }
    void outlivesNodeAndProject()
    {
        QFETCH(bool, isProject);
        auto project = std::make_unique<RuntimeProject>(plant);
        AuthenticationDialog dialog;
        dialog.setNode(project->node(20));
        dialog.show();
        dialog.findChild<QComboBox *>("comboBox")->setCurrentText("Гость");
        if (isProject)
            project.reset();
        else
            QVERIFY(project->node(1)->RemoveNode(20));
        QTest::keyClick(dialog.findChild<QLineEdit *>("lineEdit"), Qt::Key_Return);
        QTest::mouseClick(dialog.findChild<QPushButton *>("btnOk"), Qt::LeftButton);
        const auto *users = project ? project->core.GetSystemAuthentication() : nullptr;
        QTEST(QString::fromStdString(users ? users->GetCurrentUserName() : ""), "loggedIn");
        QTRY_COMPARE_WITH_TIMEOUT(dialog.result(), int(!isProject), 2000);
        QTest::mouseClick(dialog.findChild<QPushButton *>("btnLogout"), Qt::LeftButton);
    }
    void takesTheFocus()
    {
        const Rig rig;
        AuthenticationWindow window;
        window.setNode(rig.node(20));
        window.show();
        QVERIFY(QTest::qWaitForWindowActive(&window));
        QCOMPARE(QApplication::focusWidget(), window.findChild<QLineEdit *>("lineEdit"));
        window.findChild<QPushButton *>("btnCancel")->setFocus();
        QTest::keyClick(QApplication::focusWidget(),
                        Qt::Key_Return); // what has the focus is pressed
        QVERIFY(!window.isVisible());
    }
    void offersLogOut()
    {
        const Rig rig;
        AuthenticationWindow window;
        window.setNode(rig.node(20));
        window.show();
        QVERIFY(!window.findChild<QLabel *>("lblCurrent")->isVisible());
        const int height = window.height();
        rig.set(12, "fullName", "Гость завода");
        QVERIFY(rig.users()->Authenticate(rig.node(12)->GetNodeLink()));
        window.setNode(rig.node(20));
        QVERIFY(window.height() > height);
        QVERIFY(window.findChild<QLabel *>("lblCurrent")->text().contains("Гость завода"));
        QTest::mouseClick(window.findChild<QPushButton *>("btnLogout"), Qt::LeftButton);
        QVERIFY(!window.isVisible());
        QCOMPARE(rig.current(), QString());
    }
    void keyboardsGiveWhatWasTyped_data()
    {
        const Rows<QString, QString, QString> row("button", "keys", "password");
        row("numpad", "btnKeyboard", "key0 key1 key2 key3 key4 key5 key6 key7 key8 keyEnter",
            "012345678");
        row("text", "btnTextKeyboard", "btn_lang btn_lshift btn_f btn_x btn_7 btn_enter", "Ач7");
    }
    void keyboardsGiveWhatWasTyped()
    {
        QFETCH(QString, button);
        QFETCH(QString, keys);
        const Rig rig;
        const WhenShown<Widgets::FrameWindow> typist([&keys](Widgets::FrameWindow &frame) {
            auto *field = frame.findChild<QLineEdit *>();
            QCOMPARE(field->echoMode(), QLineEdit::Password);
            QVERIFY(field->isVisible() && field->window() == &frame); // not behind the frame
            for (const QString &key : keys.split(' ')) {
                QTest::mouseClick(frame.findChild<QPushButton *>(key), Qt::LeftButton);
                QCoreApplication::processEvents();
            }
        });
        QTest::mouseClick(rig.part<QPushButton>(button.toLatin1()), Qt::LeftButton);
        QTEST(rig.part<QLineEdit>("lineEdit")->text(), "password");
    }
    void closeButtonRejects()
    {
        const Rig rig;
        AuthenticationWindow window;
        window.setNode(rig.node(20));
        const WhenShown<AuthenticationWindow> closer([](AuthenticationWindow &shown) {
            QTest::mouseClick(shown.findChild<QToolButton *>("actionClose"), Qt::LeftButton);
        });
        QCOMPARE(window.exec(), int(QDialog::Rejected));
        QVERIFY(!window.isVisible());
        QCOMPARE(window.dialog()->result(), int(QDialog::Rejected));
    }
    void actions()
    {
        const Rig rig;
        QVERIFY(rig.node(30)->Start());
        QCOMPARE(rig.value(30), SignalValue("Вход не выполнен"));
        QVERIFY(rig.node(31)->Start());
        QCOMPARE(rig.value(31), SignalValue(false));
        const WhenShown<AuthenticationWindow> typist([](AuthenticationWindow &window) {
            QTest::keyClicks(window.findChild<QLineEdit *>("lineEdit"), "12345");
            QTest::mouseClick(window.findChild<QPushButton *>("btnOk"), Qt::LeftButton);
        });
        rig.push(20);
        QTRY_COMPARE(rig.value(30), SignalValue("Оператор"));
        QCOMPARE(rig.value(31), SignalValue(true));
        QTRY_VERIFY(!QApplication::activeModalWidget());
        rig.push(21);
        QTRY_COMPARE(rig.value(30), SignalValue("Вход не выполнен"));
        rig.push(22);
        QTRY_COMPARE(rig.value(30), SignalValue("Гость"));
        const MessageBoxes boxes;
        rig.push(23);
        QTRY_VERIFY(boxes.shown.join('\n').contains(": Оператор: вход не выполнен"));
        QVERIFY(rig.node(30)->Stop());
        QVERIFY(!rig.value(30).IsGood());
    }
    void logsOutWhenIdle_data()
    {
        const Rows<QString, QString> row("ofUsers", "ofScreens");
        row("as the users say", "1", "0");
        row("as the screens say", "0", "1");
        row("the shorter", "1", "600");
    }
    void logsOutWhenIdle()
    {
        QFETCH(QString, ofUsers);
        QFETCH(QString, ofScreens);
        const Rig rig;
        rig.set(10, "logoutAfter", ofUsers);
        rig.set(9, "idleLogout", ofScreens);
        QVERIFY(rig.users()->Authenticate(rig.node(12)->GetNodeLink()));
        QElapsedTimer clock;
        for (clock.start(); clock.elapsed() < 1300; QTest::qWait(100)) {
            QTest::mouseMove(rig.part<QLabel>("lblImage"));
            QTest::keyClick(rig.part<QLineEdit>("lineEdit"), Qt::Key_Left);
        }
        QCOMPARE(rig.current(), QString("Гость"));
        QTRY_COMPARE_WITH_TIMEOUT(rig.current(), QString(), 3000);
        QVERIFY(clock.elapsed() >= 2200);
    }
};

QTEST_MAIN(AuthenticationDialogTest)
#include "tst_authentication_dialog.moc"
