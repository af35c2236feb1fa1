#pragma once

#include "nodes/model/NodeType.h"

#include <cstddef>

namespace Nodes {

/// One row of a table that says what shows or runs the nodes of a kind.
template <class Creator> struct KindRow
{
    NodeType::enNodeSubtype code;
    Creator create;
};

/// For a static_assert behind the table: no kind stands in it twice.
template <class Creator, std::size_t count>
constexpr bool AreDistinct(const KindRow<Creator> (&rows)[count])
{
    for (std::size_t i = 0; i < count; ++i) {
        for (std::size_t j = 0; j < i; ++j) {
            if (rows[i].code == rows[j].code)
                return false;
        }
    }
    return true;
}

/// Null when the kind has no row.
template <class Creator, std::size_t count>
constexpr Creator FindCreator(const KindRow<Creator> (&rows)[count], const NodeType &type)
{
    for (const KindRow<Creator> &row : rows) {
        if (row.code == type.GetCode())
            return row.create;
    }
    return nullptr;
}

} // namespace Nodes
