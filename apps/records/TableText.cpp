#include "apps/records/TableText.h"

namespace Records {

std::string TableText::quoted(std::string_view text)
{
    std::string result = "\"";
    for (const char letter : text) {
        if (letter == '"')
            result += '"';
        result += letter;
    }
    return result += '"';
}

} // namespace Records
