#include "widgets/actions/running/ActionJournal.h"

#include "nodes/actions/BasicAction.h"
#include "nodes/model/NodesCollection.h"

namespace Widgets {

ActionJournal::ActionJournal(const Nodes::BasicAction &action, const ActionTrigger &trigger)
    : m_action(action.GetNodeLink()),
      m_path(action.GetPath()),
      m_user(trigger.user ? *trigger.user : Nodes::ActingUser())
{
}

void ActionJournal::write(Nodes::EventLevel level, const std::string &text) const
{
    const Nodes::ActingScope acting(m_user);
    const Nodes::NodesCollection *project = m_action.GetNodesCollection();
    const Nodes::ConfigNode *root = project ? project->GetRoot() : nullptr;
    if (const Nodes::ConfigNode *node = m_action.GetNode())
        node->StoreMessage(level, text, m_action);
    else if (root)
        root->StoreMessage(level, text, m_path);
}

void ActionJournal::log(const std::string &text) const
{
    const Nodes::ActingScope acting(m_user);
    const Nodes::NodesCollection *project = m_action.GetNodesCollection();
    if (const Nodes::ConfigNode *root = project ? project->GetRoot() : nullptr)
        root->StoreMessage(Nodes::LevelAction, text, std::string("System"));
}

} // namespace Widgets
