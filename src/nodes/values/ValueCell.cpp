#include "nodes/values/ValueCell.h"

#include "nodes/values/Clock.h"
#include "nodes/values/SampleOrder.h"
#include "nodes/values/SampleTap.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace Nodes {

namespace {

struct Recorder
{
    void Offer(const SignalValue &value, Timestamp time, Timestamp arrival)
    {
        if (value == last && value.GetSourceTime() == last.GetSourceTime())
            return;
        last = value;
        tap->Offer(order.Place(time, arrival), value);
    }

    std::shared_ptr<SampleTap> tap;
    SampleOrder order;
    SignalValue last;
};

bool isAnalog(const SignalValue &value)
{
    return value.IsNumber() && value.GetType() != enSignalValueType::Bool;
}

} // namespace

struct ValueCell::Taps
{
    std::vector<Recorder> recorders;
};

ValueCell::ValueCell() = default;

ValueCell::~ValueCell() = default;

void ValueCell::Publish(SignalValue value, double deadband)
{
    const Clock &clock = Clock::Current();
    if (value.GetType() == enSignalValueType::Double && !std::isfinite(value.ToDouble()))
        value.SetValue(Result(Result::OutOfRange, "not a finite number: " + value.ToString()));
    if (value.GetReceiveTime() == 0) {
        const Timestamp now = clock.Now();
        value.SetTimes(value.GetSourceTime() != 0 ? value.GetSourceTime() : now, now);
    }
    bool isHeld = false;
    {
        const std::lock_guard lock(m_mutex);
        const bool hasQualityTime = m_value.GetQualityTime() != 0;
        const bool isSameQuality = hasQualityTime && m_value.GetQuality() == value.GetQuality();
        value.SetQualityTime(isSameQuality ? m_value.GetQualityTime() : value.GetReceiveTime());
        isHeld = isHeldBack(value, deadband);
        if (isHeld)
            hold(value);
        else
            store(value);
        m_lastPublished.store(clock.Steady(), std::memory_order_relaxed);
    }
    if (!isHeld)
        emitValue(value, ValueFeed::Published);
    emitValue(value, ValueFeed::Measured);
}

bool ValueCell::isHeldBack(const SignalValue &value, double deadband) const
{
    return deadband > 0 && isAnalog(value) && value.GetType() == m_value.GetType() &&
           value.GetQuality() == m_value.GetQuality() &&
           std::abs(value.ToDouble() - m_value.ToDouble()) < deadband;
}

void ValueCell::hold(const SignalValue &value)
{
    m_value.SetTimes(value.GetSourceTime(), value.GetReceiveTime());
    if (m_heldBack)
        *m_heldBack = value;
    else
        m_heldBack = std::make_unique<SignalValue>(value);
}

void ValueCell::store(const SignalValue &value)
{
    m_value = value;
    if (m_taps)
        offer(m_value, m_value.GetSourceTime());
    m_heldBack.reset();
}

SignalValue ValueCell::degrade(Quality quality)
{
    const Timestamp now = Clock::Current().Now();
    if (m_heldBack)
        m_value = *m_heldBack;
    m_value.SetQuality(quality);
    m_value.SetQualityTime(now);
    if (m_taps)
        offer(m_value, now);
    m_heldBack.reset();
    return m_value;
}

void ValueCell::Degrade(Quality quality, const Result &reason)
{
    SignalValue degraded;
    {
        const std::lock_guard lock(m_mutex);
        const bool isError = m_value.IsError(); // and stays bad
        if (!m_value.IsEmpty() && (isError || m_value.GetQuality() == quality))
            return;
        if (m_value.IsEmpty())
            m_value.SetValue(reason);
        degraded = degrade(quality);
    }
    emitValue(degraded, ValueFeed::Published);
    emitValue(degraded, ValueFeed::Measured);
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
        expired = degrade(Quality::Stale);
    }
    emitValue(expired, ValueFeed::Published);
    emitValue(expired, ValueFeed::Measured);
    return true;
}

SignalValue ValueCell::Value() const
{
    const std::lock_guard lock(m_mutex);
    return m_value;
}

SignalValue ValueCell::Measured() const
{
    const std::lock_guard lock(m_mutex);
    return m_heldBack ? *m_heldBack : m_value;
}

Connection ValueCell::Subscribe(Slot slot, ValueFeed feed)
{
    return m_subscribers[std::size_t(feed)].Connect(std::move(slot));
}

void ValueCell::emitValue(const SignalValue &value, ValueFeed feed) const
{
    m_subscribers[std::size_t(feed)](value);
}

void ValueCell::AddTap(std::shared_ptr<SampleTap> tap)
{
    const std::lock_guard lock(m_mutex);
    Recorder recorder{std::move(tap), {}, {}};
    const bool isChangeOfQuality = m_value.GetQualityTime() > m_value.GetReceiveTime();
    if (!m_value.IsEmpty())
        recorder.Offer(m_value,
                       isChangeOfQuality ? m_value.GetQualityTime() : m_value.GetSourceTime(),
                       Clock::Current().Now());
    if (!m_taps)
        m_taps = std::make_unique<Taps>();
    m_taps->recorders.push_back(std::move(recorder));
}

void ValueCell::RemoveTap(const SampleTap &tap)
{
    const std::lock_guard lock(m_mutex);
    if (!m_taps)
        return;
    auto &all = m_taps->recorders;
    all.erase(std::remove_if(all.begin(), all.end(),
                             [&tap](const Recorder &r) { return r.tap.get() == &tap; }),
              all.end());
    if (all.empty())
        m_taps.reset();
}

void ValueCell::offer(const SignalValue &value, Timestamp time)
{
    const Timestamp now = Clock::Current().Now();
    for (Recorder &recorder : m_taps->recorders) {
        if (m_heldBack)
            recorder.Offer(*m_heldBack, m_heldBack->GetSourceTime(),
                           std::min(m_heldBack->GetReceiveTime(), now));
        recorder.Offer(value, time, now);
    }
}

} // namespace Nodes
