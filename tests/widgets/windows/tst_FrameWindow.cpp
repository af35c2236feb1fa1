#include "support/Mouse.h"
#include "support/Rows.h"
#include "support/RuntimeProject.h"

#include "widgets/windows/WindowForm.h"
#include "widgets/windows/frames/FrameGeometry.h"
#include "widgets/windows/frames/FrameWindow.h"
#include "widgets/windows/frames/FrameWindowGrip.h"

#include <QAction>
#include <QDialog>
#include <QScreen>
#include <QTimer>
#include <QToolButton>

using Widgets::FrameGeometry;
using Widgets::FrameWindow;
using Frame = FrameWindow::Frame;

Q_DECLARE_METATYPE(QMargins)

namespace {

const QRect startGeometry(200, 150, 400, 300);

void hover(QWidget &grip, const QPoint &point)
{
    sendMouse(grip, QEvent::MouseMove, point, Qt::NoButton);
}

// Presses, moves the pointer away and lets go there; the window may follow meanwhile.
void dragFrom(QWidget &grip, const QPoint &point, const QPoint &delta)
{
    const QPoint start = grip.mapToGlobal(point);
    hover(grip, point);
    sendMouse(grip, QEvent::MouseButtonPress, point);
    for (const QPoint &place : {start + delta / 2, start + delta})
        sendMouse(grip, QEvent::MouseMove, grip.mapFromGlobal(place));
    sendMouse(grip, QEvent::MouseButtonRelease, grip.mapFromGlobal(start + delta));
}

int overrideShape()
{
    const QCursor *cursor = QApplication::overrideCursor();
    return cursor ? int(cursor->shape()) : -1;
}

class StubbornDialog : public QDialog
{
public:
    void reject() override {}
};

} // namespace

class FrameWindowTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void edgesHaveCursorsAndResize_data();
    void edgesHaveCursorsAndResize();
    void leavesCursorsItHasNoSayIn();
    void staysInReachWhenMoved();
    void staysReachable_data();
    void staysReachable();
    void maximisesByDoubleClick();
    void wrapsWindowWhereItStands();
    void keepsOwnSizeWithFrameFlag();
    void closesWithItsWindow();
    void keepsItsOwnTitle();
    void returnsResultOfDialog();
    void takesADialogMadeInIt();
    void staysOpenWithItsDialog();

private:
    Frame &grip() const { return *m_window->findChild<Frame *>(); }

    QPointer<FrameWindow> m_window;
};

void FrameWindowTest::init()
{
    m_window = new FrameWindow;
    m_window->setGeometry(startGeometry);
    m_window->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_window));
}

void FrameWindowTest::cleanup()
{
    delete m_window;
    QVERIFY2(!QApplication::overrideCursor(), "an override cursor was left behind");
}

void FrameWindowTest::edgesHaveCursorsAndResize_data()
{
    // A shape of -1: none of the window's.
    const Rows<QPoint, int, QPoint, QMargins> row("point", "shape", "drag", "grown");
    row("left", {1, 100}, Qt::SizeHorCursor, {-30, -20}, {30, 0, 0, 0});
    row("right", {397, 100}, Qt::SizeHorCursor, {-30, -20}, {0, 0, -30, 0});
    row("1 px outside right", {400, 100}, Qt::SizeHorCursor, {-30, -20}, {0, 0, -30, 0});
    row("3 px outside right", {402, 100}, -1, {-30, -20}, {});
    row("3 px inside right", {396, 100}, -1, {-30, -20}, {});
    row("top", {200, 0}, Qt::SizeVerCursor, {-30, -20}, {0, 20, 0, 0});
    row("bottom", {200, 301}, Qt::SizeVerCursor, {-30, -20}, {0, 0, 0, -20});
    row("top left", {2, 2}, Qt::SizeFDiagCursor, {-30, -20}, {30, 20, 0, 0});
    row("bottom right", {399, 299}, Qt::SizeFDiagCursor, {-30, -20}, {0, 0, -30, -20});
    row("top right", {399, 0}, Qt::SizeBDiagCursor, {-30, -20}, {0, 20, -30, 0});
    row("bottom left", {0, 299}, Qt::SizeBDiagCursor, {-30, -20}, {30, 0, 0, -20});
    row("left to the minimum", {0, 100}, Qt::SizeHorCursor, {390, 0}, {-150, 0, 0, 0});
    row("bottom to the minimum", {200, 299}, Qt::SizeVerCursor, {0, -290}, {0, 0, 0, -100});
    row("contents are no handle", {200, 200}, -1, {35, 45}, {});
    row("title moves", {200, 12}, -1, {-30, -20}, {30, 20, -30, -20});
}

