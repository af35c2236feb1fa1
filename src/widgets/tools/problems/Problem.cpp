#include "widgets/tools/problems/Problem.h"

#include "nodes/model/ConfigNode.h"
#include "nodes/project/ProjectProblem.h"

namespace Widgets {

Problem Problem::of(const Nodes::ProjectProblem &found, const Nodes::NodesCollection *project)
{
    Problem problem;
    problem.severity = found.severity == Nodes::ProjectProblem::Error ? Error : Remark;
    problem.text = QString::fromStdString(found.text);
    problem.code = QString::fromStdString(found.code);
    problem.property = QString::fromStdString(found.property);
    const Nodes::NodeLink link(found.node, project);
    if (link.GetNode()) {
        problem.node = link;
        problem.place = QString::fromStdString(link.GetLinkName(true));
        if (problem.place.isEmpty()) // the root has no path
            problem.place = QString::fromStdString(link.GetLinkName());
    }
    if (found.line > 0 || problem.place.isEmpty())
        problem.place = QString::fromStdString(found.file);
    if (found.line > 0)
        problem.place += QLatin1Char(':') + QString::number(found.line);
    return problem;
}

} // namespace Widgets
