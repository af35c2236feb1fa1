#include "widgets/eventlist/EventPool.h"

#include "nodes/model/ConfigNode.h"

namespace Widgets {

EventPool::SourceNumber EventPool::addSource(const std::string &name, const Nodes::NodeLink &node)
{
    const Key key{texts.add(name), node.GetNodeId()};
    const auto known = m_numbers.constFind(key);
    if (known != m_numbers.constEnd())
        return *known;
    const auto number = SourceNumber(m_sources.size());
    m_sources.push_back({key.first, node, EventRowColors::of(node.GetNode())});
    m_numbers.insert(key, number);
    return number;
}

} // namespace Widgets
