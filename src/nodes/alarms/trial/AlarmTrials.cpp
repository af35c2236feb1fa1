#include "nodes/alarms/trial/AlarmTrials.h"

#include "nodes/alarms/trial/AlarmTrial.h"

#include <algorithm>
#include <memory>

namespace Nodes {

namespace {

constexpr std::size_t mostReferences = 5000000;
/// Samples of so long before the period tell how it began.
constexpr Timestamp prelude = AlarmStatistics::Day;

/// Hands the samples of both signals to all trials, in order of time.
class TrialPass
{
public:
    TrialPass(const AlarmTrials &trials, SampleRun reference, AlarmTrials::Outcome &outcome)
        : m_trials(trials), m_reference(std::move(reference)), m_outcome(outcome)
    {
        for (const AlarmSettings &settings : trials.candidates)
            m_each.push_back(std::make_unique<AlarmTrial>(
                settings,
                AlarmStatistics::Settings{trials.begin, trials.end, trials.begin - prelude}));
    }

    void Take(const SampleRun &run)
    {
        for (std::size_t i = 0; i < run.Size(); ++i) {
            const Timestamp at = run.times[i];
            takeReferences(at);
            const SignalValue value = ValueOf(run, i);
            for (const auto &trial : m_each)
                trial->Judge(value, at);
            if (at < m_trials.begin)
                continue;
            if (m_outcome.samples++ == 0)
                m_outcome.first = at;
        }
        if (m_trials.onProgress && !run.IsEmpty())
            m_trials.onProgress(double(run.times.back() - m_trials.begin + prelude) /
                                double(m_trials.end - m_trials.begin + prelude));
    }
    void Finish()
    {
        takeReferences(m_trials.end - 1);
        for (const auto &trial : m_each)
            m_outcome.figures.push_back(trial->Finish());
    }

private:
    void takeReferences(Timestamp until)
    {
        for (; m_next < m_reference.Size() && m_reference.times[m_next] <= until; ++m_next) {
            const SignalValue value = ValueOf(m_reference, m_next);
            for (const auto &trial : m_each)
                trial->JudgeReference(value, m_reference.times[m_next]);
        }
    }

    const AlarmTrials &m_trials;
    const SampleRun m_reference;
    std::size_t m_next = 0;
    AlarmTrials::Outcome &m_outcome;
    std::vector<std::unique_ptr<AlarmTrial>> m_each;
};

Result readReference(const AlarmTrials &trials, const std::atomic<bool> &isCancelled,
                     SampleRun &reference)
{
    if (!trials.reference)
        return Result();
    const Result result = trials.reference(
        trials.begin - prelude, trials.end - 1,
        [&](const SampleRun &run) {
            reference.Append(run);
            return reference.Size() <= mostReferences;
        },
        isCancelled);
    if (result && reference.Size() > mostReferences)
        return Result(Result::LimitExceeded, "more than 5000000 samples to compare with");
    return result;
}

} // namespace

Result AlarmTrials::Run(const std::atomic<bool> &isCancelled, Outcome &outcome) const
{
    outcome = Outcome();
    if (end <= begin || begin <= prelude)
        return Result(Result::InvalidArgument, "an empty period");
    SampleRun references;
    if (const Result result = readReference(*this, isCancelled, references); !result)
        return result;
    TrialPass pass(*this, std::move(references), outcome);
    const Result result = samples(
        begin - prelude, end - 1,
        [&](const SampleRun &run) {
            pass.Take(run);
            return !isCancelled;
        },
        isCancelled);
    if (isCancelled)
        return Result(Result::Cancelled);
    if (result)
        pass.Finish();
    return result;
}

} // namespace Nodes
