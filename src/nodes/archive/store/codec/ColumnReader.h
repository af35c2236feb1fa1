#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace Nodes {

/// Reads what ColumnWriter wrote, in the same order. Bytes that were not are noticed where they
/// lead out of the columns; from then on everything reads as zeros.
class ColumnReader
{
public:
    explicit ColumnReader(std::string_view bytes) : m_bytes(bytes) {}

    bool IsSound() const { return m_isSound; }
    bool IsAtEnd() const { return m_bytes.empty(); }

    std::uint64_t GetVarint();
    std::int64_t GetSigned();
    std::string_view GetBytes();
    /// The vectors are filled with `count` elements.
    void GetIntegers(std::size_t count, unsigned order, std::vector<std::int64_t> &numbers,
                     std::int64_t base = 0);
    void GetNumbers(std::size_t count, std::vector<double> &numbers);
    void GetRepeats(std::size_t count, std::vector<std::uint8_t> &values);

private:
    std::string_view take(std::size_t count);
    std::uint8_t getByte();
    void getPlanes(std::size_t count, std::uint64_t *words);
    void getBits(std::vector<double> &numbers);

    std::string_view m_bytes;
    bool m_isSound = true;
    std::vector<std::int64_t> m_scaled; // kept for its memory
};

} // namespace Nodes
