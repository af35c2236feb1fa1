#include "nodes/project/ProjectDiff.h"

#include "nodes/project/DiffBuilder.h"

namespace Nodes {

ProjectDiff::ProjectDiff(const NodesCollection &before, const NodesCollection &after)
    : m_differences(DiffBuilder(before, after).Build())
{
}

std::string ProjectDiff::GetSummary() const
{
    std::size_t added = 0;
    std::size_t removed = 0;
    std::size_t moved = 0;
    std::size_t changed = 0;
    for (const NodeDifference &difference : m_differences) {
        added += difference.isAdded ? 1 + difference.below : 0;
        removed += difference.isRemoved ? 1 + difference.below : 0;
        moved += difference.isMoved || difference.isReordered ? 1 : 0;
        changed += difference.properties.empty() ? 0 : 1;
    }
    std::string summary;
    const auto tell = [&](const char *word, std::size_t count) {
        if (count > 0)
            summary +=
                (summary.empty() ? "" : ", ") + std::string(word) + " " + std::to_string(count);
    };
    tell("добавлено узлов:", added);
    tell("удалено:", removed);
    tell("изменено:", changed);
    tell("перемещено:", moved);
    return summary.empty() ? "различий нет" : summary;
}

} // namespace Nodes
