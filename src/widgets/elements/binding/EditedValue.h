#pragma once

#include "widgets/WidgetsExport.h"

#include "nodes/values/SignalValue.h"

#include <string>

namespace Nodes {
class BasicWidget;
}

namespace Widgets {

/// What elements show while they are edited, where no driver runs and no value comes: the form of
/// the value to be, which nobody takes for a value. GUI thread.
class WIDGETS_EXPORT EditedValue
{
public:
    /// The form of a number, such as "##.#" for "0.0" and "#.###" for "0.000".
    static std::string formOf(std::string number);
    /// A good value to be shown by the element: one that matches a state, zero rather than another;
    /// false where that has a text of its own; the form of the number, as text, for all others.
    static Nodes::SignalValue of(const Nodes::BasicWidget &node);
};

} // namespace Widgets
