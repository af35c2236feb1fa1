#include "nodes/journal/EventJournal.h"

#include "nodes/journal/JournalFindings.h"
#include "nodes/journal/JournalReader.h"
#include "nodes/journal/JournalStore.h"
#include "nodes/storage/records/Recorder.h"
#include "nodes/values/Clock.h"
#include "nodes/values/SlotList.h"

#include <atomic>
#include <cstdio>
#include <mutex>

namespace Nodes {

namespace {

constexpr std::size_t longestText = std::size_t(1) << 20; // so that a row fits a spilled record

/// Shortens to whole characters and marks the cut.
void clip(std::string &text)
{
    if (text.size() <= longestText)
        return;
    std::size_t end = longestText;
    while (end > 0 && (static_cast<unsigned char>(text[end]) & 0xC0) == 0x80)
        --end;
    text.resize(end);
    text += "…";
}

Recorder::Limits recorderLimits(const EventJournal::Limits &limits)
{
    Recorder::Limits given;
    given.waiting.records = limits.waiting;
    given.hanging = limits.hanging;
    given.stopping = limits.stopping;
    given.flushing = limits.flushing;
    return given;
}

} // namespace

/// What the writer's thread and readers need as long as they live.
struct EventJournal::Shared
{
    RecordSource SourceOf(const BasicEvent &event) const
    {
        RecordSource source{{}, 0, event.source};
        // That project alone can say what the number means.
        const NodesCollection *of = event.sourceNode.GetNodesCollection();
        const std::lock_guard lock(mutex);
        source.home = home;
        if (of && of == project && !home.project.empty())
            source.node = event.sourceNode.GetNodeId();
        return source;
    }
    NodeLink Resolve(const RecordSource &source) const
    {
        const std::lock_guard lock(mutex);
        const bool isOurs = source.node != 0 && project && source.home.IsSame(home);
        return isOurs ? NodeLink(source.node, project) : NodeLink();
    }
    void Announce(const Records &records, const std::vector<std::uint64_t> &numbers) const
    {
        for (std::size_t i = 0; hasListener && i < records.size(); ++i) {
            std::optional<JournalRow> row = UnpackRow(records[i]);
            if (numbers[i] == 0 || !row)
                continue;
            row->event.id = static_cast<unsigned long>(numbers[i]);
            row->event.sourceNode = Resolve(row->source);
            row->event.source = std::move(row->source.name);
            appended(row->event);
        }
    }
    std::string Describe(const RecordFinding &finding) const
    {
        BasicEvent event;
        event.time = Clock::Current().Now();
        event.level = LevelCritical;
        event.type = TypeSystemState;
        event.text = JournalFindingText(finding);
        event.source = "Журнал";
        return PackEvent(event, SourceOf(event));
    }

    SlotList<const BasicEvent &> appended;
    std::atomic<bool> hasListener{false};
    mutable std::mutex mutex; // of the rest
    RecordHome home;
    const NodesCollection *project = nullptr;
};

struct EventJournal::Impl
{
    explicit Impl(const Limits &given) : limits(given) {}
    JournalStore::SearchMaker SearchMaker() const
    {
        const std::lock_guard lock(mutex);
        return makeSearch;
    }

