#pragma once

#include <QString>

class QWidget;

namespace Widgets {

/// How the parts of an event list look, in one place. GUI thread.
struct EventListLook
{
    static constexpr int Gap = 8;    ///< pixels between parts
    static constexpr int Touch = 40; ///< least height of what a finger hits
    static constexpr int Row = 32;   ///< least height of a row

    static QString toolBarStyle();
    /// Fields, buttons and texts around the table.
    static QString partsStyle();
    /// The window on the desktop that the widget is seen in; null without one.
    static QWidget *desktopWindowOf(const QWidget *widget);
};

} // namespace Widgets
