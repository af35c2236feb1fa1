#include "widgets/eventlist/EventListStore.h"
#include "widgets/eventlist/WidgetEvent.h"
#include "widgets/eventlist/WidgetEventSortModel.h"
#include "widgets/eventlist/WidgetEventView.h"
#include "widgets/eventlist/bar/EventFilterBar.h"

#include "nodes/auth/systemAuthentication.h"
#include "nodes/system/systemCore.h"
#include "nodes/visual/events/widgetEventList.h"

namespace Widgets {

void WidgetEvent::watchUser()
{
    const Nodes::systemCore *core = context().model();
    Nodes::systemAuthentication *users = core ? core->GetSystemAuthentication() : nullptr;
    if (!users || !isRuntime())
        return;
    m_userConnection = users->ConnectUserChanged([this](const Nodes::NodeLink &) {
        QMetaObject::invokeMethod(this, &WidgetEvent::restore, Qt::QueuedConnection);
    });
}

// Of whoever is logged in now.
void WidgetEvent::restore()
{
    const Nodes::systemCore *core = context().model();
    if (!core || !m_list || !isRuntime() || !isActive())
        return;
    const EventListSettings settings = EventListStore(*core, m_list->GetId()).load();
    if (!m_view->restoreColumnState(settings.columns))
        m_view->updateProperties();
    takeSources(settings.sources);
    m_bar->setFilter(settings.filter);
    m_bar->setDetailsShown(settings.isDetailed);
    m_sorting->setFilter(m_bar->filter());
    showCounts();
    m_keeping.stop();
}

// Other sources are other rows.
void WidgetEvent::takeSources(const std::optional<std::vector<unsigned long>> &ids)
{
    const Nodes::NodesArray before = m_list->GetSources();
    m_list->ResetSources();
    if (ids) {
        Nodes::NodesArray sources;
        for (const unsigned long id : *ids)
            sources.push_back(Nodes::NodeLink(id, m_list->GetNodesCollection()));
        m_list->SetSources(sources);
    }
    if (before.GetLinks() != m_list->GetSources().GetLinks())
        onSourcesChanged();
}

void WidgetEvent::keep()
{
    m_keeping.stop();
    const Nodes::systemCore *core = context().model();
    if (!core || !m_list || !isRuntime())
        return;
    EventListSettings settings{m_view->columnState(), m_bar->filter(), m_bar->isDetailsShown(), {}};
    if (const std::optional<Nodes::NodeLinks> &chosen = m_list->GetChosenSources()) {
        settings.sources.emplace();
        for (const Nodes::NodeLink &source : *chosen)
            settings.sources->push_back(source.GetNodeId());
    }
    (void)EventListStore(*core, m_list->GetId()).save(settings); // what was wrong is in the log
}

} // namespace Widgets
