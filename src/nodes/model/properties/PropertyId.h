#pragma once

namespace Nodes {

/// Name of one property: the id of its value, which files and hosts rely on, and its key in project
/// files. Declared once, in `struct Prop` of the class that has the property; kinds that mean the
/// same by it share the declaration, so that a selection of them can be set together.
template <class T> struct PropertyId
{
    using Value = T; ///< C++ type of the member behind it

    unsigned valueId;
    const char *key;

    constexpr operator unsigned() const { return valueId; }
};

} // namespace Nodes
