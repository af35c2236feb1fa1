#include "widgets/scene/editing/SceneSelection.h"

#include "widgets/scene/ProxyWidget.h"

#include "nodes/visual/BasicWidget.h"

#include <QGraphicsScene>

#include <algorithm>
#include <utility>

namespace Widgets {

namespace {

constexpr double farthest = 1 << 17; // elements stand within 16 bits

ProxyWidget *selectableHost(QGraphicsItem *item)
{
    if (!(item->flags() & QGraphicsItem::ItemIsSelectable) || !item->isVisible())
        return nullptr;
    auto *host = dynamic_cast<ProxyWidget *>(item);
    return host && host->getNode() ? host : nullptr;
}

} // namespace

SceneSelection::SceneSelection(QGraphicsScene &scene) : m_scene(scene) {}

SceneSelection::~SceneSelection() = default;

QList<ProxyWidget *> SceneSelection::hosts() const
{
    QList<ProxyWidget *> hosts;
    hosts.reserve(count());
    for (const auto &[serial, host] : m_order) {
        if (host->getNode())
            hosts.append(host);
    }
    return hosts;
}

Nodes::NodeLinks SceneSelection::links() const
{
    Nodes::NodeLinks links;
    for (const ProxyWidget *host : hosts())
        links.push_back(host->getNodeLink());
    return links;
}

QRectF SceneSelection::rect() const
{
    QRectF rect;
    for (const auto &[serial, host] : m_order)
        rect |= host->geometry();
    return rect;
}

void SceneSelection::setKey(ProxyWidget &host)
{
    if (m_serials.contains(&host))
        makeKey(&host);
}

void SceneSelection::makeKey(ProxyWidget *host)
{
    if (host == m_key)
        return;
    m_key = host;
    emit keyChanged(host);
}

void SceneSelection::takeSelected(ProxyWidget &host, bool on)
{
    if (on == m_serials.contains(&host))
        return;
    if (on) {
        m_serials.insert(&host, ++m_lastSerial);
        m_order.emplace(m_lastSerial, &host);
        makeKey(&host);
    } else {
        m_order.erase(m_serials.take(&host));
        if (m_key == &host)
            makeKey(m_order.empty() ? nullptr : m_order.rbegin()->second);
    }
    m_isChanged = true;
    if (!m_isBusy)
        conclude();
}

void SceneSelection::conclude()
{
    m_isBusy = false;
    if (std::exchange(m_isChanged, false))
        emit changed();
}

QList<ProxyWidget *> SceneSelection::grabbed() const
{
    if (count() <= GrabbersAtMost)
        return hosts();
    return m_key && m_key->getNode() ? QList<ProxyWidget *>{m_key} : QList<ProxyWidget *>();
}

QList<ProxyWidget *> SceneSelection::selectable() const
{
    QList<ProxyWidget *> found;
    // All there are, but asked for by a rectangle: without an index only these come in order.
    const QRectF everywhere(-farthest, -farthest, 2 * farthest, 2 * farthest);
    const QList<QGraphicsItem *> items =
        m_scene.items(everywhere, Qt::IntersectsItemBoundingRect, Qt::AscendingOrder);
    for (QGraphicsItem *item : items) {
        if (ProxyWidget *host = selectableHost(item))
            found.append(host);
    }
    return found;
}

void SceneSelection::select(const QList<ProxyWidget *> &hosts, enHow how)
{
    m_isBusy = true;
    if (how == Replace)
        m_scene.clearSelection();
    for (ProxyWidget *host : hosts) {
        if (selectableHost(host))
            host->setSelected(how != Toggle || !host->isSelected());
    }
    if (!hosts.isEmpty())
        setKey(*hosts.last());
    conclude();
}

void SceneSelection::selectAll()
{
    select(selectable());
}

void SceneSelection::clear()
{
    select({});
}

QList<ProxyWidget *> SceneSelection::at(QPointF place) const
{
    QList<ProxyWidget *> met;
    const QList<QGraphicsItem *> items = m_scene.items(place);
    for (QGraphicsItem *item : items) {
        if (ProxyWidget *host = selectableHost(item))
            met.append(host);
    }
    return met;
}

ProxyWidget *SceneSelection::selectBelow(QPointF place)
{
    const QList<ProxyWidget *> met = at(place);
    if (met.isEmpty())
        return nullptr;
    const auto selected = std::find_if(met.cbegin(), met.cend(),
                                       [](const ProxyWidget *host) { return host->isSelected(); });
    const int next = selected == met.cend() ? 0 : int(selected - met.cbegin()) + 1;
    ProxyWidget *picked = met[next % met.size()];
    select({picked});
    m_scene.setFocusItem(picked);
    return picked;
}

} // namespace Widgets
