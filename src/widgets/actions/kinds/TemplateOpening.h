#pragma once

#include "widgets/actions/qBasicAction.h"

namespace Nodes {
class BasicTemplateAction;
class BasicWindow;
} // namespace Nodes

namespace Widgets {

/// The course of both actions that open an instance of a template. GUI thread, with a window
/// manager.
class TemplateOpening
{
public:
    /// Opens an instance of the action's template in `window` (the template itself, or the window
    /// whose likeness shows a composition), or brings forward one with the same arguments.
    /// Parameters that stand for nothing are journalled. True when a new one was opened.
    static bool run(const Nodes::BasicTemplateAction &action, Nodes::BasicWindow &window,
                    int display, const qBasicAction &run);
};

} // namespace Widgets
