#include "widgets/windows/desktop/OverlayWindows.h"

#include "widgets/windows/DesktopContext.h"

#include "nodes/system/systemVisualization.h"

#include <QWidget>

namespace Widgets {

namespace {

bool owns(const QWidget &owner, const QWidget &modal)
{
    const QWidget *parent = modal.parentWidget();
    while (parent && parent->window() != &owner)
        parent = parent->window()->parentWidget();
    return parent;
}

} // namespace

OverlayWindows::OverlayWindows(QObject *parent) : QObject(parent) {}

OverlayWindows &OverlayWindows::instance()
{
    static OverlayWindows windows;
    return windows;
}

void OverlayWindows::add(QWidget *window)
{
    if (!window || currentModal() == window)
        return;
    if (!m_windows.removeOne(window))
        connect(window, &QObject::destroyed, this, [this, window] { remove(window); });
    m_windows.append(window);
    emit changed();
}

void OverlayWindows::remove(QWidget *window)
{
    if (!m_windows.removeOne(window))
        return;
    disconnect(window, &QObject::destroyed, this, nullptr);
    emit changed();
}

QWidget *OverlayWindows::currentModal() const
{
    return m_windows.isEmpty() ? nullptr : m_windows.last();
}

bool OverlayWindows::isBlocked(const QWidget &window) const
{
    for (auto modal = m_windows.rbegin(); modal != m_windows.rend(); ++modal) {
        if (*modal == &window)
            return false;
        if ((*modal)->windowModality() != Qt::WindowModal || owns(window, **modal))
            return true;
    }
    return false;
}

QColor OverlayWindows::overlayColor() const
{
    const Nodes::systemVisualization *visualization = DesktopContext::visualization();
    const Nodes::NColor color =
        visualization ? visualization->GetOverlayColor() : Nodes::NColor(0, 0, 0, 128);
    return QColor(color.red, color.green, color.blue, color.alpha);
}

} // namespace Widgets
