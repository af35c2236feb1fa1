#include "nodes/values/JsonText.h"

#include <array>
#include <cstdio>

namespace Nodes {

std::string JsonText(std::string_view text)
{
    std::string result = "\"";
    for (const char letter : text) {
        if (letter == '"' || letter == '\\') {
            result += '\\';
            result += letter;
        } else if (static_cast<unsigned char>(letter) < 0x20) {
            std::array<char, 8> code{};
            std::snprintf(code.data(), code.size(), "\\u%04x", unsigned(letter));
            result += code.data();
        } else {
            result += letter;
        }
    }
    return result += '"';
}

} // namespace Nodes
