#pragma once

#include "nodes/journal/JournalRow.h"
#include "nodes/storage/SqliteDatabase.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace Nodes {

/// The journal's table: appends rows with their hash chain. Used by the writer's thread only.
class JournalStore
{
public:
    /// Creates what is missing. A damaged file is set aside and a new one begun, whose name then
    /// is in `setAside`. A file of a later program version is left alone and is StorageError.
    [[nodiscard]] Result Open(const std::string &file, std::string &setAside);
    void Close();
    bool IsOpen() const { return m_database->IsOpen(); }
    /// The file was removed or replaced while it was open. The store then counts as closed, but
    /// what it held is not given up as long as this object lives: see Restore. Asks the disk.
    bool NoticeMove();
    bool HasFormer() const { return m_former != nullptr; }
    /// Puts what a removed file held where it was, unless another file stands there by now: then
    /// `isRestored` stays false, and the store goes on with that one. `step`: see CopyTo.
    [[nodiscard]] Result Restore(const std::function<void()> &step, bool &isRestored);
    /// The last failure means that the file is damaged: the next Open sets it aside.
    bool IsDamaged() const { return m_isDamaged; }

    /// Appends all rows or none. Rows stored before are passed over; the others get their ids and
    /// are told apart by that: `event.id` stays 0 for those passed over.
    [[nodiscard]] Result Append(std::vector<JournalRow> &rows);

private:
    [[nodiscard]] Result openOnce(const std::string &file);
    [[nodiscard]] Result readVersion(std::int64_t &version);
    [[nodiscard]] Result insert(std::vector<JournalRow> &rows);

    std::unique_ptr<SqliteDatabase> m_database = std::make_unique<SqliteDatabase>();
    std::unique_ptr<SqliteDatabase> m_former; // of a file that is no longer there
    bool m_isDamaged = false;
};

} // namespace Nodes
