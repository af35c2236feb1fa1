#include "nodes/system/systemCore.h"

#include "nodes/alarms/systemAlarming.h"
#include "nodes/archive/HistoryService.h"
#include "nodes/archive/systemArchiver.h"
#include "nodes/auth/SecurityFindings.h"
#include "nodes/auth/systemAuthentication.h"
#include "nodes/journal/EventJournal.h"
#include "nodes/model/NodesCollection.h"
#include "nodes/model/links/ResourceLink.h"
#include "nodes/serial/LoadReport.h"
#include "nodes/signals/BasicSignal.h"
#include "nodes/signals/WriteRoutes.h"
#include "nodes/system/BasicStation.h"
#include "nodes/system/CoreAccess.h"
#include "nodes/system/StaleMonitor.h"
#include "nodes/system/systemVisualization.h"
#include "nodes/timers/operationTimer.h"
#include "nodes/values/SlotList.h"
#include "nodes/values/ValueCell.h"

#include <algorithm>
#include <atomic>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <thread>

namespace Nodes {

namespace fs = std::filesystem;

namespace {

// Users before alarms before drivers: whoever hears of a value must be ready when it comes.
constexpr NodeType::enNodeType startOrder[] = {
    NodeType::TypeSubsystem, NodeType::TypeArchive, NodeType::TypeSignal,
    NodeType::TypeAlarm,     NodeType::TypeDriver,  NodeType::TypeTimer,
};

} // namespace

/// Answered by the first who listens.
struct systemCore::Requests
{
    struct Request
    {
        BasicAction *action = nullptr;
        std::optional<Result> answer;
    };
    SlotList<Request &> actionRequested;
};

/// What was found out about users, for the state of the tree that it was found out about.
struct systemCore::Guard
{
    static constexpr std::uint64_t never = 1;

