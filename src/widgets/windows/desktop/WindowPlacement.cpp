#include "widgets/windows/desktop/WindowPlacement.h"

#include "widgets/windows/WindowBasic.h"
#include "widgets/windows/WindowManager.h"
#include "widgets/windows/desktop/Screens.h"
#include "widgets/windows/frames/FrameGeometry.h"
#include "widgets/windows/frames/FrameWindow.h"

#include "nodes/actions/BasicPlacingAction.h"
#include "utils/convert/ValueConversions.h"

#include <QGuiApplication>
#include <QScreen>

#include <algorithm>
#include <limits>

namespace Widgets {

using Nodes::BasicPlacingAction;
using Nodes::BasicWindow;

namespace {

constexpr int besideGap = 18; // pixels
constexpr int decorationEdge = 4;
constexpr int decorationTitle = 28;

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

QWidget *WindowPlacement::outermost(QWidget *window)
{
    auto *frame = window ? qobject_cast<FrameWindow *>(window->parentWidget()) : nullptr;
    return frame ? frame : window;
}

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
    const FrameMapping mapping =
        g_pWindowManager ? g_pWindowManager->mappingOn(display) : FrameMapping();
    const bool isMappedAnew = window.mapping() != mapping;
    window.setMapping(mapping);
    QRect area = Utils::NRectToQRect(node.GetGeometry());
    if (action.GetPositionMode() == BasicPlacingAction::PositionPoint)
        area.moveTopLeft(Utils::NPointToQPoint(action.GetPoint()));
    area = QRect(mapping.toScreen(area.topLeft()), shownSize(mapping, area));
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
    QWidget *outer = outermost(&window);
    if (!outer->isWindow() || outer->isMaximized())
        return;
    const QRect was(window.mapToGlobal(QPoint(0, 0)), window.size());
    const QPointF corner = mapping.toScreen(before.toNode(was.topLeft()));
    const QSizeF size(was.width() * mapping.scaleX() / before.scaleX(),
                      was.height() * mapping.scaleY() / before.scaleY());
    putClient(window, QRect(corner.toPoint(), size.toSize()), window.getFrameFlag());
}

QSize WindowPlacement::shownSize(const FrameMapping &mapping, const QRect &drawn)
{
    return mapping.toScreen(drawn).size().boundedTo(DesktopSize());
}

void WindowPlacement::centre(QWidget &outermost, int display)
{
    const QScreen *screen = ScreenAt(display);
    QRect area(QPoint(), outermost.size());
    area.moveCenter((screen ? screen : QGuiApplication::primaryScreen())->geometry().center());
    outermost.move(area.topLeft());
}

QPoint WindowPlacement::clearOf(const QRect &window, const QRect &other, const QRect &screen)
{
    QPoint best = window.topLeft();
    if (!window.intersects(other))
        return best;
    int shortest = std::numeric_limits<int>::max();
    for (const QPoint &place :
         {QPoint(window.x(), other.top() - window.height()), QPoint(window.x(), other.bottom() + 1),
          QPoint(other.left() - window.width(), window.y()),
          QPoint(other.right() + 1, window.y())}) {
        const int distance = (place - window.topLeft()).manhattanLength();
        if (distance < shortest && screen.contains(QRect(place, window.size()))) {
            shortest = distance;
            best = place;
        }
    }
    return best;
}

void WindowPlacement::beside(QWidget &dialog, const QWidget &element)
{
    const QRect shown(element.mapToGlobal(QPoint(0, 0)),
                      element.mapToGlobal(element.rect().bottomRight()));
    const QScreen *screen = ScreenOf(shown);
    if (!screen)
        return;
    dialog.ensurePolished();
    const QSize size = dialog.testAttribute(Qt::WA_Resized) ? dialog.size() : dialog.sizeHint();
    // A window manager may add a title and edges, above this place or at it.
    const QRect room = screen->availableGeometry().adjusted(
        decorationEdge, decorationTitle, -decorationEdge, -decorationTitle - decorationEdge);
    dialog.move(FrameGeometry::beside(shown, size, room, decorationTitle + besideGap));
}

void WindowPlacement::follow(WindowBasic &window, const QRect &from, const QRect &to)
{
    const FrameMapping &mapping = window.mapping();
    const QSize size = shownSize(mapping, to);
    if (window.isWindow() || from.isNull()) {
        window.setGeometry(QRect(mapping.toScreen(to.topLeft()), size));
        return;
    }
    QWidget *outer = outermost(&window);
    if (outer->isMaximized())
        return;
    outer->move(outer->pos() + mapping.toScreen(to.topLeft()) - mapping.toScreen(from.topLeft()));
    const auto *frame = qobject_cast<FrameWindow *>(outer);
    outer->resize(frame ? frame->outerSize(size) : size);
}

void WindowPlacement::bringBack(QWidget &window, const QRect &gone)
{
    const QList<QScreen *> screens = QGuiApplication::screens();
    if (screens.isEmpty() || window.isMaximized() || window.isMinimized())
        return;
    const bool isSeen =
        std::any_of(screens.begin(), screens.end(), [&window](const QScreen *screen) {
            return screen->geometry().intersects(window.frameGeometry());
        });
    QRect place = window.frameGeometry();
    if (!isSeen && !gone.isNull())
        place.translate(screens.first()->geometry().topLeft() - gone.topLeft());
    if (FrameGeometry::reachable(place, FrameGeometry::TitleStrip) != place.topLeft())
        place.moveTopLeft(FrameGeometry::inside(place));
    if (place != window.frameGeometry())
        window.move(place.topLeft());
}

void WindowPlacement::present(QWidget &window)
{
    QWidget *outer = outermost(&window);
    outer->setWindowState(outer->windowState() & ~Qt::WindowMinimized); // show() would leave it so
    outer->show();
    outer->raise();
    outer->setFocus(Qt::ActiveWindowFocusReason);
    outer->activateWindow();
}

} // namespace Widgets
