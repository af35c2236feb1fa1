#include "widgets/eventlist/EventTextKey.h"

#include <QChar>

#include <array>

namespace Widgets {

namespace {

constexpr char32_t broken = 0xfffd;
constexpr std::size_t tableSize = 0x460; // Latin up to Cyrillic
// Begins a character of no byte of its own; five digits to the base of 32 follow, which are above
// it, so that no part of them looks like another key.
constexpr unsigned char escape = 0xdf;
constexpr unsigned char firstDigit = 0xe0;

using Table = std::array<unsigned char, tableSize>;

Table makeTable()
{
    constexpr char32_t signs[] = U" _-,;:!?./'\"()[]{}@*\\&#%`^+<=>|~$«»°±²³·§©®";
    constexpr char32_t letters[] = U"0123456789abcdefghijklmnopqrstuvwxyz"
                                   U"абвгдеёжзийклмнопрстуфхцчшщъыьэюя";
    Table table{};
    unsigned char next = 1;
    for (const char32_t *set : {signs, letters}) {
        for (const char32_t *sign = set; *sign; ++sign)
            table[*sign] = next++;
    }
    for (char32_t control = 0; control < U' '; ++control)
        table[control] = table[U' '];
    for (char32_t sign = U' '; sign < tableSize; ++sign) {
        const char32_t small = QChar::toLower(uint(sign));
        if (table[sign] == 0 && small < tableSize)
            table[sign] = table[small];
    }
    return table;
}

/// Takes one character off the text.
char32_t takeCharacter(std::string_view &text)
{
    const auto first = static_cast<unsigned char>(text.front());
    const std::size_t length = first < 0x80 ? 1 : first < 0xe0 ? 2 : first < 0xf0 ? 3 : 4;
    const bool isBegin = first < 0x80 || (first >= 0xc2 && first < 0xf5);
    char32_t sign = length == 1 ? first : first & (0x7fu >> length);
    bool isWhole = isBegin && text.size() >= length;
    for (std::size_t i = 1; isWhole && i < length; ++i) {
        const auto byte = static_cast<unsigned char>(text[i]);
        isWhole = (byte & 0xc0) == 0x80;
        sign = (sign << 6) | (byte & 0x3f);
    }
    text.remove_prefix(isWhole ? length : 1);
    return isWhole ? sign : broken;
}

} // namespace

void AppendEventTextKey(std::string_view text, std::string &key)
{
    static const Table table = makeTable();
    while (!text.empty()) {
        const char32_t sign = takeCharacter(text);
        const unsigned char byte = sign < tableSize ? table[sign] : 0;
        if (byte != 0) {
            key.push_back(char(byte));
            continue;
        }
        const char32_t small = QChar::toLower(uint(sign));
        key.push_back(char(escape));
        for (int shift = 20; shift >= 0; shift -= 5)
            key.push_back(char(firstDigit + ((small >> shift) & 31)));
    }
}

std::string EventTextKey(std::string_view text)
{
    std::string key;
    key.reserve(text.size());
    AppendEventTextKey(text, key);
    return key;
}

} // namespace Widgets
