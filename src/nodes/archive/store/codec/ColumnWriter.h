#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace Nodes {

/// Writes columns of numbers as bytes that are small and, more so, that a compressor behind makes
/// small: see docs/archive.md, "Columns". How many there are ColumnReader has to be told.
class ColumnWriter
{
public:
    void PutVarint(std::uint64_t number);
    void PutSigned(std::int64_t number);
    void PutBytes(std::string_view bytes); ///< with their length
    /// Residuals: of order 0 the numbers, of 1 their differences, of 2 the differences of those.
    /// The first difference is the one to `base`.
    void PutIntegers(const std::vector<std::int64_t> &numbers, unsigned order,
                     std::int64_t base = 0);
    /// Exactly, bit by bit, but for the sign of a zero and what a NaN holds.
    void PutNumbers(const std::vector<double> &numbers);
    void PutRepeats(const std::vector<std::uint8_t> &values);

    const std::string &Bytes() const { return m_bytes; }
    std::string Take() { return std::move(m_bytes); }

private:
    void putPlanes(const std::vector<std::uint64_t> &words);
    void putGaps(const std::vector<double> &numbers);

    std::string m_bytes;
};

} // namespace Nodes
