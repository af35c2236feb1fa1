#include "apps/common/history/HistoryGenerator.h"

#include "apps/common/history/ArchiveWriter.h"
#include "apps/common/history/Wander.h"
#include "apps/common/process/StopRequest.h"

#include "nodes/signals/BasicSignal.h"

#include <algorithm>
#include <array>
#include <ctime>
#include <optional>

namespace Host {

namespace {

using Nodes::Quality;
using Nodes::Result;
using Nodes::Timestamp;
using Kind = SignalProfile::Kind;

constexpr Timestamp second = 1000000;
constexpr Timestamp minute = 60 * second;
constexpr Timestamp hour = 60 * minute;
constexpr Timestamp day = 24 * hour;

const Stretches::Habit stationOff{11 * day, 1, 45 * minute, 5 * hour};
const Stretches::Habit deviceLost{4 * day, 0.9, 3 * minute, 15 * minute};
const Stretches::Habit unsure{8 * day, 0.5, 15 * minute, 50 * minute};

constexpr std::size_t wantedSamples = 45000;
constexpr std::array<int, 14> handy{1,  2,   5,   10,  15,  20,   30,
                                    60, 120, 300, 600, 900, 1800, 3600}; // s

Timestamp offsetFromUtc(Timestamp time)
{
    const std::time_t seconds = time / second;
    std::tm local{};
    ::localtime_r(&seconds, &local);
    return local.tm_gmtoff * second;
}

/// What only changes now and then is not measured again and again.
bool holds(const SignalProfile &profile)
{
    return profile.kind != Kind::Process && (profile.kind != Kind::Duty || profile.isLogical);
}

const Nodes::ArchivedSignal *find(const std::vector<Nodes::ArchivedSignal> &known,
                                  const Nodes::RecordHome &home, unsigned long node)
{
    const auto found =
        std::find_if(known.begin(), known.end(), [&](const Nodes::ArchivedSignal &signal) {
            const Nodes::RecordSource &source = signal.key.source;
            return source.node == node && source.home.project == home.project &&
                   source.home.station == home.station && signal.samples > 0;
        });
    return found == known.end() ? nullptr : &*found;
}

} // namespace

/// What is being made of one signal.
struct HistoryGenerator::Series
{
    Series(SignalProfile of, SignalCurve along, Stretches when)
        : profile(std::move(of)), curve(std::move(along)), unsure(when)
    {
    }

    Nodes::ArchiveSignalKey key;
    SignalProfile profile;
    SignalCurve curve;
    Stretches unsure;
    Nodes::SampleRun run;
    std::uint64_t samples = 0;
    Timestamp gapEnd = 0;       // of the gap it is in, or was in last
    std::optional<double> last; // value
    Quality quality = Quality::Good;
    Timestamp lastTime = 0;
};

HistoryGenerator::HistoryGenerator(ArchiveWriter &writer, Nodes::RecordHome home,
                                   const HistoryProfiles &profiles)
    : m_writer(writer), m_home(std::move(home)), m_profiles(profiles)
{
}

Timestamp HistoryGenerator::intervalFor(Timestamp span)
{
    const Timestamp least = span / Timestamp(wantedSamples);
    for (const int seconds : handy) {
        if (seconds * second >= least)
            return seconds * second;
    }
    return (least / hour + 1) * hour;
}

Result HistoryGenerator::generate(const std::vector<const Nodes::BasicSignal *> &wanted,
                                  const std::vector<Nodes::ArchivedSignal> &known, const Wish &wish,
                                  const Progress &progress, Outcome &outcome)
{
    Wish exact = wish;
    if (exact.interval == 0)
        exact.interval = intervalFor(wish.to - wish.from);
    m_gaps = {Stretches(Wander::mix(wish.seed, 11), stationOff),
              Stretches(Wander::mix(wish.seed, 12), deviceLost)};
    for (std::size_t i = 0; i < wanted.size(); ++i) {
        if (StopRequest::isMade())
            return Result(Result::Cancelled, "stopped");
        progress(i, wanted.size());
        const Nodes::ArchivedSignal *held = find(known, m_home, wanted[i]->GetId());
        const Timestamp to = held ? std::min(wish.to, held->first) : wish.to;
        std::uint64_t samples = 0;
        const Result made = to > wish.from ? make(*wanted[i], exact, to, samples) : Result();
        outcome.samples += samples;
        outcome.filled += samples > 0;
        outcome.shortened += samples > 0 && to < wish.to;
        outcome.passedOver += samples == 0;
        if (!made)
            return made;
    }
    return Result();
}

Result HistoryGenerator::make(const Nodes::BasicSignal &signal, const Wish &wish, Timestamp to,
                              std::uint64_t &samples)
{
    const SignalProfile profile = m_profiles.of(signal);
    const PlantDays days{wish.seed, wish.to, offsetFromUtc(wish.to)};
    const std::uint64_t own = Wander::mix(wish.seed, signal.GetId());
    Series series(profile, SignalCurve(profile, days, signal.GetName()),
                  Stretches(Wander::mix(own, 13), unsure));
    series.key = {{m_home, signal.GetId(), signal.GetPath()}, signal.GetUnit()};
    const Timestamp first = (wish.from + wish.interval - 1) / wish.interval * wish.interval;
    for (Timestamp time = first; time < to; time += wish.interval) {
        if (!passGap(series, time))
            add(series, time);
        if (series.run.Size() < ArchiveWriter::Portion)
            continue;
        const Result result = flush(series);
        if (!result)
            return result;
    }
    const Result result = flush(series);
    samples = series.samples;
    return result;
}

/// True within a gap, which is marked where it begins.
bool HistoryGenerator::passGap(Series &series, Timestamp time) const
{
    if (time < series.gapEnd)
        return true;
    for (const Stretches &gaps : m_gaps) {
        const Stretches::Stretch gap = gaps.near(time);
        if (!gap.contains(time))
            continue;
        series.gapEnd = gap.to;
        series.last.reset();
        series.run.AddGap(time);
        return true;
    }
    return false;
}

void HistoryGenerator::add(Series &series, Timestamp time) const
{
    const SignalProfile &profile = series.profile;
    const Quality quality = series.unsure.contains(time) ? Quality::Uncertain : Quality::Good;
    const double value = series.curve.at(time);
    const bool isSame = series.last == value && series.quality == quality;
    if (isSame && holds(profile) && time - series.lastTime < hour)
        return;
    series.last = value;
    series.quality = quality;
    series.lastTime = time;
    if (profile.isText)
        series.run.AddText(time, profile.text, quality);
    else if (profile.isLogical)
        series.run.AddLogical(time, value != 0, quality);
    else
        series.run.Add(time, value, quality);
}

Result HistoryGenerator::flush(Series &series)
{
    const Result result = m_writer.write(series.key, series.run, true);
    if (result)
        series.samples += series.run.Size();
    series.run.Clear();
    return result;
}

} // namespace Host
