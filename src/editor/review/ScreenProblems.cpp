#include "editor/review/ScreenProblems.h"

#include "editor/review/ReviewRun.h"
#include "editor/review/ReviewScreen.h"
#include "editor/review/ScreenClicks.h"

#include "nodes/model/NodesCollection.h"
#include "nodes/serial/ElementPath.h"

namespace Editor {

std::vector<Nodes::ProjectProblem> ScreenProblems::of(const Nodes::NodesCollection &project)
{
    std::vector<Nodes::ProjectProblem> problems;
    const Nodes::ConfigNode *root = project.GetRoot();
    if (!root)
        return problems;
    const ScreenClicks clicks(*root);
    for (const Nodes::NodeLink &screen : ReviewScreen::screensBelow(*root)) {
        for (const ReviewFinding &finding : ReviewRun::check(*screen.GetNode(), clicks)) {
            if (finding.severity < ReviewFinding::Warning)
                continue;
            Nodes::ProjectProblem problem;
            problem.severity = Nodes::ProjectProblem::Remark;
            problem.code =
                "screen." + (finding.rule.isEmpty() ? "ways" : finding.rule.toStdString());
            problem.node = finding.where.GetNodeId();
            problem.path = Nodes::ElementPath::Of(*finding.where.GetNode());
            problem.text = (finding.what + ' ' + finding.advice).toStdString();
            problems.push_back(std::move(problem));
        }
    }
    return problems;
}

} // namespace Editor
