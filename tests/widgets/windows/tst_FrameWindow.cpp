#include "RuntimeProject.h"

#include "widgets/windows/FrameGeometry.h"
#include "widgets/windows/FrameWindow.h"
#include "widgets/windows/FrameWindowGrip.h"
#include "widgets/windows/WindowForm.h"

#include <QAction>
#include <QDialog>
#include <QScreen>
#include <QTimer>
#include <QToolButton>
#include <QtTest>

using Widgets::FrameGeometry;
using Widgets::FrameWindow;
using Frame = FrameWindow::Frame;

namespace {

const QRect startGeometry(200, 150, 400, 300);

void send(QWidget &widget, QEvent::Type type, const QPoint &point, const QPoint &global)
{
    const bool isMove = type == QEvent::MouseMove;
    QMouseEvent event(type, point, global, isMove ? Qt::NoButton : Qt::LeftButton,
                      type == QEvent::MouseButtonRelease ? Qt::NoButton : Qt::LeftButton,
                      Qt::NoModifier);
    QApplication::sendEvent(&widget, &event);
}

void send(QWidget &widget, QEvent::Type type, const QPoint &point)
{
    send(widget, type, point, widget.mapToGlobal(point));
}

// Moves the pointer away and lets go there; points count from where the window was.
void dragFrom(QWidget &grip, const QPoint &point, const QPoint &delta)
{
    const QPoint start = grip.mapToGlobal(point);
    send(grip, QEvent::MouseMove, point, start);
    send(grip, QEvent::MouseButtonPress, point, start);
    send(grip, QEvent::MouseMove, point + delta / 2, start + delta / 2);
    send(grip, QEvent::MouseMove, point + delta, start + delta);
    send(grip, QEvent::MouseButtonRelease, point + delta, start + delta);
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
    void showsCursorOfEdges_data();
    void showsCursorOfEdges();
    void leavesOtherOverrideCursors();
    void keepsArrowWhenItCannotResize();
    void resizesFromEdge_data();
    void resizesFromEdge();
    void movesByTitle();
    void staysReachable_data();
    void staysReachable();
    void maximisesByDoubleClick();
    void wrapsWindowWhereItStands();
    void keepsOwnSizeWithFrameFlag();
    void closesWithItsWindow();
    void keepsItsOwnTitle();
    void returnsResultOfDialog();
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

void FrameWindowTest::showsCursorOfEdges_data()
{
    QTest::addColumn<QPoint>("point");
    QTest::addColumn<int>("shape");
    const int right = startGeometry.width() - 1;
    const int bottom = startGeometry.height() - 1;
    const int nothing = -1;
    QTest::newRow("left") << QPoint(1, 100) << int(Qt::SizeHorCursor);
    QTest::newRow("right") << QPoint(right - 2, 100) << int(Qt::SizeHorCursor);
    QTest::newRow("1 px outside right") << QPoint(right + 1, 100) << int(Qt::SizeHorCursor);
    QTest::newRow("3 px outside right") << QPoint(right + 3, 100) << nothing;
    QTest::newRow("3 px inside right") << QPoint(right - 3, 100) << nothing;
    QTest::newRow("top") << QPoint(200, 0) << int(Qt::SizeVerCursor);
    QTest::newRow("bottom") << QPoint(200, bottom + 2) << int(Qt::SizeVerCursor);
    QTest::newRow("top left") << QPoint(2, 2) << int(Qt::SizeFDiagCursor);
    QTest::newRow("bottom right") << QPoint(right, bottom) << int(Qt::SizeFDiagCursor);
    QTest::newRow("top right") << QPoint(right, 0) << int(Qt::SizeBDiagCursor);
    QTest::newRow("bottom left") << QPoint(0, bottom) << int(Qt::SizeBDiagCursor);
    QTest::newRow("title") << QPoint(200, 12) << nothing;
}

void FrameWindowTest::showsCursorOfEdges()
{
    QFETCH(QPoint, point);
    QFETCH(int, shape);
    send(grip(), QEvent::MouseMove, point);
    QCOMPARE(overrideShape(), shape);
    QEvent leave(QEvent::Leave);
    QApplication::sendEvent(&grip(), &leave);
    QCOMPARE(overrideShape(), -1);
    QCOMPARE(grip().cursor().shape(), Qt::ArrowCursor);
}

void FrameWindowTest::leavesOtherOverrideCursors()
{
    QApplication::setOverrideCursor(Qt::WaitCursor);
    for (const QPoint &point : {QPoint(0, 100), QPoint(0, 0), QPoint(200, 0)})
        send(grip(), QEvent::MouseMove, point);
    send(grip(), QEvent::MouseMove, QPoint(200, 12));
    QCOMPARE(overrideShape(), int(Qt::WaitCursor));
    QApplication::restoreOverrideCursor();
}

void FrameWindowTest::keepsArrowWhenItCannotResize()
{
    m_window->setResizeableFrame(false);
    dragFrom(grip(), QPoint(0, 100), QPoint(-40, 0));
    QCOMPARE(overrideShape(), -1);
    QCOMPARE(m_window->geometry(), startGeometry);
}

void FrameWindowTest::resizesFromEdge_data()
{
    QTest::addColumn<QPoint>("point");
    QTest::addColumn<QPoint>("delta");
    QTest::addColumn<QRect>("expected");
    const QPoint out(30, 20);
    QTest::newRow("left") << QPoint(0, 100) << -out << startGeometry.adjusted(-30, 0, 0, 0);
    QTest::newRow("right") << QPoint(399, 100) << out << startGeometry.adjusted(0, 0, 30, 0);
    QTest::newRow("top") << QPoint(200, 0) << -out << startGeometry.adjusted(0, -20, 0, 0);
    QTest::newRow("bottom") << QPoint(200, 299) << out << startGeometry.adjusted(0, 0, 0, 20);
    QTest::newRow("top left") << QPoint(0, 0) << -out << startGeometry.adjusted(-30, -20, 0, 0);
    QTest::newRow("bottom right") << QPoint(399, 299) << out
                                  << startGeometry.adjusted(0, 0, 30, 20);
    // The opposite edge stays put when the minimum size stops the drag.
    QTest::newRow("left beyond minimum")
        << QPoint(0, 100) << QPoint(390, 0) << startGeometry.adjusted(400 - 250, 0, 0, 0);
    QTest::newRow("bottom beyond minimum")
        << QPoint(200, 299) << QPoint(0, -290) << startGeometry.adjusted(0, 0, 0, 200 - 300);
}

void FrameWindowTest::resizesFromEdge()
{
    QFETCH(QPoint, point);
    QFETCH(QPoint, delta);
    QFETCH(QRect, expected);
    m_window->setMinimumSize(250, 200);
    dragFrom(grip(), point, delta);
    QCOMPARE(m_window->geometry(), expected);
    QCOMPARE(grip().size(), expected.size());
}

void FrameWindowTest::movesByTitle()
{
    dragFrom(grip(), QPoint(200, 12), QPoint(35, -45));
    QCOMPARE(m_window->geometry(), startGeometry.translated(35, -45));
    dragFrom(grip(), QPoint(200, 200), QPoint(35, 45)); // the contents are no handle
    QCOMPARE(m_window->geometry(), startGeometry.translated(35, -45));

    dragFrom(grip(), QPoint(200, 12), QPoint(-9000, 9000));
    const QRect title(m_window->pos(), QSize(m_window->width(), m_window->getTitleHeight()));
    const QRect caught = title & QGuiApplication::primaryScreen()->availableGeometry();
    QVERIFY2(caught.width() >= 48 && caught.height() == title.height(),
             "the window is out of reach");
}

void FrameWindowTest::staysReachable_data()
{
    QTest::addColumn<QRect>("frame");
    QTest::addColumn<QPoint>("expected");
    // Screens: 0..999 x 0..799, and to its right 1000..1999 x 200..999.
    QTest::newRow("inside") << QRect(10, 20, 300, 200) << QPoint(10, 20);
    QTest::newRow("partly left") << QRect(-200, 20, 300, 200) << QPoint(-200, 20);
    QTest::newRow("too far left") << QRect(-290, 20, 300, 200) << QPoint(48 - 300, 20);
    QTest::newRow("above") << QRect(10, -30, 300, 200) << QPoint(10, 0);
    QTest::newRow("below") << QRect(10, 795, 300, 200) << QPoint(10, 775);
    QTest::newRow("above second") << QRect(1400, 50, 300, 200) << QPoint(1400, 200);
    QTest::newRow("right of both") << QRect(2500, 500, 300, 200) << QPoint(1952, 500);
}

void FrameWindowTest::staysReachable()
{
    QFETCH(QRect, frame);
    QFETCH(QPoint, expected);
    const QVector<QRect> screens{{0, 0, 1000, 800}, {1000, 200, 1000, 800}};
    QCOMPARE(FrameGeometry::reachable(frame, 25, screens), expected);
    QCOMPARE(FrameGeometry::reachable(frame, 25, {}), frame.topLeft());
}

void FrameWindowTest::maximisesByDoubleClick()
{
    send(grip(), QEvent::MouseButtonDblClick, QPoint(200, 200));
    QVERIFY(!m_window->isMaximized());
    send(grip(), QEvent::MouseButtonDblClick, QPoint(200, 12));
    QVERIFY(m_window->isMaximized());
    send(grip(), QEvent::MouseMove, QPoint(0, 100));
    QCOMPARE(overrideShape(), -1);
    send(grip(), QEvent::MouseButtonDblClick, QPoint(200, 12));
    QVERIFY(!m_window->isMaximized());
    QTRY_COMPARE(m_window->geometry(), startGeometry);
}

void FrameWindowTest::wrapsWindowWhereItStands()
{
    RuntimeProject project("<visualization id=\"2\" name=\"V\" titleHeight=\"30\"/>"
                           "<window id=\"3\" name=\"Pump\" x=\"120\" y=\"90\" width=\"320\" "
                           "height=\"200\" modality=\"application\" closeButton=\"true\"/>");
    QVERIFY(project.isValid());
    auto *form = new Widgets::WindowForm(project.node<Nodes::BasicWindow>(3), nullptr);
    form->setGeometry(120, 90, 320, 200);
    form->setFixedSize(320, 200);
    const QPointer<FrameWindow> frame = new FrameWindow(form, nullptr);
    frame->show();

    QCOMPARE(frame->getTitleHeight(), 30);
    QCOMPARE(frame->windowTitle(), QStringLiteral("Pump"));
    QCOMPARE(frame->windowModality(), Qt::ApplicationModal);
    QCOMPARE(frame->size(), frame->outerSize(QSize(320, 200)));
    QCOMPARE(form->parentWidget(), frame.data());
    QCOMPARE(frame->windowBasic(), form);
    QCOMPARE(frame->getNode()->GetId(), 3ul);
    QCOMPARE(form->pos(), QPoint(frame->getFrameWidth(), 30 + frame->getFrameWidth()));
    QCOMPARE(form->mapToGlobal(QPoint(0, 0)), QPoint(120, 90));

    auto *node = project.node<Nodes::BasicWindow>(3);
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
    RuntimeProject project(QStringLiteral("<window id=\"3\" name=\"W\" width=\"%1\" height=\"%2\" "
                                          "frame=\"true\"/>")
                               .arg(screen.width())
                               .arg(screen.height())
                               .toStdString());
    QVERIFY(project.isValid());
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
    QVERIFY(!frame || !frame->isVisible());
    QTRY_VERIFY(!frame);
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
