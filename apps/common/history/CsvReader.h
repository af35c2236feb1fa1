#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace Host {

/// A field of a table, with where it began.
struct CsvField
{
    std::string text; ///< without its quotes, doubled ones taken back
    bool isQuoted = false;
    std::size_t line = 0;   ///< from 1
    std::size_t column = 0; ///< from 1, in characters
};

/// Reads a table of comma-separated values (RFC 4180) from a descriptor, a record at a time, in
/// bounded memory. Lines may end with LF or CR LF and begin with a byte order mark; empty ones are
/// passed over. Blanks around fields that are not quoted do not count. One thread.
class CsvReader
{
public:
    enum class Step {
        Record,
        Fault,     ///< this record is no good; reading goes on behind its line
        End,       ///< nothing follows
        Unreadable ///< the source failed, or reading was interrupted by a signal
    };
    static constexpr std::size_t LongestRecord = 4 << 20; ///< bytes

    /// The descriptor stays the caller's.
    explicit CsvReader(int descriptor);

    Step next();
    /// Of the last record; valid until the next step.
    const std::vector<CsvField> &fields() const { return m_fields; }
    /// Where the last record began, from 1.
    std::size_t line() const { return m_line; }
    /// Bytes taken from the descriptor.
    std::size_t bytesRead() const { return m_bytesRead; }

    /// Of the last fault.
    const std::string &fault() const { return m_fault; }
    std::size_t faultLine() const { return m_faultLine; }
    std::size_t faultColumn() const { return m_faultColumn; }
    /// What the operating system said of a source that is unreadable; EINTR for a signal.
    int error() const { return m_error; }

    /// Takes the semicolon or the tab where the first line has such, but no comma. Before the first
    /// step.
    void guessSeparator();
    char separator() const { return m_separator; }

private:
    enum class Ending { Field, Line, Source, Fault };

    int peek();
    int get();
    bool fill();
    void skipLine();
    void skipMark();
    Ending readField();
    Ending readQuoted(CsvField &field);
    Ending readPlain(CsvField &field);
    Ending fail(std::string what, std::size_t line, std::size_t column);

    const int m_descriptor;
    char m_separator = ',';
    std::vector<char> m_buffer;
    std::size_t m_position = 0;
    std::size_t m_end = 0;
    std::size_t m_bytesRead = 0;
    std::size_t m_recordBytes = 0;
    std::size_t m_inLine = 1; // of the next byte
    std::size_t m_atColumn = 1;
    std::vector<CsvField> m_fields;
    std::size_t m_line = 0;
    std::string m_fault;
    std::size_t m_faultLine = 0;
    std::size_t m_faultColumn = 0;
    int m_error = 0;
    bool m_hasEnded = false;
    bool m_isInFaultyLine = false;
};

} // namespace Host