    TreeAnswer<BasicStation> localStation;
    std::thread::id owner;
    std::atomic<std::uint64_t> found{never}; // revision of the tree * 2 + whether it has users
};

systemCore::systemCore()
    : m_journal(std::make_unique<EventJournal>()),
      m_access(std::make_unique<CoreAccess>(*this)),
      m_writeRoutes(std::make_unique<WriteRoutes>()),
      m_history(std::make_unique<HistoryService>()),
      m_staleMonitor(std::make_unique<StaleMonitor>()),
      m_requests(std::make_unique<Requests>()),
      m_guard(std::make_unique<Guard>())
{
    SetName("System");
}

systemCore::~systemCore()
{
    if (GetState() == NodeState::Running)
        Stop();
    // Nodes write to the journal as they go: it must still be there.
    m_journal->SetHome(GetRecordHome(), nullptr);
    m_project.reset();
}

template <class Subsystem> Subsystem *systemCore::findSubsystem() const
{
    const BasicStation *station = GetLocalStation();
    const ConfigNode *root = m_project ? m_project->GetRoot() : nullptr;
    for (const ConfigNode *owner : {static_cast<const ConfigNode *>(station), root}) {
        if (!owner)
            continue;
        for (ConfigNode *node : owner->GetObjects(NodeType::TypeSubsystem)) {
            if (auto *subsystem = dynamic_cast<Subsystem *>(node))
                return subsystem;
        }
    }
    return nullptr;
}

systemVisualization *systemCore::GetSystemVisualization() const
{
    return findSubsystem<systemVisualization>();
}

systemAlarming *systemCore::GetSystemAlarming() const
{
    return findSubsystem<systemAlarming>();
}

systemArchiver *systemCore::GetSystemArchiver() const
{
    return findSubsystem<systemArchiver>();
}

systemAuthentication *systemCore::GetSystemAuthentication() const
{
    const BasicStation *station = GetLocalStation();
    return station ? station->GetSystemAuthentication() : findSubsystem<systemAuthentication>();
}

BasicStation *systemCore::GetLocalStation() const
{
    if (!m_project || !m_project->GetRoot())
        return nullptr;
    const auto isLocal = [this](const BasicStation *station) {
        return station && (m_station.empty() || station->GetName() == m_station);
    };
    const auto search = [&]() -> BasicStation * {
        for (const auto &child : m_project->GetRoot()->Children()) {
            auto *station = dynamic_cast<BasicStation *>(child.get());
            if (isLocal(station))
                return station;
        }
        return nullptr;
    };
    BasicStation *found = m_guard->localStation.Get(*m_project, search);
    // Names change without the tree.
    return m_station.empty() || isLocal(found) ? found : search();
}

Result systemCore::SelectStation(const std::string &name)
{
    m_station = name;
    m_guard->localStation.Forget();
    setJournalHome();
    if (name.empty() || GetLocalStation())
        return Result();
    std::string known;
    if (m_project && m_project->GetRoot()) {
        for (const ConfigNode *station :
             m_project->GetRoot()->GetObjects(NodeType(NodeType::SubtypeStation)))
            known += (known.empty() ? "\"" : ", \"") + station->GetName() + "\"";
    }
    return Result(Result::NotFound, "the project has no station \"" + name + "\"; it has " +
                                        (known.empty() ? "none" : known));
}

bool systemCore::IsMeantToHaveUsers() const
{
    const std::uint64_t found = m_guard->found;
    if (!m_project || m_guard->owner != std::this_thread::get_id())
        return (found & 1) != 0;
    const std::uint64_t revision = m_project->GetRevision();
    if (found != Guard::never && found >> 1 == revision)
        return (found & 1) != 0;
    const bool speaks = SpeaksOfUsers(*m_project);
    m_guard->found = revision << 1 | std::uint64_t(speaks);
    return speaks;
}

std::string systemCore::GetProjectPath() const
{
    return m_projectFile.empty() ? std::string() : fs::path(m_projectFile).parent_path().string();
}

std::string systemCore::GetDataDirectory() const
{
    if (!m_dataDirectory.empty())
        return m_dataDirectory;
    return (fs::path(GetProjectPath()) / "data").string();
}

void systemCore::AdoptProject(std::unique_ptr<NodesCollection> project, std::string file)
{
    if (GetState() == NodeState::Running)
        Stop();
    std::unique_ptr<NodesCollection> previous = std::move(m_project);
    m_project = std::move(project);
    m_place = m_project->GetPlace();
    std::error_code error; // of a working directory that is gone
    const fs::path absolute = fs::absolute(file, error);
    m_projectFile = (error ? fs::path(file) : absolute).lexically_normal().string();
    m_project->SetDirectory(GetProjectPath());
    m_project->SetServices({this, m_access.get(), m_journal.get(), this, m_writeRoutes.get()});
    NodesCollection::SetCurrent(m_project.get());
    setJournalHome();
    ResourceLink::SetBaseDirectory(GetProjectPath());
    m_guard->owner = std::this_thread::get_id();
    m_guard->found = Guard::never;
    (void)IsMeantToHaveUsers();
}

void systemCore::SetDefine(const std::string &name, const std::string &value)
{
    m_defines[name] = value;
}

Result systemCore::Expand(const std::string &text, std::string &expanded) const
{
    std::string built;
    std::size_t position = 0;
    for (;;) {
        const std::size_t open = text.find("${", position);
        const std::size_t close = open == std::string::npos ? open : text.find('}', open);
        built.append(text, position, std::min(open, text.size()) - position);
        if (close == std::string::npos) {
            if (open != std::string::npos)
                built.append(text, open, std::string::npos);
            break;
        }
        const std::string name = text.substr(open + 2, close - open - 2);
        const auto found = m_defines.find(name);
        if (found == m_defines.end())
            return Result(Result::NotFound, "${" + name +
                                                "} is not defined; start the station with "
                                                "--define " +
                                                name + "=VALUE");
        built += found->second;
        position = close + 1;
    }
    expanded = std::move(built);
    return Result();
}

// Those that run here: of the local station and outside of all stations.
NodeLinks systemCore::findHere(NodeType::enNodeType family) const
{
    NodeLinks found;
    m_project->FindNodes(family, &found);
    const BasicStation *local = GetLocalStation();
    found.erase(
        std::remove_if(found.begin(), found.end(),
                       [local](const NodeLink &link) { return link->GetStation() != local; }),
        found.end());
    return found;
}

// Nothing brings their values here: they must not look like those of a plant at rest.
void systemCore::markRemoteSignals() const
{
    NodeLinks found;
    m_project->FindNodes(NodeType::TypeSignal, &found);
    for (const NodeLink &link : found) {
        const auto *signal = dynamic_cast<const BasicSignal *>(link.GetNode());
        if (signal && !signal->IsLocal())
            signal->GetCell()->Degrade(Quality::Bad, Result(signal, Result::NotConnected,
                                                            "signal of the station \"" +
                                                                signal->GetStation()->GetName() +
                                                                "\", which does not run here"));
    }
}

// Nobody may have been there to read them when the project was loaded.
void systemCore::journalLoadErrors() const
{
    constexpr std::size_t told = 100;
    const LoadReport &report = GetLoadReport();
    std::size_t count = 0;
    for (const LoadMessage &message : report.GetMessages()) {
        if (message.severity == LoadMessage::Error && ++count <= told)
            StoreMessage(LevelWarning, "Ошибка в проекте: " + message.ToString(),
                         std::string("System"));
    }
    if (report.GetCount(LoadMessage::Error) > told)
        StoreMessage(LevelWarning,
                     "Ошибок в проекте всего: " +
                         std::to_string(report.GetCount(LoadMessage::Error)),
                     std::string("System"));
}

void systemCore::startFamily(NodeType::enNodeType family)
{
    const NodeLinks found = findHere(family);
    for (const NodeLink &link : found) {
        const auto *timer = dynamic_cast<const operationTimer *>(link.GetNode());
        if (timer && !timer->isAutostart())
            continue;
        const Result started = link->Start();
        if (!started)
            StoreMessage(LevelWarning,
                         "Не запущен: " + link.GetLinkName(true) + " — " +
                             started.GetResultTranslated() + " (" + started.ToString() + ")",
                         link);
    }
}

void systemCore::stopFamily(NodeType::enNodeType family)
{
    const NodeLinks found = findHere(family);
    for (auto link = found.rbegin(); link != found.rend(); ++link)
        (*link)->Stop();
}

/// Before the drivers: what turns bad because the station stops is no alarm.
void systemCore::stopAlarming()
{
    NodeLinks found;
    m_project->FindNodes(NodeType::TypeSubsystem, &found);
    for (const NodeLink &link : found) {
        if (auto *alarming = dynamic_cast<systemAlarming *>(link.GetNode()))
            alarming->Stop();
    }
}

void systemCore::watchStaleness()
{
    const NodeLinks found = findHere(NodeType::TypeSignal);
    std::vector<StaleMonitor::Entry> entries;
    for (const NodeLink &link : found) {
        const auto *signal = dynamic_cast<const BasicSignal *>(link.GetNode());
        if (signal && signal->GetOrigin() == SignalOrigin::Polled && signal->GetStaleAfter() > 0)
            entries.push_back({signal->GetCell(), signal->GetStaleAfter()});
    }
    m_staleMonitor->Start(entries);
}

Result systemCore::Start()
{
    if (!m_project)
        return Result(Result::NotAvailable, "no project is loaded");
    if (GetState() == NodeState::Running)
        return Result();
    if (const Result selected = SelectStation(m_station); !selected)
        return selected;
    SetState(NodeState::Starting);
    const Result opened = openJournal();
    if (m_isSimulated)
        StoreMessage(LevelWarning,
                     "Работа с имитатором: с устройствами связи нет, значения выдуманы",
                     std::string("System"));
    journalLoadErrors();
    markRemoteSignals();
    for (const NodeType::enNodeType family : startOrder)
        startFamily(family);
    watchStaleness();
    SetState(NodeState::Running);
    StoreMessage(LevelInformation, "Система запущена", std::string("System"));
    return opened;
}

Result systemCore::Stop()
{
    if (GetState() != NodeState::Running)
        return Result();
    StoreMessage(LevelInformation, "Система остановлена", std::string("System"));
    m_staleMonitor->Stop();
    stopAlarming();
    for (auto family = std::rbegin(startOrder); family != std::rend(startOrder); ++family)
        stopFamily(*family);
    m_history->Stop();
    m_journal->Close();
    SetState(NodeState::Finished);
    return Result();
}

Connection systemCore::ConnectActionRequested(ActionSlot slot)
{
    return m_requests->actionRequested.Connect(
        [slot = std::move(slot)](Requests::Request &request) {
            if (!request.answer)
                request.answer = slot(request.action);
        });
}

Result systemCore::RequestAction(BasicAction *action)
{
    Requests::Request request{action, std::nullopt};
    m_requests->actionRequested(request);
    return request.answer.value_or(Result(Result::NotAvailable, "no window manager"));
}

} // namespace Nodes
