#pragma once

#include "widgets/WidgetsExport.h"
#include "widgets/windows/AlarmView.h"

#include <memory>

namespace Nodes {
class systemAlarming;
}

namespace Widgets {

class AlarmRelay;

/// Brings the station's alarms to the alarm window and to the elements of their signals.
/// GUI thread.
class WIDGETS_EXPORT AlarmDesk : public AlarmView
{
    Q_OBJECT

public:
    /// Null: only what is given to `take` arrives. The subsystem outlives it.
    explicit AlarmDesk(Nodes::systemAlarming *alarming);
    ~AlarmDesk() override;

    AlarmWindow *window() override;
    void take(const std::vector<Nodes::BasicEvent> &alarms) override;
    std::unique_ptr<qBasicAction> makeAction(Nodes::BasicEvent alarm) const override;

private:
    std::unique_ptr<AlarmWindow> m_window;
    std::unique_ptr<AlarmRelay> m_relay;
};

} // namespace Widgets
