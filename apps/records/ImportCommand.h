#pragma once

#include "apps/common/history/ArchiveWriter.h"
#include "apps/records/OpenedArchive.h"
#include "apps/records/SampleTableReader.h"

#include <cstdint>
#include <map>
#include <set>
#include <string>

namespace Records {

struct RecordsOptions;

/// `records archive import`.
class ImportCommand
{
public:
    explicit ImportCommand(const RecordsOptions &options);

    /// True when all was done; else why not was told.
    [[nodiscard]] bool run();

private:
    /// Samples of one signal that wait for being written.
    struct Series
    {
        Nodes::ArchiveSignalKey key;
        Nodes::SampleRun run;
    };

    [[nodiscard]] Nodes::Result chooseHome();
    [[nodiscard]] Nodes::Result readTable();
    [[nodiscard]] Nodes::Result readRows();
    // False when reading is to end:
    bool take(const SampleRow &row);
    bool takeBad(const std::string &trouble);
    Series *seriesOf(unsigned long signal);
    [[nodiscard]] Nodes::Result writeBatch();
    void showProgress() const;
    void summarize() const;

    const RecordsOptions &m_options;
    OpenedArchive m_archive;
    SampleTableReader m_table;
    Host::ArchiveWriter m_writer;
    Nodes::RecordHome m_home;
    std::map<unsigned long, Series> m_series;
    std::set<unsigned long> m_newSignals;
    std::size_t m_batchBytes = 0;
    std::uint64_t m_rows = 0;
    std::uint64_t m_badRows = 0;
    std::size_t m_firstLine = 0;
    std::size_t m_lastLine = 0;
    std::size_t m_committedLine = 0;
};

} // namespace Records
