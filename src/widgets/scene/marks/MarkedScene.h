#pragma once

namespace Widgets {

class ProxyWidget;

/// A scene that shows on its elements how the alarms of their signals stand, as its hosts know it.
/// GUI thread.
class MarkedScene
{
public:
    virtual ~MarkedScene() = default;
    /// The element came, or shows another signal.
    virtual void markAlarms(ProxyWidget &element) = 0;
};

} // namespace Widgets
