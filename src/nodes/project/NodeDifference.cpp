#include "nodes/project/NodeDifference.h"

namespace Nodes {

namespace {

std::string withBelow(std::size_t below)
{
    return below == 0 ? std::string() : ", вложенных узлов: " + std::to_string(below);
}

} // namespace

std::vector<std::string> NodeDifference::ToLines() const
{
    const std::string shown = path.empty() ? "проект" : path;
    const std::string what = shown + " (" + kind + ")";
    if (isAdded)
        return {"добавлено: " + what + withBelow(below)};
    if (isRemoved)
        return {"удалено: " + what + withBelow(below)};
    std::vector<std::string> lines;
    if (isMoved)
        lines.push_back("перемещено: " + pathBefore + " → " + what);
    if (isReordered)
        lines.push_back("изменён порядок: " + what);
    for (const PropertyDifference &property : properties)
        lines.push_back("изменено: " + what + ": «" + property.name + "»: " + property.before +
                        " → " + property.after);
    return lines;
}

} // namespace Nodes
