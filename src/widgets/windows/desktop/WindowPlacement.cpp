#include "widgets/windows/desktop/WindowPlacement.h"

#include "widgets/windows/DesktopContext.h"
#include "widgets/windows/WindowBasic.h"
#include "widgets/windows/desktop/DesktopPlacement.h"
#include "widgets/windows/desktop/Screens.h"
#include "widgets/windows/frames/FrameGeometry.h"
#include "widgets/windows/frames/FrameWindow.h"

#include "nodes/actions/BasicPlacingAction.h"
#include "utils/convert/ValueConversions.h"

#include <QScreen>

namespace Widgets {

using Nodes::BasicPlacingAction;
using Nodes::BasicWindow;

namespace {

// Gives the window's client area that place and, unless it keeps its own, that size, with its title
// within reach.
void putClient(WindowBasic &window, const QRect &client, bool keepsSize)
{
    auto *frame = qobject_cast<FrameWindow *>(window.parentWidget());
    if (!frame) {
        window.setGeometry(client);
        return;
    }
    const QPoint inner = frame->clientArea(QRect()).topLeft();
    const QRect outer(client.topLeft() - inner,
                      keepsSize ? frame->size() : frame->outerSize(client.size()));
    frame->move(FrameGeometry::reachable(outer, frame->getTitleHeight()));
    if (!keepsSize)
        frame->resize(outer.size());
}

} // namespace

QWidget *WindowPlacement::decorate(WindowBasic &window)
{
    const BasicWindow *node = window.getNode();
    if (!node)
        return &window;
    const BasicWindow::enBorderType border = node->GetBorderType();
    if (!node->HasFrame() && border == BasicWindow::BorderFrameless) {
        window.setWindowFlags(Qt::Dialog | Qt::FramelessWindowHint);
        window.setAttribute(Qt::WA_TranslucentBackground);
        window.setWindowModality(window.getModality());
        return &window;
    }
    window.setWindowFlags(Qt::Dialog);
    auto *frame = new FrameWindow(&window, window.parentWidget());
    if (border != BasicWindow::BorderFrameless)
        frame->setResizeableFrame(border == BasicWindow::BorderResizable);
    return frame;
}

void WindowPlacement::place(WindowBasic &window, const BasicPlacingAction &action,
                            const BasicWindow &node, int display)
{
    const DesktopContext *desktop = DesktopContext::current();
    const FrameMapping mapping = desktop ? desktop->mappingOn(display) : FrameMapping();
    const bool isMappedAnew = window.mapping() != mapping;
    window.setMapping(mapping);
    QRect area = Utils::NRectToQRect(node.GetGeometry());
    if (action.GetPositionMode() == BasicPlacingAction::PositionPoint)
        area.moveTopLeft(Utils::NPointToQPoint(action.GetPoint()));
    area = QRect(mapping.toScreen(area.topLeft()), DesktopPlacement::shownSize(mapping, area));
    if (action.GetPositionMode() == BasicPlacingAction::PositionCenter)
        area.moveCenter(ScreenOf(area)->geometry().center());
    putClient(window, area, window.getFrameFlag() || !isMappedAnew);
}

void WindowPlacement::remap(WindowBasic &window, const FrameMapping &mapping)
{
    const FrameMapping before = window.mapping();
    if (before == mapping)
        return;
    window.setMapping(mapping);
    QWidget *outer = DesktopPlacement::outermost(&window);
    if (!outer->isWindow() || outer->isMaximized())
        return;
    const QRect was(window.mapToGlobal(QPoint(0, 0)), window.size());
    const QPointF corner = mapping.toScreen(before.toNode(was.topLeft()));
    const QSizeF size(was.width() * mapping.scaleX() / before.scaleX(),
                      was.height() * mapping.scaleY() / before.scaleY());
    putClient(window, QRect(corner.toPoint(), size.toSize()), window.getFrameFlag());
}

} // namespace Widgets
