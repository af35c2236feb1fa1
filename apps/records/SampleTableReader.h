#pragma once

#include "apps/common/history/CsvReader.h"
#include "apps/records/SampleRow.h"

#include "nodes/values/Result.h"

#include <memory>
#include <string>

namespace Records {

/// Reads a table of samples: a first line `time,signal,value,quality`, then a sample a line.
/// Liberal in how a table may be written (see CsvReader; semicolons or tabs for commas, with
/// decimal commas then; everything quoted), strict in what it says. One thread.
class SampleTableReader
{
public:
    enum class Step {
        Row,
        BadRow, ///< trouble() says why; the next one may be good
        End,
        Failed ///< the table cannot be read, or not from here on; trouble() says why
    };

    /// "-": standard input.
    explicit SampleTableReader(const std::string &path);
    ~SampleTableReader();
    SampleTableReader(const SampleTableReader &) = delete;
    SampleTableReader &operator=(const SampleTableReader &) = delete;

    /// Opens the table and reads its first line.
    [[nodiscard]] Nodes::Result open();
    Step next(SampleRow &row);
    /// "file:line:column: what is wrong; what to do".
    const std::string &trouble() const { return m_trouble; }
    /// First line of the last row.
    std::size_t line() const { return m_reader->line(); }
    /// "file:line".
    std::string place() const { return m_name + ":" + std::to_string(line()); }
    std::size_t bytesRead() const { return m_reader->bytesRead(); }
    /// Bytes of the whole table, 0 when that is not known.
    std::size_t size() const { return m_size; }

private:
    using Field = Host::CsvField;

    Nodes::Result readHeader();
    bool readRow(SampleRow &row);
    bool readTime(const Field &field, SampleRow &row);
    bool readSignal(const Field &field, SampleRow &row);
    bool readQuality(const Field &field, SampleRow &row);
    bool readValue(const Field &field, bool isAllQuoted, SampleRow &row);
    bool readPlainValue(const Field &field, SampleRow &row);
    bool refuse(const Field &field, const std::string &what);
    std::string unreadable() const;

    const std::string m_path;
    const std::string m_name; // as messages call it
    int m_descriptor = -1;
    std::size_t m_size = 0;
    std::unique_ptr<Host::CsvReader> m_reader;
    std::string m_trouble;
};

} // namespace Records
