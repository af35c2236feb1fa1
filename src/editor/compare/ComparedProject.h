#pragma once

#include <QString>

namespace Nodes {
class NodesCollection;
}

namespace Editor {

/// One side of a comparison. The project is not owned.
struct ComparedProject
{
    QString title;
    Nodes::NodesCollection *project = nullptr;
};

} // namespace Editor
