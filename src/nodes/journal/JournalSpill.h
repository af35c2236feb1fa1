#pragma once

#include "nodes/journal/JournalRow.h"
#include "nodes/values/Result.h"

#include <atomic>
#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace Nodes {

/// File that takes journal rows while the database cannot: records of length, hash and packed row.
/// It stays open while it holds rows, so that they can be read even after somebody deleted it. Used
/// by one thread at a time; the counts by any.
class JournalSpill
{
public:
    JournalSpill() = default;
    ~JournalSpill();
    JournalSpill(const JournalSpill &) = delete;
    JournalSpill &operator=(const JournalSpill &) = delete;

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
    bool IsEmpty() const { return m_count == 0; }
    std::size_t Count() const { return m_count; }
    const std::string &GetFile() const { return m_file; }
    /// The file was deleted while it held rows: they are in memory of the system only.
    bool IsGone() const;
    /// Writes the rows of a deleted file to the file again.
    [[nodiscard]] Result Recreate();
    /// All rows or none, on the disk when it returns.
    [[nodiscard]] Result Append(const std::vector<JournalRow> &rows);
    /// Up to `count` rows from `offset` on, which is moved behind them; no rows at the end.
    [[nodiscard]] Result Read(std::size_t &offset, std::size_t count,
                              std::vector<JournalRow> &rows) const;
    bool IsReadTo(std::size_t offset) const { return offset >= m_size; }
    [[nodiscard]] Result Clear();

private:
    Result failure(const char *what) const;
    void close();
    bool findSound();
    std::optional<JournalRow> readRecord(std::size_t &offset) const;

    std::string m_file;
    int m_descriptor = -1; // open while there are rows
    std::size_t m_size = 0;
    std::atomic<std::size_t> m_count{0};
};

} // namespace Nodes
