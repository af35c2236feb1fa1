#include "nodes/project/signals/DelimitedText.h"

#include "nodes/serial/Utf8.h"

#include <algorithm>
#include <array>

namespace Nodes::DelimitedText {

namespace {

/// Takes the text apart, field by field.
class Scanner
{
public:
    Scanner(std::string_view text, char separator) : m_text(text), m_separator(separator) {}

    bool isAtEnd() const { return m_position >= m_text.size(); }
    std::size_t line() const { return m_line; }

    /// False when a quote is never closed.
    bool readRow(std::vector<std::string> &row)
    {
        for (;;) {
            row.emplace_back();
            if (!readField(row.back()))
                return false;
            if (isAtEnd() || m_text[m_position] != m_separator)
                break;
            ++m_position;
        }
        skipLineEnd();
        return true;
    }

private:
    bool readField(std::string &field)
    {
        if (!isAtEnd() && m_text[m_position] == '"' && !readQuoted(field))
            return false;
        // Also what follows a closing quote: no spreadsheet writes it, people do.
        while (!isAtEnd() && !isFieldEnd(m_text[m_position]))
            field += m_text[m_position++];
        return true;
    }
    bool readQuoted(std::string &field)
    {
        for (++m_position; !isAtEnd(); ++m_position) {
            const char c = m_text[m_position];
            m_line += c == '\n';
            if (c == '"') {
                ++m_position;
                if (isAtEnd() || m_text[m_position] != '"')
                    return true;
            }
            field += c;
        }
        return false;
    }
    bool isFieldEnd(char c) const { return c == m_separator || c == '\n' || c == '\r'; }
    void skipLineEnd()
    {
        if (!isAtEnd() && m_text[m_position] == '\r')
            ++m_position;
        if (!isAtEnd() && m_text[m_position] == '\n')
            ++m_position;
        ++m_line;
    }

    std::string_view m_text;
    char m_separator;
    std::size_t m_position = 0;
    std::size_t m_line = 1;
};

std::string_view withoutMark(std::string_view text)
{
    if (text.substr(0, ByteOrderMark.size()) == ByteOrderMark)
        text.remove_prefix(ByteOrderMark.size());
    return text;
}

void append(std::string &text, const std::string &field, char separator)
{
    const char special[] = {separator, '"', '\n', '\r', '\0'};
    const bool isBlankEdged = !field.empty() && (field.front() == ' ' || field.back() == ' ');
    if (field.find_first_of(special) == std::string::npos && !isBlankEdged) {
        text += field;
        return;
    }
    text += '"';
    for (const char c : field)
        text.append(c == '"' ? 2 : 1, c);
    text += '"';
}

} // namespace

char RecogniseSeparator(std::string_view text)
{
    constexpr std::array<char, 3> known{'\t', ';', ','};
    std::array<std::size_t, 3> counts{};
    bool isQuoted = false;
    bool mayOpen = true; // at the start of a field or behind a quote: elsewhere it is an inch
    for (const char c : withoutMark(text)) {
        const bool isOpening = mayOpen && !isQuoted;
        mayOpen = std::find(known.begin(), known.end(), c) != known.end() || (c == '"' && isQuoted);
        if (c == '"')
            isQuoted = isOpening;
        else if (c == '\n' && !isQuoted)
            break;
        else if (const auto found = std::find(known.begin(), known.end(), c);
                 found != known.end() && !isQuoted)
            ++counts[std::size_t(found - known.begin())];
    }
    // A tab or a semicolon is never part of a number, a comma is.
    const auto most = counts[0] + counts[1] > 0
                          ? std::max_element(counts.begin(), counts.begin() + 2)
                          : std::max_element(counts.begin(), counts.end());
    return known[std::size_t(most - counts.begin())];
}

Result Read(std::string_view text, char separator, TextTable &table)
{
    table.clear();
    text = withoutMark(text);
    if (const auto invalid = FindInvalidUtf8(text)) {
        const auto line = 1 + std::count(text.begin(), text.begin() + long(*invalid), '\n');
        return Result(Result::ParseError,
                      "строка " + std::to_string(line) +
                          ": текст не в кодировке UTF-8; сохраните таблицу как «CSV UTF-8»");
    }
    Scanner scanner(text, separator);
    while (!scanner.isAtEnd()) {
        const std::size_t line = scanner.line();
        if (scanner.readRow(table.emplace_back()))
            continue;
        table.clear();
        return Result(Result::ParseError,
                      "строка " + std::to_string(line) +
                          ": кавычки открыты и нигде не закрыты; закройте их или удвойте");
    }
    return Result();
}

std::string Write(const TextTable &table, char separator, std::string_view lineEnd)
{
    std::string text;
    for (const auto &row : table) {
        for (std::size_t column = 0; column < row.size(); ++column) {
            if (column > 0)
                text += separator;
            append(text, row[column], separator);
        }
        text += lineEnd;
    }
    return text;
}

} // namespace Nodes::DelimitedText
