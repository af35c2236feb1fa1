#include "nodes/model/FreeNames.h"

#include "nodes/model/ConfigNode.h"

namespace Nodes {

void FreeNames::read()
{
    m_taken.clear();
    m_next.clear();
    m_count = m_parent.GetNodeCount();
    for (int i = 0; i < m_count; ++i)
        m_taken.insert(m_parent.GetNodeAt(i)->GetName());
}

std::string FreeNames::take(const std::string &wanted)
{
    // Others came or went meanwhile: whoever hears of a new child may add one.
    if (m_count != m_parent.GetNodeCount())
        read();
    std::string name = wanted;
    if (m_taken.count(name) != 0) {
        int &number = m_next.try_emplace(wanted, m_first).first->second;
        do {
            name = wanted + " " + std::to_string(number++);
        } while (m_taken.count(name) != 0);
    }
    m_taken.insert(name);
    ++m_count;
    return name;
}

} // namespace Nodes
