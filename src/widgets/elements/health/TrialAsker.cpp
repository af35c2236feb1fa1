#include "widgets/elements/health/TrialAsker.h"

#include "widgets/context/ProcessContext.h"

#include "nodes/alarms/BasicAlarm.h"
#include "nodes/alarms/statistics/AlarmStatisticsReading.h"
#include "nodes/archive/systemArchiver.h"
#include "nodes/journal/EventJournal.h"
#include "nodes/journal/JournalReader.h"
#include "nodes/signals/BasicSignal.h"
#include "nodes/system/systemCore.h"
#include "nodes/values/Clock.h"

namespace Widgets {

namespace {

Nodes::Result prepare(const Nodes::NodeLink &link, const std::vector<Nodes::AlarmTuning> &settings,
                      Nodes::AlarmTrials &trials)
{
    const Nodes::systemCore *core = ProcessContext::model();
    const Nodes::systemArchiver *archiver = core ? core->GetSystemArchiver() : nullptr;
    const auto *alarm = dynamic_cast<const Nodes::BasicAlarm *>(link.GetNode());
    if (!archiver || !alarm || !alarm->GetSignal())
        return Nodes::Result(Nodes::Result::NotFound, "Нет архива или тревоги");
    for (const Nodes::AlarmTuning &tuning : settings)
        trials.candidates.push_back(Nodes::AlarmSettings::Of(*alarm, tuning));
    const Nodes::Result opened = Nodes::OpenSamples(*archiver, *alarm->GetSignal(), trials.samples);
    const Nodes::BasicSignal *reference = alarm->GetReference();
    if (!opened || !reference)
        return opened;
    return Nodes::OpenSamples(*archiver, *reference, trials.reference);
}

} // namespace

TrialAsker::TrialAsker(QObject *parent) : QObject(parent)
{
    connect(&m_job, &WorkerJob::progressed, this, &TrialAsker::progressed);
}

Nodes::Result TrialAsker::ask(const Nodes::NodeLink &alarm, int days,
                              const std::vector<Nodes::AlarmTuning> &settings)
{
    m_job.cancel();
    Nodes::AlarmTrials trials;
    if (const Nodes::Result prepared = prepare(alarm, settings, trials); !prepared)
        return prepared;
    trials.end = Nodes::Clock::Current().Now();
    trials.begin = trials.end - days * Nodes::AlarmStatistics::Day;
    const Nodes::EventJournal *journal = &ProcessContext::model()->GetJournal();
    Nodes::AlarmStatisticsReading reading;
    reading.begin = trials.begin;
    reading.end = trials.end;
    reading.alarms = {journal->SourceOf(alarm)};
    m_job.start([this, journal, trials, reading](const std::atomic<bool> &isCancelled,
                                                 const WorkerJob::Progress &progress) {
        auto answer = std::make_shared<TrialAnswer>();
        const auto reader = journal->OpenReader();
        answer->journalResult = reader ? reading.Read(*reader, isCancelled, answer->journal)
                                       : Nodes::Result(Nodes::Result::NotAvailable);
        Nodes::AlarmTrials run = trials;
        run.onProgress = progress;
        answer->result = run.Run(isCancelled, answer->outcome);
        return WorkerJob::Answer([this, answer] { emit answered(answer); });
    });
    return Nodes::Result();
}

} // namespace Widgets
