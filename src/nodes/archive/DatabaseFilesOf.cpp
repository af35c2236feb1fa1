#include "nodes/archive/DatabaseFilesOf.h"

#include "nodes/archive/systemArchiver.h"
#include "nodes/system/BasicStation.h"
#include "nodes/system/systemCore.h"

#include <filesystem>

namespace Nodes {

namespace {

namespace fs = std::filesystem;

std::vector<const systemArchiver *> archiversBelow(const ConfigNode &node)
{
    std::vector<const systemArchiver *> found;
    for (const NodeLink &link : node.GetNodes(true)) {
        if (const auto *archiver = dynamic_cast<const systemArchiver *>(link.GetNode()))
            found.push_back(archiver);
    }
    return found;
}

/// "" when it is on a server or its location is not known.
std::string fileOf(const systemArchiver &archiver)
{
    std::string location;
    const bool isFile = archiver.FindLocation(location) && location.find(':') == std::string::npos;
    return isFile ? location : std::string();
}

} // namespace

NodesArray NodesWithDatabases(const systemCore &core)
{
    NodesArray nodes;
    const BasicStation *station = core.GetLocalStation();
    if (!station)
        return nodes;
    for (const systemArchiver *archiver : archiversBelow(*station))
        nodes.push_back(archiver->GetNodeLink());
    nodes.push_back(station->GetNodeLink());
    return nodes;
}

DatabaseFiles DatabaseFilesOf(const NodeLink &node)
{
    const ConfigNode *owner = node.GetNode();
    const systemCore *core = owner ? owner->GetCore() : nullptr;
    if (!core)
        return DatabaseFiles("");
    if (const auto *archiver = dynamic_cast<const systemArchiver *>(owner)) {
        const fs::path file = fileOf(*archiver);
        DatabaseFiles files(file.empty() ? std::string() : file.parent_path().string());
        files.Narrow(file.filename().string());
        return files;
    }
    const auto *station = dynamic_cast<const BasicStation *>(owner);
    if (!station)
        return DatabaseFiles("");
    DatabaseFiles files(core->GetDataDirectory());
    std::vector<std::string> archives;
    for (const systemArchiver *archiver : archiversBelow(*station)) {
        const std::string file = fileOf(*archiver);
        const std::string relative = fs::path(file).lexically_relative(core->GetDataDirectory());
        if (!file.empty() && !relative.empty())
            archives.push_back(relative);
    }
    files.Narrow("", archives);
    return files;
}

} // namespace Nodes
