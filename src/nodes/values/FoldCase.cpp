#include "nodes/values/FoldCase.h"

namespace Nodes {

namespace {

/// Code points below U+0800: those of two UTF-8 bytes.
unsigned lowered(unsigned code)
{
    const bool isLatin = code >= 0xC0 && code <= 0xDE && code != 0xD7;
    const bool isCyrillic = code >= 0x410 && code <= 0x42F;
    if (isLatin || isCyrillic)
        return code + 0x20;
    if (code >= 0x400 && code <= 0x40F)
        return code + 0x50;
    return code;
}

} // namespace

std::string FoldCase(std::string_view text)
{
    std::string folded(text);
    for (std::size_t i = 0; i < folded.size(); ++i) {
        const auto lead = static_cast<unsigned char>(folded[i]);
        if (lead >= 'A' && lead <= 'Z') {
            folded[i] = static_cast<char>(lead + 0x20);
        } else if (lead >= 0xC3 && lead <= 0xDF && i + 1 < folded.size()) {
            const auto next = static_cast<unsigned char>(folded[i + 1]);
            if ((next & 0xC0) != 0x80)
                continue;
            const unsigned code = lowered((lead & 0x1Fu) << 6 | (next & 0x3Fu));
            folded[i] = static_cast<char>(0xC0 | code >> 6);
            folded[++i] = static_cast<char>(0x80 | (code & 0x3F));
        }
    }
    return folded;
}

} // namespace Nodes
