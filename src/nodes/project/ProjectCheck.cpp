#include "nodes/project/ProjectCheck.h"

#include "nodes/model/ConfigNode.h"
#include "nodes/model/KindTable.h"
#include "nodes/model/NodesCollection.h"
#include "nodes/model/validation/FindingCode.h"
#include "nodes/model/validation/ValidationResults.h"
#include "nodes/project/ProjectRules.h"
#include "nodes/serial/ElementPath.h"
#include "nodes/serial/LoadReport.h"
#include "nodes/system/systemCore.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <string_view>
#include <tuple>

namespace Nodes {

namespace {

// The rest stands in the tree as well and is found there.
bool isOfText(const LoadMessage &message)
{
    constexpr std::array codes{
        FindingCode::Unreadable,        FindingCode::NewerFormat, FindingCode::Doctype,
        FindingCode::BadIdentity,       FindingCode::NoId,        FindingCode::RepeatedId,
        FindingCode::RepeatedAttribute, FindingCode::IdleText};
    return message.code.empty() ||
           std::any_of(codes.begin(), codes.end(),
                       [&](std::string_view code) { return message.code == code; });
}

} // namespace

ProjectCheck::ProjectCheck(const NodesCollection &project) : m_project(project)
{
    if (!project.GetRoot())
        return;
    m_nodes = project.GetRoot()->GetNodes(true);
    m_nodes.insert(m_nodes.begin(), project.GetRoot()->GetNodeLink());
}

ProjectCheck::~ProjectCheck() = default;

std::size_t ProjectCheck::GetCount() const
{
    return m_nodes.size() + ProjectRules().size() + KindTable::Instance().GetChecks().size();
}

void ProjectCheck::AddReading(const LoadReport &report)
{
    for (const LoadMessage &message : report.GetMessages()) {
        if (isOfText(message))
            m_problems.push_back(ProjectProblem::Of(message));
    }
}

bool ProjectCheck::Work(std::chrono::milliseconds slice)
{
    const auto end = std::chrono::steady_clock::now() + slice;
    while (m_next < GetCount()) {
        lookAt(m_next++);
        if (std::chrono::steady_clock::now() >= end)
            break;
    }
    return m_next < GetCount();
}

void ProjectCheck::Finish()
{
    while (m_next < GetCount())
        lookAt(m_next++);
}

void ProjectCheck::lookAt(std::size_t index)
{
    if (index < m_nodes.size()) {
        ValidationResults results;
        if (const ConfigNode *node = m_nodes[index].GetNode())
            node->Validate(results);
        for (const ValidationMessage &message : results)
            m_problems.push_back(ProjectProblem::Of(message));
        return;
    }
    if (!m_project.GetRoot())
        return;
    index -= m_nodes.size();
    const auto &checks = KindTable::Instance().GetChecks();
    if (index < checks.size()) {
        for (const ProjectFinding &finding : checks[index](m_project))
            add(finding, FindingCode::WholeProject);
        return;
    }
    const ProjectRule &rule = ProjectRules()[index - checks.size()];
    for (const ProjectFinding &finding : rule.find(m_project)) {
        add(finding, rule.code);
        m_problems.back().severity = rule.isRemark ? ProjectProblem::Remark : ProjectProblem::Error;
    }
}

void ProjectCheck::add(const ProjectFinding &finding, const char *code)
{
    ProjectProblem problem;
    problem.code = code;
    problem.node = finding.node->GetId();
    problem.path = ElementPath::Of(*finding.node);
    problem.text = finding.text;
    m_problems.push_back(std::move(problem));
}

void ProjectCheck::Sort(std::vector<ProjectProblem> &problems)
{
    std::stable_sort(problems.begin(), problems.end(),
                     [](const ProjectProblem &left, const ProjectProblem &right) {
                         return std::tie(left.file, left.line) < std::tie(right.file, right.line);
                     });
}

void ProjectCheck::Locate(std::vector<ProjectProblem> &problems, const std::string &file,
                          const NodeLines &lines)
{
    for (ProjectProblem &problem : problems) {
        const auto line = lines.find(problem.node);
        problem.file = file;
        if (problem.line == 0 && line != lines.end())
            problem.line = line->second;
    }
}

Result ProjectCheck::OfFile(const std::string &fileOrDirectory,
                            std::vector<ProjectProblem> &problems, const More &more)
{
    const std::string file = ProjectReader::FileOf(fileOrDirectory);
    ProjectReader reader;
    NodeLines lines;
    std::unique_ptr<NodesCollection> project;
    reader.SetLenient(true);
    reader.SetLines(&lines);
    const Result read = reader.ReadFile(file, project);
    if (read) {
        systemCore core; // nodes ask it for what stands beside them, and where files are
        core.AdoptProject(std::move(project), file);
        ProjectCheck check(*core.GetNodesCollection());
        check.AddReading(reader.GetReport());
        check.Finish();
        problems = check.GetProblems();
        if (more) {
            const std::vector<ProjectProblem> others = more(*core.GetNodesCollection());
            problems.insert(problems.end(), others.begin(), others.end());
        }
    } else {
        for (const LoadMessage &message : reader.GetReport().GetMessages())
            problems.push_back(ProjectProblem::Of(message));
    }
    Locate(problems, file, lines);
    Sort(problems);
    return read;
}

} // namespace Nodes
