#pragma once

#include <QApplication>
#include <QMouseEvent>
#include <QWidget>

/// Sends a mouse event as the platform does: with its place on the screen, later than the last one.
/// `button` is the one pressed or let go; while moving, the one held.
inline void sendMouse(QWidget &target, QEvent::Type type, const QPoint &point,
                      Qt::MouseButton button = Qt::LeftButton,
                      Qt::KeyboardModifiers modifiers = Qt::NoModifier)
{
    static ulong timestamp = 1000;
    QMouseEvent event(type, point, target.mapToGlobal(point),
                      type == QEvent::MouseMove ? Qt::NoButton : button,
                      type == QEvent::MouseButtonRelease ? Qt::NoButton : button, modifiers);
    event.setTimestamp(++timestamp);
    QApplication::sendEvent(&target, &event);
}
