#pragma once

#include "widgets/WidgetsExport.h"

#include "nodes/events/BasicEvent.h"

#include <QObject>

#include <memory>
#include <vector>

namespace Widgets {

class AlarmWindow;
class qBasicAction;

/// Where alarms are shown, as the window manager knows it. GUI thread.
class WIDGETS_EXPORT AlarmView : public QObject
{
    Q_OBJECT

public:
    /// Made when first asked for and kept; never null.
    virtual AlarmWindow *window() = 0;
    /// How these alarms stand now, each once.
    virtual void take(const std::vector<Nodes::BasicEvent> &alarms) = 0;
    /// An action that gives the alarm to the window when it is executed.
    virtual std::unique_ptr<qBasicAction> makeAction(Nodes::BasicEvent alarm) const = 0;

signals:
    /// These alarms were shown.
    void taken(const std::vector<Nodes::BasicEvent> &alarms);
};

} // namespace Widgets
