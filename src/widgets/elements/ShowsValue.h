#pragma once

#include "widgets/WidgetsExport.h"

#include "nodes/values/Quality.h"

#include <QString>

namespace Widgets {

/// Carried by elements that show a live value: what the operator sees of it now, which lags behind
/// the signal by the way through the event loop. GUI thread.
class WIDGETS_EXPORT ShowsValue
{
public:
    virtual ~ShowsValue() = default;

    virtual QString shownText() const = 0;
    /// Quality as it is drawn; Good for an element without a signal.
    virtual Nodes::Quality shownQuality() const = 0;
};

} // namespace Widgets
