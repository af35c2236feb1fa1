#pragma once

#include "widgets/WidgetsExport.h"

#include <QString>

class QEvent;

namespace Nodes {
class BasicWidget;
}

namespace Widgets {

/// Texts that an element shows when the operator rests the pointer on it.
class WIDGETS_EXPORT ElementTooltip
{
public:
    /// The node's own tooltip, then for elements with a signal: path, quality, last value, its
    /// time, the reason when it is an error, and how its alarms stand. Plain text; empty when there
    /// is nothing to say.
    static QString text(const Nodes::BasicWidget &node);
    /// Shows that text when the event asks for a tooltip; false for every other event and for a
    /// null node: the element then handles it as ever.
    static bool show(QEvent *event, const Nodes::BasicWidget *node);
    /// Shows `text` for an event that asks for a tooltip; true.
    static bool show(QEvent *event, const QString &text);
};

} // namespace Widgets
