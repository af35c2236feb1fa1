#include "nodes/journal/JournalWriter.h"

#include "nodes/values/Clock.h"

namespace Nodes {

namespace {

constexpr std::size_t batchRows = 1000;
constexpr std::chrono::milliseconds retryPause(1000);

} // namespace

JournalWriter::JournalWriter(JournalQueue &queue, Stored stored)
    : m_queue(queue), m_stored(std::move(stored))
{
}

JournalWriter::~JournalWriter()
{
    Stop();
}

Result JournalWriter::Start(const std::string &file)
{
    m_file = file;
    Result result = openSpill();
    const Result opened = openStore();
    if (result)
        result = opened;
    m_queue.SetWriter(true);
    m_thread = std::thread([this] { run(); });
    return result;
}

void JournalWriter::Stop()
{
    if (!m_thread.joinable())
        return;
    m_queue.Shut();
    m_thread.join();
    m_queue.SetWriter(false);
    m_store.Close();
    m_isStoreOpen = false;
}

void JournalWriter::run()
{
    m_threadId = std::this_thread::get_id();
    std::vector<JournalRow> rows;
    bool isWaiting = true;
    while (m_queue.Take(rows, batchRows, isWaiting ? retryPause : std::chrono::milliseconds(0))) {
        if (m_queue.TakeFlushRequest())
            m_nextTry = Time();
        const bool isCarried = carry(rows);
        isWaiting = !isCarried || !m_store.IsOpen() || !m_spill.IsEmpty() || !m_reports.empty();
        // Shut while nothing can be written: what came back stays queued for the next Start.
        if (!isCarried && m_queue.IsShut())
            return;
    }
}

bool JournalWriter::carry(std::vector<JournalRow> &rows)
{
    const std::size_t count = rows.size();
    reportRejected();
    Result result = isStoreReady() ? store(rows) : Result(Result::NotAvailable);
    if (!result && !rows.empty())
        result = m_spill.Append(rows);
    if (result)
        m_queue.Settle(count);
    else if (count > 0)
        m_queue.Return(std::move(rows));
    return result || count == 0;
}

bool JournalWriter::isStoreReady()
{
    if (m_store.IsOpen() && m_spill.IsEmpty() && m_reports.empty())
        return true;
    if (std::chrono::steady_clock::now() < m_nextTry)
        return false;
    Result result = m_store.IsOpen() ? Result() : openStore();
    if (result && !m_reports.empty()) {
        std::vector<JournalRow> reports = m_reports;
        result = store(reports);
        if (result)
            m_reports.clear();
    }
    if (result)
        result = replay();
    if (!result)
        postpone();
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
    std::string setAside;
    Result result = m_store.Open(m_file, setAside);
    m_isStoreOpen = result.IsSuccess();
    if (!setAside.empty())
        report("База журнала повреждена и отложена: " + setAside + "; начат новый журнал");
    if (!result)
        postpone();
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
    }
    return Result();
}

Result JournalWriter::store(std::vector<JournalRow> &rows)
{
    if (rows.empty())
        return Result();
    Result result = m_store.Append(rows);
    if (!result) {
        postpone();
        if (m_store.IsDamaged()) {
            m_store.Close();
            m_isStoreOpen = false;
        }
        return result;
    }
    for (const JournalRow &row : rows) {
        if (row.event.id != 0)
            m_stored(row.event);
    }
    return result;
}

void JournalWriter::postpone()
{
    m_nextTry = std::chrono::steady_clock::now() + retryPause;
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
