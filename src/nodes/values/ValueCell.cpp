#include "nodes/values/ValueCell.h"

#include "nodes/values/Clock.h"
#include "nodes/values/SlotList.h"

#include <cmath>

namespace Nodes {

struct ValueCellSignal
{
    SlotList<const SignalValue &> changed;
};

ValueCell::ValueCell() = default;

ValueCell::~ValueCell()
{
    delete m_signal.load();
}

void ValueCell::Publish(SignalValue value)
{
    const Clock &clock = Clock::Current();
    if (value.GetType() == enSignalValueType::Double && !std::isfinite(value.ToDouble()))
        value.SetValue(Result(Result::OutOfRange, "not a finite number: " + value.ToString()));
    if (value.GetReceiveTime() == 0) {
        const Timestamp now = clock.Now();
        value.SetTimes(value.GetSourceTime() != 0 ? value.GetSourceTime() : now, now);
    }
    {
        const std::lock_guard lock(m_mutex);
        m_value = value;
        m_lastPublished.store(clock.Steady(), std::memory_order_relaxed);
    }
    emitValue(value);
}

void ValueCell::Degrade(Quality quality, const Result &reason)
{
    SignalValue degraded;
    {
        const std::lock_guard lock(m_mutex);
        if (!m_value.IsEmpty() && m_value.GetQuality() == quality)
            return;
        if (m_value.IsEmpty())
            m_value.SetValue(reason);
        m_value.SetQuality(quality);
        m_value.SetTimes(m_value.GetSourceTime(), Clock::Current().Now());
        degraded = m_value;
    }
    emitValue(degraded);
}

bool ValueCell::Expire(Timestamp lastPublished)
{
    SignalValue expired;
    {
        const std::lock_guard lock(m_mutex);
        const Quality quality = m_value.GetQuality();
        if (LastPublished() != lastPublished || quality == Quality::Bad ||
            quality == Quality::Stale)
            return false;
        m_value.SetQuality(Quality::Stale);
        m_value.SetTimes(m_value.GetSourceTime(), Clock::Current().Now());
        expired = m_value;
    }
    emitValue(expired);
    return true;
}

SignalValue ValueCell::Value() const
{
    const std::lock_guard lock(m_mutex);
    return m_value;
}

Connection ValueCell::Subscribe(Slot slot)
{
    ValueCellSignal *existing = m_signal.load(std::memory_order_acquire);
    if (!existing) {
        auto fresh = std::make_unique<ValueCellSignal>();
        if (m_signal.compare_exchange_strong(existing, fresh.get(), std::memory_order_acq_rel))
            existing = fresh.release();
    }
    return existing->changed.Connect(std::move(slot));
}

void ValueCell::emitValue(const SignalValue &value) const
{
    if (ValueCellSignal *subscribers = m_signal.load(std::memory_order_acquire))
        subscribers->changed(value);
}

} // namespace Nodes
