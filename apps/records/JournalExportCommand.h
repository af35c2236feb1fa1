#pragma once

#include "apps/records/OpenedJournal.h"

#include <cstdint>

namespace Records {

class OutputFile;
struct RecordsOptions;

/// `records journal export`.
class JournalExportCommand
{
public:
    explicit JournalExportCommand(const RecordsOptions &options) : m_options(options) {}

    /// True when the whole table was written.
    [[nodiscard]] bool run();

private:
    [[nodiscard]] Nodes::Result writeRows(OutputFile &output);

    const RecordsOptions &m_options;
    OpenedJournal m_journal;
    std::uint64_t m_rows = 0;
};

} // namespace Records
