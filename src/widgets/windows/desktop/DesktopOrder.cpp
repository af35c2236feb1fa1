#include "widgets/windows/desktop/DesktopOrder.h"

#include "widgets/windows/desktop/DesktopPlacement.h"
#include "widgets/windows/desktop/ReturnButton.h"
#include "widgets/windows/desktop/Screens.h"
#include "widgets/windows/frames/FrameWidget.h"

#include <QApplication>
#include <QEvent>
#include <QScreen>
#include <QWindow>

#include <algorithm>

namespace Widgets {

namespace {

DesktopOrder *current = nullptr;
QPointer<QWidget> alarmWindow; // heard of until its very end

constexpr int noFocusTime = 1000; // ms, ample for a busy desktop
constexpr int followDelay = 200;  // ms, so that a drag is over

// A host's own main window, for one, is left alone; pop-ups are above everything anyway.
bool canBelong(const QWindow &window)
{
    return !window.parent() && (window.type() == Qt::Dialog || window.type() == Qt::Tool);
}

bool coversMost(const QRect &upper, const QRect &lower)
{
    const QRect hidden = upper & lower;
    return 2 * hidden.width() * hidden.height() > lower.width() * lower.height();
}

QWidget *widgetOf(const QWindow &window)
{
    const QWidgetList widgets = QApplication::topLevelWidgets();
    const auto found = std::find_if(widgets.begin(), widgets.end(), [&window](const QWidget *one) {
        return one->windowHandle() == &window;
    });
    return found == widgets.end() ? nullptr : *found;
}

} // namespace

DesktopOrder::DesktopOrder(QObject *parent) : QObject(parent)
{
    current = this;
    m_following.setSingleShot(true);
    m_following.setInterval(followDelay);
    connect(&m_following, &QTimer::timeout, this, &DesktopOrder::followFrame);
    if (QCoreApplication::instance())
        QCoreApplication::instance()->installEventFilter(this);
}

DesktopOrder::~DesktopOrder()
{
    if (current == this)
        current = nullptr;
}

bool DesktopOrder::eventFilter(QObject *watched, QEvent *event)
{
    switch (event->type()) {
    case QEvent::Show:
    case QEvent::Hide:
    case QEvent::Move:
    case QEvent::WindowActivate:
    case QEvent::WindowBlocked:
    case QEvent::WindowStateChange:
        break;
    default:
        return false;
    }
    if (watched->isWindowType())
        onWindowEvent(*static_cast<QWindow *>(watched), *event);
    else if (watched->isWidgetType() && static_cast<QWidget *>(watched)->isWindow())
        onWidgetEvent(*static_cast<QWidget *>(watched), *event);
    return false;
}

void DesktopOrder::onWidgetEvent(QWidget &widget, const QEvent &event)
{
    const bool isBack = event.type() == QEvent::Show || event.type() == QEvent::WindowActivate;
    const bool isFrame = FrameWidget::inside(widget);
    if (isFrame && (event.type() == QEvent::WindowStateChange || event.type() == QEvent::Hide))
        leadBack();
    // While frames are being minimised the desktop activates whatever is left.
    if (isFrame && isBack && !m_return) {
        m_frames.removeAll(&widget);
        m_frames.append(&widget);
    }
    const bool hasMoved = event.type() == QEvent::Move && &widget == alarmWindow;
    if (hasMoved || (isFrame && (isBack || event.type() == QEvent::Hide)))
        m_following.start();
}

// The widget knows its place by now, and the desktop is told the owner next.
void DesktopOrder::onWindowEvent(QWindow &window, const QEvent &event)
{
    switch (event.type()) {
    case QEvent::Show:
        if (canBelong(window))
            onShow(window);
        break;
    case QEvent::Hide:
        if (m_modal.removeAll(&window) > 0)
            keepAlarmsUsable();
        break;
    case QEvent::WindowBlocked:
        if (isAlarms(window) && !m_isShowingAlarms)
            keepAlarmsUsable();
        break;
    default:
        break;
    }
}

void DesktopOrder::onShow(QWindow &window)
{
    QWindow *owner = ownerOf(window);
    if (isAlarms(window)) {
        m_alarmsFrame = owner;
        m_isShowingAlarms = true;
        window.setTransientParent(owner);
        QMetaObject::invokeMethod(this, &DesktopOrder::keepAlarmsUsable, Qt::QueuedConnection);
        return;
    }
    window.setTransientParent(owner);
    if (!window.isModal())
        return;
    m_modal.removeAll(&window);
    m_modal.append(&window);
    // On the alarm window's level; else it would come up beneath.
    window.setFlag(Qt::WindowStaysOnTopHint);
    makeRoom(window);
}

bool DesktopOrder::isAlarms(const QWindow &window) const
{
    return alarmWindow && alarmWindow->windowHandle() == &window;
}

bool DesktopOrder::isFrame(const QWindow &window) const
{
    return std::any_of(m_frames.begin(), m_frames.end(), [&window](const QWidget *frame) {
        return frame && frame->windowHandle() == &window;
    });
}

QWindow *DesktopOrder::ownerOf(const QWindow &window) const
{
    QWindow *own = window.transientParent();
    if (own && !isFrame(*own) && !isAlarms(window))
        return own;
    if (window.isModal()) {
        for (auto modal = m_modal.rbegin(); modal != m_modal.rend(); ++modal) {
            if (*modal && *modal != &window && (*modal)->isVisible())
                return *modal;
        }
    }
    QWindow *frame = frameFor(window);
    return frame ? frame : own;
}

// Several may stand on one display: the one above.
QWindow *DesktopOrder::frameFor(const QWindow &window) const
{
    const QScreen *screen = QGuiApplication::screenAt(window.geometry().center());
    QWindow *above = nullptr;
    for (auto frame = m_frames.rbegin(); frame != m_frames.rend(); ++frame) {
        if (!*frame || !(*frame)->isVisible() || !(*frame)->windowHandle())
            continue;
        if (ScreenAt(ScreenNumber(*frame)) == screen)
            return (*frame)->windowHandle();
        above = above ? above : (*frame)->windowHandle();
    }
    return above;
}

void DesktopOrder::makeRoom(const QWindow &modal) const
{
    QWidget *widget = widgetOf(modal);
    if (!widget || !alarmWindow || !alarmWindow->isVisible() || widget->isMaximized() ||
        widget->isFullScreen())
        return;
    const QScreen *screen = modal.screen();
    const QRect place = widget->frameGeometry();
    const QPoint free =
        DesktopPlacement::clearOf(place, alarmWindow->frameGeometry(), screen->availableGeometry());
    if (free != place.topLeft())
        widget->move(free);
}

// Qt blocks no window that belongs to the modal one. The desktop is not told of it, so either can
// lie above the other.
void DesktopOrder::keepAlarmsUsable()
{
    m_isShowingAlarms = false;
    QWindow *alarms = alarmWindow ? alarmWindow->windowHandle() : nullptr;
    if (!alarms)
        return;
    QWindow *modal = QGuiApplication::modalWindow();
    if (modal && (modal == alarms || alarms->isAncestorOf(modal, QWindow::IncludeTransients)))
        return;
    QWindow *owner = modal ? modal : m_alarmsFrame.data();
    if (alarms->transientParent() != owner)
        alarms->setTransientParent(owner);
}

// The desktop hears of another owner when the window is shown.
void DesktopOrder::followFrame()
{
    QWindow *alarms = alarmWindow ? alarmWindow->windowHandle() : nullptr;
    if (!alarms || !alarmWindow->isVisible() || alarmWindow->isMinimized())
        return;
    if (QGuiApplication::mouseButtons() != Qt::NoButton)
        return m_following.start();
    QWindow *frame = frameFor(*alarms);
    if (!frame || frame == m_alarmsFrame)
        return;
    const bool wasActive = alarmWindow->isActiveWindow();
    alarmWindow->hide();
    alarmWindow->setAttribute(Qt::WA_ShowWithoutActivating, !wasActive);
    alarmWindow->show();
}

void DesktopOrder::leadBack()
{
    const bool isNeeded =
        std::any_of(m_frames.begin(), m_frames.end(), [](const QPointer<QWidget> &frame) {
            return frame && frame->isVisible() && frame->isMinimized();
        });
    if (!isNeeded && m_return)
        m_return.release()->deleteLater(); // it may be what was pressed
    if (!isNeeded || m_return)
        return;
    m_return = std::make_unique<ReturnButton>();
    connect(m_return.get(), &QPushButton::clicked, this, &DesktopOrder::restoreFrames);
    m_return->show();
}

void DesktopOrder::restoreFrames()
{
    if (!current)
        return;
    const QVector<QPointer<QWidget>> frames = current->m_frames; // restoring them activates them
    QWidget *last = nullptr;
    for (const QPointer<QWidget> &frame : frames) {
        if (!frame || !frame->isVisible() || !frame->isMinimized())
            continue;
        frame->setWindowState(frame->windowState() & ~Qt::WindowMinimized);
        last = frame;
    }
    if (last)
        last->raise();
    // The desktop brings the windows over the frames back after them, in an order of its own.
    QTimer::singleShot(followDelay, current, [] {
        if (current && alarmWindow && alarmWindow->isVisible() && !alarmWindow->isMinimized())
            raiseQuietly(*alarmWindow);
    });
}

void DesktopOrder::keepUsable(QWidget &alarms)
{
    alarmWindow = &alarms;
}

void DesktopOrder::raiseQuietly(QWidget &alarms)
{
    if (alarms.isActiveWindow())
        return alarms.raise();
    // Some desktops activate what is raised, unless it takes no focus. They look at that later.
    const QPointer<QWindow> window = alarms.windowHandle();
    window->setFlag(Qt::WindowDoesNotAcceptFocus);
    QTimer::singleShot(noFocusTime, window,
                       [window] { window->setFlag(Qt::WindowDoesNotAcceptFocus, false); });
    alarms.raise();
    QWidget *modal = QApplication::activeModalWidget();
    if (modal && !coversMost(modal->frameGeometry(), alarms.frameGeometry()))
        modal->raise();
}

} // namespace Widgets
