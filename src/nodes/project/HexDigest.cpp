#include "nodes/project/HexDigest.h"

#include "nodes/storage/Digest.h"

#include <fstream>
#include <vector>

namespace Nodes {

namespace {

constexpr std::size_t digestSize = 16; // bytes

std::string hex(const std::string &bytes)
{
    static constexpr char digits[] = "0123456789abcdef";
    std::string text;
    for (const char c : bytes) {
        const auto byte = static_cast<unsigned char>(c);
        text += digits[byte >> 4];
        text += digits[byte & 15];
    }
    return text;
}

} // namespace

std::string HexDigest(std::string_view bytes)
{
    return hex(Digest(digestSize).Add(bytes).Finish());
}

std::string HexDigestOfFile(const std::string &path)
{
    constexpr std::size_t portion = 1 << 16;
    std::ifstream file(path, std::ios::binary);
    Digest digest(digestSize);
    std::vector<char> bytes(portion);
    if (!file)
        return {};
    while (file.read(bytes.data(), std::streamsize(bytes.size())) || file.gcount() > 0)
        digest.Add({bytes.data(), std::size_t(file.gcount())});
    return file.bad() ? std::string() : hex(digest.Finish());
}

} // namespace Nodes
