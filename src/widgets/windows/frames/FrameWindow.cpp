#include "widgets/windows/frames/FrameWindow.h"

#include "widgets/context/SceneContext.h"
#include "widgets/windows/WindowBasic.h"
#include "widgets/windows/desktop/OverlayWidget.h"
#include "widgets/windows/desktop/OverlayWindows.h"
#include "widgets/windows/frames/FrameContent.h"
#include "widgets/windows/frames/FrameGeometry.h"
#include "widgets/windows/frames/FrameWindowGrip.h"

#include <QCloseEvent>
#include <QDialog>

namespace Widgets {

namespace {

// Room for the close button and a few letters of the title.
constexpr QSize smallestClient(120, 0);

// Null when nothing inside is handling an event.
ProxyView *busyView(const QWidget &window)
{
    for (ProxyView *view : window.findChildren<ProxyView *>()) {
        if (!view->isIdle())
            return view;
    }
    return nullptr;
}

bool isRuntime()
{
    return SceneContext::process()->isRuntime();
}

} // namespace

FrameWindow::FrameWindow(QWidget *parent)
    : QWidget(parent, (parent ? Qt::Dialog : Qt::Window) | Qt::FramelessWindowHint),
      m_frame(new Frame(this))
{
    setAttribute(Qt::WA_DeleteOnClose);
    setMouseTracking(true);
    connect(m_frame, &Frame::closeRequested, this, &FrameWindow::onClose);
    if (isRuntime())
        connect(&OverlayWindows::instance(), &OverlayWindows::changed, this,
                &FrameWindow::updateOverlay);
}

FrameWindow::FrameWindow(WindowBasic *window, QWidget *parent) : FrameWindow(parent)
{
    if (!window)
        return;
    QWidget *owner = window->parentWidget();
    setParent(owner ? owner : parent, Qt::Dialog | Qt::FramelessWindowHint);
    setWindowModality(window->getModality());
    const QPoint client = window->mapToGlobal(QPoint(0, 0));
    const QSize size = window->size();
    adopt(window);
    window->setMinimumSize(0, 0);
    window->setMaximumSize(QWIDGETSIZE_MAX, QWIDGETSIZE_MAX);
    connect(window, &QObject::destroyed, this, &QWidget::close);
    if (!window->getFrameFlag()) {
        const QRect outer(client - m_frame->clientRect().topLeft(), outerSize(size));
        setGeometry(QRect(FrameGeometry::reachable(outer, getTitleHeight()), outer.size()));
    }
    setVisibleButtonClose(window->getCloseBtnVisible());
    setWindowTitle(window->getStrTitle());
}

// Children die after this object has stopped being a frame window: nothing may reach it then.
FrameWindow::~FrameWindow()
{
    OverlayWindows::instance().disconnect(this);
    OverlayWindows::instance().remove(this);
    if (m_widget)
        m_widget->disconnect(this);
}

WindowBasic *FrameWindow::windowBasic() const
{
    return qobject_cast<WindowBasic *>(m_widget.data());
}

Nodes::BasicWindow *FrameWindow::getNode() const
{
    const WindowBasic *window = windowBasic();
    return window ? window->getNode() : nullptr;
}

int FrameWindow::getFrameWidth() const
{
    return Frame::EdgeWidth;
}

int FrameWindow::getTitleHeight() const
{
    return m_frame->titleHeight();
}

QSize FrameWindow::outerSize(const QSize &client) const
{
    return m_frame->outerSize(client);
}

QRect FrameWindow::clientArea(const QRect &outer) const
{
    const QSize border = outerSize({0, 0});
    return {outer.topLeft() + QPoint(getFrameWidth(), getFrameWidth() + getTitleHeight()),
            outer.size() - border};
}

void FrameWindow::adopt(QWidget *widget)
{
    if (m_widget && m_widget != widget)
        delete m_widget;
    m_dialog = nullptr;
    m_widget = widget;
    if (!widget)
        return;
    // Also when this is its parent already: it would stay a window of its own.
    widget->setParent(this, widget->windowFlags() & ~Qt::WindowType_Mask);
    placeParts();
    widget->show();
    connect(widget, &QWidget::windowTitleChanged, this, &FrameWindow::takeHostedTitle);
}

void FrameWindow::setWidget(QWidget *widget)
{
    QSize size;
    if (widget)
        size = widget->testAttribute(Qt::WA_Resized) ? widget->size() : widget->sizeHint();
    adopt(widget);
    if (!widget)
        return;
    resize(outerSize(size.expandedTo(widget->minimumSize())));
    if (!widget->windowTitle().isEmpty())
        takeHostedTitle(widget->windowTitle());
}

void FrameWindow::setDialog(QDialog *dialog)
{
    setWidget(dialog);
    m_dialog = dialog;
    overrideWindowFlags(Qt::Dialog | Qt::FramelessWindowHint);
    if (dialog)
        connect(dialog, &QDialog::finished, this, &QWidget::close);
}

void FrameWindow::setResizeableFrame(bool isResizeable)
{
    m_frame->setResizeable(isResizeable);
}

void FrameWindow::setVisibleButtonClose(bool isVisible)
{
    m_frame->setVisibleButtonClose(isVisible);
}

void FrameWindow::setWindowTitle(const QString &title, bool isOwn)
{
    if (isOwn)
        m_ownTitle = title;
    m_frame->setTitle(title);
    QWidget::setWindowTitle(title);
}

void FrameWindow::takeHostedTitle(const QString &title)
{
    if (m_ownTitle.isEmpty())
        setWindowTitle(title);
}

int FrameWindow::exec()
{
    auto *dialog = qobject_cast<QDialog *>(m_widget.data());
    if (!dialog)
        return 0;
    const QPointer<FrameWindow> self = this;
    if (windowModality() == Qt::NonModal)
        setWindowModality(Qt::ApplicationModal);
    show();
    raise();
    activateWindow();
    const int result = dialog->exec();
    if (self)
        close();
    return result;
}

void FrameWindow::updateOverlay()
{
    if (m_isDimmable)
        m_overlay = OverlayWidget::renew(*this, m_overlay);
}

QSize FrameWindow::sizeHint() const
{
    return outerSize(m_widget ? m_widget->sizeHint() : QSize(640, 480));
}

// What the hosted widget would like is no limit: a scene view can be shown at any size.
QSize FrameWindow::minimumSizeHint() const
{
    QSize client = smallestClient;
    if (m_widget)
        client = client.expandedTo(m_dialog ? m_dialog->minimumSizeHint() : QSize())
                     .expandedTo(m_widget->minimumSize());
    return outerSize(client);
}

void FrameWindow::onClose()
{
    auto *content = dynamic_cast<FrameContent *>(m_widget.data());
    if (!content || !content->requestEnd())
        close();
}

OverlayWidget *FrameWindow::overlay() const
{
    return m_overlay;
}

// Qt would cut a window that was given no size down to a part of its screen.
void FrameWindow::setVisible(bool isVisible)
{
    const QSize client = windowBasic() ? windowBasic()->sizeHint() : QSize();
    if (isVisible && client.isValid() && !testAttribute(Qt::WA_Resized))
        resize(outerSize(client));
    QWidget::setVisible(isVisible);
}

bool FrameWindow::event(QEvent *event)
{
    ProxyView *busy = event->type() == QEvent::DeferredDelete ? busyView(*this) : nullptr;
    if (busy) {
        busy->deleteWhenIdle(this);
        return true;
    }
    // What is hosted has grown by itself to its least size, and that may have shrunk since.
    if (event->type() == QEvent::LayoutRequest)
        placeParts();
    if (event->type() == QEvent::WindowActivate && m_overlay)
        m_overlay->raise();
    return QWidget::event(event);
}

void FrameWindow::placeParts()
{
    m_frame->setGeometry(rect());
    if (m_widget)
        m_widget->setGeometry(m_frame->clientRect());
}

void FrameWindow::resizeEvent(QResizeEvent *event)
{
    placeParts();
    QWidget::resizeEvent(event);
}

void FrameWindow::showEvent(QShowEvent *event)
{
    QWidget::showEvent(event);
    if (isModal())
        OverlayWindows::instance().add(this);
    if (isRuntime())
        updateOverlay();
}

void FrameWindow::hideEvent(QHideEvent *event)
{
    OverlayWindows::instance().remove(this);
    QWidget::hideEvent(event);
}

// The hosted windows know whether the user may close them; a dialog ends as if cancelled.
void FrameWindow::closeEvent(QCloseEvent *event)
{
    auto *content = dynamic_cast<FrameContent *>(m_widget.data());
    if (content && event->spontaneous() && content->requestEnd())
        return event->ignore();
    if (m_dialog && m_dialog->isVisible())
        m_dialog->reject();
    const bool dialogStays = m_dialog && m_dialog->isVisible();
    event->setAccepted(!dialogStays && WindowBasic::mayCloseAll(*this));
    if (event->isAccepted() && windowBasic())
        emit windowBasic()->closed();
}

} // namespace Widgets
