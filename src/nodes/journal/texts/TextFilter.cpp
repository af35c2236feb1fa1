#include "nodes/journal/texts/TextFilter.h"

#include "nodes/values/FoldCase.h"

#include <algorithm>

namespace Nodes {

namespace {

constexpr std::size_t bitsForEach = 8; // one in eight of what was not added seems to be there
constexpr std::size_t leastBytes = 64;
constexpr std::size_t mostBytes = 8192;
constexpr int lettersInRow = 3;

bool continuesLetter(char byte)
{
    return (static_cast<unsigned char>(byte) & 0xC0) == 0x80;
}

/// By its first byte alone, so that damaged UTF-8 is parted alike wherever it stands.
std::size_t bytesOfLetter(char byte)
{
    const auto lead = static_cast<unsigned char>(byte);
    if (lead < 0xC0)
        return 1;
    return lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
}

/// Of the letters in a row that begin there; 0: too few follow.
std::size_t bytesOfRow(std::string_view text, std::size_t begin)
{
    std::size_t end = begin;
    for (int letter = 0; letter < lettersInRow; ++letter) {
        if (end >= text.size())
            return 0;
        end += bytesOfLetter(text[end]);
    }
    return end <= text.size() ? end - begin : 0;
}

std::uint32_t hashOf(std::string_view row)
{
    std::uint32_t hash = 2166136261u; // FNV-1a
    for (const char byte : row)
        hash = (hash ^ static_cast<unsigned char>(byte)) * 16777619u;
    return hash ^ hash >> 15; // its low bits alone are poor
}

void appendHashes(std::string_view text, std::vector<std::uint32_t> &hashes)
{
    const std::string folded = FoldCase(text);
    const std::string_view view = folded;
    for (std::size_t i = 0; i < view.size(); ++i) {
        const std::size_t bytes = continuesLetter(view[i]) ? 0 : bytesOfRow(view, i);
        if (bytes > 0)
            hashes.push_back(hashOf(view.substr(i, bytes)));
    }
}

/// A power of two.
std::size_t bytesFor(std::size_t distinct)
{
    std::size_t bytes = leastBytes;
    while (bytes < mostBytes && bytes * 8 < distinct * bitsForEach)
        bytes *= 2;
    return bytes;
}

} // namespace

TextFilter::Wanted::Wanted(std::string_view text)
{
    appendHashes(text, m_hashes);
}

void TextFilter::Add(std::string_view text)
{
    if (m_texts.emplace(text).second)
        appendHashes(text, m_hashes);
}

std::string TextFilter::Pack() const
{
    std::vector<std::uint32_t> hashes = m_hashes;
    std::sort(hashes.begin(), hashes.end());
    hashes.erase(std::unique(hashes.begin(), hashes.end()), hashes.end());
    std::string packed(bytesFor(hashes.size()), '\0');
    const std::size_t mask = packed.size() * 8 - 1;
    for (const std::uint32_t hash : hashes)
        packed[(hash & mask) / 8] |= static_cast<char>(1u << (hash & 7));
    return packed;
}

bool TextFilter::MayHold(std::string_view packed, const Wanted &wanted)
{
    const bool isFilter = packed.size() >= leastBytes && (packed.size() & (packed.size() - 1)) == 0;
    if (!isFilter)
        return true;
    const std::size_t mask = packed.size() * 8 - 1;
    return std::all_of(wanted.m_hashes.begin(), wanted.m_hashes.end(), [&](std::uint32_t hash) {
        return (static_cast<unsigned char>(packed[(hash & mask) / 8]) >> (hash & 7) & 1) != 0;
    });
}

} // namespace Nodes
