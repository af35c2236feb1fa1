#include "apps/records/ProjectFile.h"

#include "apps/records/Message.h"

#include "nodes/model/NodesCollection.h"
#include "nodes/serial/LoadReport.h"
#include "nodes/signals/BasicSignal.h"
#include "nodes/system/systemCore.h"

namespace Records {

using Nodes::BasicSignal;
using Nodes::Result;

ProjectFile::ProjectFile() : m_core(std::make_unique<Nodes::systemCore>()) {}

ProjectFile::~ProjectFile() = default;

Result ProjectFile::load(const std::string &path, const std::string &station)
{
    const Result loaded = m_core->LoadConfig(path);
    if (!loaded) {
        for (const Nodes::LoadMessage &message : m_core->GetLoadReport().GetMessages())
            Message::tell(message.ToString());
        return Result(loaded.GetType(),
                      "cannot load the project \"" + path + "\": " + loaded.GetDetail());
    }
    const Result selected = m_core->SelectStation(stationName(station));
    m_isLoaded = bool(selected);
    return selected;
}

std::string ProjectFile::stationName(const std::string &nameOrId) const
{
    for (const auto *station : m_core->GetNodesCollection()->GetRoot()->GetObjects(
             Nodes::NodeType(Nodes::NodeType::SubtypeStation))) {
        if (std::to_string(station->GetId()) == nameOrId)
            return station->GetName();
    }
    return nameOrId;
}

std::string ProjectFile::directory() const
{
    return m_core->GetProjectPath();
}

Nodes::RecordHome ProjectFile::home() const
{
    return m_core->GetRecordHome();
}

bool ProjectFile::has(unsigned long id) const
{
    return m_core->GetNodesCollection()->FindNode(id) != nullptr;
}

const BasicSignal *ProjectFile::find(unsigned long id) const
{
    return dynamic_cast<const BasicSignal *>(m_core->GetNodesCollection()->FindNode(id));
}

Nodes::ArchiveSignalKey ProjectFile::keyOf(const BasicSignal &signal) const
{
    return {{home(), signal.GetId(), signal.GetPath()}, signal.GetUnit()};
}

} // namespace Records
