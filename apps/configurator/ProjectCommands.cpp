#include "apps/configurator/ProjectCommands.h"

#include "apps/common/process/ProjectOptions.h"

#include "editor/review/ScreenProblems.h"

#include "nodes/model/NodesCollection.h"
#include "nodes/project/ProjectCheck.h"
#include "nodes/project/ProjectDiff.h"

#include <QGuiApplication>

#include <algorithm>
#include <cstdio>

namespace Configurator {

namespace {

using Nodes::ProjectProblem;

void put(std::FILE *stream, const std::string &line)
{
    std::fputs((line + "\n").c_str(), stream);
}

std::unique_ptr<Nodes::NodesCollection> read(const std::string &path)
{
    Nodes::ProjectReader reader;
    reader.SetLenient(true);
    std::unique_ptr<Nodes::NodesCollection> project;
    if (reader.ReadFile(Nodes::ProjectReader::FileOf(path), project))
        return project;
    for (const Nodes::LoadMessage &message : reader.GetReport().GetMessages())
        put(stderr, message.ToString());
    return nullptr;
}

std::string lineOf(const ProjectProblem &problem, ProjectCommands::enFormat format)
{
    if (format == ProjectCommands::Json)
        return problem.ToJson();
    if (format == ProjectCommands::Compiler)
        return problem.ToCompilerLine();
    const char *word = problem.severity == ProjectProblem::Error ? "ошибка" : "замечание";
    return problem.ToString() + " [" + word + ": " + problem.code + "]";
}

// Texts are measured, which takes fonts but no display.
std::vector<ProjectProblem> reviewed(const Nodes::NodesCollection &project)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    char name[] = "configurator";
    char *arguments[] = {name, nullptr};
    int count = 1;
    const QGuiApplication application(count, arguments);
    return Editor::ScreenProblems::of(project);
}

} // namespace

int ProjectCommands::check(const std::string &project, enFormat format, bool isStrict,
                           bool withScreens)
{
    std::vector<ProjectProblem> problems;
    const Nodes::Result read = Nodes::ProjectCheck::OfFile(
        project, problems, withScreens ? &reviewed : Nodes::ProjectCheck::More());
    for (const ProjectProblem &problem : problems)
        put(stdout, lineOf(problem, format));
    const auto errors = std::count_if(problems.begin(), problems.end(), [](const auto &problem) {
        return problem.severity == ProjectProblem::Error;
    });
    if (format == Text && read)
        put(stderr, "Ошибок: " + std::to_string(errors) +
                        ", замечаний: " + std::to_string(problems.size() - std::size_t(errors)));
    const bool isSound = isStrict ? problems.empty() : errors == 0;
    return read && isSound ? 0 : 1;
}

int ProjectCommands::diff(const std::string &before, const std::string &after, enFormat format)
{
    const auto left = read(before);
    const auto right = read(after);
    if (!left || !right)
        return Host::ProjectOptions::UsageError;
    const Nodes::ProjectDiff found(*left, *right);
    for (const Nodes::NodeDifference &difference : found.GetDifferences()) {
        if (format == Json) {
            put(stdout, difference.ToJson());
            continue;
        }
        for (const std::string &line : difference.ToLines())
            put(stdout, line);
    }
    if (format == Text)
        put(stderr, found.GetSummary());
    return found.isEmpty() ? 0 : 1;
}

} // namespace Configurator
