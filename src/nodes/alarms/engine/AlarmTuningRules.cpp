#include "nodes/alarms/engine/AlarmTuningRules.h"

#include "nodes/alarms/AlarmSettings.h"
#include "nodes/alarms/engine/AlarmCondition.h"
#include "nodes/alarms/engine/AlarmDeeds.h"
#include "nodes/values/NumberText.h"

#include <cmath>

namespace Nodes::AlarmTuningRules {

namespace {

constexpr int longestDelay = 86400000; // ms
constexpr double widestDeadband = 1e12;

/// Calls `run` with each number of all tunings given.
template <class Run, class... Tunings> void forEach(Run run, Tunings &...tunings)
{
    run(tunings.limit...);
    run(tunings.deadband...);
    run(tunings.onDelay...);
    run(tunings.offDelay...);
}

std::string numberText(double value)
{
    return FormatExact(value);
}

std::string delayText(int milliseconds)
{
    return numberText(milliseconds / 1000.0) + " с";
}

Result outOfRange(const std::string &what, const std::string &minimum, const std::string &maximum)
{
    return Result(Result::OutOfRange, what + ": допустимо от " + minimum + " до " + maximum);
}

Result checkLimit(const AlarmSettings &settings, double limit)
{
    if (!std::isfinite(limit))
        return Result(Result::InvalidArgument, "Предел: не число");
    const bool isOnSignal = settings.limitRank != 0 && settings.minimum < settings.maximum;
    if (isOnSignal && (limit < settings.minimum || limit > settings.maximum))
        return outOfRange("Предел " + LimitText(settings, limit) + " вне диапазона сигнала",
                          LimitText(settings, settings.minimum),
                          LimitText(settings, settings.maximum));
    return Result();
}

Result checkDeadband(double deadband)
{
    if (deadband >= 0 && deadband <= widestDeadband)
        return Result();
    return outOfRange("Зона нечувствительности " + numberText(deadband), "0",
                      numberText(widestDeadband));
}

Result checkDelay(const char *what, int delay)
{
    if (delay >= 0 && delay <= longestDelay)
        return Result();
    return outOfRange(what + (" " + delayText(delay)), delayText(0), delayText(longestDelay));
}

} // namespace

std::string LimitText(const AlarmSettings &settings, double limit)
{
    const std::string text = FormatExact(limit, settings.decimals);
    return settings.unit.empty() ? text : text + " " + settings.unit;
}

AlarmTuning OfProject(const AlarmSettings &settings)
{
    AlarmTuning project;
    if (const AlarmThreshold *threshold = settings.condition->GetThreshold()) {
        project.limit = threshold->limit;
        project.deadband = threshold->deadband;
    }
    project.onDelay = int(settings.onDelay / 1000);
    project.offDelay = int(settings.offDelay / 1000);
    return project;
}

AlarmTuning Effective(const AlarmTuning &project, const AlarmDeeds &deeds)
{
    AlarmTuning effective = project;
    forEach(
        [](auto &counts, const auto &deviation) {
            if (counts && deviation)
                counts = deviation;
        },
        effective, deeds.tuning);
    return effective;
}

Result Check(const AlarmSettings &settings, const AlarmTuning &wanted)
{
    if ((wanted.limit || wanted.deadband) && !settings.condition->GetThreshold())
        return Result(Result::InvalidArgument, "У этой тревоги нет предела: меняются только "
                                               "задержки");
    Result result;
    if (wanted.limit)
        result = checkLimit(settings, *wanted.limit);
    if (result && wanted.deadband)
        result = checkDeadband(*wanted.deadband);
    if (result && wanted.onDelay)
        result = checkDelay("Задержка возникновения", *wanted.onDelay);
    if (result && wanted.offDelay)
        result = checkDelay("Задержка снятия", *wanted.offDelay);
    return result;
}

void Apply(const AlarmTuning &wanted, const AlarmTuning &project, const std::string &user,
           Timestamp now, AlarmDeeds &deeds)
{
    forEach(
        [](const auto &want, const auto &own, auto &deviation, auto &base) {
            if (!want)
                return;
            const bool isOwn = want == own;
            deviation = isOwn ? std::nullopt : want;
            base = isOwn ? std::nullopt : own;
        },
        wanted, project, deeds.tuning, deeds.project);
    const bool isTuned = !deeds.tuning.isEmpty();
    deeds.tunedBy = isTuned ? user : std::string();
    deeds.tunedAt = isTuned ? now : 0;
}

AlarmTuning DropOverruled(const AlarmTuning &project, AlarmDeeds &deeds)
{
    AlarmTuning dropped;
    forEach(
        [](const auto &own, auto &deviation, auto &base, auto &given) {
            if (!deviation || base == own)
                return;
            given = deviation;
            deviation = std::nullopt;
            base = std::nullopt;
        },
        project, deeds.tuning, deeds.project, dropped);
    if (deeds.tuning.isEmpty()) {
        deeds.tunedBy.clear();
        deeds.tunedAt = 0;
    }
    return dropped;
}

std::string Describe(const AlarmTuning &before, const AlarmTuning &after)
{
    std::string text;
    const auto add = [&text](const char *what, const auto &from, const auto &to, auto format) {
        if (!to || from == to)
            return;
        text += text.empty() ? "" : ", ";
        text += std::string(what) + " " + (from ? format(*from) + " → " : "") + format(*to);
    };
    add("предел", before.limit, after.limit, numberText);
    add("зона нечувствительности", before.deadband, after.deadband, numberText);
    add("задержка возникновения", before.onDelay, after.onDelay, delayText);
    add("задержка снятия", before.offDelay, after.offDelay, delayText);
    return text;
}

std::string Overruled(const AlarmSettings &settings, const AlarmTuning &dropped)
{
    AlarmTuning project = OfProject(settings);
    forEach(
        [](auto &number, const auto &was) {
            if (!was)
                number = std::nullopt;
        },
        project, dropped);
    return "Подстройка тревоги «" + settings.text +
           "» отменена, проект изменён: " + Describe(dropped, project);
}

} // namespace Nodes::AlarmTuningRules
