#include "widgets/eventlist/EventPool.h"

#include "nodes/model/ConfigNode.h"

namespace Widgets {

namespace {

// Sources that are no nodes have names that files and other stations rely on.
std::string shownName(const std::string &name, const Nodes::NodeLink &node)
{
    if (!node.isEmpty())
        return name;
    return name == "System" ? "Система" : name == "Acknowledgement" ? "Квитирование" : name;
}

} // namespace

EventPool::SourceNumber EventPool::addSource(const std::string &name, const Nodes::NodeLink &node)
{
    const Key key{texts.add(shownName(name, node)), node.GetNodeId()};
    const auto known = m_numbers.constFind(key);
    if (known != m_numbers.constEnd())
        return *known;
    const auto number = SourceNumber(m_sources.size());
    m_sources.push_back({key.first, node, EventRowColors::of(node.GetNode())});
    m_numbers.insert(key, number);
    return number;
}

} // namespace Widgets
