#pragma once

#include "nodes/archive/store/ArchiveFinding.h"
#include "nodes/values/Result.h"

#include <functional>
#include <string>

namespace Nodes {

class ArchiveRows;
class ArchiveTables;

/// How BlockArchiveReader gets at the tables of an archive. One thread.
class ArchiveConnection
{
public:
    virtual ~ArchiveConnection() = default;

    virtual const std::string &GetLocation() const = 0;
    /// Connects where it is not, or no longer to what stands at the location, and begins a
    /// transaction that sees one state of everything. `isNew`: it did connect. After a failure
    /// nothing is begun.
    [[nodiscard]] virtual Result Begin(bool &isNew) = 0;
    virtual void End() = 0;
    /// The next Begin connects.
    virtual void Close() = 0;
    /// Of one connection after the other the same object; for use between Begin and End.
    virtual ArchiveRows &Rows() = 0;

    /// What the database itself finds wrong with its tables.
    [[nodiscard]] virtual Result Check(ArchiveFindings &findings) = 0;
    /// Puts tables that the database itself finds damaged in order, as far as it can; what was done
    /// is added to `done`. Outside of Begin and End.
    [[nodiscard]] virtual Result Salvage(ArchiveFindings &done) { return Result(); }
    using Work = std::function<Result(ArchiveTables &tables)>;
    /// Runs `work` as one transaction of writing, on another connection.
    [[nodiscard]] virtual Result Change(const Work &work) = 0;
    /// As ArchiveReader::Backup.
    [[nodiscard]] virtual Result Backup(const std::string &to,
                                        const std::function<bool()> &step) = 0;
};

} // namespace Nodes
