#pragma once

#include "widgets/WidgetsExport.h"
#include "widgets/context/ActionTrigger.h"

#include "nodes/events/EventLevel.h"
#include "nodes/model/links/NodeLink.h"

#include <string>

namespace Nodes {
class BasicAction;
}

namespace Widgets {

/// Journal entries about an action after its run is over: a value that remembers where they belong,
/// also when the action's node is gone by then, and whose doing it was. GUI thread.
class WIDGETS_EXPORT ActionJournal
{
public:
    ActionJournal(const Nodes::BasicAction &action, const ActionTrigger &trigger);

    void write(Nodes::EventLevel level, const std::string &text) const;
    /// As qBasicAction::log: an entry of the system.
    void log(const std::string &text) const;

private:
    Nodes::NodeLink m_action;
    std::string m_path;
    Nodes::ActingUser m_user;
};

} // namespace Widgets
