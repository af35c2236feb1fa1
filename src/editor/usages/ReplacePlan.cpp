#include "editor/usages/ReplacePlan.h"

#include "nodes/model/ConfigNode.h"
#include "nodes/model/KindInfo.h"

#include <algorithm>
#include <unordered_map>

namespace Editor {

namespace {

/// Why the property cannot lead to the node; "" when it can.
QString objection(const Nodes::LinkUse &use, const Nodes::NodeLink &to)
{
    const Nodes::ConfigNode *node = use.node.GetNode();
    const Nodes::PropertyDescriptor *d =
        node ? node->GetKind()->FindProperty(use.valueId) : nullptr;
    if (!d)
        return QStringLiteral("Узла больше нет");
    if (!to.isValid())
        return QStringLiteral("Нет узла с таким путём");
    const auto &families = d->linkFamilies;
    const bool isAccepted =
        families.empty() ||
        std::find(families.begin(), families.end(), to.GetNodeType().GetFamily()) != families.end();
    if (!isAccepted)
        return QStringLiteral("Свойство не принимает узлы такого вида");
    if (d->isAcyclic && to == use.node)
        return QStringLiteral("Узел не может ссылаться на себя");
    return {};
}

/// First nodes by path, each looked up once.
class NodesAtPaths
{
public:
    explicit NodesAtPaths(const Nodes::NodesCollection &project) : m_project(project) {}

    Nodes::NodeLink find(const QString &path)
    {
        const std::string key = path.toStdString();
        const auto known = m_known.find(key);
        if (known != m_known.end())
            return known->second;
        const auto nodes = m_project.GetNodesByPath(key);
        // The empty path is the root's, which nothing refers to.
        const bool isFound = !nodes.empty() && !key.empty();
        return m_known[key] = isFound ? Nodes::NodeLink(nodes.front()) : Nodes::NodeLink();
    }

private:
    const Nodes::NodesCollection &m_project;
    std::unordered_map<std::string, Nodes::NodeLink> m_known;
};

} // namespace

void ReplacePlan::add(const Usage &usage, const Nodes::NodeLink &to, QString toPath)
{
    PlannedLink planned;
    planned.link = {usage.use.node, usage.use.valueId, usage.target, to};
    planned.toPath = std::move(toPath);
    planned.objection = objection(usage.use, to);
    m_links.push_back(std::move(planned));
}

ReplacePlan ReplacePlan::node(const Nodes::NodeLink &from, const Nodes::NodeLink &to,
                              const Nodes::NodeLinks &scope)
{
    ReplacePlan plan;
    const Nodes::NodesCollection *project = from.GetNodesCollection();
    if (!project || from == to)
        return plan;
    const QString toPath = QString::fromStdString(to.GetLinkName(true));
    for (const Usage &usage : scope.empty() ? FindUsages({from}) : FindLinksOf(scope, *project)) {
        if (usage.target == from)
            plan.add(usage, to, toPath);
    }
    return plan;
}

ReplacePlan ReplacePlan::pattern(const Nodes::NodesCollection &project, const QString &oldText,
                                 const QString &newText, const Nodes::NodeLinks &scope)
{
    ReplacePlan plan;
    if (oldText.isEmpty() || oldText == newText)
        return plan;
    NodesAtPaths nodes(project);
    for (const Usage &usage : FindLinksOf(scope, project)) {
        QString path = QString::fromStdString(usage.target.GetLinkName(true));
        if (!path.contains(oldText))
            continue;
        path.replace(oldText, newText);
        plan.add(usage, nodes.find(path), path);
    }
    return plan;
}

std::vector<Utils::LinkReplacement> ReplacePlan::chosen() const
{
    std::vector<Utils::LinkReplacement> links;
    for (const PlannedLink &planned : m_links) {
        if (planned.isChosen && planned.objection.isEmpty())
            links.push_back(planned.link);
    }
    return links;
}

} // namespace Editor
