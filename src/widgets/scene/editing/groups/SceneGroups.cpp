#include "widgets/scene/editing/groups/SceneGroups.h"

#include "widgets/scene/ProxyLayer.h"
#include "widgets/scene/ProxyWidget.h"
#include "widgets/scene/editing/SceneSelection.h"

#include "nodes/visual/BasicWidget.h"
#include "nodes/visual/GroupPath.h"

#include <algorithm>

namespace Widgets {

namespace {

std::vector<Nodes::BasicWidget *> nodesOf(const QList<ProxyWidget *> &hosts)
{
    std::vector<Nodes::BasicWidget *> nodes;
    for (const ProxyWidget *host : hosts)
        nodes.push_back(host->getNode());
    return nodes;
}

bool areGroups(const QList<ProxyWidget *> &hosts)
{
    return std::any_of(hosts.begin(), hosts.end(), [](const ProxyWidget *host) {
        return !host->getNode()->GetGroup().empty();
    });
}

} // namespace

SceneGroups::SceneGroups(SceneSelection &selection) : m_selection(selection) {}

SceneGroups::~SceneGroups() = default;

GroupScope SceneGroups::scope() const
{
    const Nodes::ConfigNode *layer = m_layer.GetNode();
    return layer ? GroupScope{layer, m_group} : GroupScope();
}

QList<ProxyWidget *> SceneGroups::membersOf(const Nodes::ConfigNode &layer,
                                            const std::string &group) const
{
    QList<ProxyWidget *> members;
    const QList<ProxyWidget *> all = m_selection.selectable();
    for (ProxyWidget *host : all) {
        const Nodes::BasicWidget &node = *host->getNode();
        if (node.GetParent() == &layer && Nodes::GroupPath::IsIn(group, node.GetGroup()))
            members.append(host);
    }
    return members;
}

// The host itself comes last: it becomes the key element.
QList<ProxyWidget *> SceneGroups::mates(const ProxyWidget &host) const
{
    const Nodes::BasicWidget *node = host.getNode();
    const std::string unit = node ? scope().unitOf(*node) : std::string();
    if (unit.empty())
        return {};
    QList<ProxyWidget *> found = membersOf(*node->GetParent(), unit);
    found.removeOne(const_cast<ProxyWidget *>(&host));
    return found;
}

// Out of the groups that were entered and do not have it.
void SceneGroups::comeOut(const ProxyWidget &host)
{
    const Nodes::BasicWidget *node = host.getNode();
    while (node && !m_group.empty() && !scope().isIn(*node))
        m_group = Nodes::GroupPath::Outside(m_group);
}

void SceneGroups::selectWith(ProxyWidget &host, bool isAlone)
{
    QList<ProxyWidget *> taken = mates(host);
    taken.append(&host);
    m_selection.select(taken, isAlone ? SceneSelection::Replace : SceneSelection::Add);
}

void SceneGroups::follow(ProxyWidget &host)
{
    comeOut(host);
    QList<ProxyWidget *> left = mates(host);
    if (left.isEmpty())
        return;
    if (host.isSelected()) {
        selectWith(host, false);
        return;
    }
    left.erase(std::remove_if(left.begin(), left.end(),
                              [](const ProxyWidget *mate) { return !mate->isSelected(); }),
               left.end());
    m_selection.select(left, SceneSelection::Toggle);
}

void SceneGroups::complete()
{
    const QList<ProxyWidget *> hosts = m_selection.hosts();
    if (!areGroups(hosts))
        return;
    ProxyWidget *key = m_selection.key();
    for (const ProxyWidget *host : hosts)
        comeOut(*host);
    QList<ProxyWidget *> missing;
    for (const auto &unit : scope().units(nodesOf(hosts))) {
        const std::string group = scope().unitOf(*unit.front());
        if (!group.empty())
            missing += membersOf(*unit.front()->GetParent(), group);
    }
    m_selection.select(missing, SceneSelection::Add);
    if (key)
        m_selection.setKey(*key);
}

void SceneGroups::enter(ProxyWidget &host)
{
    comeOut(host);
    const Nodes::BasicWidget *node = host.getNode();
    const std::string unit = node ? scope().unitOf(*node) : std::string();
    if (unit.empty())
        return;
    m_layer = Nodes::NodeLink(node->GetParent());
    m_group = unit;
    selectWith(host, true);
}

bool SceneGroups::leave()
{
    const GroupScope left = scope();
    if (left.group.empty())
        return false;
    m_group = Nodes::GroupPath::Outside(left.group);
    const QList<ProxyWidget *> members = membersOf(*left.layer, left.group);
    m_selection.select(members);
    return !members.isEmpty();
}

void SceneGroups::forget()
{
    m_group.clear();
}

ProxyWidget *SceneGroups::pick(QPointF place)
{
    const QList<ProxyWidget *> met = m_selection.at(place);
    const auto selected = std::find_if(met.begin(), met.end(),
                                       [](const ProxyWidget *host) { return host->isSelected(); });
    ProxyWidget *picked = nullptr;
    if (selected != met.end() && !mates(**selected).isEmpty()) {
        picked = *selected;
        m_selection.select({picked});
        picked->setFocus();
    } else {
        picked = m_selection.selectBelow(place);
    }
    if (const Nodes::BasicWidget *node = picked ? picked->getNode() : nullptr) {
        m_layer = Nodes::NodeLink(node->GetParent());
        m_group = node->GetGroup();
    }
    return picked;
}

void SceneGroups::selectNext(bool isForward)
{
    const GroupScope entered = scope();
    QList<ProxyWidget *> all = m_selection.selectable();
    all.erase(
        std::remove_if(all.begin(), all.end(),
                       [&](const ProxyWidget *host) { return !entered.isIn(*host->getNode()); }),
        all.end());
    const auto units = entered.units(nodesOf(all));
    if (units.empty())
        return;
    const Nodes::BasicWidget *key = m_selection.key() ? m_selection.key()->getNode() : nullptr;
    const auto now = std::find_if(units.begin(), units.end(), [key](const auto &unit) {
        return std::find(unit.begin(), unit.end(), key) != unit.end();
    });
    const int last = int(units.size()) - 1;
    const int at = now == units.end() ? (isForward ? last : 0) : int(now - units.begin());
    const int next = isForward ? (at < last ? at + 1 : 0) : (at > 0 ? at - 1 : last);
    const Nodes::BasicWidget *first = units[std::size_t(next)].front();
    const auto host = std::find_if(all.begin(), all.end(), [first](const ProxyWidget *known) {
        return known->getNode() == first;
    });
    selectWith(**host, true);
    (*host)->setFocus();
}

void SceneGroups::settle()
{
    m_united.clear();
    m_entered.clear();
    m_groups = 0;
    const QList<ProxyWidget *> hosts = m_selection.hosts();
    if (hosts.isEmpty())
        forget();
    for (const ProxyWidget *host : hosts)
        comeOut(*host);
    const GroupScope entered = scope();
    if (!entered.group.empty()) {
        for (ProxyWidget *host : membersOf(*entered.layer, entered.group))
            m_entered.append(host);
    }
    if (!areGroups(hosts))
        return;
    QHash<const Nodes::BasicWidget *, const ProxyWidget *> shown;
    for (const ProxyWidget *host : hosts)
        shown.insert(host->getNode(), host);
    for (const auto &unit : entered.units(nodesOf(hosts))) {
        if (unit.size() < 2)
            continue;
        for (const Nodes::BasicWidget *node : unit)
            m_united.insert(shown.value(node), m_groups);
        ++m_groups;
    }
}

QVector<QRectF> SceneGroups::frames() const
{
    QVector<QRectF> frames(m_groups);
    const QList<ProxyWidget *> hosts = m_groups > 0 ? m_selection.hosts() : QList<ProxyWidget *>();
    for (const ProxyWidget *host : hosts) {
        const int group = m_united.value(host, -1);
        if (group >= 0)
            frames[group] |= host->geometry();
    }
    QRectF around;
    for (const QPointer<ProxyWidget> &host : m_entered) {
        if (host)
            around |= host->geometry();
    }
    if (!m_entered.isEmpty())
        frames.append(around);
    return frames;
}

bool SceneGroups::isOneGroup() const
{
    return m_groups == 1 && m_united.size() == m_selection.count();
}

} // namespace Widgets
