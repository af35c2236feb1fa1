#pragma once

#include <vector>

namespace Nodes {
struct KindInfo;
struct PropertyDescriptor;
} // namespace Nodes

namespace Editor {

/// One heading of the property table and what stands below it: the meaning of a property follows
/// from its type, its hint and what it refers to, so that kinds of tomorrow find their place.
struct PropertyGroup
{
    const char *key;
    const char *title; ///< Russian
    bool (*has)(const Nodes::KindInfo &kind, const Nodes::PropertyDescriptor &descriptor);
};

/// In the order shown. The last one takes everything.
const std::vector<PropertyGroup> &propertyGroups();
/// The first group that has it.
const PropertyGroup &groupOf(const Nodes::KindInfo &kind,
                             const Nodes::PropertyDescriptor &descriptor);

/// Several properties that are one font: shown as one row, with these below it.
struct FontProperties
{
    const char *title; ///< Russian
    unsigned family;   ///< value ids; 0: the font has no such property
    unsigned size;
    unsigned bold;
    unsigned italic;
    unsigned underline;
    unsigned strikeOut;

    std::vector<unsigned> all() const;
};

const std::vector<FontProperties> &fontProperties();
/// The font that the property belongs to; null for others.
const FontProperties *fontOf(unsigned valueId);

} // namespace Editor
