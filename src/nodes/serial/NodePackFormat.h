#pragma once

#include <cstddef>

namespace Nodes {

/// Layout of packed nodes: [signature, version, [node, ...]], a node being
/// [kind code, id, name, description, {value id: value}, [[key, text], ...], [child, ...]].
/// Colours are packed as 0xRRGGBBAA, links as ids, resources as paths.
namespace NodePackFormat {

constexpr const char *Signature = "nodes";
constexpr unsigned Version = 1;
constexpr std::size_t NodeFields = 7;
constexpr std::size_t FirstBufferSize = 8192; ///< bytes; grows as needed

// What bytes from outside may ask for at most.
constexpr std::size_t MaximumBytes = std::size_t(64) << 20;
constexpr std::size_t MaximumNodes = 1000000;

} // namespace NodePackFormat

} // namespace Nodes
