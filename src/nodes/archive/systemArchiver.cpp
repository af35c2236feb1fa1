#include "nodes/archive/systemArchiver.h"

#include "nodes/archive/ArchivedSignals.h"
#include "nodes/archive/history/StoredHistory.h"
#include "nodes/archive/history/StoredSignal.h"
#include "nodes/archive/recording/ArchiveRecording.h"
#include "nodes/journal/EventJournal.h"
#include "nodes/model/KindBuilder.h"
#include "nodes/model/NodesCollection.h"
#include "nodes/model/services/AccessCheck.h"
#include "nodes/model/validation/ValidationResults.h"
#include "nodes/signals/BasicSignal.h"
#include "nodes/system/systemCore.h"

#include <filesystem>
#include <regex>
#include <utility>

namespace Nodes {

namespace {

namespace fs = std::filesystem;

constexpr Timestamp day = Timestamp(86400) * 1000000;
constexpr Timestamp heartbeatAge = 31 * day;

/// What stands there instead of a name that is given when the station is started.
bool holdsPassword(const std::string &location)
{
    static const std::regex inUrl("://[^/@:]*:(?!\\$\\{)[^/@]+@");
    static const std::regex inWords("password\\s*=\\s*(?!\\$\\{|\\s|&|$)");
    return std::regex_search(location, inUrl) || std::regex_search(location, inWords);
}

} // namespace

/// Threads that a disk holds may speak when nobody listens any more.
struct systemArchiver::Voice
{
    void Tell(EventLevel level, const std::string &text)
    {
        BasicEvent event;
        event.level = level;
        event.type = TypeSystemState;
        event.text = text;
        event.sourceNode = node;
        event.source = name;
        const std::lock_guard lock(mutex);
        if (journal)
            (void)journal->Append(event);
    }

