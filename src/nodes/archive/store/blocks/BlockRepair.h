#pragma once

#include "nodes/archive/store/ArchiveFinding.h"
#include "nodes/archive/store/blocks/BlockTree.h"

#include <string>

namespace Nodes {

/// Makes the tables of an archive hold together again. What cannot be read is put aside, what
/// follows from the rest is made anew. One thread, within a transaction.
class BlockRepair
{
public:
    /// What was done is added to `done`.
    BlockRepair(ArchiveTables &tables, ArchiveFindings &done)
        : m_tables(tables), m_tree(tables), m_done(done)
    {
    }

    [[nodiscard]] Result MendSignal(StoredSignal signal);
    /// Records that were put aside are no news from now on.
    [[nodiscard]] Result SettleRest();

private:
    [[nodiscard]] Result mendChunks(StoredSignal &signal, SampleRun &taken);
    [[nodiscard]] Result eraseAbove(const StoredSignal &signal);
    [[nodiscard]] Result putAbove(const StoredSignal &signal);
    void report(const StoredSignal &signal, const StoredBlock &block, const std::string &text);

    ArchiveTables &m_tables;
    BlockTree m_tree;
    ArchiveFindings &m_done;
};

} // namespace Nodes
