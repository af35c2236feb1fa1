#include "widgets/windows/frames/FrameGeometry.h"

#include <QGuiApplication>
#include <QScreen>

#include <algorithm>
#include <limits>

namespace Widgets {

namespace {

// Part of the title bar that stays on a screen: enough for a finger.
constexpr int catchWidth = 48;

struct Span
{
    int start;
    int end; // exclusive
};

// One axis of a resize: which end moves and how far it may.
Span resizedSpan(Span span, bool movesStart, bool movesEnd, int delta, int minimum, int maximum)
{
    if (movesStart)
        span.start = std::clamp(span.start + delta, span.end - maximum, span.end - minimum);
    else if (movesEnd)
        span.end = std::clamp(span.end + delta, span.start + minimum, span.start + maximum);
    return span;
}

QVector<QRect> availableScreens()
{
    QVector<QRect> screens;
    for (const QScreen *screen : QGuiApplication::screens())
        screens.append(screen->availableGeometry());
    return screens;
}

/// Of the places that `placeOn` gives for each screen the one nearest to where the frame is.
template <class PlaceOn>
QPoint nearest(const QRect &frame, const QVector<QRect> &screens, PlaceOn placeOn)
{
    QPoint best = frame.topLeft();
    int shortest = std::numeric_limits<int>::max();
    for (const QRect &screen : screens) {
        const QPoint place = placeOn(screen);
        const int distance = (place - frame.topLeft()).manhattanLength();
        if (distance < shortest) {
            shortest = distance;
            best = place;
        }
    }
    return best;
}

} // namespace

QRect FrameGeometry::resized(const QRect &start, int edges, const QPoint &delta,
                             const QSize &minimum, const QSize &maximum)
{
    const QSize largest = maximum.expandedTo(minimum);
    const Span x = resizedSpan({start.x(), start.x() + start.width()}, edges & LeftEdge,
                               edges & RightEdge, delta.x(), minimum.width(), largest.width());
    const Span y = resizedSpan({start.y(), start.y() + start.height()}, edges & TopEdge,
                               edges & BottomEdge, delta.y(), minimum.height(), largest.height());
    return {x.start, y.start, x.end - x.start, y.end - y.start};
}

QPoint FrameGeometry::reachable(const QRect &frame, int titleHeight, const QVector<QRect> &screens)
{
    return nearest(frame, screens, [&](const QRect &screen) {
        const int part = std::min(catchWidth, frame.width());
        const int left = screen.left() + part - frame.width();
        const int right = std::max(left, screen.right() + 1 - part);
        const int bottom = std::max(screen.top(), screen.bottom() + 1 - titleHeight);
        return QPoint(std::clamp(frame.x(), left, right),
                      std::clamp(frame.y(), screen.top(), bottom));
    });
}

QPoint FrameGeometry::reachable(const QRect &frame, int titleHeight)
{
    return reachable(frame, titleHeight, availableScreens());
}

QPoint FrameGeometry::inside(const QRect &frame, const QVector<QRect> &screens)
{
    return nearest(frame, screens, [&](const QRect &screen) {
        const int right = std::max(screen.left(), screen.right() + 1 - frame.width());
        const int bottom = std::max(screen.top(), screen.bottom() + 1 - frame.height());
        return QPoint(std::clamp(frame.x(), screen.left(), right),
                      std::clamp(frame.y(), screen.top(), bottom));
    });
}

QPoint FrameGeometry::inside(const QRect &frame)
{
    return inside(frame, availableScreens());
}

} // namespace Widgets
