#include "widgets/elements/health/HealthAsker.h"

#include "nodes/alarms/systemAlarming.h"
#include "nodes/journal/EventJournal.h"
#include "nodes/journal/JournalReader.h"
#include "nodes/system/systemCore.h"

namespace Widgets {

HealthAsker::HealthAsker(QObject *parent) : QObject(parent)
{
    connect(&m_job, &WorkerJob::progressed, this, &HealthAsker::progressed);
}

void HealthAsker::ask(Nodes::systemCore &core, Nodes::AlarmStatisticsReading reading)
{
    if (const Nodes::systemAlarming *alarming = core.GetSystemAlarming())
        reading.Take(*alarming);
    const Nodes::EventJournal *journal = &core.GetJournal();
    m_job.start([this, journal, reading = std::move(reading)](const std::atomic<bool> &isCancelled,
                                                              const WorkerJob::Progress &tell) {
        Nodes::AlarmStatisticsReading told = reading;
        told.onProgress = tell;
        auto figures = std::make_shared<Nodes::AlarmFigures>();
        const auto reader = journal->OpenReader();
        const Nodes::Result result = reader ? told.Read(*reader, isCancelled, *figures)
                                            : Nodes::Result(Nodes::Result::NotAvailable);
        const AlarmFiguresPtr answer = result ? std::move(figures) : nullptr;
        return WorkerJob::Answer([this, result, answer] { emit answered(result, answer); });
    });
}

} // namespace Widgets
