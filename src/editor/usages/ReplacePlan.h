#pragma once

#include "editor/usages/Usage.h"

#include "utils/undo/ReplaceLinksCommand.h"

#include <QString>

#include <vector>

namespace Editor {

/// One link that could be replaced, and what stands against it.
struct PlannedLink
{
    Utils::LinkReplacement link; ///< `to` is empty when there is no such node
    QString toPath;              ///< also of a node that there is not
    QString objection;           ///< Russian; "" when the link can be replaced
    bool isChosen = true;        ///< by the user; counts without an objection only
};

/// Links that are to lead elsewhere, as a list that the user looks through before anything changes.
class ReplacePlan
{
public:
    /// Links to `from` will lead to `to`: all in the project, or those of `scope` and of what
    /// stands below.
    static ReplacePlan node(const Nodes::NodeLink &from, const Nodes::NodeLink &to,
                            const Nodes::NodeLinks &scope);
    /// Links to nodes whose path has `oldText` will lead to those whose path has `newText` in its
    /// place, everywhere in the path; case counts. Without `scope`: in the whole project.
    static ReplacePlan pattern(const Nodes::NodesCollection &project, const QString &oldText,
                               const QString &newText, const Nodes::NodeLinks &scope);

    std::vector<PlannedLink> &links() { return m_links; }
    const std::vector<PlannedLink> &links() const { return m_links; }
    /// Those that can be replaced and are chosen.
    std::vector<Utils::LinkReplacement> chosen() const;

private:
    void add(const Usage &usage, const Nodes::NodeLink &to, QString toPath);

    std::vector<PlannedLink> m_links;
};

} // namespace Editor
