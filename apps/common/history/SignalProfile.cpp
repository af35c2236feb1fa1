#include "apps/common/history/SignalProfile.h"

#include "nodes/alarms/alarmLimit.h"
#include "nodes/signals/BasicSignal.h"
#include "nodes/values/FoldCase.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <initializer_list>
#include <string_view>

namespace Host {

namespace {

using Nodes::alarmLimit;
using Nodes::BasicSignal;
using Nodes::enSignalValueType;
using Kind = SignalProfile::Kind;
using Words = std::initializer_list<const char *>;

// Small letters, as FoldCase gives them. Parts of words: names are put together of them.
const Words trouble{"fault", "trip",   "warn", "fail",  "leak", "alarm",  "loss",
                    "sim.",  "stop",   "low",  "high",  "ава",  "неиспр", "отказ",
                    "утеч",  "тревог", "сбой", "reset", "сброс"};
const Words inTurns{"pump", "fan", "насос", "вентил"};
const Words counters{"runtime", "uptime", "energy", "volume",  "counter", "total",
                     "нараб",   "энерг",  "объём",  "счётчик", "время"};
const Words setpoints{"setpoint", "manual", "max", "уставк", "задан"};

bool hasAny(const std::string &name, Words words)
{
    return std::any_of(words.begin(), words.end(),
                       [&](const char *word) { return name.find(word) != std::string::npos; });
}

/// The last number of a name, 0 without one: "K1.Pump2.Running" is the second of two.
int numberIn(const std::string &name)
{
    const auto last = std::find_if(name.rbegin(), name.rend(),
                                   [](unsigned char c) { return std::isdigit(c) != 0; });
    return last == name.rend() ? 0 : *last - '0';
}

/// The range between the alarms: what the plant is run in.
void stayWithinAlarms(const BasicSignal &signal, SignalProfile &profile)
{
    for (const auto *node :
         signal.GetObjects(Nodes::NodeType(Nodes::NodeType::enNodeSubtype(alarmLimit::Code)))) {
        const auto *alarm = dynamic_cast<const alarmLimit *>(node);
        if (!alarm)
            continue;
        const auto type = alarm->GetLimitType();
        if (type == alarmLimit::High || type == alarmLimit::HighHigh)
            profile.most = std::min(profile.most, alarm->GetLimit());
        else
            profile.least = std::max(profile.least, alarm->GetLimit());
    }
    if (profile.most <= profile.least) {
        profile.least = signal.GetMinimum();
        profile.most = signal.GetMaximum();
    }
}

void guessLogical(const std::string &name, SignalProfile &profile)
{
    profile.decimals = 0;
    profile.least = 0;
    profile.most = 1;
    const bool isTrouble = hasAny(name, trouble);
    const bool takesTurns = !isTrouble && numberIn(name) > 0 && hasAny(name, inTurns);
    profile.kind = takesTurns ? Kind::Duty : Kind::State;
    profile.isSecond = numberIn(name) % 2 == 0;
    profile.mean = isTrouble ? 0 : 1;
    profile.swing = takesTurns ? 0 : isTrouble ? 0.5 : 1;
}

void guessNumber(const BasicSignal &signal, const std::string &name, SignalProfile &profile)
{
    profile.least = signal.GetMinimum();
    profile.most = signal.GetMaximum();
    stayWithinAlarms(signal, profile);
    const double range = profile.most - profile.least;
    const bool isTemperature = signal.GetUnit().find("°") != std::string::npos;
    profile.mean = profile.least + (isTemperature ? 0.7 : 0.55) * range;
    profile.swing = (isTemperature ? 0.07 : 0.12) * range;
    profile.noise = 0.003 * range;
    if (hasAny(name, counters)) {
        profile.kind = Kind::Counter;
        profile.swing = signal.GetUnit() == "ч" ? 1 : 0.001 * range;
        profile.mean = 1000 * profile.swing;
        profile.most = std::numeric_limits<double>::infinity();
    } else if (signal.GetValueType() != enSignalValueType::Double) {
        profile.kind = Kind::Setpoint;
    } else if (hasAny(name, setpoints)) {
        profile.kind = Kind::Setpoint;
        profile.swing = 0.03 * range;
    } else if (numberIn(name) > 0 && hasAny(name, inTurns)) {
        profile.kind = Kind::Duty;
        profile.isSecond = numberIn(name) % 2 == 0;
    }
}

} // namespace

SignalProfile SignalProfile::guess(const BasicSignal &signal)
{
    SignalProfile profile;
    const std::string name = Nodes::FoldCase(signal.GetName());
    const enSignalValueType type = signal.GetValueType();
    profile.decimals = type == enSignalValueType::Double ? signal.GetDecimals() : 0;
    profile.isLogical = type == enSignalValueType::Bool;
    profile.isText = type == enSignalValueType::String;
    if (profile.isText)
        profile.kind = Kind::Constant;
    else if (profile.isLogical)
        guessLogical(name, profile);
    else
        guessNumber(signal, name, profile);
    return profile;
}

} // namespace Host
