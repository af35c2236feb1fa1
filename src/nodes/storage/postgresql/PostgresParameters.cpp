#include "nodes/storage/postgresql/PostgresParameters.h"

namespace Nodes {

namespace {

void appendHex(std::string &text, std::string_view bytes)
{
    static constexpr char digits[] = "0123456789abcdef";
    std::size_t at = text.size();
    text.resize(at + 2 * bytes.size());
    for (const char byte : bytes) {
        text[at++] = digits[static_cast<unsigned char>(byte) >> 4];
        text[at++] = digits[static_cast<unsigned char>(byte) & 15];
    }
}

/// Bytes of the well-formed character at the beginning; 0: there is none.
std::size_t characterLength(std::string_view text)
{
    const auto lead = static_cast<unsigned char>(text[0]);
    if (lead < 0x80)
        return lead == 0 ? 0 : 1;
    const std::size_t length = lead >= 0xF5 ? 0 : lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
    if (lead < 0xC2 || length == 0 || text.size() < length)
        return 0;
    for (std::size_t i = 1; i < length; ++i) {
        if ((static_cast<unsigned char>(text[i]) & 0xC0) != 0x80)
            return 0;
    }
    const auto second = static_cast<unsigned char>(text[1]);
    const bool isOdd = (lead == 0xE0 && second < 0xA0) || (lead == 0xED && second >= 0xA0) ||
                       (lead == 0xF0 && second < 0x90) || (lead == 0xF4 && second >= 0x90);
    return isOdd ? 0 : length;
}

void appendElement(std::string &array, const std::string &element)
{
    array += array.empty() ? "{" : ",";
    array += element;
}

} // namespace

PostgresParameters &PostgresParameters::Add(std::int64_t value)
{
    m_texts.push_back(std::to_string(value));
    return *this;
}

PostgresParameters &PostgresParameters::Add(std::string_view text)
{
    std::string valid;
    valid.reserve(text.size());
    while (!text.empty()) {
        const std::size_t length = characterLength(text);
        if (length == 0)
            valid += '?';
        else
            valid += text.substr(0, length);
        text.remove_prefix(length == 0 ? 1 : length);
    }
    m_texts.push_back(std::move(valid));
    return *this;
}

PostgresParameters &PostgresParameters::AddBytes(std::string_view bytes)
{
    m_texts.emplace_back("\\x");
    appendHex(m_texts.back(), bytes);
    return *this;
}

void PostgresParameters::Integers::Add(std::int64_t value)
{
    appendElement(text, std::to_string(value));
}

void PostgresParameters::ByteStrings::Add(std::string_view bytes)
{
    appendElement(text, "\"\\\\x");
    appendHex(text, bytes);
    text += '"';
}

PostgresParameters &PostgresParameters::Add(const Integers &column)
{
    m_texts.push_back(column.text.empty() ? "{}" : column.text + "}");
    return *this;
}

PostgresParameters &PostgresParameters::Add(const ByteStrings &column)
{
    m_texts.push_back(column.text.empty() ? "{}" : column.text + "}");
    return *this;
}

} // namespace Nodes
