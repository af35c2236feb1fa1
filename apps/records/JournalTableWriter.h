#pragma once

#include <string>

namespace Nodes {
struct JournalRow;
}

namespace Records {

class OutputFile;

/// A journal as a table: a row for each entry, with all that its hash covers.
class JournalTableWriter
{
public:
    explicit JournalTableWriter(OutputFile &output) : m_output(output) {}

    void writeHeader();
    /// Hashes are binary.
    void write(const Nodes::JournalRow &row, const std::string &previous, const std::string &hash);

private:
    OutputFile &m_output;
};

} // namespace Records
