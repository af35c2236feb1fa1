#include "widgets/elements/health/HealthAsker.h"

#include "nodes/alarms/systemAlarming.h"
#include "nodes/journal/EventJournal.h"
#include "nodes/journal/JournalReader.h"
#include "nodes/system/systemCore.h"

#include <QRunnable>

#include <atomic>
#include <mutex>

namespace Widgets {

/// What the thread and the asker share.
struct HealthAsker::Question
{
    explicit Question(const Nodes::EventJournal &asked) : journal(asked) {}

    void cancel()
    {
        isCancelled = true;
        const std::lock_guard lock(mutex);
        if (reader)
            reader->Cancel();
    }
    Nodes::Result read(Nodes::AlarmFigures &figures)
    {
        std::unique_ptr<Nodes::JournalReader> opened = journal.OpenReader();
        {
            const std::lock_guard lock(mutex);
            reader = std::move(opened);
            if (!reader)
                return Nodes::Result(Nodes::Result::NotAvailable, "no journal");
        }
        const Nodes::Result result = reading.Read(*reader, isCancelled, figures);
        const std::lock_guard lock(mutex);
        reader.reset();
        return result;
    }

    const Nodes::EventJournal &journal;
    Nodes::AlarmStatisticsReading reading;
    std::atomic<bool> isCancelled{false};
    std::mutex mutex;
    std::unique_ptr<Nodes::JournalReader> reader; // guarded, but for its use by the thread
};

class HealthAsker::Task : public QRunnable
{
public:
    Task(HealthAsker &asker, std::shared_ptr<Question> question)
        : m_asker(asker), m_question(std::move(question))
    {
    }

    // The asker waits for its tasks before it goes.
    void run() override
    {
        m_question->reading.onProgress = [this](double share) { tell(int(share * 100)); };
        auto figures = std::make_shared<Nodes::AlarmFigures>();
        const Nodes::Result result = m_question->read(*figures);
        const AlarmFiguresPtr told = result ? std::move(figures) : nullptr;
        QMetaObject::invokeMethod(
            &m_asker,
            [asker = &m_asker, question = m_question, result, told] {
                asker->end(question, result, told);
            },
            Qt::QueuedConnection);
    }

private:
    void tell(int percent)
    {
        if (percent == m_told)
            return;
        m_told = percent;
        QMetaObject::invokeMethod(
            &m_asker,
            [asker = &m_asker, question = m_question, percent] {
                if (asker->m_isBusy && asker->m_question == question)
                    emit asker->progressed(percent);
            },
            Qt::QueuedConnection);
    }

    HealthAsker &m_asker;
    const std::shared_ptr<Question> m_question;
    int m_told = -1;
};

HealthAsker::HealthAsker(QObject *parent) : QObject(parent)
{
    m_threads.setMaxThreadCount(1);
}

HealthAsker::~HealthAsker()
{
    cancel();
    m_threads.waitForDone();
}

void HealthAsker::ask(Nodes::systemCore &core, Nodes::AlarmStatisticsReading reading)
{
    cancel();
    if (const Nodes::systemAlarming *alarming = core.GetSystemAlarming())
        reading.active = alarming->GetActiveAlarms();
    m_question = std::make_shared<Question>(core.GetJournal());
    m_question->reading = std::move(reading);
    m_isBusy = true;
    m_threads.start(new Task(*this, m_question));
}

void HealthAsker::cancel()
{
    m_isBusy = false;
    if (m_question)
        m_question->cancel();
}

void HealthAsker::end(const std::shared_ptr<Question> &question, const Nodes::Result &result,
                      const AlarmFiguresPtr &figures)
{
    if (!m_isBusy || question != m_question)
        return;
    m_isBusy = false;
    emit answered(result, figures);
}

} // namespace Widgets
