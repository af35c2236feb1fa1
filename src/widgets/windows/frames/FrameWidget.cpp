#include "widgets/windows/frames/FrameWidget.h"

#include "widgets/context/SceneContext.h"
#include "widgets/windows/DesktopContext.h"
#include "widgets/windows/WindowBasic.h"
#include "widgets/windows/desktop/EndRequest.h"
#include "widgets/windows/desktop/OverlayWidget.h"
#include "widgets/windows/desktop/OverlayWindows.h"
#include "widgets/windows/desktop/Screens.h"
#include "widgets/windows/desktop/WindowPlacement.h"
#include "widgets/windows/frames/FrameWindow.h"

#include <QCloseEvent>

namespace Widgets {

namespace {

// Around a fitted frame; like the background that windows have unless told otherwise.
const QColor surround(214, 218, 222);

// Where the window is drawn: its widget may be smaller.
QRect drawnAt(const QWidget &widget)
{
    const auto *window = qobject_cast<const WindowBasic *>(&widget);
    return window && !window->nodeGeometry().isNull() ? window->nodeGeometry() : widget.geometry();
}

} // namespace

FrameWidget::FrameWidget(QWidget *parent) : QWidget(parent)
{
    if (SceneContext::process()->isRuntime())
        connect(&OverlayWindows::instance(), &OverlayWindows::changed, this,
                &FrameWidget::updateOverlay);
}

void FrameWidget::setWindows(const QList<QWidget *> &windows)
{
    m_windows.clear();
    m_drawn = QRect(0, 0, 0, 0);
    for (QWidget *window : windows) {
        m_drawn = m_windows.isEmpty() ? drawnAt(*window) : m_drawn | drawnAt(*window);
        m_windows.append(window);
        window->setParent(this);
        window->show(); // appears with the frame
    }
    takeMapping(FrameMapping(), m_drawn.topLeft());
    setFixedSize(m_drawn.size().boundedTo(DesktopSize()));
    move(m_drawn.topLeft());
}

bool FrameWidget::isFitted() const
{
    return m_node && m_node->GetFit() != Nodes::BasicFrame::FitAsDrawn && !m_drawn.isEmpty();
}

void FrameWidget::takeDisplay(const QRect &display)
{
    if (display == m_display)
        return;
    m_display = display;
    const auto *decoration = qobject_cast<const FrameWindow *>(parentWidget());
    QRect area = display;
    if (isFitted() && decoration)
        area = decoration->clientArea(display);
    const auto fit = m_node ? m_node->GetFit() : Nodes::BasicFrame::FitAsDrawn;
    const FrameMapping mapping = FrameMapping::fitted(m_drawn, area, fit);
    if (!isFitted())
        area = mapping.toScreen(m_drawn);
    setAutoFillBackground(isFitted());
    setPalette(isFitted() ? QPalette(surround) : QPalette());
    placeOuter(isFitted() ? display : area, area.size().boundedTo(DesktopSize()));
    takeMapping(mapping, area.topLeft());
}

// A decorated frame that was drawn for a place has its title there, so that it can be seen.
void FrameWidget::placeOuter(const QRect &area, const QSize &size)
{
    setFixedSize(size);
    auto *decoration = qobject_cast<FrameWindow *>(parentWidget());
    if (decoration)
        decoration->resize(decoration->outerSize(size));
    window()->move(area.topLeft());
}

void FrameWidget::takeMapping(const FrameMapping &mapping, const QPoint &corner)
{
    m_mapping = mapping;
    for (WindowBasic *window : findChildren<WindowBasic *>())
        WindowPlacement::remap(*window, mapping);
    for (const QPointer<QWidget> &window : qAsConst(m_windows)) {
        if (!window || window->parentWidget() != this)
            continue;
        const QRect place = mapping.toScreen(drawnAt(*window)).translated(-corner);
        window->setGeometry(QRect(place.topLeft(), place.size().boundedTo(DesktopSize())));
    }
}

FrameWidget *FrameWidget::inside(const QWidget &window)
{
    const auto *decorated = qobject_cast<const FrameWindow *>(&window);
    const QWidget *frame = decorated ? decorated->widget() : &window;
    return const_cast<FrameWidget *>(qobject_cast<const FrameWidget *>(frame));
}

void FrameWidget::updateOverlay()
{
    if (isWindow()) {
        m_overlay = OverlayWidget::renew(*this, m_overlay);
        return;
    }
    delete m_overlay;
}

OverlayWidget *FrameWidget::overlay() const
{
    return m_overlay;
}

bool FrameWidget::event(QEvent *event)
{
    if (event->type() == QEvent::WindowActivate && m_overlay)
        m_overlay->raise();
    return QWidget::event(event);
}

void FrameWidget::showEvent(QShowEvent *event)
{
    QWidget::showEvent(event);
    if (SceneContext::process()->isRuntime())
        updateOverlay();
}

bool FrameWidget::requestEnd()
{
    // Frames that are closed because the station ends are nobody's request.
    if (!m_node || !SceneContext::process()->isRuntime() || DesktopContext::isStationEnding())
        return false;
    EndRequest::ask(*m_node);
    return true;
}

// What comes from the desktop is the operator's wish, the rest the program's.
void FrameWidget::closeEvent(QCloseEvent *event)
{
    if (event->spontaneous() && requestEnd())
        return event->ignore();
    event->setAccepted(WindowBasic::mayCloseAll(*this));
}

} // namespace Widgets
