#include "widgets/dialogs/DialogPlacement.h"

#include "widgets/windows/desktop/Screens.h"

#include <QGuiApplication>
#include <QScreen>
#include <QWidget>

#include <algorithm>

namespace Widgets {

namespace {

constexpr int besideGap = 18; // pixels
constexpr int edge = 4;
constexpr int title = 28;

// A window manager may add a title and edges, above the place that is asked for or at it.
QRect roomOn(const QScreen &screen, const QWidget &dialog)
{
    const QRect room = screen.availableGeometry();
    const bool isBare = dialog.windowFlags().testFlag(Qt::FramelessWindowHint);
    return isBare ? room : room.adjusted(edge, title, -edge, -title - edge);
}

QSize sizeOf(QWidget &dialog)
{
    dialog.ensurePolished();
    return dialog.testAttribute(Qt::WA_Resized) ? dialog.size() : dialog.sizeHint();
}

/// Nearest place on the screen; of what is larger the top and the left are on it.
QPoint inside(const QPoint &place, const QSize &size, const QRect &screen)
{
    const int right = std::max(screen.left(), screen.right() + 1 - size.width());
    const int bottom = std::max(screen.top(), screen.bottom() + 1 - size.height());
    return {std::clamp(place.x(), screen.left(), right),
            std::clamp(place.y(), screen.top(), bottom)};
}

} // namespace

QPoint DialogPlacement::beside(const QRect &what, const QSize &size, const QRect &screen, int gap)
{
    const QRect kept = what.adjusted(-gap, -gap, gap, gap);
    const QPoint centred = what.center() - QPoint(size.width() / 2, size.height() / 2);
    const QPoint places[] = {{centred.x(), kept.bottom() + 1},
                             {centred.x(), kept.top() - size.height()},
                             {kept.right() + 1, centred.y()},
                             {kept.left() - size.width(), centred.y()}};
    for (const QPoint &place : places) {
        const QRect moved(inside(place, size, screen), size);
        if (screen.contains(moved) && !moved.intersects(what))
            return moved.topLeft();
    }
    return inside(places[0], size, screen);
}

void DialogPlacement::centre(QWidget &dialog, int display)
{
    const QScreen *screen = ScreenAt(display);
    QRect area(QPoint(), sizeOf(dialog));
    area.moveCenter((screen ? screen : QGuiApplication::primaryScreen())->geometry().center());
    dialog.move(area.topLeft());
}

void DialogPlacement::beside(QWidget &dialog, const QWidget &element)
{
    const QRect shown(element.mapToGlobal(QPoint(0, 0)),
                      element.mapToGlobal(element.rect().bottomRight()));
    if (const QScreen *screen = ScreenOf(shown))
        dialog.move(beside(shown, sizeOf(dialog), roomOn(*screen, dialog), title + besideGap));
}

void DialogPlacement::fit(QWidget &dialog)
{
    const QRect wanted(dialog.pos(), sizeOf(dialog));
    const QScreen *screen = QGuiApplication::screenAt(wanted.center());
    if (!screen)
        screen = ScreenOf(wanted);
    if (!screen || dialog.isMaximized() || dialog.isFullScreen())
        return;
    const QRect room = roomOn(*screen, dialog);
    const QSize size = wanted.size().boundedTo(room.size());
    if (size != wanted.size())
        dialog.resize(size);
    const QPoint place = inside(wanted.topLeft(), dialog.size(), room);
    if (place != wanted.topLeft())
        dialog.move(place);
}

} // namespace Widgets
