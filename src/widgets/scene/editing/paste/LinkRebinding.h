#pragma once

#include "widgets/WidgetsExport.h"
#include "widgets/scene/editing/paste/LinkPaths.h"

#include <map>
#include <optional>
#include <unordered_set>

namespace Nodes {
class ConfigNode;
class NodesArray;
struct PropertyDescriptor;
} // namespace Nodes

namespace Widgets {

struct PasteReport;

/// Leads the links of pasted nodes to what they mean in the project they are pasted into. GUI
/// thread.
class WIDGETS_EXPORT LinkRebinding
{
public:
    /// Without `paths` nobody knows where the links led: those to ids that exist stay, as doubtful.
    LinkRebinding(Nodes::NodesCollection &project, const std::optional<LinkPaths> &paths)
        : m_project(project), m_paths(paths)
    {
    }

    /// Links to that node are right as they are.
    void keep(unsigned long id) { m_own.insert(id); }
    /// `nodes` stand in no tree yet; links among them and those below stay. What leads nowhere
    /// keeps leading to an id that no node has, or will have, and is reported with files that the
    /// project's directory lacks.
    void rebind(const Nodes::NodesArray &nodes, PasteReport &report);

private:
    void rebindOne(Nodes::ConfigNode &node, PasteReport &report);
    Nodes::NodeLink targetOf(const Nodes::NodeLink &link, const Nodes::PropertyDescriptor &d) const;
    Nodes::NodeLink placeholderOf(unsigned long id);
    QString wantedText(unsigned long id) const;
    void reportFiles(const Nodes::ConfigNode &node, PasteReport &report) const;

    Nodes::NodesCollection &m_project;
    const std::optional<LinkPaths> &m_paths;
    std::map<unsigned long, unsigned long> m_placeholders; ///< fresh id by the id that was wanted
    std::unordered_set<unsigned long> m_own; ///< ids that links keep: what is pasted, above all
};

} // namespace Widgets
