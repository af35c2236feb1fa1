#include "nodes/storage/Digest.h"

#include <sodium.h>

namespace Nodes {

struct Digest::State
{
    crypto_generichash_state state;
};

Digest::Digest(std::size_t size) : m_size(size), m_state(std::make_unique<State>())
{
    crypto_generichash_init(&m_state->state, nullptr, 0, size);
}

Digest::~Digest() = default;

Digest &Digest::Add(std::string_view bytes)
{
    crypto_generichash_update(&m_state->state,
                              reinterpret_cast<const unsigned char *>(bytes.data()), bytes.size());
    return *this;
}

Digest &Digest::Add(std::uint64_t number)
{
    char bytes[8];
    for (unsigned i = 0; i < sizeof bytes; ++i)
        bytes[i] = static_cast<char>(number >> (8 * i) & 0xFF);
    return Add(std::string_view(bytes, sizeof bytes));
}

std::string Digest::Finish()
{
    std::string hash(m_size, '\0');
    crypto_generichash_final(&m_state->state, reinterpret_cast<unsigned char *>(hash.data()),
                             m_size);
    return hash;
}

std::uint64_t RandomStart()
{
    std::uint64_t number = 0;
    if (sodium_init() >= 0)
        randombytes_buf(&number, sizeof number);
    return number >> 2;
}

} // namespace Nodes
