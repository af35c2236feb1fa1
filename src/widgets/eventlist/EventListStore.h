#pragma once

#include "widgets/WidgetsExport.h"
#include "widgets/eventlist/EventRowFilter.h"

#include "nodes/values/Result.h"
#include "utils/settings/Configurator.h"

#include <QByteArray>

#include <optional>
#include <vector>

namespace Nodes {
class systemCore;
}

namespace Widgets {

/// What an operator made of an event list.
struct EventListSettings
{
    QByteArray columns; ///< of the table's header; empty: as configured
    EventRowFilter filter;
    bool isDetailed = false;
    std::optional<std::vector<unsigned long>> sources; ///< ids of nodes; nothing: as configured
};

/// Keeps that over restarts with the data of the station: for each list and each user of each
/// project, and for those who work without one. GUI thread.
class WIDGETS_EXPORT EventListStore : private Utils::Configurator
{
public:
    /// Of whoever is logged in now.
    EventListStore(const Nodes::systemCore &model, unsigned long list);

    EventListSettings load() const;
    /// StorageError when it could not be kept; the reason is in the log.
    [[nodiscard]] Nodes::Result save(const EventListSettings &settings) const;

private:
    QString m_owner;
};

} // namespace Widgets
