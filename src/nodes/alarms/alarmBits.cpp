#include "nodes/alarms/alarmBits.h"

#include "nodes/alarms/engine/AlarmCondition.h"
#include "nodes/model/KindBuilder.h"
#include "nodes/model/validation/ValidationResults.h"
#include "nodes/values/SignalValue.h"

#include <charconv>
#include <cmath>

namespace Nodes {

namespace {

std::optional<std::uint64_t> parsedBits(std::string_view text)
{
    const bool isHex = text.substr(0, 2) == "0x" || text.substr(0, 2) == "0X";
    if (isHex)
        text.remove_prefix(2);
    std::uint64_t bits = 0;
    const auto [end, error] =
        std::from_chars(text.data(), text.data() + text.size(), bits, isHex ? 16 : 10);
    const bool isWhole = error == std::errc() && end == text.data() + text.size();
    return isWhole ? std::optional(bits) : std::nullopt;
}

/// Nothing for what is no whole number of a word.
std::optional<std::uint64_t> bitsOf(const SignalValue &value)
{
    const Quality quality = value.GetQuality();
    if (quality == Quality::Bad || quality == Quality::Stale)
        return std::nullopt;
    if (value.GetType() == enSignalValueType::ULong)
        return value.ToULong();
    constexpr double widest = 9007199254740992.0; // the last whole number that is exact
    const double number = value.ToDouble();
    if (!(std::abs(number) <= widest) || number != std::floor(number))
        return std::nullopt;
    return static_cast<std::uint64_t>(static_cast<std::int64_t>(number));
}

class BitsCondition : public AlarmCondition
{
public:
    /// Without a mask nothing is known.
    BitsCondition(std::uint64_t mask, std::optional<std::uint64_t> pattern)
        : m_mask(mask), m_pattern(pattern)
    {
    }
    std::unique_ptr<AlarmCondition> Clone() const override
    {
        return std::make_unique<BitsCondition>(*this);
    }
    AlarmVerdict Judge(const AlarmInput &input) override
    {
        const std::optional<std::uint64_t> bits = bitsOf(input.value);
        if (!bits || m_mask == 0)
            return AlarmVerdict::Unknown;
        const std::uint64_t masked = *bits & m_mask;
        const bool isMet = m_pattern ? masked == *m_pattern : masked != 0;
        return isMet ? AlarmVerdict::Alarm : AlarmVerdict::Normal;
    }

private:
    std::uint64_t m_mask;
    std::optional<std::uint64_t> m_pattern;
};

} // namespace

KindInfo alarmBits::Kind()
{
    return KindBuilder::For<alarmBits>("alarmBits", "Bits alarm", "Тревога по битам")
        .Inherit<BasicAlarm>()
        .Property<&alarmBits::m_mask>(Prop::Mask, "Mask", "Маска")
        .Property<&alarmBits::m_pattern>(Prop::Pattern, "Pattern", "Образец");
}

// A pattern that is no number must not turn into "any bit": it is met by nothing.
std::unique_ptr<AlarmCondition> alarmBits::MakeCondition() const
{
    const std::optional<std::uint64_t> pattern = parsedBits(m_pattern);
    const bool isUsable = m_pattern.empty() || pattern;
    return std::make_unique<BitsCondition>(isUsable ? parsedBits(m_mask).value_or(0) : 0, pattern);
}

void alarmBits::Validate(ValidationResults &results) const
{
    BasicAlarm::Validate(results);
    const auto find = [&](const char *property, const std::string &what) {
        results.Add(GetNodeLink(), Result(this, Result::InvalidArgument, property),
                    "Тревога «" + GetPath() + "»: " + what + ", тревога не возникнет.");
    };
    const std::optional<std::uint64_t> mask = parsedBits(m_mask);
    const std::optional<std::uint64_t> pattern = parsedBits(m_pattern);
    if (mask.value_or(0) == 0)
        find(Prop::Mask.key, "маска не задана. Укажите биты, например 0x0C; до тех пор");
    else if (!m_pattern.empty() && !pattern)
        find(Prop::Pattern.key, "образец «" + m_pattern + "» не число. Укажите, например, 0x04");
    else if (pattern && (*pattern & ~*mask) != 0)
        find(Prop::Pattern.key, "в образце есть биты вне маски. Добавьте их в маску");
}

} // namespace Nodes
