#include "nodes/journal/EventJournal.h"
#include "nodes/model/NodesCollection.h"
#include "nodes/system/BasicStation.h"
#include "nodes/system/systemCore.h"

#include <filesystem>

namespace Nodes {

namespace fs = std::filesystem;

void systemCore::SetRecordLocation(const std::string &name, const std::string &location)
{
    m_recordLocations[name] = location;
}

std::string systemCore::GetRecordLocation(const std::string &name,
                                          const std::string &configured) const
{
    const auto given = m_recordLocations.find(name);
    if (given != m_recordLocations.end())
        return given->second;
    if (!configured.empty() && !m_isSimulated)
        return configured;
    return (fs::path(GetDataDirectory()) / (name + ".sqlite")).string();
}

void systemCore::SetFallbackDirectories(const std::vector<std::string> &directories)
{
    m_fallbacks = directories;
    m_journal->SetFallbacks(directories);
}

RecordHome systemCore::GetRecordHome() const
{
    if (!m_project)
        return {};
    const BasicStation *station = GetLocalStation();
    return station ? RecordHome{m_project->GetUuid(), station->GetId(), station->GetName()}
                   : RecordHome{m_project->GetUuid(), 0, {}};
}

void systemCore::setJournalHome()
{
    m_journal->SetHome(GetRecordHome(), m_project.get());
}

Result systemCore::openJournal()
{
    setJournalHome(); // names of stations may have changed
    const BasicStation *station = GetLocalStation();
    m_journal->SetRetention(station ? station->GetJournalRetention() : JournalRetention());
    std::string configured;
    const Result expanded = station ? Expand(station->GetJournalLocation(), configured) : Result();
    // A path is one within the data directory, unless it is a whole one.
    if (!configured.empty() && configured.find(':') == std::string::npos)
        configured = (fs::path(GetDataDirectory()) / configured).string();
    if (!expanded) {
        BasicEvent entry;
        entry.level = LevelCritical;
        entry.type = TypeSystemState;
        entry.source = station->GetName();
        entry.text = "Имя в «Где хранится журнал» не определено: " + expanded.GetDetail() +
                     ". Записи идут в файл в каталоге данных. Задайте имя или исправьте проект.";
        (void)m_journal->Append(entry);
    }
    const fs::path spill = fs::path(GetDataDirectory()) / "journal.sqlite.spill";
    return m_journal->Open(GetRecordLocation("journal", configured), spill.string());
}

} // namespace Nodes
