#include "support/RuntimeProject.h"

#include "widgets/dialogs/AuthenticationDialog.h"
#include "widgets/dialogs/AuthenticationWindow.h"
#include "widgets/dialogs/VirtualNumpad.h"

#include "nodes/auth/systemAuthentication.h"
#include "utils/MetaTypes.h"

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QTimer>
#include <QToolButton>

#include <functional>

using namespace Nodes;

namespace {

constexpr const char *plant = R"(
<authentication id="10" name="Users" logoutAfter="1">
<user id="11" name="Оператор"/><user id="12" name="Гость" passwordless="true"/>
</authentication>
<actionAuthUser id="20" name="ask"/><actionAuthUser id="21" name="out" logout="true"/>
<actionAuthUser id="22" name="guest" user="12"/><actionAuthUser id="23" name="named" user="11"/>
<currentUser id="30" name="Who"/>)";

constexpr const char *empty = R"(<actionAuthUser id="20" name="ask"/>)";

struct Rig : RuntimeProject
{
    explicit Rig(const char *nodes = plant) : RuntimeProject(nodes)
    {
        static const std::string hash = systemAuthentication::HashPassword("12345");
        if (auto *user = node(11))
            QVERIFY(user->SetPropertyText("passwordHash", hash));
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

/// Does something once a modal window of the kind is up; fails the test when none comes.
template <class Window> void whenModal(QObject &context, std::function<void(Window &)> act)
{
    auto *timer = new QTimer(&context);
    QObject::connect(timer, &QTimer::timeout, &context, [timer, act] {
        auto *window = qobject_cast<Window *>(QApplication::activeModalWidget());
        if (!window || !window->isVisible())
            return;
        timer->deleteLater();
        timer->stop();
        act(*window);
    });
    timer->start(5);
}

} // namespace

class AuthenticationDialogTest : public QObject
{
    Q_OBJECT

private slots:
    void listsUsers_data();
    void listsUsers();
    void tellsTheOutcome_data();
    void tellsTheOutcome();
    void numpadGivesSixDigits();
    void closeButtonRejects();
    void actions();
    void logsOutWhenIdle();
};

void AuthenticationDialogTest::listsUsers_data()
{
    QTest::addColumn<QByteArray>("nodes");
    QTest::addColumn<QString>("names");
    QTest::newRow("two users") << QByteArray(plant) << "Оператор Гость";
    QTest::newRow("no users") << QByteArray(empty) << "";
}

void AuthenticationDialogTest::listsUsers()
{
    QFETCH(QByteArray, nodes);
    const Rig rig(nodes);
    QStringList names;
    for (int i = 0; i < rig.part<QComboBox>("comboBox")->count(); ++i)
        names << rig.part<QComboBox>("comboBox")->itemText(i);
    QTEST(names.join(' '), "names");
    QTest::keyClicks(rig.part<QLineEdit>("lineEdit"), "12345");
    const auto *ok = rig.part<QPushButton>("btnOk");
    QCOMPARE(ok->isEnabled(), !names.isEmpty());
    QCOMPARE(ok->isDefault(), !names.isEmpty());
}

void AuthenticationDialogTest::tellsTheOutcome_data()
{
    QTest::addColumn<QString>("user");
    QTest::addColumn<QStringList>("passwords");
    QTest::addColumn<QString>("message");
    QTest::addColumn<bool>("isAccepted");
    const auto row = [](const char *name, const char *user, const QStringList &passwords,
                        const char *message, bool isAccepted) {
        QTest::newRow(name) << user << passwords << message << isAccepted;
    };
    row("right", "Оператор", {"12345"}, "", true);
    row("right at the second go", "Оператор", {"1", "12345"}, "", true);
    row("wrong", "Оператор", {"1"}, "Неверный пароль", false);
    row("needs none", "Гость", {""}, "", true);
    row("needs none, got one", "Гость", {"1"}, "Неверный пароль", false);
    row("too often", "Оператор", {"1", "2", "3", "12345"}, "Ошибка: много попыток, ждите 1 с",
        false);
    row("gone meanwhile", "", {"12345"}, "Пользователь не найден", false);
}

void AuthenticationDialogTest::tellsTheOutcome()
{
    QFETCH(QString, user);
    QFETCH(QStringList, passwords);
    QFETCH(bool, isAccepted);
    Rig rig;
    rig.part<QComboBox>("comboBox")->setCurrentText(user);
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

void AuthenticationDialogTest::numpadGivesSixDigits()
{
    const Rig rig;
    whenModal<Widgets::FrameWindow>(*this, [](Widgets::FrameWindow &frame) {
        auto *numpad = frame.findChild<Widgets::VirtualNumpad *>();
        QCOMPARE(numpad->findChild<QLineEdit *>()->echoMode(), QLineEdit::Password);
        for (const char *key : {"1", "2", "3", "4", "5", "6", "7", "Enter"}) {
            QTest::mouseClick(numpad->findChild<QPushButton *>(QString("key") + key),
                              Qt::LeftButton);
            QCoreApplication::processEvents();
        }
    });
    QTest::mouseClick(rig.part<QPushButton>("btnKeyboard"), Qt::LeftButton);
    QCOMPARE(rig.part<QLineEdit>("lineEdit")->text(), QString("1.23457e+06"));
}

void AuthenticationDialogTest::closeButtonRejects()
{
    const Rig rig;
    AuthenticationWindow window;
    window.setNode(rig.node(20));
    whenModal<AuthenticationWindow>(*this, [](AuthenticationWindow &shown) {
        QTest::mouseClick(shown.findChild<QToolButton *>("actionClose"), Qt::LeftButton);
    });
    QCOMPARE(window.exec(), int(QDialog::Rejected));
    QVERIFY(!window.isVisible());
    QCOMPARE(window.dialog()->result(), int(QDialog::Rejected));
}

void AuthenticationDialogTest::actions()
{
    const Rig rig;
    QVERIFY(rig.node(30)->Start());
    QCOMPARE(rig.value(30), SignalValue("Вход не выполнен"));
    whenModal<AuthenticationWindow>(*this, [](AuthenticationWindow &window) {
        QTest::keyClicks(window.findChild<QLineEdit *>("lineEdit"), "12345");
        QTest::mouseClick(window.findChild<QPushButton *>("btnOk"), Qt::LeftButton);
    });
    rig.push(20);
    QTRY_COMPARE(rig.value(30), SignalValue("Оператор"));
    QTRY_VERIFY(!QApplication::activeModalWidget());
    rig.push(21);
    QTRY_COMPARE(rig.value(30), SignalValue("Вход не выполнен"));
    rig.push(22);
    QTRY_COMPARE(rig.value(30), SignalValue("Гость"));
    QString told;
    whenModal<QMessageBox>(*this, [&](QMessageBox &box) {
        told = box.text();
        box.close();
    });
    rig.push(23);
    QTRY_VERIFY(told.startsWith("Оператор: вход не выполнен"));
    QVERIFY(rig.node(30)->Stop());
    QVERIFY(!rig.value(30).IsGood());
}

void AuthenticationDialogTest::logsOutWhenIdle()
{
    const Rig rig;
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

QTEST_MAIN(AuthenticationDialogTest)
#include "tst_authentication_dialog.moc"
