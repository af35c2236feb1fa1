#pragma once

#include "nodes/NodesExport.h"
#include "nodes/serial/LoadLimits.h"
#include "nodes/serial/LoadProgress.h"
#include "nodes/serial/LoadReport.h"

#include <memory>
#include <string>

namespace Nodes {

class NodesCollection;
class XmlSource;
struct XmlFault;

/// Reads a project file. One object reads one file; any thread, the project is handed over whole.
class NODES_EXPORT ProjectReader
{
public:
    /// Format number this program writes and the highest it reads.
    static constexpr int Format = 1;

    void SetLimits(const LoadLimits &limits) { m_limits = limits; }
    /// Shared with another thread; must outlive the reading. Null for none.
    void SetProgress(LoadProgress *progress) { m_progress = progress; }

    /// NotFound or StorageError when the file cannot be read, LimitExceeded when it is too large
    /// or too deep, ParseError when it is damaged or from a newer program, NotAvailable when
    /// KindTable has no kinds, Cancelled. `project` is set on success only; what was wrong but
    /// could be kept is in the report.
    [[nodiscard]] Result ReadFile(const std::string &path,
                                  std::unique_ptr<NodesCollection> &project);
    /// The same from bytes; `name` stands for the file in messages.
    [[nodiscard]] Result ReadBuffer(std::string bytes, const std::string &name,
                                    std::unique_ptr<NodesCollection> &project);

    /// Findings, the reason of a failure being the last.
    const LoadReport &GetReport() const { return m_report; }

private:
    Result fail(const XmlFault &fault);
    Result readBytes(const std::string &path, std::string &bytes);
    Result checkFormat(const XmlSource &source);
    Result build(const XmlSource &source, std::unique_ptr<NodesCollection> &project);

    LoadLimits m_limits;
    LoadProgress *m_progress = nullptr;
    LoadReport m_report;
    std::string m_file;
};

} // namespace Nodes
