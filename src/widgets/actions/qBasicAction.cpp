#include "widgets/actions/qBasicAction.h"

#include "nodes/actions/BasicAction.h"

namespace Widgets {

qBasicAction::qBasicAction(Nodes::BasicAction *node) : m_node(node) {}

qBasicAction::qBasicAction(const qBasicAction &other)
    : m_node(other.m_node),
      m_state(other.GetState()),
      m_createdAt(other.m_createdAt),
      m_generation(other.m_generation)
{
}

qBasicAction &qBasicAction::operator=(const qBasicAction &other)
{
    m_node = other.m_node;
    m_createdAt = other.m_createdAt;
    m_generation = other.m_generation;
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

void qBasicAction::log(const char *text) const
{
    if (m_node)
        m_node->StoreMessage(Nodes::LevelAction, text, std::string("System"));
}

} // namespace Widgets
