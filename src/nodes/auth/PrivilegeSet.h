#pragma once

#include "nodes/NodesExport.h"
#include "nodes/model/services/AuthPriv.h"

#include <string>
#include <string_view>

namespace Nodes {

/// A set of privileges with a text form: tokens parted by blanks ("write open"), "all" for every
/// one of them.
class NODES_EXPORT PrivilegeSet
{
public:
    PrivilegeSet() = default;
    /// Reads the text; words that name no privilege are left out and gathered in `unknown`, when
    /// given, parted by blanks.
    static PrivilegeSet FromText(std::string_view text, std::string *unknown = nullptr);
    static PrivilegeSet All();

    void Add(enPrivilegeType type) { m_bits |= 1u << type; }
    bool Contains(enPrivilegeType type) const
    {
        return type > 0 && type < 32 && (m_bits >> type & 1u) != 0;
    }
    bool isEmpty() const { return m_bits == 0; }

private:
    unsigned m_bits = 0;
};

/// Token of a privilege in project files, "" for a number that is none.
NODES_EXPORT std::string PrivilegeToken(enPrivilegeType type);
/// Russian name of a privilege for lists and messages.
NODES_EXPORT std::string PrivilegeName(enPrivilegeType type);

} // namespace Nodes
