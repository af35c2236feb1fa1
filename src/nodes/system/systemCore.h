#pragma once

#include "nodes/model/ConfigNode.h"
#include "nodes/model/services/StationFinder.h"
#include "nodes/storage/RecordSource.h"
#include "nodes/system/enWorkMode.h"
#include "nodes/values/Connection.h"

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace Nodes {

class BasicAction;
class BasicStation;
class CoreAccess;
class EventJournal;
class HistoryService;
class LoadReport;
class NodesCollection;
class StaleMonitor;
class WriteRoutes;
class systemAlarming;
class systemArchiver;
class systemAuthentication;
class systemVisualization;

/// The running system: owns the loaded project, the event journal and the order in which drivers,
/// alarms and timers start and stop. One a process. GUI thread, except where stated.
class NODES_EXPORT systemCore : public ConfigNode, private StationFinder
{
public:
    systemCore();
    ~systemCore() override;

    /// Makes the station of that name the local one, from the next Start on: only what stands in it
    /// or outside of all stations runs here. NotFound names the stations there are. By default the
    /// first one is local. After the project was loaded.
    [[nodiscard]] Result SelectStation(const std::string &name);
    /// Subsystems of the local station; null when the project configures none.
    systemVisualization *GetSystemVisualization() const;
    systemAlarming *GetSystemAlarming() const;
    systemArchiver *GetSystemArchiver() const;
    systemAuthentication *GetSystemAuthentication() const;
    BasicStation *GetLocalStation() const override;
    /// Whether the project holds anything that speaks of users, see SpeaksOfUsers. The tree is
    /// looked through again when it has changed, on the thread that adopted it. Any thread.
    bool IsMeantToHaveUsers() const;
    /// Whose the records of this process are: the loaded project and its local station.
    RecordHome GetRecordHome() const;
    /// Journal of this process; never null, stores from the moment it is opened by Start.
    EventJournal &GetJournal() const { return *m_journal; }
    /// Where writes to the signals of other stations go; never null.
    WriteRoutes &GetWriteRoutes() const { return *m_writeRoutes; }

    /// History of the signals of this station; closed while the station stops.
    HistoryService &GetHistory() const { return *m_history; }

    enWorkMode GetWorkMode() const { return m_workMode; }
    void SetWorkMode(enWorkMode mode) { m_workMode = mode; }

    /// While it simulates no driver speaks to a device: stand-ins publish made-up values, see
    /// BasicDriver::ReachesOut, and all records go to the data directory whatever the project says.
    /// The journal tells so at the start. Before Start; not by default.
    void SetSimulated(bool isSimulated) { m_isSimulated = isSimulated; }
    bool IsSimulated() const { return m_isSimulated; }

    /// Directory of the loaded project; "" before one is loaded.
    std::string GetProjectPath() const;
    /// File of the loaded project.
    const std::string &GetProjectFile() const { return m_projectFile; }
    /// Directory for what this station records (journal, archive, spill files). By default
    /// "data" beside the project file.
    void SetDataDirectory(std::string directory) { m_dataDirectory = std::move(directory); }
    std::string GetDataDirectory() const;
    /// Where the store of records of that name is: "journal", "alarms", "archive". By default what
    /// the project says (`configured`), else a file in the data directory; see StoreTable for other
    /// kinds. Before Start.
    void SetRecordLocation(const std::string &name, const std::string &location);
    std::string GetRecordLocation(const std::string &name,
                                  const std::string &configured = {}) const;
    /// Directories on other disks for records that cannot be written there, the best one first:
    /// see EventJournal::SetFallbacks. Before Start; none by default.
    void SetFallbackDirectories(const std::vector<std::string> &directories);
    const std::vector<std::string> &GetFallbackDirectories() const { return m_fallbacks; }

    /// Loads "project.xml" of the current project path again, of a directory, or a file; on this
    /// thread. On failure the project that was loaded stays.
    [[nodiscard]] Result LoadConfig();
    [[nodiscard]] Result LoadConfig(const std::string &path);
    [[nodiscard]] Result LoadProject(const std::string &path);
    /// Findings of the last load, successful or not; empty before the first.
    const LoadReport &GetLoadReport() const;
    /// Keeps the findings of a load made elsewhere.
    void SetLoadReport(LoadReport report);
    /// Takes over a project built elsewhere (by a loading thread) from `file`.
    void AdoptProject(std::unique_ptr<NodesCollection> project, std::string file);

    /// Names that project texts may use as ${name}: ports, host names, paths of this machine.
    void SetDefine(const std::string &name, const std::string &value);
    /// Text with every known ${name} replaced; NotFound names the first unknown one.
    [[nodiscard]] Result Expand(const std::string &text, std::string &expanded) const;

    /// Opens the journal and starts subsystems, drivers, signals, alarms and timers. Failures of
    /// single nodes are journalled and do not stop the rest.
    Result Start() override;
    /// Stops everything in reverse order, alarming before all; the state is then Finished.
    Result Stop() override;

    /// Actions the core itself wants run (by scripts, remote commands): asks the subscriber.
    using ActionSlot = std::function<Result(BasicAction *)>;
    Connection ConnectActionRequested(ActionSlot slot);
    /// NotAvailable when nobody subscribed. Any thread.
    Result RequestAction(BasicAction *action);

private:
    struct Requests;
    struct Guard;

    template <class Subsystem> Subsystem *findSubsystem() const;
    void startFamily(NodeType::enNodeType family);
    void stopFamily(NodeType::enNodeType family);
    void stopAlarming();
    NodeLinks findHere(NodeType::enNodeType family) const;
    void markRemoteSignals() const;
    void journalLoadErrors() const;
    void watchStaleness();
    void setJournalHome();
    Result openJournal();

    std::unique_ptr<NodesCollection> m_project;
    std::shared_ptr<const LoadReport> m_loadReport;
    std::unique_ptr<EventJournal> m_journal;
    std::unique_ptr<CoreAccess> m_access;
    std::unique_ptr<WriteRoutes> m_writeRoutes;
    std::unique_ptr<HistoryService> m_history;
    std::unique_ptr<StaleMonitor> m_staleMonitor;
    std::unique_ptr<Requests> m_requests;
    std::unique_ptr<Guard> m_guard;
    std::map<std::string, std::string> m_defines;
    std::map<std::string, std::string> m_recordLocations; // given by name
    std::vector<std::string> m_fallbacks;
    std::string m_projectFile;
    std::string m_dataDirectory;
    std::string m_station; // name of the local one; "" for the first
    enWorkMode m_workMode = WorkModeNone;
    bool m_isSimulated = false;
};

} // namespace Nodes
