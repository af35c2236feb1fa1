#include "nodes/serial/NodePackReader.h"
#include "nodes/serial/NodePackWriter.h"

#include "nodes/model/NodesCollection.h"

namespace Nodes {

std::string BasicCollection::Serialize(const NodesContainer &nodes) const
{
    return PackNodes(nodes);
}

Result BasicCollection::Deserialize(std::string_view bytes, NodesContainer &nodes)
{
    NodePackReader reader(project());
    const Result read = reader.Read(bytes, nodes);
    if (!read || reader.GetNotes().empty())
        return read;
    std::string skipped = "skipped";
    for (const std::string &note : reader.GetNotes())
        skipped += "; " + note;
    return Result(Result::Success, skipped);
}

} // namespace Nodes
