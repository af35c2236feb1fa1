#pragma once

#include <memory>
#include <vector>

namespace Editor {

/// One row of the project tree: a node by its id, and the rows below it once somebody asked.
struct TreeItem
{
    unsigned long id = 0;
    TreeItem *parent = nullptr;
    int row = 0;
    bool isFetched = false; ///< until then `children` is empty, whatever the node has
    std::vector<std::unique_ptr<TreeItem>> children;
};

} // namespace Editor
