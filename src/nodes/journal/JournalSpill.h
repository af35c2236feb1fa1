#pragma once

#include "nodes/journal/JournalRow.h"
#include "nodes/values/Result.h"

#include <cstddef>
#include <string>
#include <vector>

namespace Nodes {

/// File that takes journal rows while the database cannot: records of length, hash and packed row.
/// Used by the writer's thread only.
class JournalSpill
{
public:
    /// What Open found wrong with the file and did about it.
    struct Damage
    {
        bool isTorn = false;
        std::string copy;                 ///< of the whole file; "" when it could not be made
        std::vector<std::string> removed; ///< oldest copies that had to go
    };
    static constexpr std::size_t mostCopies = 10;

    /// Takes up what an earlier run left. What follows the last whole record (power loss, damage)
    /// is cut off after the whole file was copied to "<file>.damaged-<UTC time>".
    [[nodiscard]] Result Open(const std::string &file, Damage &damage);
    bool IsEmpty() const { return m_size == 0; }
    /// All rows or none, on the disk when it returns.
    [[nodiscard]] Result Append(const std::vector<JournalRow> &rows);
    /// Up to `count` rows from `offset` on, which is moved behind them; no rows at the end.
    [[nodiscard]] Result Read(std::size_t &offset, std::size_t count,
                              std::vector<JournalRow> &rows) const;
    [[nodiscard]] Result Clear();

private:
    Result failure(const char *what) const;
    std::size_t soundSize() const;

    std::string m_file;
    std::size_t m_size = 0;
};

} // namespace Nodes
