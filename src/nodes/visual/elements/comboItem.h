#pragma once

#include "nodes/model/ConfigNode.h"

namespace Nodes {

/// One choice of a combo box: the text shown and the value it stands for.
class NODES_EXPORT comboItem : public ConfigNode
{
public:
    static KindInfo Kind();

    /// The node's name when no text is set.
    const std::string &GetText() const { return m_text.empty() ? GetName() : m_text; }
    /// Text form of the value; its type is the signal's.
    const std::string &GetValueText() const { return m_value; }

private:
    std::string m_text;
    std::string m_value;
};

} // namespace Nodes
