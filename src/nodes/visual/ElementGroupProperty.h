#pragma once

#include "nodes/model/properties/PropertyDescriptor.h"

#include <string>

namespace Nodes {

class BasicNode;

/// The group that an element belongs to. Those in none take no memory for it. GUI thread.
class ElementGroupProperty
{
public:
    /// Empty for none.
    static const std::string &Of(const BasicNode &node);
    static PropertyDescriptor Descriptor();

private:
    static void take(BasicNode &node, const std::string &group);
    static boost::any get(const BasicNode &node);
    static bool set(BasicNode &node, const boost::any &value);
    static std::string format(const PropertyDescriptor &descriptor, const BasicNode &node);
    static bool parse(const PropertyDescriptor &descriptor, BasicNode &node, std::string_view text);
    static bool equal(const BasicNode &left, const BasicNode &right);
    static void copy(const BasicNode &from, BasicNode &to);
    static const void *data(const BasicNode &node);
};

} // namespace Nodes