    const Limits limits;
    const std::shared_ptr<Shared> shared = std::make_shared<Shared>();
    const std::shared_ptr<Recorder> recorder = std::make_shared<Recorder>(
        JournalFormat(), recorderLimits(limits),
        RecordHooks{
            [shared = shared](const Records &records, const std::vector<std::uint64_t> &numbers) {
                shared->Announce(records, numbers);
            },
            [shared = shared](const RecordFinding &finding) { return shared->Describe(finding); }});
    mutable std::mutex mutex;             // of the rest
    JournalStore::SearchMaker makeSearch; // from Open to Close
    JournalRetention retention;
};

EventJournal::EventJournal() : EventJournal(Limits()) {}

EventJournal::EventJournal(const Limits &limits) : m_impl(std::make_unique<Impl>(limits)) {}

EventJournal::~EventJournal()
{
    const bool wasOpen = !m_impl->recorder->GetLocation().empty();
    Close();
    const std::size_t lost = m_impl->recorder->Waiting();
    if (wasOpen && lost > 0)
        std::fprintf(stderr, "journal: %zu entries could not be written and are lost\n", lost);
}

void EventJournal::SetFallbacks(std::vector<std::string> directories)
{
    m_impl->recorder->SetFallbacks(std::move(directories));
}

void EventJournal::SetHome(const RecordHome &home, const NodesCollection *project)
{
    const std::lock_guard lock(m_impl->shared->mutex);
    m_impl->shared->home = home;
    m_impl->shared->project = project;
}

void EventJournal::SetRetention(const JournalRetention &retention)
{
    const std::lock_guard lock(m_impl->mutex);
    m_impl->retention = retention;
}

RecordSource EventJournal::SourceOf(const NodeLink &node) const
{
    BasicEvent event;
    event.sourceNode = node;
    return m_impl->shared->SourceOf(event);
}

Result EventJournal::Open(const std::string &location, const std::string &spillFile)
{
    std::unique_ptr<JournalStore> store;
    const Result made = JournalStores().Make(location, store);
    if (!made)
        return made;
    {
        const std::lock_guard lock(m_impl->mutex);
        store->SetRetention(m_impl->retention, SourceOf(NodeLink()).home);
    }
    JournalStore::SearchMaker makeSearch = store->GetSearchMaker();
    const Result opened = m_impl->recorder->Open(
        std::move(store), spillFile.empty() ? location + ".spill" : spillFile);
    const std::lock_guard lock(m_impl->mutex);
    if (!m_impl->makeSearch)
        m_impl->makeSearch = std::move(makeSearch);
    return opened;
}

void EventJournal::Close()
{
    m_impl->recorder->Close();
    const std::lock_guard lock(m_impl->mutex);
    m_impl->makeSearch = nullptr;
}

bool EventJournal::IsOpen() const
{
    return m_impl->recorder->IsStoreOpen();
}

StoreHealth EventJournal::GetHealth() const
{
    return m_impl->recorder->GetHealth();
}

std::vector<std::string> EventJournal::GetFallbackFiles() const
{
    return m_impl->recorder->GetFallbackFiles();
}

Result EventJournal::Append(BasicEvent event)
{
    if (event.time == 0)
        event.time = Clock::Current().Now();
    for (std::string *text :
         {&event.text, &event.source, &event.user, &event.oldValue, &event.newValue})
        clip(*text);
    if (m_impl->recorder->Append(PackEvent(event, m_impl->shared->SourceOf(event))))
        return Result();
    return Result(Result::LimitExceeded,
                  "journal: " + std::to_string(m_impl->limits.waiting) + " entries wait already");
}

Result EventJournal::Flush()
{
    return m_impl->recorder->Flush();
}

std::unique_ptr<JournalReader> EventJournal::OpenReader() const
{
    const JournalStore::SearchMaker makeSearch = m_impl->SearchMaker();
    if (!makeSearch)
        return nullptr;
    return std::make_unique<JournalReader>(
        makeSearch(),
        [shared = m_impl->shared](const RecordSource &source) { return shared->Resolve(source); });
}

Result EventJournal::Query(const JournalQuery &query, std::vector<BasicEvent> &events) const
{
    events.clear();
    const std::unique_ptr<JournalReader> reader = OpenReader();
    return reader ? reader->Query(query, events)
                  : Result(Result::NotAvailable, "journal: not open");
}

Result EventJournal::Verify() const
{
    const std::unique_ptr<JournalReader> reader = OpenReader();
    return reader ? reader->Verify() : Result(Result::NotAvailable, "journal: not open");
}

Connection EventJournal::ConnectAppended(std::function<void(const BasicEvent &)> slot)
{
    m_impl->shared->hasListener = true;
    return m_impl->shared->appended.Connect(std::move(slot));
}

} // namespace Nodes
