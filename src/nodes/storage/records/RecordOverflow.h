#pragma once

#include "nodes/storage/records/RecordSpill.h"

#include <memory>
#include <mutex>
#include <string>
#include <vector>

namespace Nodes {

/// Spill files on other disks, for records that can be written neither to the store nor to the file
/// beside it: files below directories that only this user may write to, filled and read one after
/// the other. Any thread; a call may wait for the disk, or for another call that does, except
/// Count.
class RecordOverflow
{
public:
    explicit RecordOverflow(RecordFormat format) : m_format(std::move(format)) {}

    /// Takes up what an earlier run left there. Nothing is made before it is needed. What was wrong
    /// with a file is added to `findings`.
    void Open(const std::vector<std::string> &directories, const std::string &name,
              RecordFindings &findings);
    bool HasPlace() const { return m_hasPlace; }

    /// All records or none. StorageError when no file takes them, with the reason of the last one.
    [[nodiscard]] Result Append(const Records &records);
    /// The oldest records, up to `count`; none when there are none.
    [[nodiscard]] Result Read(std::size_t count, Records &records);
    /// The records read last are stored. True when none are left.
    bool Drop();

    std::size_t Count() const { return m_count; }
    /// Files that hold records.
    std::vector<std::string> GetFiles() const;

private:
    void count();

    const RecordFormat m_format;
    mutable std::mutex m_mutex;
    std::vector<std::unique_ptr<RecordSpill>> m_spills;
    std::size_t m_offset = 0; // of what was read and dropped, in the first file that holds records
    std::size_t m_readTo = 0;
    std::atomic<bool> m_hasPlace{false};
    std::atomic<std::size_t> m_count{0};
};

} // namespace Nodes
