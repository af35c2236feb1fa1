#pragma once

#include "nodes/NodesExport.h"
#include "nodes/model/links/LinkWalk.h"
#include "nodes/model/links/NodeLink.h"

#include <string>
#include <vector>

namespace Nodes {

class templateParameter;

/// Which node each parameter of a template stands for in one instance. GUI thread.
class NODES_EXPORT TemplateBinding
{
public:
    /// One parameter, upper ones before those below them.
    struct Bound
    {
        unsigned long parameter = 0; ///< node id in the template
        std::string name;            ///< with the names of the parameters above, '/' separated
        unsigned long actual = 0;    ///< 0: nothing can be shown for it
        bool operator==(const Bound &o) const
        {
            return parameter == o.parameter && actual == o.actual;
        }
    };

    /// `arguments` are templateArgument nodes; other kinds among them are passed over. An argument
    /// that leads nowhere never falls back to the default.
    TemplateBinding(const ConfigNode &source, const std::vector<ConfigNode *> &arguments);

    /// Names of parameters that stand for nothing, and of arguments that no parameter takes.
    const std::vector<std::string> &GetMissing() const { return m_missing; }
    const std::vector<std::string> &GetUnused() const { return m_unused; }

    /// Ids of the parameters to ids of what they stand for.
    IdMap GetIds() const;
    /// `text` with every {parameter} replaced by the name of the node it stands for, "?" where
    /// there is none; other braces stay.
    std::string Fill(const std::string &text) const;

    /// The same nodes for the same parameters.
    bool operator==(const TemplateBinding &o) const { return m_bound == o.m_bound; }

private:
    void bind(const templateParameter &parameter, const std::string &prefix,
              const ConfigNode *actual);

    std::vector<Bound> m_bound;
    std::vector<std::string> m_missing;
    std::vector<std::string> m_unused;
};

} // namespace Nodes
