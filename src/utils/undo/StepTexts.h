#pragma once

#include "utils/UtilsExport.h"

#include <QString>

namespace Nodes {
class NodeLink;
}

namespace Utils {

/// How the texts of steps call a node: elements of scenes are "виджет", whatever else stands in the
/// tree of a project is an "узел". GUI thread.
class UTILS_EXPORT StepTexts
{
public:
    /// "виджета" or "узла".
    static QString ofNode(const Nodes::NodeLink &node);
    /// "виджету" or "узлу".
    static QString toNode(const Nodes::NodeLink &node);
};

} // namespace Utils
