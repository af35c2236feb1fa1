#pragma once

class QObject;

namespace Widgets {

/// Who handles events that come back to objects after a while, as when an element keeps a dialog
/// open from within one: those objects must not go before. GUI thread.
class IdleDeleter
{
public:
    virtual ~IdleDeleter() = default;

    /// False while an event is handled, which includes the time an element keeps a dialog open
    /// from within it.
    virtual bool isIdle() const = 0;
    /// deleteLater as soon as it is idle.
    virtual void deleteWhenIdle(QObject *object) = 0;
};

} // namespace Widgets
