#include "widgets/windows/desktop/DesktopPlacement.h"

#include "widgets/windows/desktop/Screens.h"
#include "widgets/windows/frames/FrameGeometry.h"
#include "widgets/windows/frames/FrameMapping.h"
#include "widgets/windows/frames/WindowDecoration.h"

#include <QGuiApplication>
#include <QScreen>
#include <QWidget>

#include <algorithm>
#include <limits>

namespace Widgets {

QWidget *DesktopPlacement::outermost(QWidget *window)
{
    return WindowDecoration::around(window) ? window->parentWidget() : window;
}

QSize DesktopPlacement::shownSize(const FrameMapping &mapping, const QRect &drawn)
{
    return mapping.toScreen(drawn).size().boundedTo(DesktopSize());
}

QPoint DesktopPlacement::clearOf(const QRect &window, const QRect &other, const QRect &screen)
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

void DesktopPlacement::bringBack(QWidget &window, const QRect &gone)
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

void DesktopPlacement::present(QWidget &window)
{
    QWidget *outer = outermost(&window);
    outer->setWindowState(outer->windowState() & ~Qt::WindowMinimized); // show() would leave it so
    outer->show();
    outer->raise();
    outer->setFocus(Qt::ActiveWindowFocusReason);
    outer->activateWindow();
}

} // namespace Widgets
