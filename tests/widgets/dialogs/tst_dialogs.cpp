// What all dialogs have in common: where they come up, how many there are and when they close.
#include "support/FakeScreens.h"
#include "support/Rows.h"
#include "support/RuntimeProject.h"

#include "widgets/dialogs/BasicDialog.h"
#include "widgets/dialogs/Dialogs.h"
#include "widgets/dialogs/PlainMessageBox.h"
#include "widgets/tools/ArchiverDBMgrDialog.h"

#include "nodes/auth/systemAuthentication.h"

#include <QPushButton>

using namespace Widgets;

namespace {

constexpr const char *plant = R"xml(
<station id="20" name="St"><authentication id="21" name="Users">
  <user id="26" name="anna" passwordless="true"/></authentication></station>
<actionArchiverDBMgr id="40" name="files"/>)xml";

struct Plant : RuntimeProject
{
    Plant() : RuntimeProject(plant)
    {
        request.node = node(40);
        request.display = 1;
    }
    void logIn() const
    {
        QVERIFY(core.GetSystemAuthentication()->Authenticate(node(26)->GetNodeLink()));
    }
    /// The dialog of archive files, shown at the end of the call.
    ArchiverDBMgrDialog *open() const
    {
        auto *dialog = Dialogs::make<ArchiverDBMgrDialog>(request);
        if (dialog)
            dialog->show();
        return dialog;
    }

    DialogRequest request;
};

} // namespace

class TestDialogs : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { FakeScreens::install(2); }

    void comesUpOnTheScreen_data()
    {
        const Rows<int, QPoint, QSize, QRect> row("display", "moved", "size", "place");
        const QPoint unmoved;
        row("in the middle", 0, unmoved, QSize(400, 300), QRect(760, 390, 400, 300));
        row("of its display", 1, unmoved, QSize(400, 300), QRect(2680, 390, 400, 300));
        row("larger than that", 1, unmoved, QSize(4000, 3000), QRect(1924, 28, 1912, 1020));
        row("where it was put", -1, QPoint(50, 60), QSize(400, 300), QRect(50, 60, 400, 300));
        row("put beyond", -1, QPoint(1700, 1000), QSize(400, 300), QRect(1516, 748, 400, 300));
    }
    void comesUpOnTheScreen()
    {
        QFETCH(int, display);
        QFETCH(QPoint, moved);
        QFETCH(QSize, size);
        BasicDialog dialog;
        dialog.resize(size);
        DialogRequest request;
        if (display >= 0)
            request.display = display;
        else
            dialog.move(moved);
        dialog.seat(request);
        dialog.show();
        QTEST(QRect(dialog.pos(), dialog.size()), "place");
        dialog.hide();
        dialog.move(200, 100);
        dialog.show();
        QCOMPARE(dialog.pos(), QPoint(200, 100) * int(size.width() < 1000) +
                                   QPoint(4, 28) * int(size.width() > 1000));
    }

    void oneAtATime()
    {
        const Plant plant;
        const std::unique_ptr<QDialog> first(plant.open());
        first->setWindowState(Qt::WindowMinimized);
        QVERIFY(!plant.open());
        QVERIFY(first->isVisible() && !first->isMinimized());
        plant.manager->finishActions(0);
        const std::unique_ptr<QDialog> message(Dialogs::make<PlainMessageBox>());
        QVERIFY(message);
    }

    void closesWithItsUser()
    {
        const Plant plant;
        plant.logIn();
        const std::unique_ptr<QDialog> dialog(plant.open());
        QCoreApplication::processEvents();
        QVERIFY(dialog->isVisible());
        plant.core.GetSystemAuthentication()->Logout();
        QTRY_VERIFY(!dialog->isVisible());
    }

    void keepsItsPlace()
    {
        const Plant plant;
        const QRect place(300, 200, 800, 500);
        for (const bool isKept : {false, true}) {
            const std::unique_ptr<QDialog> dialog(plant.open());
            QCOMPARE(dialog->geometry() == place, isKept);
            dialog->setGeometry(place);
            dialog->close();
        }
    }

    void questionsAreNotAnsweredByReflex_data()
    {
        const Rows<Qt::Key, bool> row("key", "isAnswered");
        row("Enter", Qt::Key_Return, false);
        row("Escape", Qt::Key_Escape, false);
        row("the key of the button", Qt::Key_Tab, true); // goes to "yes", where Enter presses it
    }
    void questionsAreNotAnsweredByReflex()
    {
        QFETCH(Qt::Key, key);
        auto *box = Dialogs::make<PlainMessageBox>();
        box->setQuestion("Вопрос", "Удалить?", "Удалить");
        bool isAnswered = false;
        box->askFor([&isAnswered] { isAnswered = true; });
        QVERIFY(QTest::qWaitForWindowActive(box));
        for (const QAbstractButton *button : box->buttons())
            QVERIFY(button->width() >= 96 && button->height() >= 40);
        QTest::keyClick(QApplication::focusWidget(), key);
        if (key == Qt::Key_Tab)
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
        QTRY_VERIFY(!QApplication::activeModalWidget());
        QTEST(isAnswered, "isAnswered");
    }
};

QTEST_MAIN(TestDialogs)
#include "tst_dialogs.moc"
