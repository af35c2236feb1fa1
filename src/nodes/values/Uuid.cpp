#include "nodes/values/Uuid.h"

#include <sodium.h>

#include <array>
#include <cctype>

namespace Nodes {

namespace {

using Bytes = std::array<unsigned char, 16>;

std::string textOf(Bytes bytes, unsigned char version)
{
    bytes[6] = static_cast<unsigned char>((bytes[6] & 0x0f) | (version << 4));
    bytes[8] = static_cast<unsigned char>((bytes[8] & 0x3f) | 0x80);
    std::string hex(2 * bytes.size() + 1, '\0');
    sodium_bin2hex(hex.data(), hex.size(), bytes.data(), bytes.size());
    hex.pop_back(); // the terminator
    for (const std::size_t dash : {8u, 13u, 18u, 23u})
        hex.insert(dash, 1, '-');
    return hex;
}

} // namespace

std::string RandomUuid()
{
    // Without it libsodium may not have a source of randomness yet.
    static const bool isReady = sodium_init() >= 0;
    (void)isReady;
    Bytes bytes;
    randombytes_buf(bytes.data(), bytes.size());
    return textOf(bytes, 4);
}

std::string UuidOfName(std::string_view name)
{
    Bytes bytes;
    crypto_generichash(bytes.data(), bytes.size(),
                       reinterpret_cast<const unsigned char *>(name.data()), name.size(), nullptr,
                       0);
    return textOf(bytes, 8);
}

bool IsUuid(std::string_view text)
{
    if (text.size() != 36)
        return false;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool isDash = i == 8 || i == 13 || i == 18 || i == 23;
        const bool isHex = std::isxdigit(static_cast<unsigned char>(text[i])) != 0;
        if (isDash ? text[i] != '-' : !isHex)
            return false;
    }
    return true;
}

} // namespace Nodes
