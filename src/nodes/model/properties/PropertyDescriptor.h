#pragma once

#include "nodes/NodesExport.h"
#include "nodes/model/properties/PropertyType.h"

#include <boost/any.hpp>

#include <string>
#include <string_view>
#include <vector>

namespace Nodes {

class BasicNode;
class NodesCollection;
struct PropertyDescriptor;

/// How a property reads and writes the member behind it. The texts are the project file's.
struct PropertyBinding
{
    PropertyType type;
    boost::any (*get)(const BasicNode &node);
    /// False when the any holds another type than the member's.
    bool (*set)(BasicNode &node, const boost::any &value);
    std::string (*format)(const PropertyDescriptor &descriptor, const BasicNode &node);
    /// False when the text does not read as the member's type; the member is then untouched.
    bool (*parse)(const PropertyDescriptor &descriptor, BasicNode &node, std::string_view text);
    bool (*equal)(const BasicNode &left, const BasicNode &right);
    void (*copy)(const BasicNode &from, BasicNode &to);
    /// The member itself, of the C++ type that PropertyType names; for loops over many nodes.
    const void *(*data)(const BasicNode &node);
};

/// One admissible code of a choice property.
struct PropertyChoice
{
    int code;
    std::string token;  ///< in project files
    std::string nameRu; ///< in the property grid
};

/// One row of a kind's table: everything the file formats, the property grid, undo and validation
/// need to know of a property. Immutable after the kind is registered.
struct PropertyDescriptor
{
    unsigned valueId = 0; ///< unique within a kind; of one meaning in all kinds
    std::string key;      ///< attribute name in project files
    std::string nameEn;
    std::string nameRu;
    PropertyBinding binding{};
    double minimum = 0; ///< with maximum: admissible range of numbers when hasRange
    double maximum = 0;
    bool hasRange = false;
    bool isAcyclic = false; ///< links that must not lead back to their node
    std::string editorHint; ///< free word for the property grid: "multiline", "angle", ...
    std::vector<PropertyChoice> choices;
    std::vector<unsigned> linkFamilies; ///< families a link may refer to; empty: any
    std::string defaultText; ///< text of a fresh node's value; such values are not written

    /// Whether both are the same property, maybe of different kinds.
    bool IsSameAs(const PropertyDescriptor &other) const
    {
        return valueId == other.valueId && key == other.key && binding.type == other.binding.type;
    }
};

} // namespace Nodes