    const NodeLink node;
    const std::string name;
    std::mutex mutex;
    EventJournal *journal; // guarded; null from the stop on
};

systemArchiver::systemArchiver() = default;

systemArchiver::~systemArchiver()
{
    if (GetRecording())
        (void)Stop();
}

KindInfo systemArchiver::Kind()
{
    return KindBuilder::For<systemArchiver>("archiver", "Archive", "Архив")
        .Children({NodeType::TypeArchive, NodeType::TypeFolder})
        .Property<&systemArchiver::m_location>(Prop::Location, "Location", "Размещение")
        .Hint("defines")
        .Property<&systemArchiver::m_days>(Prop::Days, "Samples are kept for, days",
                                           "Хранить значения, суток")
        .Range(0, 36500)
        .Property<&systemArchiver::m_megabytes>(Prop::Megabytes, "Size at most, MB",
                                                "Размер не более, МБ")
        .Range(0, 100000000)
        .Property<&systemArchiver::m_commit>(Prop::Commit, "Written every, ms",
                                             "Записывать через, мс")
        .Range(20, 60000)
        .Property<&systemArchiver::m_memory>(Prop::Memory, "Memory for waiting samples, MB",
                                             "Память для ожидающих значений, МБ")
        .Range(4, 4096);
}

Result systemArchiver::FindLocation(std::string &location) const
{
    const systemCore *core = GetCore();
    std::string configured;
    const Result expanded = core->Expand(m_location, configured);
    if (!expanded)
        return expanded;
    // A path is one within the data directory, unless it is a whole one.
    const bool isPath = configured.find(':') == std::string::npos;
    if (isPath && !configured.empty())
        configured = (fs::path(core->GetDataDirectory()) / configured).string();
    location = core->GetRecordLocation("archive", configured);
    return Result();
}

ArchiveRetentionRules systemArchiver::retention() const
{
    ArchiveRetentionRules rules;
    rules.others.maximumAge = m_days * day;
    rules.maximumBytes = std::uint64_t(m_megabytes) << 20;
    for (const auto &[signal, settings] : FindArchivedSignals(*this)) {
        if (settings.days == 0 && settings.megabytes == 0)
            continue;
        ArchiveRetention &rule = rules.bySignal[KeyOf(*signal)];
        rule.maximumAge = (settings.days > 0 ? settings.days : m_days) * day;
        rule.maximumBytes = std::uint64_t(settings.megabytes) << 20;
    }
    return rules;
}

Result systemArchiver::Start()
{
    systemCore *core = GetCore();
    if (!core || core->GetSystemArchiver() != this)
        return Result(this, Result::Duplicate, "another node is the archive of this station");
    if (GetRecording())
        return Result();
    ArchiveRecording::Settings settings;
    const Result found = FindLocation(settings.location);
    if (!found)
        return found;
    settings.spillFile = (fs::path(core->GetDataDirectory()) / "archive.spill").string();
    settings.fallbacks = core->GetFallbackDirectories();
    settings.home = core->GetRecordHome();
    settings.heartbeat = {{settings.home, GetId(), GetPath()}, {}};
    settings.retention = retention();
    settings.retention.bySignal[settings.heartbeat].maximumAge = heartbeatAge;
    settings.commitInterval = Timestamp(m_commit) * 1000;
    settings.memoryBytes = std::size_t(m_memory) << 20;
    m_voice.reset(new Voice{GetNodeLink(), GetPath(), {}, &core->GetJournal()});
    auto recording = std::make_shared<ArchiveRecording>(
        std::move(settings),
        [voice = m_voice](EventLevel level, const std::string &text) { voice->Tell(level, text); });
    const Result opened = recording->Open();
    if (!opened)
        return opened;
    {
        const std::lock_guard lock(m_mutex);
        m_recording = std::move(recording);
    }
    return ConfigNode::Start();
}

Result systemArchiver::Stop()
{
    std::shared_ptr<ArchiveRecording> recording;
    {
        const std::lock_guard lock(m_mutex);
        recording.swap(m_recording);
    }
    if (!recording)
        return ConfigNode::Stop();
    recording->Close();
    {
        const std::lock_guard lock(m_voice->mutex);
        m_voice->journal = nullptr;
    }
    const std::lock_guard lock(m_mutex);
    m_left = recording->GetHealth();
    m_leftFiles = recording->GetFallbackFiles();
    return ConfigNode::Stop();
}

std::shared_ptr<ArchiveRecording> systemArchiver::GetRecording() const
{
    const std::lock_guard lock(m_mutex);
    return m_recording;
}

ArchiveSignalKey systemArchiver::KeyOf(const BasicSignal &signal) const
{
    const systemCore *core = GetCore();
    const RecordHome home = core ? core->GetRecordHome() : RecordHome();
    return {{home, signal.GetId(), signal.GetPath()}, signal.GetUnit()};
}

ArchiveHealth systemArchiver::GetHealth() const
{
    const std::shared_ptr<ArchiveRecording> recording = GetRecording();
    if (recording)
        return recording->GetHealth();
    const std::lock_guard lock(m_mutex);
    return m_left;
}

std::vector<std::string> systemArchiver::GetFallbackFiles() const
{
    const std::shared_ptr<ArchiveRecording> recording = GetRecording();
    if (recording)
        return recording->GetFallbackFiles();
    const std::lock_guard lock(m_mutex);
    return m_leftFiles;
}

Result systemArchiver::ListSignals(std::vector<ArchivedSignal> &signals) const
{
    const std::shared_ptr<ArchiveRecording> recording = GetRecording();
    if (IsForbiddenToView(*this))
        return Result(this, Result::AccessDenied);
    return recording ? recording->GetStored()->ListSignals(signals)
                     : Result(this, Result::NotAvailable, "the archive is not running");
}

Result systemArchiver::OpenHistory(const ArchiveSignalKey &signal,
                                   std::shared_ptr<const HistorySource> &history) const
{
    const std::shared_ptr<ArchiveRecording> recording = GetRecording();
    if (!recording)
        return Result(this, Result::NotAvailable, "the archive is not running");
    const bool isOurs = signal.source.home.IsSame(GetCore()->GetRecordHome());
    const ConfigNode *guarded = this;
    if (const ConfigNode *node =
            isOurs ? GetNodesCollection()->FindNode(signal.source.node) : nullptr)
        guarded = node;
    if (IsForbiddenToView(*guarded))
        return Result(guarded, Result::AccessDenied);
    history = std::make_shared<StoredSignal>(signal, recording->GetStored());
    return Result();
}

void systemArchiver::Validate(ValidationResults &results) const
{
    ConfigNode::Validate(results);
    if (holdsPassword(m_location))
        results.Add(GetNodeLink(), Result(this, Result::InvalidArgument, "location"),
                    GetName() + ": пароль записан в проекте открытым текстом; храните его в файле "
                                "~/.pgpass пользователя, от имени которого работает станция");
}

} // namespace Nodes
