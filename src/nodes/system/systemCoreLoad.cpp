#include "nodes/model/NodesCollection.h"
#include "nodes/serial/ProjectReader.h"
#include "nodes/system/systemCore.h"

namespace Nodes {

Result systemCore::LoadConfig()
{
    if (m_projectFile.empty())
        return Result(Result::NotFound, "no project has been loaded yet");
    return LoadProject(m_projectFile);
}

Result systemCore::LoadConfig(const std::string &path)
{
    return LoadProject(path);
}

Result systemCore::LoadProject(const std::string &path)
{
    const std::string file = ProjectReader::FileOf(path);
    ProjectReader reader;
    std::unique_ptr<NodesCollection> project;
    const Result read = reader.ReadFile(file, project);
    SetLoadReport(reader.GetReport());
    if (read)
        AdoptProject(std::move(project), file);
    return read;
}

const LoadReport &systemCore::GetLoadReport() const
{
    static const LoadReport none;
    return m_loadReport ? *m_loadReport : none;
}

void systemCore::SetLoadReport(LoadReport report)
{
    m_loadReport = std::make_shared<const LoadReport>(std::move(report));
}

} // namespace Nodes
