#pragma once

#include "widgets/WidgetsExport.h"
#include "widgets/events/filter/AlarmFilter.h"

#include "nodes/values/Result.h"
#include "utils/settings/Configurator.h"

namespace Nodes {
class systemCore;
}

namespace Widgets {

/// The filter of the alarm window, kept over restarts with the data of the station: for each user
/// of each project, and for those who work without one. GUI thread.
class WIDGETS_EXPORT AlarmFilterStore : private Utils::Configurator
{
public:
    /// Of whoever is logged in now.
    explicit AlarmFilterStore(const Nodes::systemCore &model);

    /// None when nothing is kept, or it does not read, which the log tells.
    AlarmFilter load() const;
    [[nodiscard]] Nodes::Result save(const AlarmFilter &filter) const;

private:
    QString m_owner;
};

} // namespace Widgets
