#include "support/FakeScreens.h"
#include "support/Rows.h"
#include "support/RuntimeProject.h"

#include "widgets/dialogs/PlainMessageBox.h"
#include "widgets/events/AlarmDialog.h"
#include "widgets/events/AlarmWindow.h"
#include "widgets/windows/desktop/DesktopPlacement.h"
#include "widgets/windows/frames/FrameWindow.h"

#include <QPushButton>
#include <QWindow>

using namespace Widgets;

namespace {

constexpr const char *twoDisplays = R"(
<station id="2" name="St"><alarming id="3" name="A"/></station>
<window id="9" name="W" width="1920" height="1080"/>
<frame id="7" name="F2" display="2" windows="9"/>
<frame id="8" name="Beneath" display="1" windows="9"/><frame id="6" name="F1" display="1" windows="9"/>)";

QString ownerOf(const QWidget &window)
{
    const QWindow *owner = window.windowHandle()->transientParent();
    return owner ? owner->title() : QStringLiteral("nobody");
}

} // namespace

/// Counts how often a window is raised.
class Raises : public QObject
{
public:
    bool eventFilter(QObject *, QEvent *event) override
    {
        count += event->type() == QEvent::ZOrderChange;
        return false;
    }
    int count = 0;
};

class DesktopOrderTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { FakeScreens::install(2); }
    void init();
    void cleanup() { m_project.reset(); }
    void belongsToTheFrameOfItsDisplay_data();
    void belongsToTheFrameOfItsDisplay();
    void boxBelongsToTheDialogBeneath();
    void alarmsStayUsable_data();
    void alarmsStayUsable();
    void alarmsFollowTheirDisplay();
    void minimisedFramesComeBack_data();
    void minimisedFramesComeBack();
    void dialogOpensBesideTheAlarms_data();
    void dialogOpensBesideTheAlarms();

private:
    AlarmWindow &alarms() const { return *m_project->manager->GetWindowAlarms(); }
    /// Clicks "Закрыть" as the display reports it: nothing reaches a blocked window.
    bool closesByClick() const;

    std::unique_ptr<RuntimeProject> m_project;
};

void DesktopOrderTest::init()
{
    m_project = std::make_unique<RuntimeProject>(twoDisplays);
    QFile::remove(alarms().settingsPath());
    m_project->manager->Start();
    alarms().open();
    QCOMPARE(ownerOf(alarms()), QStringLiteral("F1"));
    QCoreApplication::processEvents();
}

bool DesktopOrderTest::closesByClick() const
{
    QCoreApplication::processEvents();
    for (const auto *button : alarms().findChildren<QPushButton *>()) {
        if (button->text() == QStringLiteral("Закрыть"))
            QTest::mouseClick(alarms().windowHandle(), Qt::LeftButton, Qt::NoModifier,
                              button->mapTo(&alarms(), button->rect().center()));
    }
    return !alarms().isVisible();
}

void DesktopOrderTest::belongsToTheFrameOfItsDisplay_data()
{
    const Rows<int, bool, QString> row("display", "isFramed", "frame");
    row("box", 0, false, "F1");
    row("box on the second display", 1, false, "F2");
    row("decorated", 1, true, "F2");
}

void DesktopOrderTest::belongsToTheFrameOfItsDisplay()
{
    QFETCH(int, display);
    QFETCH(bool, isFramed);
    std::unique_ptr<QWidget> window;
    if (isFramed) {
        auto dialog = std::make_unique<FrameWindow>();
        dialog->setDialog(new QDialog);
        window = std::move(dialog);
    } else {
        window = std::make_unique<PlainMessageBox>(QMessageBox::Warning, "Ошибка", "текст");
    }
    window->setAttribute(Qt::WA_DeleteOnClose, false);
    window->move(FakeScreens::topLeft(display) + QPoint(900, 800));
    window->show();
    QTEST(ownerOf(*window), "frame");
    QCOMPARE(window->windowHandle()->type(), Qt::Dialog); // others have no owner on the desktop
}

void DesktopOrderTest::boxBelongsToTheDialogBeneath()
{
    QDialog dialog;
    dialog.setWindowTitle("Диалог");
    dialog.setModal(true);
    dialog.show();
    PlainMessageBox box(QMessageBox::Warning, "Ошибка", "текст");
    box.setWindowModality(Qt::ApplicationModal);
    box.show();
    QCOMPARE(ownerOf(box), QStringLiteral("Диалог"));
}

