#pragma once

#include "nodes/NodesExport.h"
#include "nodes/archive/store/ArchiveFinding.h"
#include "nodes/storage/SqliteStoreFile.h"

#include <cstdint>
#include <string>

namespace Nodes {

/// Makes an archive's file anew of what can be read of one whose pages are damaged, row by row. The
/// damaged file is kept under another name. One thread.
class SqliteSalvage
{
public:
    /// What was done is added to `done`.
    /// Whether its head, of whatever the rest is like, is that of an archive of this version or an
    /// earlier one.
    static NODES_EXPORT bool IsOurs(const std::string &file);

    SqliteSalvage(std::string file, ArchiveFindings &done);

    /// Refused while any process has the file open.
    [[nodiscard]] Result Run();

private:
    struct Table;

    [[nodiscard]] Result checkUnused() const;
    [[nodiscard]] Result copyAll();
    [[nodiscard]] Result copy(const Table &table);
    [[nodiscard]] Result copyFrom(const Table &table, std::int64_t &after, bool &isAtEnd);
    [[nodiscard]] Result completeSignals();
    [[nodiscard]] Result mendSignals();
    [[nodiscard]] Result putInPlace();
    void report(const std::string &text);

    const std::string m_file;
    ArchiveFindings &m_done;
    SqliteDatabase m_source;
    SqliteStoreFile m_target;
};

} // namespace Nodes
