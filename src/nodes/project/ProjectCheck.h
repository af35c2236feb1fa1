#pragma once

#include "nodes/NodesExport.h"
#include "nodes/model/links/NodeLink.h"
#include "nodes/project/ProjectProblem.h"
#include "nodes/serial/ProjectReader.h"

#include <chrono>
#include <cstddef>
#include <functional>
#include <vector>

namespace Nodes {

class LoadReport;
class ValidationResults;
struct ProjectFinding;

/// Looks for everything that is wrong with a project: what the reader could not take, what each
/// node says of itself, and what only shows in the whole (ProjectRules). A slice at a time, so that
/// an editor stays usable meanwhile: the project may change between slices, nodes that go are left
/// out. Names of files are resolved as ResourceLink does. GUI thread, or the one that read the
/// project.
class NODES_EXPORT ProjectCheck
{
public:
    /// The project outlives the check.
    explicit ProjectCheck(const NodesCollection &project);
    ~ProjectCheck();

    /// Adds the findings of reading that no look at the tree makes again: those of the text.
    void AddReading(const LoadReport &report);
    /// Looks on for that long, at a node at least; false when all is done.
    bool Work(std::chrono::milliseconds slice);
    /// Looks at all there is.
    void Finish();

    /// Of nodes and rules looked at, and of all.
    std::size_t GetDone() const { return m_next; }
    std::size_t GetCount() const;

    /// In the order they were found.
    const std::vector<ProjectProblem> &GetProblems() const { return m_problems; }
    /// Problems by file and line, as lists of a compiler are; those without a line come first.
    static void Sort(std::vector<ProjectProblem> &problems);
    /// Adds file and line to problems that name a node.
    static void Locate(std::vector<ProjectProblem> &problems, const std::string &file,
                       const NodeLines &lines);

    /// Reads the project of a directory or file as nobody edits it, and finds all problems, sorted,
    /// with their lines. A failure tells that there is no project to look into; the problems say
    /// why.
    /// `more`: what layers above know of a project that has been read; without lines.
    using More = std::function<std::vector<ProjectProblem>(const NodesCollection &project)>;
    [[nodiscard]] static Result OfFile(const std::string &fileOrDirectory,
                                       std::vector<ProjectProblem> &problems,
                                       const More &more = {});

private:
    void lookAt(std::size_t index);
    void add(const ProjectFinding &finding, const char *code);

    const NodesCollection &m_project;
    NodeLinks m_nodes;
    std::size_t m_next = 0;
    std::vector<ProjectProblem> m_problems;
};

} // namespace Nodes
