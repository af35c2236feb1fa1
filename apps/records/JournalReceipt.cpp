#include "apps/records/JournalReceipt.h"

#include <charconv>

namespace Records {

using Nodes::Result;

std::string JournalReceipt::digitsOf(std::string_view bytes)
{
    constexpr const char *digits = "0123456789abcdef";
    std::string text;
    for (const char byte : bytes) {
        text += digits[static_cast<unsigned char>(byte) >> 4];
        text += digits[static_cast<unsigned char>(byte) & 0xF];
    }
    return text;
}

std::string JournalReceipt::format(const Nodes::JournalLink &row)
{
    return std::to_string(row.id) + ':' + digitsOf(row.hash);
}

Result JournalReceipt::parse(std::string_view text, Nodes::JournalLink &row)
{
    const Result bad(Result::ParseError,
                     "\"" + std::string(text) +
                         "\" is no receipt; give the row and its hash as \"records journal head\" "
                         "printed them, like 1024:9f86d0...");
    const std::size_t colon = text.find(':');
    if (colon == std::string_view::npos)
        return bad;
    const char *end = text.data() + colon;
    const auto number = std::from_chars(text.data(), end, row.id);
    row.hash.clear();
    for (std::size_t at = colon + 1; at + 1 < text.size(); at += 2) {
        unsigned byte = 0;
        const char *pair = text.data() + at;
        const auto read = std::from_chars(pair, pair + 2, byte, 16);
        if (read.ec != std::errc() || read.ptr != pair + 2)
            return bad;
        row.hash += static_cast<char>(byte);
    }
    constexpr std::size_t size = Nodes::JournalLink::HashBytes;
    const bool isWhole = row.hash.size() == size && text.size() == colon + 1 + 2 * size;
    return number.ec == std::errc() && number.ptr == end && isWhole ? Result() : bad;
}

} // namespace Records
