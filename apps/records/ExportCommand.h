#pragma once

#include "apps/records/OpenedArchive.h"

#include "nodes/values/Result.h"

#include <cstdint>
#include <vector>

namespace Records {

class OutputFile;
class SampleTableWriter;
struct RecordsOptions;

/// `records archive export`.
class ExportCommand
{
public:
    explicit ExportCommand(const RecordsOptions &options) : m_options(options) {}

    /// True when all was done; else why not was told.
    [[nodiscard]] bool run();

private:
    [[nodiscard]] Nodes::Result chooseSignals();
    [[nodiscard]] Nodes::Result writeSamples(OutputFile &output, SampleTableWriter &writer);
    [[nodiscard]] Nodes::Result writeBuckets(OutputFile &output, SampleTableWriter &writer);
    [[nodiscard]] Nodes::Result writeBlock(SampleTableWriter &writer, Nodes::Timestamp from,
                                           Nodes::Timestamp to, std::size_t count);

    const RecordsOptions &m_options;
    OpenedArchive m_archive;
    std::vector<Nodes::ArchiveSignalKey> m_signals; // by id
    Nodes::Timestamp m_first = 0;                   // of what the archive has of them
    Nodes::Timestamp m_last = 0;
    std::uint64_t m_rows = 0;
};

} // namespace Records
