#pragma once

#include "nodes/NodesExport.h"
#include "nodes/model/links/NodeLink.h"

#include <string>

namespace Nodes {

class systemAuthentication;

/// Who had something done that is done later: it is done with that person's rights and noted in
/// that person's name, whoever is logged in by then. A value.
struct ActingUser
{
    unsigned long users = 0; ///< id of the user subsystem; 0: whoever is logged in
    NodeLink user;           ///< empty: a guest
    std::string name;
};

/// While it lives, what this thread does is the doing of that user. It surrounds the one call into
/// the node model and never a loop of events, which would lend the rights to others.
class NODES_EXPORT ActingScope
{
public:
    explicit ActingScope(ActingUser user);
    ~ActingScope();
    ActingScope(const ActingScope &) = delete;
    ActingScope &operator=(const ActingScope &) = delete;

    /// Who acts on this thread; null for whoever is logged in.
    static const ActingUser *Current();
    /// The same for one user subsystem: those of other stations are not concerned.
    static const ActingUser *Of(const systemAuthentication &users);

private:
    ActingUser m_user;
    const ActingUser *m_outer;
};

} // namespace Nodes
