#pragma once

#include "widgets/WidgetsExport.h"

#include <QString>

namespace Nodes {
class BasicWidget;
}

namespace Widgets {

/// Texts that an element shows when the operator rests the pointer on it.
class WIDGETS_EXPORT ElementTooltip
{
public:
    /// The node's own tooltip, then for elements with a signal: path, quality, last value, its
    /// time, and the reason when it is an error. Plain text; empty when there is nothing to say.
    static QString text(const Nodes::BasicWidget &node);
};

} // namespace Widgets