void DesktopOrderTest::alarmsStayUsable_data()
{
    const Rows<Qt::WindowModality, bool, bool> row("modality", "isOwn", "isUsable");
    row("whatever is open", Qt::ApplicationModal, false, true);
    row("a dialog of their frame", Qt::WindowModal, false, true);
    row("their own box", Qt::ApplicationModal, true, false);
}

void DesktopOrderTest::alarmsStayUsable()
{
    QFETCH(Qt::WindowModality, modality);
    QFETCH(bool, isOwn);
    QFETCH(bool, isUsable);
    QWidget *frame = m_project->manager->getFrame(0);
    auto *dialog = new QDialog(isOwn ? &alarms() : frame);
    dialog->setWindowModality(modality);
    dialog->show();
    auto *box =
        new PlainMessageBox(QMessageBox::Warning, "Ошибка", "текст", QMessageBox::Ok, dialog);
    box->setWindowModality(modality);
    box->show();
    QVERIFY(!alarms().overlay());
    QCOMPARE(closesByClick(), isUsable);
    if (isUsable) { // came while the dialog was open
        alarms().bringUp();
        QVERIFY(closesByClick());
    }
    box->hide();
    delete dialog;
    alarms().open();
    QCOMPARE(ownerOf(alarms()), QStringLiteral("F1"));
    QVERIFY(closesByClick());
}

void DesktopOrderTest::alarmsFollowTheirDisplay()
{
    alarms().move(FakeScreens::topLeft(1) + QPoint(100, 100));
    QTRY_COMPARE(ownerOf(alarms()), QStringLiteral("F2"));
    QVERIFY(alarms().isVisible());
    m_project->manager->getFrame(1)->hide();
    QTRY_COMPARE(ownerOf(alarms()), QStringLiteral("F1"));
    DesktopPlacement::present(*m_project->manager->getFrame(0)); // of the two there, the lower
    alarms().move(100, 100);
    QTRY_COMPARE(ownerOf(alarms()), QStringLiteral("Beneath"));
}

void DesktopOrderTest::minimisedFramesComeBack_data()
{
    const Rows<bool> row("byAlarm");
    row("by the button", false);
    row("by an alarm", true);
}

void DesktopOrderTest::minimisedFramesComeBack()
{
    QFETCH(bool, byAlarm);
    const auto button = [] {
        for (QWidget *window : QApplication::topLevelWidgets()) {
            if (window->objectName() == "returnButton" && window->isVisible())
                return qobject_cast<QPushButton *>(window);
        }
        return static_cast<QPushButton *>(nullptr);
    };
    QWidget *frame = m_project->manager->getFrame(0);
    QVERIFY(!button());
    QTest::keyClick(frame, Qt::Key_Z, Qt::AltModifier);
    QVERIFY(frame->isMinimized() && alarms().isMinimized());
    QTRY_VERIFY(button());
    if (byAlarm)
        alarms().bringUp();
    else
        QTest::mouseClick(button(), Qt::LeftButton);
    QVERIFY(!frame->isMinimized());
    QTRY_VERIFY(!button());
    QCOMPARE(alarms().isMinimized(), !byAlarm);
    alarms().showNormal(); // desktops bring back what belongs to a frame, in any order
    Raises raises;
    alarms().installEventFilter(&raises);
    QTRY_VERIFY(raises.count > 0);
}

void DesktopOrderTest::dialogOpensBesideTheAlarms_data()
{
    const Rows<QRect, QRect> row("dialog", "opens");
    row("where it is", {100, 100, 300, 90}, {100, 100, 300, 90});
    row("below", {300, 400, 300, 200}, {300, 500, 300, 200});
    row("above", {300, 150, 300, 100}, {300, 100, 300, 100});
    row("left", {150, 60, 100, 1000}, {100, 60, 100, 1000});
    row("no room", {300, 250, 1800, 900}, {300, 250, 1800, 900});
}

void DesktopOrderTest::dialogOpensBesideTheAlarms()
{
    QFETCH(QRect, dialog);
    const QRect there(200, 200, 1000, 300);
    const QRect screen(0, 0, 1920, 1080);
    QTEST(QRect(DesktopPlacement::clearOf(dialog, there, screen), dialog.size()), "opens");

    alarms().setGeometry(there);
    QDialog shown;
    shown.setModal(true);
    shown.setGeometry(dialog);
    shown.show();
    const QRect room = alarms().frameGeometry();
    const bool hadRoom = QTest::currentDataTag() != QByteArray("no room");
    QCOMPARE(shown.frameGeometry().intersects(room), !hadRoom);
}

QTEST_MAIN(DesktopOrderTest)
#include "tst_DesktopOrder.moc"
