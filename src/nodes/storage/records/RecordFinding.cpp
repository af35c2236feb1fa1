#include "nodes/storage/records/RecordFinding.h"

namespace Nodes {

std::string TornText(const RecordFinding &torn)
{
    std::string text = "Файл " + torn.place + " повреждён в конце; ";
    text += torn.detail.empty() ? "копию сделать не удалось" : "копия: " + torn.detail;
    for (const std::string &removed : torn.removed)
        text += "; удалена старая копия: " + removed;
    return text;
}

} // namespace Nodes
