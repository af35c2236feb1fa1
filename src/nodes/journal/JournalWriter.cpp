#include "nodes/journal/JournalWriter.h"

#include "nodes/values/Clock.h"

namespace Nodes {

namespace {

constexpr std::size_t batchRows = 1000;
constexpr std::chrono::milliseconds retryPause(1000);

} // namespace

JournalWriter::JournalWriter(JournalQueue &queue, JournalOverflow &overflow, Stored stored)
    : m_queue(queue), m_overflow(overflow), m_stored(std::move(stored))
{
}

Result JournalWriter::Start(const std::string &file, std::shared_ptr<void> owner,
                            const std::vector<std::string> &findings)
{
    if (m_thread.IsRunning())
        return Result(Result::Refused, m_file + ": the disk has not answered the last run yet");
    m_file = file;
    for (const std::string &finding : findings)
        report(finding);
    Result result = openSpill();
    const Result opened = openStore();
    if (result)
        result = opened;
    m_queue.SetRescued(m_overflow.Count() > 0);
    m_queue.SetWriter(true);
    m_thread.Start([this, owner = std::move(owner)] { run(); });
    return result;
}

bool JournalWriter::Stop(std::chrono::milliseconds patience)
{
    m_queue.Shut();
    const bool hasEnded = m_thread.Join(patience);
    m_queue.SetWriter(false);
    if (!hasEnded)
        return false;
    m_store.Close();
    m_isStoreOpen = false;
    return true;
}

void JournalWriter::run()
{
    bool hasMore = false;
    for (;;) {
        const bool isOpen = m_queue.Wait(hasMore ? std::chrono::milliseconds(0) : retryPause);
        if (m_queue.TakeFlushRequest() || !isOpen)
            m_nextTry = Time();
        hasMore = work();
        // Shut while nothing can be written: what is left stays queued.
        if (!isOpen && !hasMore)
            return;
    }
}

/// Whether there may be more to do at once.
bool JournalWriter::work()
{
    reportRejected();
    lookAfterFiles();
    const bool isReady = isStoreReady();
    JournalQueue::Batch batch = m_queue.Take(batchRows, isReady);
    if (batch.rows.empty())
        return isReady && replayOverflow();
    Result result = isReady ? store(batch.rows) : Result(Result::NotAvailable);
    if (!result)
        result = spill(batch);
    if (result)
        m_queue.Settle();
    else
        m_queue.Return();
    return bool(result);
}

void JournalWriter::lookAfterFiles()
{
    if (m_spill.IsGone() && m_spill.Recreate())
        report("Файл " + m_file + ".spill был удалён; его записи сохранены заново");
    if (!m_store.IsOpen() || !m_store.NoticeMove())
        return;
    m_isStoreOpen = false;
    report("Файл журнала удалён или заменён при работе станции: " + m_file);
    postpone(Result(Result::StorageError, m_file + ": was removed or replaced"));
    m_nextTry = Time();
}

bool JournalWriter::isStoreReady()
{
    if (std::chrono::steady_clock::now() < m_nextTry)
        return false;
    if (m_store.IsOpen() && m_spill.IsEmpty() && m_reports.empty())
        return true;
    Result result = m_store.IsOpen() ? Result() : openStore();
    if (result && !m_reports.empty()) {
        std::vector<JournalRow> reports = m_reports;
        result = store(reports);
        if (result)
            m_reports.clear();
    }
    if (result)
        result = replay();
    if (result)
        noteWell();
    else
        postpone(result);
    return result.IsSuccess();
}

Result JournalWriter::openSpill()
{
    const std::string file = m_file + ".spill";
    JournalSpill::Damage damage;
    Result result = m_spill.Open(file, damage);
    if (!damage.isTorn)
        return result;
    std::string text = "Файл " + file + " повреждён в конце; ";
    text += damage.copy.empty() ? "копию сделать не удалось" : "копия: " + damage.copy;
    for (const std::string &removed : damage.removed)
        text += "; удалена старая копия: " + removed;
    report(text);
    return result;
}

Result JournalWriter::openStore()
{
    Result result = restore();
    if (result) {
        std::string setAside;
        result = m_store.Open(m_file, setAside);
        if (!setAside.empty())
            report("База журнала повреждена и отложена: " + setAside + "; начат новый журнал");
    }
    m_isStoreOpen = result.IsSuccess();
    if (!result)
        postpone(result);
    return result;
}

Result JournalWriter::restore()
{
    if (!m_store.HasFormer())
        return Result();
    bool isRestored = false;
    const Result result = m_store.Restore([this] { m_queue.Touch(); }, isRestored);
    if (result)
        report(isRestored ? "Журнал восстановлен на прежнем месте: " + m_file
                          : "На месте журнала другой файл, записи продолжены в нём: " + m_file);
    return result;
}

Result JournalWriter::replay()
{
    std::size_t offset = 0;
    std::vector<JournalRow> rows;
    while (!m_spill.IsEmpty()) {
        Result result = m_spill.Read(offset, batchRows, rows);
        if (!result) {
            (void)openSpill();
            report("Файл " + m_file + ".spill повреждён: " + result.GetDetail());
            return result;
        }
        if (rows.empty())
            return m_spill.Clear();
        result = store(rows);
        if (!result)
            return result;
        m_queue.Touch();
    }
    return Result();
}

/// One portion; whether there may be more.
bool JournalWriter::replayOverflow()
{
    if (m_overflow.Count() == 0)
        return false;
    std::vector<JournalRow> rows;
    Result result = m_overflow.Read(batchRows, rows);
    if (!result)
        report("Повреждён файл отложенных записей: " + result.GetDetail());
    if (result)
        result = store(rows);
    if (!result) {
        postpone(result);
        return false;
    }
    if (!m_overflow.Drop())
        return !rows.empty();
    m_queue.SetRescued(false);
    return true;
}

Result JournalWriter::store(std::vector<JournalRow> &rows)
{
    if (rows.empty())
        return Result();
    Result result = m_store.Append(rows);
    if (!result) {
        postpone(result);
        if (m_store.IsDamaged()) {
            m_store.Close();
            m_isStoreOpen = false;
        }
        return result;
    }
    noteStored(rows.size());
    for (const JournalRow &row : rows) {
        if (row.event.id != 0)
            m_stored(row.event);
    }
    return result;
}

/// Into the first file that keeps the order.
Result JournalWriter::spill(const JournalQueue::Batch &batch)
{
    Result result(Result::NotAvailable);
    if (batch.isAhead)
        result = m_spill.Append(batch.rows);
    const bool isOrdered = !batch.isAhead || m_overflow.Count() == 0;
    if (!result && isOrdered && m_overflow.HasPlace()) {
        m_queue.SetRescued(true);
        result = m_overflow.Append(batch.rows);
        m_queue.SetRescued(m_overflow.Count() > 0);
    }
    return result;
}

void JournalWriter::postpone(const Result &cause)
{
    m_nextTry = std::chrono::steady_clock::now() + retryPause;
    const std::lock_guard lock(m_healthMutex);
    if (m_health.isWell()) {
        m_health.troubledSince = Clock::Current().Now();
        m_troubledAt = Clock::Current().Steady();
    }
    m_health.trouble = cause.GetDetail();
}

void JournalWriter::noteWell()
{
    const std::lock_guard lock(m_healthMutex);
    m_health.troubledSince = 0;
    m_health.trouble.clear();
}

void JournalWriter::noteStored(std::size_t count)
{
    noteWell();
    const std::lock_guard lock(m_healthMutex);
    m_health.stored += count;
    m_health.lastStored = Clock::Current().Now();
}

StoreHealth JournalWriter::GetHealth() const
{
    const std::lock_guard lock(m_healthMutex);
    StoreHealth health = m_health;
    health.aside = m_spill.Count();
    if (!health.isWell())
        health.troubledFor = Clock::Current().Steady() - m_troubledAt;
    return health;
}

void JournalWriter::report(const std::string &text)
{
    BasicEvent event;
    event.time = Clock::Current().Now();
    event.level = LevelCritical;
    event.type = TypeSystemState;
    event.text = text;
    event.source = "Журнал";
    m_reports.push_back(MakeJournalRow(std::move(event)));
}

void JournalWriter::reportRejected()
{
    const std::size_t rejected = m_queue.TakeRejected();
    if (rejected == 0)
        return;
    report("Потеряно записей журнала: " + std::to_string(rejected) +
           "; не пишутся ни база, ни файл рядом с ней");
}

} // namespace Nodes
