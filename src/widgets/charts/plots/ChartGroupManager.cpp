#include "widgets/charts/plots/ChartGroupManager.h"

#include "widgets/charts/series/ISerie.h"
#include "widgets/charts/series/SerieFactory.h"

#include "nodes/charts/widgetChart.h"
#include "nodes/charts/widgetChartBasicSerie.h"
#include "nodes/charts/widgetChartGroup.h"

#include <algorithm>

namespace Widgets {

ChartGroupManager::ChartGroupManager(Nodes::widgetChart *chart, QObject *parent)
    : QObject(parent), m_chart(chart)
{
}

// The series are plot items: they leave their plot while they are still whole.
ChartGroupManager::~ChartGroupManager()
{
    emit seriesAboutToGo();
    for (const auto &[group, series] : m_series) {
        for (ISerie *serie : series) {
            serie->disconnect(this);
            delete serie;
        }
    }
}

Nodes::widgetChartGroup *ChartGroupManager::group() const
{
    return dynamic_cast<Nodes::widgetChartGroup *>(m_group.GetNode());
}

void ChartGroupManager::setCurrentGroup(Nodes::widgetChartGroup *group)
{
    if (group == this->group() && m_group.GetNodeId() == (group ? group->GetId() : 0))
        return;
    m_group = group;
    m_watches.clear();
    if (group) {
        watch(*group);
        if (m_series.find(group->GetId()) == m_series.end())
            m_series[group->GetId()] = make(*group);
    }
    emit groupChanged();
}

const std::vector<ISerie *> &ChartGroupManager::series() const
{
    const auto found = m_series.find(m_group.GetNodeId());
    return found == m_series.end() ? m_none : found->second;
}

QList<ISerie *> ChartGroupManager::seriesOf(int plotNumber) const
{
    QList<ISerie *> found;
    for (ISerie *serie : series()) {
        if (serie->getPlotAreaNo() == plotNumber)
            found << serie;
    }
    return found;
}

bool ChartGroupManager::has(const ISerie *serie) const
{
    const std::vector<ISerie *> &all = series();
    return std::find(all.begin(), all.end(), serie) != all.end();
}

std::vector<ISerie *> ChartGroupManager::make(const Nodes::widgetChartGroup &group)
{
    std::vector<ISerie *> made;
    for (const Nodes::NodeLink &link : group.GetSeries()) {
        auto *node = dynamic_cast<Nodes::widgetChartBasicSerie *>(link.GetNode());
        ISerie *serie = SerieFactory::create(node, this);
        if (!serie)
            continue;
        serie->setNumber(int(made.size()));
        connect(serie, &QObject::destroyed, this, &ChartGroupManager::onGone);
        made.push_back(serie);
    }
    return made;
}

void ChartGroupManager::watch(Nodes::widgetChartGroup &group)
{
    const auto add = [this](Nodes::ConfigNode *node, bool isGroup) {
        Utils::NodeRelay::Handlers handlers;
        handlers.propertyChanged = [this](Nodes::BasicProperty *) { emit groupUpdated(); };
        if (isGroup) {
            handlers.childAdded = [this](const Nodes::NodeLink &) { onChildrenChanged(); };
            handlers.childRemoved = handlers.childAdded;
            handlers.childMoved = [this] { onChildrenChanged(); };
        }
        m_watches.push_back(std::make_unique<Utils::NodeRelay>());
        m_watches.back()->connect(node, std::move(handlers));
    };
    add(&group, true);
    for (const Nodes::NodesContainer &axes : {group.GetYAxes(), group.GetXAxes()}) {
        for (const Nodes::NodeLink &link : axes) {
            if (auto *axis = dynamic_cast<Nodes::ConfigNode *>(link.GetNode()))
                add(axis, false);
        }
    }
    for (const Nodes::NodeLink &link : group.GetZones()) {
        if (auto *zone = dynamic_cast<Nodes::ConfigNode *>(link.GetNode()))
            add(zone, false);
    }
}

// Later: the relay that tells of it is replaced here.
void ChartGroupManager::onChildrenChanged()
{
    if (m_isChanging)
        return;
    m_isChanging = true;
    QMetaObject::invokeMethod(this, &ChartGroupManager::rebuild, Qt::QueuedConnection);
}

void ChartGroupManager::rebuild()
{
    m_isChanging = false;
    emit seriesAboutToGo();
    auto gone = std::move(m_series[m_group.GetNodeId()]);
    m_series.erase(m_group.GetNodeId());
    for (ISerie *serie : gone) {
        serie->disconnect(this);
        delete serie;
    }
    Nodes::widgetChartGroup *present = group();
    m_group = Nodes::NodeLink();
    m_watches.clear();
    if (present)
        setCurrentGroup(present);
    else
        emit groupChanged();
}

void ChartGroupManager::onGone(QObject *serie)
{
    for (auto &[group, all] : m_series) {
        all.erase(std::remove_if(all.begin(), all.end(),
                                 [serie](const ISerie *one) {
                                     return static_cast<const QObject *>(one) == serie;
                                 }),
                  all.end());
    }
}

} // namespace Widgets
