#pragma once

#include "nodes/NodesExport.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

namespace Nodes {

/// BLAKE2b over what is added, not keyed.
class Digest
{
public:
    /// `size` of the result, 16 to 64 bytes.
    explicit Digest(std::size_t size);
    ~Digest();
    Digest(const Digest &) = delete;
    Digest &operator=(const Digest &) = delete;

    Digest &Add(std::string_view bytes);
    /// Eight bytes, the lowest first.
    Digest &Add(std::uint64_t number);
    /// Once.
    std::string Finish();

private:
    struct State;

    const std::size_t m_size;
    std::unique_ptr<State> m_state;
};

/// A number that nobody else has drawn, up to 2^62: keys may count up from it. 0 when the system
/// has no randomness.
NODES_EXPORT std::uint64_t RandomStart();

} // namespace Nodes
