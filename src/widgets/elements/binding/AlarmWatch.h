#pragma once

#include "widgets/WidgetsExport.h"

#include "nodes/events/BasicEvent.h"

#include <functional>
#include <vector>

namespace Nodes {
class BasicSignal;
}

namespace Widgets {

/// Tells one element that alarms of its signals changed, once however many did at a time. Elements
/// of other signals are not asked. A member of the element. GUI thread.
class WIDGETS_EXPORT AlarmWatch
{
public:
    explicit AlarmWatch(std::function<void()> onChanged);
    ~AlarmWatch();
    AlarmWatch(const AlarmWatch &) = delete;
    AlarmWatch &operator=(const AlarmWatch &) = delete;

    /// In place of those watched before; null ones are left out.
    void setSignals(const std::vector<const Nodes::BasicSignal *> &watched);

    /// Calls whom it concerns that these alarms changed.
    static void tell(const std::vector<Nodes::BasicEvent> &alarms);

private:
    void leave();

    std::function<void()> m_onChanged;
    std::vector<unsigned long> m_signals; // ids
};

} // namespace Widgets