void FrameWindowTest::edgesHaveCursorsAndResize()
{
    QFETCH(QPoint, point);
    QFETCH(int, shape);
    QFETCH(QPoint, drag);
    QFETCH(QMargins, grown);
    m_window->setMinimumSize(250, 200);
    hover(grip(), point);
    QCOMPARE(overrideShape(), shape);
    QEvent leave(QEvent::Leave);
    QApplication::sendEvent(&grip(), &leave);
    QCOMPARE(overrideShape(), -1);
    QCOMPARE(grip().cursor().shape(), Qt::ArrowCursor);
    dragFrom(grip(), point, drag);
    QCOMPARE(m_window->geometry(), startGeometry + grown);
    QCOMPARE(grip().size(), m_window->size());
}

void FrameWindowTest::leavesCursorsItHasNoSayIn()
{
    QApplication::setOverrideCursor(Qt::WaitCursor);
    for (const QPoint &point : {QPoint(0, 100), QPoint(0, 0), QPoint(200, 0), QPoint(200, 12)})
        hover(grip(), point);
    QCOMPARE(overrideShape(), int(Qt::WaitCursor));
    QApplication::restoreOverrideCursor();
    m_window->setResizeableFrame(false);
    dragFrom(grip(), QPoint(0, 100), QPoint(-40, 0));
    QCOMPARE(overrideShape(), -1);
    QCOMPARE(m_window->geometry(), startGeometry);
}

void FrameWindowTest::staysInReachWhenMoved()
{
    dragFrom(grip(), QPoint(200, 12), QPoint(-9000, 9000));
    const QRect title(m_window->pos(), QSize(m_window->width(), m_window->getTitleHeight()));
    const QRect caught = title & QGuiApplication::primaryScreen()->availableGeometry();
    QVERIFY2(caught.width() >= 48 && caught.height() == title.height(),
             "the window is out of reach");
}

void FrameWindowTest::staysReachable_data()
{
    const Rows<QRect, QPoint> row("frame", "expected");
    // Screens: 0..999 x 0..799, and to its right 1000..1999 x 200..999.
    row("inside", {10, 20, 300, 200}, {10, 20});
    row("partly left", {-200, 20, 300, 200}, {-200, 20});
    row("too far left", {-290, 20, 300, 200}, {48 - 300, 20});
    row("above", {10, -30, 300, 200}, {10, 0});
    row("below", {10, 795, 300, 200}, {10, 775});
    row("above second", {1400, 50, 300, 200}, {1400, 200});
    row("right of both", {2500, 500, 300, 200}, {1952, 500});
}

void FrameWindowTest::staysReachable()
{
    QFETCH(QRect, frame);
    const QVector<QRect> screens{{0, 0, 1000, 800}, {1000, 200, 1000, 800}};
    QTEST(FrameGeometry::reachable(frame, 25, screens), "expected");
    QCOMPARE(FrameGeometry::reachable(frame, 25, {}), frame.topLeft());
}

void FrameWindowTest::maximisesByDoubleClick()
{
    sendMouse(grip(), QEvent::MouseButtonDblClick, QPoint(200, 200));
    QVERIFY(!m_window->isMaximized());
    sendMouse(grip(), QEvent::MouseButtonDblClick, QPoint(200, 12));
    QVERIFY(m_window->isMaximized());
    hover(grip(), QPoint(0, 100));
    QCOMPARE(overrideShape(), -1);
    sendMouse(grip(), QEvent::MouseButtonDblClick, QPoint(200, 12));
    QVERIFY(!m_window->isMaximized());
    QTRY_COMPARE(m_window->geometry(), startGeometry);
}

