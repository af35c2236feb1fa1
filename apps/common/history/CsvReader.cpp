#include "apps/common/history/CsvReader.h"

#include <cerrno>
#include <string_view>

#include <unistd.h>

namespace Host {

namespace {

constexpr std::size_t bufferSize = 1 << 18;
constexpr int noMore = -1;

bool beginsCharacter(int byte)
{
    return (byte & 0xc0) != 0x80;
}

void trim(std::string &text)
{
    const std::size_t last = text.find_last_not_of(" \t\r");
    text.erase(last == std::string::npos ? 0 : last + 1);
    text.erase(0, text.find_first_not_of(" \t"));
}

} // namespace

CsvReader::CsvReader(int descriptor) : m_descriptor(descriptor), m_buffer(bufferSize) {}

bool CsvReader::fill()
{
    if (m_hasEnded || m_error != 0)
        return false;
    const ssize_t size = ::read(m_descriptor, m_buffer.data(), m_buffer.size());
    if (size < 0)
        m_error = errno;
    m_hasEnded = size == 0;
    m_position = 0;
    m_end = size > 0 ? std::size_t(size) : 0;
    m_bytesRead += m_end;
    return m_end > 0;
}

int CsvReader::peek()
{
    if (m_position == m_end && !fill())
        return noMore;
    return static_cast<unsigned char>(m_buffer[m_position]);
}

int CsvReader::get()
{
    const int byte = peek();
    if (byte == noMore)
        return byte;
    ++m_position;
    ++m_recordBytes;
    if (byte == '\n') {
        ++m_inLine;
        m_atColumn = 1;
    } else if (beginsCharacter(byte)) {
        ++m_atColumn;
    }
    return byte;
}

void CsvReader::skipMark()
{
    if (m_inLine != 1 || m_atColumn != 1 || peek() != 0xef)
        return;
    for (const int byte : {0xef, 0xbb, 0xbf}) {
        if (peek() == byte)
            get();
    }
    m_atColumn = 1;
}

void CsvReader::guessSeparator()
{
    if (peek() == noMore)
        return;
    const std::string_view bytes(m_buffer.data() + m_position, m_end - m_position);
    const std::string_view first = bytes.substr(0, bytes.find('\n'));
    for (const char separator : {'\t', ';', ','}) {
        if (first.find(separator) != std::string_view::npos)
            m_separator = separator;
    }
}

void CsvReader::skipLine()
{
    for (int byte = get(); byte != '\n' && byte != noMore;)
        byte = get();
}

CsvReader::Step CsvReader::next()
{
    if (m_isInFaultyLine)
        skipLine();
    m_isInFaultyLine = false;
    skipMark();
    while (peek() == '\n' || peek() == '\r')
        get();
    m_fields.clear();
    m_recordBytes = 0;
    m_line = m_inLine;
    if (peek() == noMore)
        return m_error != 0 ? Step::Unreadable : Step::End;
    Ending ending = Ending::Field;
    while (ending == Ending::Field)
        ending = readField();
    if (m_error != 0)
        return Step::Unreadable;
    return ending == Ending::Fault ? Step::Fault : Step::Record;
}

CsvReader::Ending CsvReader::readField()
{
    while (peek() == ' ')
        get();
    CsvField &field = m_fields.emplace_back();
    field.line = m_inLine;
    field.column = m_atColumn;
    field.isQuoted = peek() == '"';
    return field.isQuoted ? readQuoted(field) : readPlain(field);
}

CsvReader::Ending CsvReader::readPlain(CsvField &field)
{
    for (int byte = get();; byte = get()) {
        if (byte == m_separator || byte == '\n' || byte == noMore) {
            trim(field.text);
            return byte == m_separator ? Ending::Field
                   : byte == '\n'      ? Ending::Line
                                       : Ending::Source;
        }
        if (byte == '"')
            return fail("a quote within a field; put the whole field in quotes and double those "
                        "inside",
                        m_inLine, m_atColumn - 1);
        if (m_recordBytes > LongestRecord)
            return fail("the line has more than 4 MB", m_line, 1);
        field.text += char(byte);
    }
}

CsvReader::Ending CsvReader::readQuoted(CsvField &field)
{
    get();
    for (int byte = get();; byte = get()) {
        if (byte == noMore)
            return fail("the quote that begins here is never closed", field.line, field.column);
        if (byte == '"' && peek() != '"')
            break;
        if (byte == '"')
            get();
        if (m_recordBytes > LongestRecord)
            return fail("the quote that begins here is not closed within 4 MB", field.line,
                        field.column);
        field.text += char(byte);
    }
    while (peek() == ' ' || peek() == '\r')
        get();
    const int byte = peek();
    if (byte != m_separator && byte != '\n' && byte != noMore)
        return fail("something follows the closing quote; quotes within a text are doubled",
                    m_inLine, m_atColumn);
    get();
    return byte == m_separator ? Ending::Field : byte == '\n' ? Ending::Line : Ending::Source;
}

CsvReader::Ending CsvReader::fail(std::string what, std::size_t line, std::size_t column)
{
    m_fault = std::move(what);
    m_faultLine = line;
    m_faultColumn = column;
    m_isInFaultyLine = true;
    return Ending::Fault;
}

} // namespace Host
