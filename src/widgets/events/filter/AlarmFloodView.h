#pragma once

#include "nodes/alarms/AlarmFlood.h"
#include "nodes/values/Connection.h"
#include "utils/relay/QueueRelay.h"

#include <QObject>

namespace Nodes {
class systemAlarming;
}

namespace Widgets {

class AlarmAreasBar;
class ModelManager;

/// Shows a list by area while more alarms come than an operator can follow. GUI thread.
class AlarmFloodView : public QObject
{
    Q_OBJECT

public:
    /// All outlive it; without a subsystem there is no flood.
    AlarmFloodView(Nodes::systemAlarming *alarming, ModelManager &manager, AlarmAreasBar &bar,
                   QObject *parent = nullptr);

    const Nodes::AlarmFlood &flood() const { return m_flood; }
    /// Counts of the areas anew.
    void countAreas();

signals:
    void floodChanged();

private:
    void take(const Nodes::AlarmFlood &flood);

    ModelManager &m_manager;
    AlarmAreasBar &m_bar;
    Nodes::AlarmFlood m_flood;
    Utils::QueueRelay<Nodes::AlarmFlood> m_relay;
    Nodes::ScopedConnection m_connection;
};

} // namespace Widgets