void FrameWindowTest::wrapsWindowWhereItStands()
{
    const RuntimeProject project(R"(<visualization id="2" name="V" titleHeight="30"/>
        <window id="3" name="Pump" x="120" y="90" width="320" height="200"
                modality="application" closeButton="true"/>)");
    auto *node = project.node<Nodes::BasicWindow>(3);
    auto *form = new Widgets::WindowForm(node, nullptr);
    form->setFixedSize(320, 200);
    const QPointer<FrameWindow> frame = new FrameWindow(form, nullptr);
    frame->show();

    QCOMPARE(frame->getTitleHeight(), 30);
    QCOMPARE(frame->windowTitle(), QStringLiteral("Pump"));
    QCOMPARE(frame->windowModality(), Qt::ApplicationModal);
    QCOMPARE(frame->size(), frame->outerSize(QSize(320, 200)));
    QCOMPARE(form->mapToGlobal(QPoint(0, 0)), QPoint(120, 90));
    QVERIFY(node->SetPropertyText("x", "150") && node->SetPropertyText("width", "300"));
    QCOMPARE(form->mapToGlobal(QPoint(0, 0)), QPoint(150, 90));
    QCOMPARE(frame->size(), frame->outerSize(QSize(300, 200)));
    QCOMPARE(form->pos(), QPoint(frame->getFrameWidth(), 30 + frame->getFrameWidth()));

    frame->resize(600, 500); // the window's own limits no longer hold
    QCOMPARE(frame->outerSize(form->size()), QSize(600, 500));
    auto *close = frame->findChild<QToolButton *>(QStringLiteral("actionClose"));
    QVERIFY(close && close->isVisible() && close->width() >= 28 && close->height() >= 21);
    QCOMPARE(close->defaultAction()->toolTip(), QStringLiteral("Закрыть"));
    close->click();
    QTRY_VERIFY(!frame);
}

void FrameWindowTest::keepsOwnSizeWithFrameFlag()
{
    const QSize screen = QGuiApplication::primaryScreen()->size();
    const RuntimeProject project(R"(<window id="3" name="W" frame="true"/>)");
    project.set(3, "width", QString::number(screen.width()));
    project.set(3, "height", QString::number(screen.height()));
    const QSize ownSize = m_window->outerSize(QSize(320, 200)) + QSize(200, 100);
    auto *form = new Widgets::WindowForm(project.node<Nodes::BasicWindow>(3), nullptr);
    FrameWindow frame(form, nullptr);
    frame.setAttribute(Qt::WA_DeleteOnClose, false);
    QVERIFY(frame.size() != frame.outerSize(screen));
    frame.show();
    QCOMPARE(form->size(), screen);
    frame.resize(ownSize);
    QCOMPARE(frame.outerSize(form->size()), ownSize);
}

void FrameWindowTest::closesWithItsWindow()
{
    auto *form = new Widgets::WindowForm(nullptr, nullptr);
    const QPointer<FrameWindow> frame = new FrameWindow(form, nullptr);
    frame->show();
    delete form;
    QTRY_VERIFY(!frame);
}

void FrameWindowTest::keepsItsOwnTitle()
{
    auto *hosted = new QWidget;
    m_window->setWidget(hosted);
    hosted->setWindowTitle(QStringLiteral("hosted"));
    QCOMPARE(m_window->windowTitle(), QStringLiteral("hosted"));
    m_window->setWindowTitle(QStringLiteral("own"), true);
    hosted->setWindowTitle(QStringLiteral("other"));
    QCOMPARE(m_window->windowTitle(), QStringLiteral("own"));
    QCOMPARE(grip().title(), QStringLiteral("own"));
}

void FrameWindowTest::returnsResultOfDialog()
{
    QCOMPARE(m_window->exec(), 0);
    auto *dialog = new QDialog;
    const QPointer<FrameWindow> frame = new FrameWindow;
    frame->setDialog(dialog);
    QTimer::singleShot(0, dialog, [&] {
        QVERIFY(frame->isVisible() && frame->isModal());
        dialog->done(7);
    });
    QCOMPARE(frame->exec(), 7);
    QTRY_VERIFY(!frame);
}

void FrameWindowTest::takesADialogMadeInIt()
{
    auto *dialog = new QDialog(m_window);
    dialog->resize(200, 100);
    m_window->setDialog(dialog);
    QVERIFY(dialog->isVisible() && !dialog->isWindow());
    QTRY_COMPARE(m_window->size(), m_window->outerSize(QSize(200, 100)));
    QVERIFY(m_window->rect().contains(dialog->geometry()));
}

void FrameWindowTest::staysOpenWithItsDialog()
{
    auto *dialog = new StubbornDialog;
    m_window->setDialog(dialog);
    m_window->onClose();
    QVERIFY(m_window->isVisible());
    dialog->done(1);
    QVERIFY(!m_window->isVisible());
}

QTEST_MAIN(FrameWindowTest)
#include "tst_FrameWindow.moc"
