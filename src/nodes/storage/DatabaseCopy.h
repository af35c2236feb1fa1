#pragma once

#include "nodes/NodesExport.h"
#include "nodes/values/Result.h"

#include <atomic>
#include <cstdint>
#include <string>

namespace Nodes {

class SqliteDatabase;

/// Makes a copy of a database file that is proved to hold the same, also of a file that others
/// write meanwhile: the copy is of one moment. Run on one thread; the rest on any.
class NODES_EXPORT DatabaseCopy
{
public:
    enum class Phase { Waiting, Copying, Verifying, Done };

    DatabaseCopy(std::string from, std::string to) : m_from(std::move(from)), m_to(std::move(to)) {}
    DatabaseCopy(const DatabaseCopy &) = delete;
    DatabaseCopy &operator=(const DatabaseCopy &) = delete;

    const std::string &GetFrom() const { return m_from; }
    const std::string &GetTo() const { return m_to; }

    /// Duplicate when the target exists; LimitExceeded when its disk has not enough room, which is
    /// looked at before; StorageError names the cause; Failed when what was written does not read
    /// back as what was copied. A damaged file is copied as it is, unless it is in use. The target
    /// takes its name when all of it is on the disk; after a failure nothing is left.
    [[nodiscard]] Result Run();
    /// Has Run end soon with Cancelled.
    void Cancel() { m_isCancelled = true; }
    /// So does this flag, which outlives it. Before Run.
    void ObeyFlag(const std::atomic<bool> &flag) { m_flag = &flag; }

    Phase GetPhase() const { return m_phase; }
    /// Share of the phase that is done, 0 to 1.
    double GetProgress() const;
    /// Of what was copied, in hexadecimal digits; after Run succeeded.
    const std::string &GetDigest() const { return m_digest; }

private:
    [[nodiscard]] Result checkRoom();
    [[nodiscard]] Result copy(const std::string &aside);
    [[nodiscard]] Result copyContent(SqliteDatabase &database, const std::string &aside);
    [[nodiscard]] Result copyBytes(const std::string &aside);
    [[nodiscard]] Result finish(const std::string &aside);
    bool step();

    const std::string m_from;
    const std::string m_to;
    std::string m_digest;
    std::atomic<bool> m_isCancelled{false};
    const std::atomic<bool> *m_flag = nullptr;
    std::atomic<Phase> m_phase{Phase::Waiting};
    std::atomic<std::uint64_t> m_size{0};
};

} // namespace Nodes
