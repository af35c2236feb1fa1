#pragma once

#include <cstdint>
#include <vector>

namespace Plant {

/// A complete Modbus TCP frame: MBAP header and PDU.
using Frame = std::vector<std::uint8_t>;

/// The registers (or coils) a write touches.
struct WriteSpan
{
    int address = 0;
    int count = 0; ///< 0: the request writes nothing
    bool coils = false;
};

/// Size of an MBAP header with the function code that follows it.
constexpr std::size_t leastFrame = 8;
/// Longest frame the protocol allows.
constexpr std::size_t longestFrame = 260;

/// Bytes of the frame that begins at @p data, of which @p size are there (7 at least);
/// 0 if this cannot be Modbus TCP and the stream is lost.
std::size_t frameLength(const std::uint8_t *data, std::size_t size);

/// The Modbus exception code that @p frame deserves before anything looks into its fields
/// (unknown function, length that contradicts the quantities), or 0 if it is well-formed.
int malformation(const Frame &frame);

/// What the well-formed @p frame writes.
WriteSpan writeSpan(const Frame &frame);

} // namespace Plant
