#include "widgets/charts/marks/JournalAsker.h"

#include "nodes/journal/EventJournal.h"
#include "nodes/journal/JournalReader.h"

#include <QRunnable>

#include <atomic>
#include <mutex>

namespace Widgets {

/// What the thread and the asker share.
struct JournalAsker::Reading
{
    std::mutex mutex;
    std::unique_ptr<Nodes::JournalReader> reader; // guarded, but for its use by the one thread
    std::atomic<unsigned> wanted{0};              // number of the question that still counts

    void cancel()
    {
        const std::lock_guard lock(mutex);
        if (reader)
            reader->Cancel();
    }
};

class JournalAsker::Task : public QRunnable
{
public:
    Task(JournalAsker &asker, const Nodes::EventJournal &journal, const Nodes::JournalQuery &query,
         unsigned number)
        : m_asker(asker),
          m_reading(asker.m_reading),
          m_journal(journal),
          m_query(query),
          m_number(number)
    {
    }

    // The asker waits for its tasks before it goes.
    void run() override
    {
        if (m_reading->wanted != m_number)
            return;
        std::vector<Nodes::BasicEvent> events;
        const Nodes::Result result = read(events);
        if (m_reading->wanted != m_number)
            return;
        QMetaObject::invokeMethod(
            &m_asker,
            [asker = &m_asker, number = m_number, result, events = std::move(events)] {
                if (asker->m_number == number)
                    emit asker->answered(result, events);
            },
            Qt::QueuedConnection);
    }

private:
    Nodes::Result read(std::vector<Nodes::BasicEvent> &events)
    {
        std::unique_ptr<Nodes::JournalReader> opened;
        if (!m_reading->reader)
            opened = m_journal.OpenReader();
        {
            const std::lock_guard lock(m_reading->mutex);
            if (opened)
                m_reading->reader = std::move(opened);
            if (!m_reading->reader)
                return Nodes::Result(Nodes::Result::NotAvailable);
        }
        Nodes::Result result = m_reading->reader->Query(m_query, events);
        // Cancelled for the question before this one, which had ended already.
        if (result == Nodes::Result::Cancelled && m_reading->wanted == m_number)
            result = m_reading->reader->Query(m_query, events);
        return result;
    }

    JournalAsker &m_asker;
    const std::shared_ptr<Reading> m_reading;
    const Nodes::EventJournal &m_journal;
    const Nodes::JournalQuery m_query;
    const unsigned m_number;
};

JournalAsker::JournalAsker(QObject *parent)
    : QObject(parent), m_reading(std::make_shared<Reading>())
{
    m_threads.setMaxThreadCount(1);
}

JournalAsker::~JournalAsker()
{
    m_reading->wanted = ++m_number;
    m_reading->cancel();
    m_threads.waitForDone();
}

void JournalAsker::ask(const Nodes::EventJournal &journal, const Nodes::JournalQuery &query)
{
    m_reading->wanted = ++m_number;
    m_reading->cancel();
    m_threads.start(new Task(*this, journal, query, m_number));
}

} // namespace Widgets
