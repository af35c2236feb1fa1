#pragma once

#include "widgets/WidgetsExport.h"

#include "nodes/model/links/NodeLink.h"

#include <vector>

namespace Nodes {
class BasicSignal;
class ConfigNode;
} // namespace Nodes

namespace Widgets {

/// An element of the project that shows a signal, and how an operator gets to see it. A value;
/// GUI thread.
struct WIDGETS_EXPORT ShownPlace
{
    /// What the element stands in, the better the earlier: a page is where operators work.
    enum enKind { Page, Frame, Window, Instance };

    enKind kind = Page;
    bool isOwnSignal = false; ///< of the element itself, not of one of several lines or channels
    long area = 0;            ///< pixels as drawn
    unsigned long signal = 0; ///< 0: the element itself is meant
    Nodes::NodeLink element;  ///< of a template's instance the one in the template
    unsigned long window = 0; ///< node that the open window goes by
    Nodes::NodeLinks road;    ///< actions that lead there; empty where it is always shown

    /// Places that can be reached, the best first: elements of the signal itself before those with
    /// a line of it; in the order of kinds; the largest, then the one configured first. `source`
    /// is a signal, an alarm, an element, or something with signals below it.
    static std::vector<ShownPlace> of(const Nodes::ConfigNode &source);

    /// Whether the element, or a part of it, refers to that signal.
    static bool refersTo(const Nodes::ConfigNode &element, unsigned long signal);
};

} // namespace Widgets
