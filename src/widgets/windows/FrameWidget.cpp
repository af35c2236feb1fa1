#include "widgets/windows/FrameWidget.h"

#include "widgets/windows/OverlayWidget.h"
#include "widgets/windows/OverlayWindows.h"
#include "widgets/windows/WindowBasic.h"
#include "widgets/windows/WindowManager.h"

#include <QCloseEvent>

namespace Widgets {

FrameWidget::FrameWidget(QWidget *parent) : QWidget(parent)
{
    if (WindowManager::GetWorkMode() == Nodes::WorkModeRuntime)
        connect(&OverlayWindows::instance(), &OverlayWindows::changed, this,
                &FrameWidget::updateOverlay);
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
    if (WindowManager::GetWorkMode() == Nodes::WorkModeRuntime)
        updateOverlay();
}

void FrameWidget::closeEvent(QCloseEvent *event)
{
    event->setAccepted(WindowBasic::mayCloseAll(*this));
}

} // namespace Widgets
