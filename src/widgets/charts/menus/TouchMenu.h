#pragma once

#include "widgets/WidgetsExport.h"

#include <QMenu>

namespace Widgets {

/// Menu of a chart with entries that a finger hits. It belongs to the window that `near` is seen
/// in, also when that stands in a scene, and goes when it is closed. GUI thread.
class WIDGETS_EXPORT TouchMenu : public QMenu
{
    Q_OBJECT

public:
    explicit TouchMenu(const QWidget *near);
    /// A menu below another one.
    explicit TouchMenu(const QString &title, QWidget *parent);

    /// At that place of the desktop; returns at once.
    void openAt(const QPoint &place);

    /// The window on the desktop that the widget is seen in; null without one.
    static QWidget *windowOf(const QWidget *widget);
};

} // namespace Widgets
