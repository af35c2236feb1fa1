#pragma once

#include "nodes/model/links/NodeLink.h"

#include <QString>

namespace Nodes {
class NodesCollection;
struct ProjectProblem;
} // namespace Nodes

namespace Widgets {

/// One finding about a project. A value.
struct Problem
{
    enum enSeverity {
        Error, ///< something does not work as it is configured
        Remark ///< it works, but somebody should look at it
    };

    /// `project`: the one it was found in.
    static Problem of(const Nodes::ProjectProblem &found, const Nodes::NodesCollection *project);

    enSeverity severity = Error;
    Nodes::NodeLink node; ///< empty where none is concerned, or it could not be made
    QString place;        ///< path of the node, or the line of the file
    QString text;         ///< Russian: what is wrong and what to do
    QString code;         ///< see Nodes::FindingCode
    QString property;     ///< key of the one to mend; "" when it is none in particular

    bool operator==(const Problem &o) const
    {
        return severity == o.severity && node == o.node && place == o.place && text == o.text &&
               property == o.property;
    }
};

} // namespace Widgets
