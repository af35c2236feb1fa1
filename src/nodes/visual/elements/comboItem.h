#pragma once

#include "nodes/model/ConfigNode.h"
#include "nodes/model/properties/PropertyId.h"

namespace Nodes {

/// One choice of a combo box: the text shown and the value it stands for.
class NODES_EXPORT comboItem : public ConfigNode
{
public:
    static constexpr auto Code = NodeType::enNodeSubtype(0x9010);
    struct Prop
    {
        static constexpr PropertyId<std::string> Text{9101, "text"};
        static constexpr PropertyId<std::string> Value{9102, "value"};
    };

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
