#include "widgets/eventlist/EventListStore.h"
#include "widgets/eventlist/WidgetEvent.h"
#include "widgets/eventlist/WidgetEventSortModel.h"
#include "widgets/eventlist/WidgetEventView.h"
#include "widgets/eventlist/bar/EventFilterBar.h"

#include "nodes/auth/systemAuthentication.h"
#include "nodes/system/systemCore.h"

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
    m_bar->setFilter(settings.filter);
    m_bar->setDetailsShown(settings.isDetailed);
    m_sorting->setFilter(m_bar->filter());
    showCounts();
    m_keeping.stop();
}

void WidgetEvent::keep()
{
    m_keeping.stop();
    const Nodes::systemCore *core = context().model();
    if (!core || !m_list || !isRuntime())
        return;
    const EventListSettings settings{m_view->columnState(), m_bar->filter(),
                                     m_bar->isDetailsShown()};
    (void)EventListStore(*core, m_list->GetId()).save(settings); // what was wrong is in the log
}

} // namespace Widgets
