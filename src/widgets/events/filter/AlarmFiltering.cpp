#include "widgets/events/filter/AlarmFiltering.h"

#include "widgets/context/ProcessContext.h"
#include "widgets/events/ModelManager.h"
#include "widgets/events/filter/AlarmFilterBar.h"
#include "widgets/events/filter/AlarmFilterStore.h"
#include "widgets/events/filter/AlarmList.h"

#include "nodes/auth/systemAuthentication.h"
#include "nodes/system/systemCore.h"

namespace Widgets {

AlarmFiltering::AlarmFiltering(ModelManager &manager, AlarmFilterBar &bar, QObject *parent)
    : QObject(parent), m_manager(manager), m_bar(bar)
{
    connect(&bar, &AlarmFilterBar::changed, this, &AlarmFiltering::choose);
    const Nodes::systemCore *model = ProcessContext::model();
    Nodes::systemAuthentication *users = model ? model->GetSystemAuthentication() : nullptr;
    if (users)
        m_userChanged = users->ConnectUserChanged([this](const Nodes::NodeLink &) { load(); });
    load();
}

void AlarmFiltering::load()
{
    const Nodes::systemCore *model = ProcessContext::model();
    const AlarmFilter kept = model ? AlarmFilterStore(*model).load() : AlarmFilter();
    m_bar.setFilter(kept);
    m_manager.setFilter(kept);
}

void AlarmFiltering::choose(const AlarmFilter &filter)
{
    m_manager.setFilter(filter);
    // A choice that cannot be kept still counts; the log has why.
    if (const Nodes::systemCore *model = ProcessContext::model())
        (void)AlarmFilterStore(*model).save(filter);
}

void AlarmFiltering::reset()
{
    m_bar.setFilter({});
    choose({});
}

QString AlarmFiltering::words() const
{
    const AlarmFilter &filter = m_manager.sorting().filter();
    QStringList words;
    QStringList priorities;
    for (int i = 0; i < AlarmFilter::PriorityCount; ++i) {
        if (filter.priorities[std::size_t(i)])
            priorities << QString::number(i + 1);
    }
    if (priorities.size() < AlarmFilter::PriorityCount)
        words << QStringLiteral("приоритет ") + priorities.join(", ");
    if (filter.states != AlarmFilter().states)
        words << QStringLiteral("состояние");
    if (filter.area)
        words << (filter.area->isEmpty() ? QStringLiteral("без участка") : *filter.area);
    if (!filter.text.isEmpty())
        words << QStringLiteral("«%1»").arg(filter.text);
    return words.join(QStringLiteral("; "));
}

void AlarmFiltering::findAreas()
{
    const QStringList areas = m_manager.sorting().areas();
    if (areas == m_areas)
        return;
    m_areas = areas;
    m_bar.setAreas(areas);
}

} // namespace Widgets
