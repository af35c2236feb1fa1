#include "widgets/actions/qBasicAction.h"

#include "widgets/actions/running/ActionTeller.h"
#include "widgets/actions/running/Refusals.h"

#include "nodes/actions/BasicAction.h"

namespace Widgets {

qBasicAction::qBasicAction(Nodes::BasicAction *node) : m_node(node) {}

qBasicAction::qBasicAction(const qBasicAction &other)
    : m_node(other.m_node),
      m_state(other.GetState()),
      m_createdAt(other.m_createdAt),
      m_isWaiting(other.isWaiting()),
      m_trigger(other.m_trigger)
{
}

qBasicAction &qBasicAction::operator=(const qBasicAction &other)
{
    m_node = other.m_node;
    m_createdAt = other.m_createdAt;
    m_isWaiting = other.isWaiting();
    m_trigger = other.m_trigger;
    setState(other.GetState());
    return *this;
}

qBasicAction::~qBasicAction() = default;

void qBasicAction::Execute() {}

int qBasicAction::targetDisplay(int display) const
{
    if (display != 0)
        return display - 1;
    return m_node ? m_node->currentDisplay() : 0;
}

Nodes::ActingScope qBasicAction::act() const
{
    return Nodes::ActingScope(m_trigger.user ? *m_trigger.user : Nodes::ActingUser());
}

void qBasicAction::log(const char *text) const
{
    const Nodes::ActingScope acting = act();
    if (m_node)
        m_node->StoreMessage(Nodes::LevelAction, text, std::string("System"));
}

void qBasicAction::report(const Nodes::Result &result) const
{
    if (!m_node)
        return;
    if (result == Nodes::Result::NotFound || result == Nodes::Result::WrongType) {
        const std::string text = "Действие не выполнено: " + result.GetResultTranslated();
        if (m_trigger.isOperators())
            m_node->StoreMessage(Nodes::LevelWarning, text, m_node->GetNodeLink());
        else
            ActionTeller::instance().journalOnce(*m_node, text);
    }
    ShowActionResult(result, m_node->GetName(), m_trigger);
}

} // namespace Widgets
