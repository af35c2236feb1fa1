#pragma once

#include "nodes/archive/store/ArchiveFinding.h"
#include "nodes/archive/store/SampleRun.h"
#include "nodes/archive/store/blocks/StoredBlock.h"
#include "nodes/values/Result.h"

#include <atomic>
#include <string>

namespace Nodes {

class ArchiveRows;

/// Looks whether the tables of an archive hold together: every block says what its row and its
/// neighbours say of it. One thread, each call within a transaction of reading.
class BlockVerification
{
public:
    BlockVerification(ArchiveRows &rows, ArchiveFindings &findings)
        : m_rows(rows), m_findings(findings)
    {
    }

    [[nodiscard]] Result CheckSignal(const StoredSignal &signal,
                                     const std::atomic<bool> &isCancelled);
    /// The log, and records that were no packets.
    [[nodiscard]] Result CheckLog(const std::string &location);

    /// Reads a chunk. What is wrong with it, "" when nothing is; without samples when it cannot be
    /// read at all.
    static std::string CheckChunk(const StoredBlock &chunk, const std::string &bytes,
                                  SampleRun &run);

private:
    [[nodiscard]] Result checkChunks(const StoredSignal &signal,
                                     const std::atomic<bool> &isCancelled);
    [[nodiscard]] Result checkChunk(const StoredSignal &signal, const StoredBlock &chunk);
    [[nodiscard]] Result checkAbove(const StoredSignal &signal, int height, bool &isAny);
    [[nodiscard]] Result checkPyramid(const StoredSignal &signal, const StoredBlock &block);
    void report(const StoredSignal &signal, const StoredBlock &block, const std::string &text);

    ArchiveRows &m_rows;
    ArchiveFindings &m_findings;
};

} // namespace Nodes
