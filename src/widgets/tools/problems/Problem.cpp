#include "widgets/tools/problems/Problem.h"

#include "nodes/model/ConfigNode.h"
#include "nodes/model/validation/ValidationMessage.h"
#include "nodes/serial/LoadMessage.h"

namespace Widgets {

// Findings say their place first: it has a column of its own.
Problem Problem::of(const Nodes::ValidationMessage &message)
{
    Problem problem;
    problem.severity = message.GetResult() ? Remark : Error;
    problem.node = message.GetNodeLink();
    problem.place = QString::fromStdString(problem.node.GetLinkName(true));
    problem.text = QString::fromStdString(message.GetMessageStr());
    const QString beginning = problem.place + QStringLiteral(": ");
    if (!problem.place.isEmpty() && problem.text.startsWith(beginning))
        problem.text.remove(0, beginning.size());
    return problem;
}

Problem Problem::of(const Nodes::LoadMessage &message)
{
    Problem problem;
    problem.severity = message.severity == Nodes::LoadMessage::Warning ? Remark : Error;
    const QString line = message.line > 0 ? ':' + QString::number(message.line) : QString();
    problem.place = QString::fromStdString(message.file) + line;
    problem.text = QString::fromStdString(
        message.path.empty() ? message.text : message.path + ": " + message.text);
    return problem;
}

} // namespace Widgets
