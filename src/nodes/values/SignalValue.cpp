#include "nodes/values/SignalValue.h"

#include "nodes/values/IntervalSample.h"
#include "nodes/values/NumberText.h"

#include <boost/date_time/posix_time/posix_time_types.hpp>

#include <cmath>
#include <limits>
#include <optional>

namespace Nodes {

namespace {

constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

struct DoubleReader
{
    double operator()(std::monostate) const { return notANumber; }
    double operator()(const Result &) const { return notANumber; }
    double operator()(const std::string &text) const
    {
        return ParseDouble(text).value_or(notANumber);
    }
    template <class Number> double operator()(Number number) const
    {
        return static_cast<double>(number);
    }
};

struct TextWriter
{
    std::string operator()(std::monostate) const { return {}; }
    std::string operator()(const Result &error) const { return error.ToString(); }
    std::string operator()(const std::string &text) const { return text; }
    std::string operator()(bool on) const { return on ? "true" : "false"; }
    std::string operator()(double number) const { return FormatDouble(number); }
    template <class Integer> std::string operator()(Integer number) const
    {
        return std::to_string(number);
    }
};

/// Any number and the two words; nothing for other texts and NaN.
std::optional<bool> logicalOf(const SignalValue &value)
{
    const double number = value.ToDouble();
    if (!std::isnan(number))
        return number != 0;
    const std::string text = value.ToString();
    return text == "true" || text == "false" ? std::optional(text == "true") : std::nullopt;
}

/// Whether the nearest integer of `number` is within the limits; NaN is not.
bool isWithin(double number, double lowest, double limit)
{
    const double rounded = std::round(number);
    return rounded >= lowest && rounded < limit;
}

constexpr double intLowest = std::numeric_limits<int>::min();
constexpr double intLimit = -intLowest;
constexpr double ulongLimit = 2.0 * (std::numeric_limits<unsigned long>::max() / 2 + 1);

} // namespace

SignalValue SignalValue::ConvertedTo(enSignalValueType type) const
{
    if (GetType() == type || IsError())
        return *this;
    if (IsEmpty())
        return Result(Result::NotAvailable, "no value");
    const double number = ToDouble();
    SignalValue fitting{Result(Result::WrongType, "'" + ToString() + "'")};
    if (type == enSignalValueType::String)
        fitting = ToString();
    else if (type == enSignalValueType::Bool && logicalOf(*this))
        fitting = *logicalOf(*this);
    else if (type == enSignalValueType::Int && isWithin(number, intLowest, intLimit))
        fitting = ToInt();
    else if (type == enSignalValueType::ULong && isWithin(number, 0, ulongLimit))
        fitting = ToULong();
    else if (type == enSignalValueType::Double && std::isfinite(number))
        fitting = number;
    fitting.SetTimes(m_sourceTime, m_receiveTime);
    fitting.SetQualityTime(m_qualityTime);
    fitting.SetQuality(m_quality);
    return fitting;
}

enSignalValueType SignalValue::GetType() const
{
    if (m_value.index() == 0)
        return enSignalValueType::None;
    return static_cast<enSignalValueType>(m_value.index() - 1);
}

double SignalValue::ToDouble() const
{
    return std::visit(DoubleReader{}, m_value);
}

int SignalValue::ToInt() const
{
    if (const int *exact = std::get_if<int>(&m_value))
        return *exact;
    const double number = ToDouble();
    if (std::isnan(number))
        return 0;
    constexpr double lowest = std::numeric_limits<int>::min();
    constexpr double highest = std::numeric_limits<int>::max();
    return static_cast<int>(std::round(std::fmin(std::fmax(number, lowest), highest)));
}

unsigned long SignalValue::ToULong() const
{
    if (const auto *exact = std::get_if<unsigned long>(&m_value))
        return *exact;
    const double number = ToDouble();
    if (!(number > 0))
        return 0;
    constexpr double highest = static_cast<double>(std::numeric_limits<unsigned long>::max());
    return number >= highest ? std::numeric_limits<unsigned long>::max()
                             : static_cast<unsigned long>(std::round(number));
}

std::string SignalValue::ToString() const
{
    return std::visit(TextWriter{}, m_value);
}

bool SignalValue::ToBool() const
{
    if (const std::string *text = std::get_if<std::string>(&m_value))
        return *text == "1" || *text == "true";
    const double number = ToDouble();
    return !std::isnan(number) && number != 0;
}

bool SignalValue::IsNumber() const
{
    const enSignalValueType type = GetType();
    return type == enSignalValueType::Bool || type == enSignalValueType::Int ||
           type == enSignalValueType::Double || type == enSignalValueType::ULong;
}

Result SignalValue::GetError() const
{
    const Result *error = std::get_if<Result>(&m_value);
    return error ? *error : Result();
}

void SignalValue::SetQuality(Quality quality)
{
    m_quality = IsError() ? Quality::Bad : quality;
}

void SignalValue::SetTimes(Timestamp source, Timestamp receive)
{
    m_sourceTime = source;
    m_receiveTime = receive;
}

boost::posix_time::ptime SignalValue::GetPTime() const
{
    using namespace boost::posix_time;
    if (m_sourceTime == 0)
        return ptime(not_a_date_time);
    return ptime(boost::gregorian::date(1970, 1, 1), microseconds(m_sourceTime));
}

void SignalValue::SetIntervalSample(std::shared_ptr<const IntervalSample> sample)
{
    m_interval = std::move(sample);
}

bool SignalValue::operator==(const SignalValue &other) const
{
    return m_value == other.m_value && GetQuality() == other.GetQuality();
}

} // namespace Nodes
