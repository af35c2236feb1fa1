#include "nodes/project/NodeDifference.h"

#include "nodes/values/JsonText.h"

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

std::string NodeDifference::ToJson() const
{
    std::string whole = "{";
    const auto add = [&whole](const char *key, const std::string &value) {
        whole += (whole.back() == '{' ? "\"" : ", \"") + std::string(key) + "\": " + value;
    };
    add("change", isAdded ? "\"added\"" : isRemoved ? "\"removed\"" : "\"changed\"");
    if (before != 0)
        add("before", std::to_string(before));
    if (after != 0)
        add("after", std::to_string(after));
    add("path", JsonText(path));
    add("kind", JsonText(kind));
    if (below > 0)
        add("below", std::to_string(below));
    if (isMoved)
        add("movedFrom", JsonText(pathBefore));
    if (isReordered)
        add("reordered", "true");
    std::string list;
    for (const PropertyDifference &property : properties)
        list += (list.empty() ? "{\"name\": " : ", {\"name\": ") + JsonText(property.name) +
                ", \"before\": " + JsonText(property.before) +
                ", \"after\": " + JsonText(property.after) + "}";
    if (!list.empty())
        add("properties", "[" + list + "]");
    return whole + "}";
}

} // namespace Nodes
