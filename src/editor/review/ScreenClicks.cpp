#include "editor/review/ScreenClicks.h"

#include "nodes/model/ConfigNode.h"
#include "nodes/model/links/LinkWalk.h"
#include "nodes/visual/BasicWidget.h"

#include <deque>
#include <functional>

namespace Editor {

using Nodes::ConfigNode;
using Nodes::NodeType;

namespace {

bool isOneOf(const ConfigNode &node, std::initializer_list<NodeType::enNodeType> families)
{
    const auto family = node.GetNodeType().GetFamily();
    return std::find(families.begin(), families.end(), family) != families.end();
}

bool isRoad(const ConfigNode &node)
{
    return isOneOf(node, {NodeType::TypeAction, NodeType::TypeArchiverAction, NodeType::TypeMenu});
}

bool isScreen(const ConfigNode &node)
{
    return isOneOf(node, {NodeType::TypeWindow, NodeType::TypeComposition});
}

/// Fewest presses first, by steps of none or one.
class Walk
{
public:
    explicit Walk(QHash<unsigned long, int> &clicks) : m_clicks(clicks) {}

    void reach(const ConfigNode &node, int clicks)
    {
        const auto known = m_clicks.constFind(node.GetId());
        if (known != m_clicks.constEnd() && *known <= clicks)
            return;
        m_clicks[node.GetId()] = clicks;
        if (!m_due.empty() && m_due.front().second >= clicks)
            m_due.emplace_front(&node, clicks);
        else
            m_due.emplace_back(&node, clicks);
    }
    void run()
    {
        while (!m_due.empty()) {
            const auto [node, clicks] = m_due.front();
            m_due.pop_front();
            if (m_clicks.value(node->GetId()) == clicks)
                leave(*node, clicks);
        }
    }

private:
    void leave(const ConfigNode &node, int clicks)
    {
        follow(node, clicks); // what it opens itself
        // Of a screen and of a menu something is pressed; an action is done at once.
        const bool isPressed =
            isScreen(node) || node.GetNodeType().GetFamily() == NodeType::TypeMenu;
        followBelow(node, clicks + (isPressed ? 1 : 0), isScreen(node));
    }
    void follow(const ConfigNode &node, int clicks)
    {
        Nodes::VisitLinks(node, *node.GetKind(),
                          [&](const Nodes::PropertyDescriptor &, const Nodes::NodeLink &link) {
                              const ConfigNode *target = link.GetNode();
                              if (target && (isRoad(*target) || isScreen(*target)))
                                  reach(*target, clicks);
                          });
    }
    // Actions that stand on a screen are done only when something leads to them.
    void followBelow(const ConfigNode &node, int clicks, bool isOnScreen)
    {
        for (const auto &child : node.Children()) {
            if (isOnScreen && (isRoad(*child) || isScreen(*child)))
                continue;
            follow(*child, clicks);
            followBelow(*child, clicks, isOnScreen);
        }
    }

    QHash<unsigned long, int> &m_clicks;
    std::deque<std::pair<const ConfigNode *, int>> m_due;
};

void collectFrames(const ConfigNode &node, std::vector<const ConfigNode *> &frames)
{
    if (node.GetNodeType().GetFamily() == NodeType::TypeFrame)
        frames.push_back(&node);
    for (const auto &child : node.Children())
        collectFrames(*child, frames);
}

} // namespace

ScreenClicks::ScreenClicks(const ConfigNode &root)
{
    std::vector<const ConfigNode *> frames;
    collectFrames(root, frames);
    m_hasFrames = !frames.empty();
    Walk walk(m_clicks);
    for (const ConfigNode *frame : frames)
        walk.reach(*frame, 0);
    walk.run();
}

int ScreenClicks::to(const ConfigNode &screen) const
{
    return m_clicks.value(screen.GetId(), -1);
}

} // namespace Editor
