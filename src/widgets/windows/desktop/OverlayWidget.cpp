#include "widgets/windows/desktop/OverlayWidget.h"

#include "widgets/windows/desktop/OverlayWindows.h"

#include <QEvent>
#include <QPainter>

namespace Widgets {

OverlayWidget::OverlayWidget(QWidget *parent) : QWidget(parent)
{
    setObjectName(QStringLiteral("overlay"));
    setGeometry(parent->rect());
    parent->installEventFilter(this);
}

void OverlayWidget::setColor(const QColor &color)
{
    m_color = color;
    update();
}

OverlayWidget *OverlayWidget::renew(QWidget &window, OverlayWidget *previous)
{
    delete previous;
    const OverlayWindows &windows = OverlayWindows::instance();
    if (!windows.isBlocked(window))
        return nullptr;
    auto *overlay = new OverlayWidget(&window);
    overlay->setColor(windows.overlayColor());
    overlay->raise();
    overlay->show();
    return overlay;
}

bool OverlayWidget::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == parentWidget() && event->type() == QEvent::Resize)
        resize(parentWidget()->size());
    return QWidget::eventFilter(watched, event);
}

void OverlayWidget::paintEvent(QPaintEvent *)
{
    QPainter(this).fillRect(rect(), m_color);
}

} // namespace Widgets
