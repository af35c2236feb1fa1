#include "nodes/serial/LoadMessage.h"

namespace Nodes {

std::string LoadMessage::ToString() const
{
    std::string full = file;
    if (line > 0)
        full += ":" + std::to_string(line);
    if (!full.empty())
        full += ": ";
    if (!path.empty())
        full += path + ": ";
    return full + text;
}

} // namespace Nodes
