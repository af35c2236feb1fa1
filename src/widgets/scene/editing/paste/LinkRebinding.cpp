#include "widgets/scene/editing/paste/LinkRebinding.h"

#include "widgets/scene/editing/paste/PasteReport.h"

#include "nodes/model/ConfigNode.h"
#include "nodes/model/NodesArray.h"
#include "nodes/model/NodesCollection.h"
#include "nodes/model/links/LinkWalk.h"
#include "nodes/model/links/ResourceLink.h"

#include <QFileInfo>

#include <algorithm>

namespace Widgets {

namespace {

bool admits(const Nodes::PropertyDescriptor &d, const Nodes::ConfigNode &target)
{
    const std::vector<unsigned> &families = d.linkFamilies;
    return families.empty() ||
           std::find(families.begin(), families.end(),
                     unsigned(target.GetNodeType().GetFamily())) != families.end();
}

PasteReport::Row rowOf(const Nodes::ConfigNode &node, const Nodes::PropertyDescriptor &d,
                       const QString &wanted, PasteReport::Row::enState state)
{
    return {Nodes::NodeLink(&node), QString::fromStdString(node.GetName()),
            QString::fromStdString(d.nameRu), wanted, state};
}

} // namespace

void LinkRebinding::rebind(const Nodes::NodesArray &nodes, PasteReport &report)
{
    Nodes::NodeLinks all;
    for (const Nodes::NodeLink &root : nodes) {
        const Nodes::NodeLinks below = root->GetNodes(true);
        all.push_back(root);
        all.insert(all.end(), below.begin(), below.end());
    }
    for (const Nodes::NodeLink &link : all)
        m_own.insert(link.GetNodeId());
    for (const Nodes::NodeLink &link : all) {
        rebindOne(*link.GetNode(), report);
        reportFiles(*link.GetNode(), report);
    }
}

void LinkRebinding::rebindOne(Nodes::ConfigNode &node, PasteReport &report)
{
    Nodes::IdMap moved;
    Nodes::VisitLinks(
        node, *node.GetKind(),
        [&](const Nodes::PropertyDescriptor &d, const Nodes::NodeLink &link) {
            const unsigned long id = link.GetNodeId();
            if (m_own.count(id) != 0)
                return;
            const Nodes::NodeLink target = targetOf(link, d);
            if (target.isEmpty())
                report.rows.append(rowOf(node, d, wantedText(id), PasteReport::Row::Missing));
            else if (!m_paths)
                report.rows.append(rowOf(node, d, QString::fromStdString(target.GetLinkName(true)),
                                         PasteReport::Row::Doubtful));
            const bool isOwnProject = m_paths && m_paths->isFrom(m_project);
            // Undo may bring back what was deleted here; the id of another project means nothing.
            const Nodes::NodeLink kept = !target.isEmpty() ? target
                                         : isOwnProject    ? link
                                                           : placeholderOf(id);
            moved.emplace(id, kept.GetNodeId());
        });
    (void)Nodes::EditLinks(
        node, [&](const Nodes::NodeLink &link) -> std::optional<Nodes::NodeLink> {
            const auto found = moved.find(link.GetNodeId());
            return found == moved.end() ? link : Nodes::NodeLink(found->second, &m_project);
        });
}

Nodes::NodeLink LinkRebinding::targetOf(const Nodes::NodeLink &link,
                                        const Nodes::PropertyDescriptor &d) const
{
    if (!m_paths || m_paths->isFrom(m_project)) {
        const Nodes::ConfigNode *known = m_project.FindNode(link.GetNodeId());
        return known && (m_paths || admits(d, *known)) ? Nodes::NodeLink(known) : Nodes::NodeLink();
    }
    const LinkPaths::Target *wanted = m_paths->find(link.GetNodeId());
    if (!wanted || wanted->path.empty())
        return {};
    Nodes::NodeLink found;
    for (const Nodes::ConfigNode *node : m_project.GetNodesByPath(wanted->path)) {
        if (node->GetKind()->key != wanted->kind)
            continue;
        if (node->GetId() == link.GetNodeId())
            return Nodes::NodeLink(node);
        if (found.isEmpty())
            found = Nodes::NodeLink(node);
    }
    return found;
}

Nodes::NodeLink LinkRebinding::placeholderOf(unsigned long id)
{
    unsigned long &fresh = m_placeholders[id];
    if (fresh == 0)
        fresh = m_project.NewId();
    return Nodes::NodeLink(fresh, &m_project);
}

QString LinkRebinding::wantedText(unsigned long id) const
{
    const LinkPaths::Target *wanted = m_paths ? m_paths->find(id) : nullptr;
    return wanted && !wanted->path.empty() ? QString::fromStdString(wanted->path)
                                           : QStringLiteral("узел № %1").arg(id);
}

void LinkRebinding::reportFiles(const Nodes::ConfigNode &node, PasteReport &report) const
{
    if (m_paths && m_paths->isFrom(m_project))
        return;
    for (const Nodes::PropertyDescriptor &d : node.GetKind()->properties) {
        if (d.binding.type != Nodes::PropertyType::Resource)
            continue;
        const auto &file = *static_cast<const Nodes::ResourceLink *>(d.binding.data(node));
        if (file.IsBuiltIn())
            continue; // every project has it
        const QString path = QString::fromStdString(file.GetFilePath());
        const QString directory = QString::fromStdString(m_project.GetDirectory());
        if (!path.isEmpty() && !QFileInfo::exists(directory + QLatin1Char('/') + path))
            report.rows.append(rowOf(node, d, path, PasteReport::Row::Missing));
    }
}

} // namespace Widgets
