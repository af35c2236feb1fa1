#pragma once

#include "nodes/model/ConfigNode.h"
#include "nodes/model/properties/PropertyId.h"

namespace Nodes {

/// Stands for an element whose kind this program does not know: keeps its place among its siblings
/// and its XML with everything below, so that saving loses nothing. Does nothing at run time.
class NODES_EXPORT UnknownNode : public ConfigNode
{
public:
    static constexpr auto Code = NodeType::SubtypeUnknown;
    struct Prop
    {
        static constexpr PropertyId<std::string> Xml{1901, "xml"};
    };

    static KindInfo Kind();

    /// The element as it was read.
    const std::string &GetXml() const { return m_xml; }
    void SetXml(std::string xml) { m_xml = std::move(xml); }
    void Validate(ValidationResults &results) const override;

private:
    std::string m_xml;
};

} // namespace Nodes
