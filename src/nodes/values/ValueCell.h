#pragma once

#include "nodes/NodesExport.h"
#include "nodes/values/Connection.h"
#include "nodes/values/SignalValue.h"

#include <atomic>
#include <functional>
#include <memory>
#include <mutex>

namespace Nodes {

struct ValueCellSignal;

/// Latest value of one signal. Drivers publish from their threads, anybody reads a copy or
/// subscribes. Shared: it outlives the node it was made for while a driver still holds it.
class NODES_EXPORT ValueCell
{
public:
    ValueCell();
    ~ValueCell();
    ValueCell(const ValueCell &) = delete;
    ValueCell &operator=(const ValueCell &) = delete;

    /// Stores the value, stamped now where it carries no times, then calls every subscriber on
    /// this thread. What is no finite number is stored as the error OutOfRange, whoever sends it:
    /// nothing compares with it and no limit catches it. Two publishers never interleave a store,
    /// but subscribers may see the later value first: they read Value() when only the latest
    /// counts.
    void Publish(SignalValue value);
    /// Keeps the last value and its source time but with this quality; subscribers hear of it when
    /// the quality changed. Nothing received yet becomes the error `reason`.
    void Degrade(Quality quality, const Result &reason);
    /// Degrades to Stale unless something was published since `lastPublished` (see below) or the
    /// value is bad already; true when it did.
    bool Expire(Timestamp lastPublished);
    SignalValue Value() const;
    /// Steady time of the last Publish in microseconds, 0 before the first.
    Timestamp LastPublished() const { return m_lastPublished.load(std::memory_order_relaxed); }

    using Slot = std::function<void(const SignalValue &)>;
    Connection Subscribe(Slot slot);

private:
    void emitValue(const SignalValue &value) const;

    mutable std::mutex m_mutex;
    SignalValue m_value;
    std::atomic<Timestamp> m_lastPublished{0};
    std::atomic<ValueCellSignal *> m_signal{nullptr};
};

} // namespace Nodes
