#pragma once

#include "nodes/NodesExport.h"
#include "nodes/serial/LoadLimits.h"
#include "nodes/serial/LoadProgress.h"
#include "nodes/serial/LoadReport.h"

#include <memory>
#include <string>
#include <unordered_map>

namespace Nodes {

class NodesCollection;
class XmlSource;
struct XmlFault;

/// Lines of elements, 1-based, by the id of the node.
using NodeLines = std::unordered_map<unsigned long, int>;

/// Reads a project file. One object reads one file; any thread, the project is handed over whole.
class NODES_EXPORT ProjectReader
{
public:
    /// Format number this program writes and the highest it reads.
    static constexpr int Format = 1;

    /// The project file that a directory holds, or the file itself.
    static std::string FileOf(const std::string &fileOrDirectory);

    void SetLimits(const LoadLimits &limits) { m_limits = limits; }
    /// Shared with another thread; must outlive the reading. Null for none.
    void SetProgress(LoadProgress *progress) { m_progress = progress; }
    /// Reads also what a newer program wrote, as far as it is understood: for looking at. Such a
    /// project cannot be saved, and its findings begin with why.
    void SetLenient(bool isLenient) { m_isLenient = isLenient; }
    /// Where the line of every node is noted, by id; must outlive the reading. Null for nowhere.
    void SetLines(NodeLines *lines) { m_lines = lines; }

    /// NotFound or StorageError when the file cannot be read, LimitExceeded when it is too large
    /// or too deep, ParseError when it is damaged or from a newer program, NotAvailable when
    /// KindTable has no kinds, Cancelled. `project` is set on success only; what was wrong but
    /// could be kept is in the report.
    [[nodiscard]] Result ReadFile(const std::string &path,
                                  std::unique_ptr<NodesCollection> &project);
    /// The same from bytes; `name` stands for the file in messages.
    [[nodiscard]] Result ReadBuffer(std::string bytes, const std::string &name,
                                    std::unique_ptr<NodesCollection> &project);

    /// Whether what was read is of a newer format than this program writes.
    bool IsNewer() const { return m_isNewer; }
    /// Findings, the reason of a failure being the last.
    const LoadReport &GetReport() const { return m_report; }

private:
    Result fail(const XmlFault &fault);
    Result readBytes(const std::string &path, std::string &bytes);
    Result checkFormat(const XmlSource &source);
    Result build(const XmlSource &source, std::unique_ptr<NodesCollection> &project);

    LoadLimits m_limits;
    LoadProgress *m_progress = nullptr;
    NodeLines *m_lines = nullptr;
    bool m_isLenient = false;
    bool m_isNewer = false;
    LoadReport m_report;
    std::string m_file;
};

} // namespace Nodes
