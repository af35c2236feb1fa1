#include "widgets/elements/input/DialogPlace.h"

#include <QGuiApplication>
#include <QScreen>
#include <QWidget>

#include <algorithm>

namespace Widgets {

namespace {

// A window manager may add a title and edges, above the dialog's place or at it. Pixels.
constexpr int titleHeight = 28;
constexpr int edgeWidth = 4;
constexpr int gapWidth = 18;

/// Nearest place on the screen; of what is larger the top and the left are on it.
QPoint inside(const QPoint &place, const QSize &size, const QRect &screen)
{
    const int right = std::max(screen.left(), screen.right() + 1 - size.width());
    const int bottom = std::max(screen.top(), screen.bottom() + 1 - size.height());
    return {std::clamp(place.x(), screen.left(), right),
            std::clamp(place.y(), screen.top(), bottom)};
}

} // namespace

QPoint DialogPlace::beside(const QRect &what, const QSize &size, const QRect &screen, int gap)
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

void DialogPlace::besideElement(QWidget &dialog, const QWidget &element)
{
    const QRect shown(element.mapToGlobal(QPoint(0, 0)),
                      element.mapToGlobal(element.rect().bottomRight()));
    const QScreen *holding = QGuiApplication::screenAt(shown.topLeft());
    const QScreen *screen = holding ? holding : QGuiApplication::primaryScreen();
    if (!screen)
        return;
    dialog.ensurePolished();
    const QSize size = dialog.testAttribute(Qt::WA_Resized) ? dialog.size() : dialog.sizeHint();
    const QRect room = screen->availableGeometry().adjusted(edgeWidth, titleHeight, -edgeWidth,
                                                            -titleHeight - edgeWidth);
    dialog.move(beside(shown, size, room, titleHeight + gapWidth));
}

} // namespace Widgets
