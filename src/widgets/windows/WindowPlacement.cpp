#include "widgets/windows/WindowPlacement.h"

#include "widgets/windows/FrameWindow.h"
#include "widgets/windows/Screens.h"
#include "widgets/windows/WindowBasic.h"

#include "nodes/actions/BasicPlacingAction.h"
#include "utils/ValueConversions.h"

#include <QGuiApplication>
#include <QScreen>

#include <algorithm>

namespace Widgets {

using Nodes::BasicPlacingAction;
using Nodes::BasicWindow;

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

QRect WindowPlacement::clientArea(const BasicPlacingAction &action, const BasicWindow &node,
                                  int display)
{
    QRect area = Utils::NRectToQRect(node.GetGeometry());
    if (action.GetPositionMode() == BasicPlacingAction::PositionPoint)
        area.moveTopLeft(Utils::NPointToQPoint(action.GetPoint()));
    if (const QScreen *screen = ScreenAt(display))
        area.translate(screen->geometry().topLeft());
    if (action.GetPositionMode() == BasicPlacingAction::PositionCenter)
        area.moveCenter(ScreenOf(area)->geometry().center());
    return area;
}

void WindowPlacement::place(WindowBasic &window, const QRect &clientArea)
{
    auto *frame = qobject_cast<FrameWindow *>(window.parentWidget());
    if (!frame) {
        window.setGeometry(clientArea);
        return;
    }
    const int width = frame->getFrameWidth();
    frame->move(clientArea.topLeft() - QPoint(width, width + frame->getTitleHeight()));
}

void WindowPlacement::centre(QWidget &outermost, int display)
{
    const QScreen *screen = ScreenAt(display);
    QRect area(QPoint(), outermost.size());
    area.moveCenter((screen ? screen : QGuiApplication::primaryScreen())->geometry().center());
    outermost.move(area.topLeft());
}

void WindowPlacement::follow(WindowBasic &window, const QRect &from, const QRect &to)
{
    if (window.isWindow() || from.isNull()) {
        window.setGeometry(to);
        return;
    }
    QWidget *outer = outermost(&window);
    if (outer->isMaximized())
        return;
    outer->move(outer->pos() + to.topLeft() - from.topLeft());
    const auto *frame = qobject_cast<FrameWindow *>(outer);
    outer->resize(frame ? frame->outerSize(to.size()) : to.size());
}

void WindowPlacement::bringBack(QWidget &window, const QRect &gone)
{
    const QList<QScreen *> screens = QGuiApplication::screens();
    const bool isSeen =
        std::any_of(screens.begin(), screens.end(), [&window](const QScreen *screen) {
            return screen->geometry().intersects(window.frameGeometry());
        });
    if (!isSeen && !screens.isEmpty())
        window.move(window.pos() + screens.first()->geometry().topLeft() - gone.topLeft());
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
