#pragma once

#include "nodes/NodesExport.h"
#include "nodes/storage/records/Record.h"
#include "nodes/storage/records/RecordFinding.h"
#include "nodes/values/Result.h"

#include <atomic>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace Nodes {

/// File that takes records while their store cannot: see RecordFrame. It stays open while it holds
/// records, so that they can be read even after somebody deleted it. Used by one thread at a time;
/// the count by any.
class NODES_EXPORT RecordSpill
{
public:
    explicit RecordSpill(RecordFormat format) : m_format(std::move(format)) {}
    ~RecordSpill();
    RecordSpill(const RecordSpill &) = delete;
    RecordSpill &operator=(const RecordSpill &) = delete;

    static constexpr std::size_t mostCopies = 10;

    /// Takes up what an earlier run left. What follows the last whole record (power loss, damage)
    /// is cut off after the whole file was copied to "<file>.damaged-<UTC time>", and told of in
    /// `findings`. Refused when it holds the records of somebody else or of a later version. After
    /// a failure the file is neither read nor written until it is opened again.
    [[nodiscard]] Result Open(const std::string &file, RecordFindings &findings);
    bool IsEmpty() const { return m_count == 0; }
    std::size_t Count() const { return m_count; }
    const std::string &GetFile() const { return m_file; }
    /// The file was deleted while it held records: they are in memory of the system only.
    bool IsGone() const;
    /// Writes the records of a deleted file to the file again.
    [[nodiscard]] Result Recreate();
    /// All records or none, on the disk when it returns.
    [[nodiscard]] Result Append(const Records &records);
    /// Up to `count` records, some megabytes at most, from `offset` on, which is moved behind them;
    /// no records at the end.
    [[nodiscard]] Result Read(std::size_t &offset, std::size_t count, Records &records) const;
    bool IsReadTo(std::size_t offset) const { return offset >= m_size; }
    [[nodiscard]] Result Clear();

private:
    /// Records of one version.
    struct Segment
    {
        std::size_t begin;
        std::size_t records;                  // where the first one stands
        std::optional<std::uint32_t> version; // none: from before files named it
    };

    Result failure(const char *what) const;
    void close();
    [[nodiscard]] Result openFile();
    [[nodiscard]] Result scan(bool &isSound);
    [[nodiscard]] Result readHeader(std::size_t &offset, bool &isHeader);
    void cut(RecordFindings &findings);
    std::string_view view(std::size_t offset, std::size_t size) const;
    std::optional<std::string_view> readFrame(std::size_t &offset) const;
    std::optional<Record> readRecord(std::size_t &offset) const;

    const RecordFormat m_format;
    std::string m_file;
    Result m_refusal;      // success unless the file must not be touched
    int m_descriptor = -1; // open while there are records
    std::vector<Segment> m_segments;
    mutable std::string m_window; // bytes of the file from m_windowBegin on
    mutable std::size_t m_windowBegin = 0;
    std::size_t m_size = 0;
    std::atomic<std::size_t> m_count{0};
};

} // namespace Nodes
