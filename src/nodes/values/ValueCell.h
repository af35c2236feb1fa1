#pragma once

#include "nodes/NodesExport.h"
#include "nodes/values/Connection.h"
#include "nodes/values/SignalValue.h"
#include "nodes/values/SlotList.h"

#include <array>
#include <atomic>
#include <functional>
#include <memory>
#include <mutex>

namespace Nodes {

class SampleTap;

/// Which values a subscriber of a cell hears of.
enum class ValueFeed {
    Published, ///< what is shown and recorded
    Measured   ///< everything that came, changes within the deadband too: for those who judge
};

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
    /// A number that differs by less than `deadband` from the one published last, in the same
    /// quality, is held back: the published one stays and takes over its times, so that a steady
    /// signal does not turn stale. Drift adds up, because the number compared with stays. Logical
    /// values, texts and errors are never held back.
    void Publish(SignalValue value, double deadband = 0);
    /// Keeps the last value, also one held back, with its times but with this quality from now on;
    /// subscribers hear of a change. Errors stay bad. Nothing received becomes the error `reason`.
    void Degrade(Quality quality, const Result &reason);
    /// Degrades to Stale unless something was published since `lastPublished` (see below) or the
    /// value is bad already; true when it did.
    bool Expire(Timestamp lastPublished);
    /// As published last.
    SignalValue Value() const;
    /// As it came last, also when that was held back.
    SignalValue Measured() const;
    /// Steady time of the last Publish in microseconds, 0 before the first.
    Timestamp LastPublished() const { return m_lastPublished.load(std::memory_order_relaxed); }

    using Slot = std::function<void(const SignalValue &)>;
    Connection Subscribe(Slot slot, ValueFeed feed = ValueFeed::Published);

    /// Offers to `tap` the present value, if there is one, and every sample published from then on:
    /// each new value, each change of quality, and before those the value held back last, so that
    /// steps from sample to sample stay within the deadband of what was measured. A value that
    /// comes again with the same source time is no new sample. Any thread.
    void AddTap(std::shared_ptr<SampleTap> tap);
    /// The tap is offered nothing any more when this returns.
    void RemoveTap(const SampleTap &tap);

private:
    struct Taps;

    bool isHeldBack(const SignalValue &value, double deadband) const;
    void hold(const SignalValue &value);
    void store(const SignalValue &value);
    SignalValue degrade(Quality quality);
    void offer(const SignalValue &value, Timestamp time);
    void emitValue(const SignalValue &value, ValueFeed feed) const;

    mutable std::mutex m_mutex;
    SignalValue m_value;                     // guarded
    std::unique_ptr<SignalValue> m_heldBack; // guarded; came after m_value, within the deadband
    std::unique_ptr<Taps> m_taps;            // guarded; null while nobody taps
    std::atomic<Timestamp> m_lastPublished{0};
    std::array<SlotList<const SignalValue &>, 2> m_subscribers; // by feed
};

} // namespace Nodes
