#pragma once

#include "nodes/NodesExport.h"
#include "nodes/values/Quality.h"
#include "nodes/values/Result.h"
#include "nodes/values/Timestamp.h"

#include <boost/date_time/posix_time/ptime.hpp>

#include <memory>
#include <string>
#include <variant>

namespace Nodes {

struct IntervalSample;

enum class enSignalValueType {
    String = 0,
    Bool = 1,
    Int = 2,
    Double = 3,
    ULong = 4,
    Result = 5, ///< an error in place of a value
    None = 6    ///< default-constructed, nothing received yet
};

/// A live value with its quality and times. Plain value, safe to copy across threads.
/// A value holding a Result always has quality Bad.
class NODES_EXPORT SignalValue
{
public:
    SignalValue() = default;
    SignalValue(std::string value) : m_value(std::move(value)) {}
    SignalValue(const char *value) : m_value(std::string(value)) {}
    SignalValue(bool value) : m_value(value) {}
    SignalValue(int value) : m_value(value) {}
    SignalValue(double value) : m_value(value) {}
    SignalValue(unsigned long value) : m_value(value) {}
    SignalValue(Result error) : m_value(std::move(error)), m_quality(Quality::Bad) {}

    /// Replaces the held alternative; quality becomes Good (Bad for a Result), times stay.
    template <class T> void SetValue(T &&value)
    {
        SignalValue replacement(std::forward<T>(value));
        m_value = std::move(replacement.m_value);
        m_quality = replacement.m_quality;
    }

    enSignalValueType GetType() const;
    /// Number of the value; text is parsed. NaN for text that is no number, errors and nothing.
    double ToDouble() const;
    /// Nearest integer, clamped to int; 0 where ToDouble is NaN: test IsNumber first.
    int ToInt() const;
    unsigned long ToULong() const;
    /// Shortest exact text of a number, "true"/"false", the text itself, or the error's log text.
    std::string ToString() const;
    /// True for true, non-zero numbers, and the texts "1" and "true". Errors and nothing are false.
    bool ToBool() const;
    /// The same value as another type, with its quality and times. An error value in place of what
    /// does not fit: text that is no number, a number beyond the type's range, nothing received.
    /// Errors stay errors; fractions are rounded to the nearest integer.
    SignalValue ConvertedTo(enSignalValueType type) const;
    bool IsNumber() const;
    bool IsError() const { return GetType() == enSignalValueType::Result; }
    bool IsEmpty() const { return GetType() == enSignalValueType::None; }
    /// The held error; success when the value is no error.
    Result GetError() const;

    /// Nothing received counts as Bad.
    Quality GetQuality() const { return IsEmpty() ? Quality::Bad : m_quality; }
    void SetQuality(Quality quality);
    bool IsGood() const { return GetQuality() == Quality::Good; }

    /// Time at the source (device or driver poll); 0 when never stamped.
    Timestamp GetSourceTime() const { return m_sourceTime; }
    /// Time of arrival in this process. A change of quality alone leaves both times as they are.
    Timestamp GetReceiveTime() const { return m_receiveTime; }
    void SetTimes(Timestamp source, Timestamp receive);
    /// Since when the signal has had this quality, by the clock of this station: when it turned
    /// stale, when its device was lost, when it was good again. Set by the cell that it is
    /// published into; 0 before that.
    Timestamp GetQualityTime() const { return m_qualityTime; }
    void SetQualityTime(Timestamp time) { m_qualityTime = time; }
    /// Source time as UTC ptime; not_a_date_time when never stamped.
    boost::posix_time::ptime GetPTime() const;

    /// Non-null for aggregated archive samples; shared, immutable.
    const IntervalSample *getIntervalSample() const { return m_interval.get(); }
    void SetIntervalSample(std::shared_ptr<const IntervalSample> sample);

    /// Same alternative, same content, same quality; times do not count.
    bool operator==(const SignalValue &other) const;
    bool operator!=(const SignalValue &other) const { return !(*this == other); }

private:
    // The order follows enSignalValueType shifted by one: monostate comes first for cheap defaults.
    std::variant<std::monostate, std::string, bool, int, double, unsigned long, Result> m_value;
    Quality m_quality = Quality::Good;
    Timestamp m_sourceTime = 0;
    Timestamp m_receiveTime = 0;
    Timestamp m_qualityTime = 0;
    std::shared_ptr<const IntervalSample> m_interval;
};

} // namespace Nodes
