#pragma once

#include "nodes/model/links/NodeLink.h"

#include <QString>

namespace Nodes {
struct LoadMessage;
class ValidationMessage;
} // namespace Nodes

namespace Widgets {

/// One finding about a project. A value.
struct Problem
{
    enum enSeverity {
        Error, ///< something does not work as it is configured
        Remark ///< it works, but somebody should look at it
    };

    static Problem of(const Nodes::ValidationMessage &message);
    static Problem of(const Nodes::LoadMessage &message);

    enSeverity severity = Error;
    Nodes::NodeLink node; ///< empty where none is concerned, or it could not be made
    QString place;        ///< path of the node, or the line of the file
    QString text;         ///< Russian: what is wrong and what to do
};

} // namespace Widgets
