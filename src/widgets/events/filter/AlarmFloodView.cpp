#include "widgets/events/filter/AlarmFloodView.h"

#include "widgets/events/ModelManager.h"
#include "widgets/events/filter/AlarmAreasBar.h"
#include "widgets/events/filter/AlarmList.h"

#include "nodes/alarms/systemAlarming.h"

namespace Widgets {

AlarmFloodView::AlarmFloodView(Nodes::systemAlarming *alarming, ModelManager &manager,
                               AlarmAreasBar &bar, QObject *parent)
    : QObject(parent),
      m_manager(manager),
      m_bar(bar),
      m_relay([this](const std::vector<Nodes::AlarmFlood> &floods) { take(floods.back()); })
{
    m_bar.hide();
    connect(&bar, &AlarmAreasBar::folded, this, [this](const QString &area, bool isFolded) {
        m_manager.setFolded(area.toStdString(), isFolded);
        countAreas();
    });
    if (!alarming)
        return;
    m_connection = alarming->ConnectFlood(
        [inlet = m_relay.inlet()](const Nodes::AlarmFlood &flood) { inlet(flood); });
    take(alarming->GetFlood());
}

void AlarmFloodView::take(const Nodes::AlarmFlood &flood)
{
    const bool isTurn = flood.isFlood != m_flood.isFlood;
    m_flood = flood;
    if (isTurn) {
        m_manager.setGrouped(flood.isFlood);
        m_bar.setVisible(flood.isFlood);
        countAreas();
    }
    emit floodChanged();
}

void AlarmFloodView::countAreas()
{
    if (m_flood.isFlood)
        m_bar.setAreas(m_manager.sorting().countAreas());
}

} // namespace Widgets
