#include "nodes/storage/records/RecordWriter.h"

#include "nodes/values/Clock.h"

namespace Nodes {

namespace {

constexpr std::chrono::milliseconds retryPause(1000);
constexpr std::chrono::hours upkeepPause(1); // after a failure, which is told each time

} // namespace

RecordWriter::RecordWriter(RecordQueue &queue, RecordOverflow &overflow, RecordFormat format,
                           const RecordPortion::Limits &transaction, RecordHooks hooks)
    : m_queue(queue),
      m_overflow(overflow),
      m_portion(transaction),
      m_hooks(std::move(hooks)),
      m_spill(std::move(format))
{
}

Result RecordWriter::Start(std::unique_ptr<RecordStore> store, const std::string &spillFile,
                           std::shared_ptr<void> owner, const RecordFindings &findings)
{
    if (m_thread.IsRunning())
        return Result(Result::Refused,
                      store->GetLocation() + ": the disk has not answered the last run yet");
    m_store = std::move(store);
    m_spillFile = spillFile;
    for (const RecordFinding &finding : findings)
        report(finding);
    Result result = openSpill();
    const Result opened = m_store->IsDistant() ? Result() : openStore();
    if (result)
        result = opened;
    m_queue.SetRescued(m_overflow.Count() > 0);
    m_queue.SetWriter(true);
    m_thread.Start([this, owner = std::move(owner)] { run(); });
    return result;
}

bool RecordWriter::Stop(std::chrono::milliseconds patience)
{
    m_queue.Shut();
    const bool hasEnded = m_thread.Join(patience);
    m_queue.SetWriter(false);
    if (!hasEnded)
        return false;
    m_store->Close();
    m_isStoreOpen = false;
    return true;
}

void RecordWriter::run()
{
    bool hasMore = !m_store->IsOpen(); // one that is distant is opened at once
    for (;;) {
        const bool isOpen = m_queue.Wait(hasMore ? std::chrono::milliseconds(0) : retryPause);
        if (m_queue.TakeFlushRequest() || !isOpen)
            m_nextTry = Time();
        hasMore = work();
        // Shut while nothing can be written: what is left stays queued.
        if (!isOpen && !hasMore)
            return;
        if (isOpen && tend())
            hasMore = true;
    }
}

/// Whether there may be more to do at once.
bool RecordWriter::work()
{
    RecordFinding rejected;
    rejected.kind = RecordFinding::RecordsRejected;
    rejected.count = m_queue.TakeRejected();
    if (rejected.count > 0)
        report(rejected);
    lookAfterFiles();
    const bool isReady = isStoreReady();
    const RecordQueue::Batch batch = m_queue.Take(m_portion.Now(), isReady);
    if (batch.records->empty())
        return isReady && replayOverflow();
    Result result = isReady ? store(*batch.records) : Result(Result::NotAvailable);
    if (!result)
        result = spill(batch);
    if (result)
        m_queue.Settle();
    else
        m_queue.Return();
    return bool(result);
}

/// A step of the store's own work; whether it has more.
bool RecordWriter::tend()
{
    const Time now = std::chrono::steady_clock::now();
    if (!m_store->IsOpen() || now < m_nextTry || now < m_nextTend)
        return false;
    RecordStore::Upkeep upkeep;
    const Result result = m_store->Tend(upkeep);
    m_isStoreOpen = m_store->IsOpen();
    if (!result) {
        report(RecordFinding::UpkeepFailed, m_store->GetLocation(), result.GetDetail());
        m_nextTend = now + upkeepPause;
        return false;
    }
    if (!upkeep.records.empty()) {
        noteStored(upkeep.records, upkeep.numbers);
    }
    return upkeep.hasMore;
}

void RecordWriter::lookAfterFiles()
{
    if (m_spill.IsGone() && m_spill.Recreate())
        report(RecordFinding::SpillRestored, m_spillFile);
    if (!m_store->IsOpen() || !m_store->NoticeMove())
        return;
    m_isStoreOpen = false;
    report(RecordFinding::StoreMoved, m_store->GetLocation());
    postpone(Result(Result::StorageError, m_store->GetLocation() + ": was removed or replaced"));
    m_nextTry = Time();
}

bool RecordWriter::isStoreReady()
{
    if (std::chrono::steady_clock::now() < m_nextTry)
        return false;
    if (m_store->IsOpen() && m_spill.IsEmpty() && m_reports.empty())
        return true;
    Result result = m_store->IsOpen() ? Result() : openStore();
    if (result)
        result = storeReports();
    if (result)
        result = replay();
    if (result)
        noteWell();
    else
        postpone(result);
    return result.IsSuccess();
}

Result RecordWriter::openSpill()
{
    RecordFindings findings;
    const Result result = m_spill.Open(m_spillFile, findings);
    for (const RecordFinding &finding : findings)
        report(finding);
    if (!result)
        report(RecordFinding::SpillRefused, m_spillFile, result.GetDetail());
    return result;
}

Result RecordWriter::openStore()
{
    StoreOpening opening;
    opening.onStep = [this] { m_queue.Touch(); };
    const Result result = m_store->Open(opening);
    if (opening.isRestored)
        report(RecordFinding::StoreRestored, m_store->GetLocation());
    if (opening.isReplaced)
        report(RecordFinding::StoreReplaced, m_store->GetLocation());
    if (!opening.setAside.empty())
        report(RecordFinding::StoreSetAside, m_store->GetLocation(), opening.setAside);
    m_isStoreOpen = result.IsSuccess();
    if (!result)
        postpone(result);
    return result;
}

Result RecordWriter::storeReports()
{
    if (m_reports.empty())
        return Result();
    const Result result = store(m_reports);
    if (result)
        m_reports.clear();
    return result;
}

Result RecordWriter::replay()
{
    std::size_t offset = 0;
    Records records;
    while (!m_spill.IsEmpty()) {
        Result result = m_spill.Read(offset, m_portion.Usual().records, records);
        if (!result) {
            (void)openSpill();
            report(RecordFinding::SpillDamaged, m_spillFile, result.GetDetail());
            return result;
        }
        if (records.empty())
            return m_spill.Clear();
        result = store(records);
        if (!result)
            return result;
        m_queue.Touch();
    }
    return Result();
}

/// One portion; whether there may be more.
bool RecordWriter::replayOverflow()
{
    if (m_overflow.Count() == 0)
        return false;
    Records records;
    Result result = m_overflow.Read(m_portion.Usual().records, records);
    if (!result)
        report(RecordFinding::SpillDamaged, std::string(), result.GetDetail());
    if (result)
        result = store(records);
    if (!result) {
        postpone(result);
        return false;
    }
    if (!m_overflow.Drop())
        return !records.empty();
    m_queue.SetRescued(false);
    return true;
}

Result RecordWriter::store(const Records &records)
{
    if (records.empty())
        return Result();
    const Time begun = std::chrono::steady_clock::now();
    std::vector<std::uint64_t> numbers;
    Result result = m_store->Write(records, numbers);
    if (result)
        result = m_store->Flush();
    if (!result) {
        noteFailure(result);
        return result;
    }
    m_portion.Learn(records.size(), std::chrono::steady_clock::now() - begun);
    noteStored(records, numbers);
    return result;
}

/// Into the first file that keeps the order.
Result RecordWriter::spill(const RecordQueue::Batch &batch)
{
    Result result(Result::NotAvailable);
    if (batch.isAhead)
        result = m_spill.Append(*batch.records);
    const bool isOrdered = !batch.isAhead || m_overflow.Count() == 0;
    if (!result && isOrdered && m_overflow.HasPlace()) {
        m_queue.SetRescued(true);
        result = m_overflow.Append(*batch.records);
        m_queue.SetRescued(m_overflow.Count() > 0);
    }
    return result;
}

void RecordWriter::noteFailure(const Result &cause)
{
    postpone(cause);
    m_isStoreOpen = m_store->IsOpen();
}

void RecordWriter::postpone(const Result &cause)
{
    m_nextTry = std::chrono::steady_clock::now() + retryPause;
    const std::lock_guard lock(m_healthMutex);
    if (m_health.isWell()) {
        m_health.troubledSince = Clock::Current().Now();
        m_troubledAt = Clock::Current().Steady();
    }
    m_health.trouble = cause.GetDetail();
}

void RecordWriter::noteWell()
{
    const std::lock_guard lock(m_healthMutex);
    m_health.troubledSince = 0;
    m_health.trouble.clear();
}

void RecordWriter::noteStored(const Records &records, const std::vector<std::uint64_t> &numbers)
{
    noteWell();
    {
        const std::lock_guard lock(m_healthMutex);
        m_health.stored += records.size();
        m_health.lastStored = Clock::Current().Now();
    }
    if (m_hooks.onStored)
        m_hooks.onStored(records, numbers);
}

StoreHealth RecordWriter::GetHealth() const
{
    const std::lock_guard lock(m_healthMutex);
    StoreHealth health = m_health;
    health.aside = m_spill.Count();
    if (!health.isWell())
        health.troubledFor = Clock::Current().Steady() - m_troubledAt;
    return health;
}

void RecordWriter::report(const RecordFinding &finding)
{
    std::string bytes = m_hooks.describe ? m_hooks.describe(finding) : std::string();
    if (!bytes.empty())
        m_reports.push_back(m_queue.Make(std::move(bytes)));
}

void RecordWriter::report(RecordFinding::Kind kind, const std::string &place,
                          const std::string &detail)
{
    RecordFinding finding;
    finding.kind = kind;
    finding.place = place;
    finding.detail = detail;
    report(finding);
}

} // namespace Nodes
