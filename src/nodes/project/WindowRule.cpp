#include "nodes/project/WindowRule.h"

#include "nodes/model/NodesCollection.h"
#include "nodes/model/links/LinkWalk.h"
#include "nodes/visual/windows/BasicFrame.h"

#include <algorithm>
#include <unordered_map>
#include <unordered_set>

namespace Nodes {

namespace {

bool isWindow(const ConfigNode &node)
{
    const unsigned family = node.GetNodeType().GetFamily();
    return family == NodeType::TypeWindow || family == NodeType::TypeComposition;
}

/// Does nothing unless something else leads there.
bool isIdle(const ConfigNode &node)
{
    const unsigned family = node.GetNodeType().GetFamily();
    // Items and submenus open with the menu around them.
    const bool isInMenu =
        node.GetParent() && node.GetParent()->GetNodeType().GetFamily() == NodeType::TypeMenu;
    return isWindow(node) || family == NodeType::TypeAction ||
           (family == NodeType::TypeMenu && !isInMenu);
}

/// Which windows, compositions, actions and menus name which others.
class Reach
{
public:
    explicit Reach(const NodesCollection &project) : m_project(project)
    {
        walk(*project.GetRoot(), nullptr);
        for (const auto &[from, target] : m_links)
            m_next[from].push_back(containerOf(target));
    }

    std::vector<const ConfigNode *> FindUnreachable()
    {
        std::unordered_set<const ConfigNode *> reached{nullptr};
        std::vector<const ConfigNode *> open{nullptr}; // what stands in none of them acts by itself
        while (!open.empty()) {
            const ConfigNode *from = open.back();
            open.pop_back();
            for (const ConfigNode *to : m_next[from]) {
                if (reached.insert(to).second)
                    open.push_back(to);
            }
        }
        std::vector<const ConfigNode *> found;
        std::copy_if(m_windows.begin(), m_windows.end(), std::back_inserter(found),
                     [&](const ConfigNode *node) { return reached.count(node) == 0; });
        return found;
    }

private:
    // The depth of trees is bounded.
    void walk(const ConfigNode &node, const ConfigNode *container)
    {
        container = isIdle(node) ? &node : container;
        if (isWindow(node))
            m_windows.push_back(&node);
        VisitLinks(node, *node.GetKind(), [&](const PropertyDescriptor &, const NodeLink &link) {
            m_links.emplace_back(container, link.GetNodeId());
        });
        for (const auto &child : node.Children())
            walk(*child, container);
    }

    const ConfigNode *containerOf(unsigned long id) const
    {
        const ConfigNode *node = m_project.FindNode(id);
        while (node && !isIdle(*node))
            node = node->GetParent();
        return node;
    }

    const NodesCollection &m_project;
    std::vector<const ConfigNode *> m_windows;
    std::vector<std::pair<const ConfigNode *, unsigned long>> m_links;
    std::unordered_map<const ConfigNode *, std::vector<const ConfigNode *>> m_next;
};

} // namespace

std::vector<ProjectFinding> FindUnreachableWindows(const NodesCollection &project)
{
    std::vector<ProjectFinding> findings;
    if (!project.GetRoot())
        return findings;
    for (const ConfigNode *window : Reach(project).FindUnreachable())
        findings.push_back({window,
                            "оператор не может это открыть: ни один фрейм, ни одно действие "
                            "и ни одно меню сюда не ведёт. Добавьте действие или удалите "
                            "лишнее."});
    return findings;
}

std::vector<ProjectFinding> FindNothingShown(const NodesCollection &project)
{
    NodeLinks windows;
    NodeLinks frames;
    project.FindNodes(NodeType(NodeType::TypeWindow), &windows);
    project.FindNodes(NodeType(BasicFrame::Code), &frames);
    const bool isShown = std::any_of(frames.begin(), frames.end(), [](const NodeLink &link) {
        const auto *frame = dynamic_cast<const BasicFrame *>(link.GetNode());
        return frame && !frame->GetWindows().empty();
    });
    if (windows.empty() || isShown)
        return {};
    return {{project.GetRoot(), "ни один фрейм не показывает ни одного окна, станция откроется "
                                "пустой. Добавьте фрейм и укажите его окна."}};
}

} // namespace Nodes
