#pragma once

#include <QString>

#include <vector>

namespace Nodes {
class BasicComposition;
class BasicTemplateAction;
class BasicWindow;
class ConfigNode;
class NodesCollection;
} // namespace Nodes

namespace Station {

/// One picture of a project: a window, showing one of its compositions when it is a composed one,
/// or a template as the first action that gives it arguments opens it.
struct PictureTarget
{
    Nodes::BasicWindow *window = nullptr;
    Nodes::BasicComposition *composition = nullptr;
    Nodes::BasicTemplateAction *opening = nullptr; ///< null for what is no template

    /// What is seen: the template, the composition, else the window.
    const Nodes::ConfigNode &content() const;
    /// Unique in the project: name and id of the content, without suffix.
    QString fileName() const;
};

/// Elements below `shown` whose signal has not given a value yet.
int countMissingValues(const Nodes::ConfigNode &shown);

/// Every window of this station, and every composition in the windows that can show it.
/// Compositions that no window leads to are shown in the first composed window; without one they
/// are left out. So are templates that no action opens.
std::vector<PictureTarget> pictureTargets(const Nodes::NodesCollection &project);

} // namespace Station
