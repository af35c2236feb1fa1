#pragma once

#include "nodes/NodesExport.h"
#include "nodes/model/NodeType.h"
#include "nodes/model/properties/PropertyDescriptor.h"

#include <memory>
#include <unordered_map>

namespace Nodes {

class BasicNode;
class ConfigNode;

/// One row of the kinds table: type codes, names, allowed children, properties and the factory.
struct NODES_EXPORT KindInfo
{
    NodeType type;
    std::string key; ///< element name in project files
    std::string nameEn;
    std::string nameRu;
    std::unique_ptr<ConfigNode> (*create)() = nullptr;
    std::vector<NodeType> children; ///< families or exact kinds that may stand below this one
    std::vector<PropertyDescriptor> properties;
    std::shared_ptr<const BasicNode> prototype; ///< fresh node

    /// Null when the kind has no such property.
    const PropertyDescriptor *FindProperty(std::string_view propertyKey) const;
    const PropertyDescriptor *FindProperty(unsigned valueId) const;
    bool AllowsChild(NodeType child) const;
    /// True while a node of this kind holds the value that a fresh one has.
    bool IsDefault(const PropertyDescriptor &descriptor, const BasicNode &node) const;

    /// Builds the look-up tables and default texts; called once by KindTable::Add.
    void Prepare();

private:
    std::unordered_map<std::string_view, std::size_t> m_byKey;
    std::unordered_map<unsigned, std::size_t> m_byId;
};

} // namespace Nodes
