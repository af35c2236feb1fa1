#include "nodes/alarms/trial/TuningProposals.h"

#include <algorithm>
#include <cmath>

namespace Nodes {

namespace {

constexpr int shortestOn = 5000; // ms
constexpr int shortestOff = 30000;

double widerDeadband(const AlarmTuning &now, double span)
{
    if (now.deadband.value_or(0) > 0)
        return *now.deadband * 2;
    if (span > 0)
        return span / 100;
    return std::max(std::abs(now.limit.value_or(0)) / 100, 0.01);
}

} // namespace

std::vector<AlarmTuning> ProposeTunings(const AlarmTuning &now, double span)
{
    std::vector<AlarmTuning> all{now};
    AlarmTuning on = now;
    on.onDelay = std::max(now.onDelay.value_or(0) * 2, shortestOn);
    all.push_back(on);
    AlarmTuning off = now;
    off.offDelay = std::max(now.offDelay.value_or(0) * 2, shortestOff);
    all.push_back(off);
    if (!now.deadband)
        return all;
    AlarmTuning wide = now;
    wide.deadband = widerDeadband(now, span);
    all.push_back(wide);
    wide.offDelay = off.offDelay;
    all.push_back(wide);
    return all;
}

AlarmTuning ChangesOf(const AlarmTuning &now, const AlarmTuning &wanted)
{
    AlarmTuning changes;
    if (wanted.limit != now.limit)
        changes.limit = wanted.limit;
    if (wanted.deadband != now.deadband)
        changes.deadband = wanted.deadband;
    if (wanted.onDelay != now.onDelay)
        changes.onDelay = wanted.onDelay;
    if (wanted.offDelay != now.offDelay)
        changes.offDelay = wanted.offDelay;
    return changes;
}

} // namespace Nodes
