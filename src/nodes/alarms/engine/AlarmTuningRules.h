#pragma once

#include "nodes/alarms/AlarmTuning.h"
#include "nodes/values/Result.h"
#include "nodes/values/Timestamp.h"

#include <string>

namespace Nodes {

struct AlarmDeeds;
struct AlarmSettings;

/// How numbers of an alarm may deviate from the project.
namespace AlarmTuningRules {

/// A limit on the alarm's signal as operators read it: "2500000 Па".
std::string LimitText(const AlarmSettings &settings, double limit);

/// The numbers the alarm has, as the project says.
AlarmTuning OfProject(const AlarmSettings &settings);
/// The numbers that count.
AlarmTuning Effective(const AlarmTuning &project, const AlarmDeeds &deeds);

/// OutOfRange, NotSupported and so on with a Russian text that says which number and its range.
[[nodiscard]] Result Check(const AlarmSettings &settings, const AlarmTuning &wanted);
/// What is wanted as the project has it is no deviation any more.
void Apply(const AlarmTuning &wanted, const AlarmTuning &project, const std::string &user,
           Timestamp now, AlarmDeeds &deeds);
/// A number that the project has changed since counts; returns the deviations given up for it.
AlarmTuning DropOverruled(const AlarmTuning &project, AlarmDeeds &deeds);

/// "предел 110 → 115, задержка возникновения 0 → 5 с"; "" when nothing differs.
std::string Describe(const AlarmTuning &before, const AlarmTuning &after);
/// That these deviations were given up for the project's numbers, for the journal.
std::string Overruled(const AlarmSettings &settings, const AlarmTuning &dropped);

} // namespace AlarmTuningRules

} // namespace Nodes
