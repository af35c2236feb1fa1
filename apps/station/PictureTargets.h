#pragma once

#include <QString>

#include <vector>

namespace Nodes {
class BasicComposition;
class BasicWindow;
class ConfigNode;
class NodesCollection;
} // namespace Nodes

namespace Station {

/// One picture of a project: a window, showing one of its compositions when it is a composed one.
struct PictureTarget
{
    Nodes::BasicWindow *window = nullptr;
    Nodes::BasicComposition *composition = nullptr;

    /// What is seen: the composition, else the window.
    const Nodes::ConfigNode &content() const;
    /// Unique in the project: name and id of the content, without suffix.
    QString fileName() const;
    /// Elements of the content that show a signal of which nothing was received yet.
    int countMissingValues() const;
};

/// Every window, and every composition in the windows that can show it. Compositions that no
/// window leads to are shown in the first composed window; without one they are left out.
std::vector<PictureTarget> pictureTargets(const Nodes::NodesCollection &project);

} // namespace Station
