#pragma once

#include "apps/common/history/ArchiveWriter.h"
#include "apps/records/OpenedArchive.h"

#include "nodes/archive/store/ArchiveFinding.h"

#include <cstdint>
#include <string>

namespace Records {

struct RecordsOptions;

/// `records archive repair`: in the archive itself as far as that goes, which works beside a
/// running station, after a copy was put aside. A file that is no sound database any more is put
/// aside itself, and what can be read of it goes into a new one.
class RepairCommand
{
public:
    explicit RepairCommand(const RecordsOptions &options) : m_options(options) {}

    /// True when the archive is sound now; else why not was told.
    [[nodiscard]] bool run();

private:
    [[nodiscard]] Nodes::Result keepCopy();
    [[nodiscard]] Nodes::Result mend();
    [[nodiscard]] Nodes::Result salvage();
    [[nodiscard]] Nodes::Result takeOver(Nodes::ArchiveReader &damaged,
                                         const Nodes::ArchivedSignal &signal);
    [[nodiscard]] Nodes::Result write(const Nodes::ArchivedSignal &signal,
                                      const Nodes::SampleRun &run);
    bool isSound();

    const RecordsOptions &m_options;
    OpenedArchive m_archive;
    Host::ArchiveWriter m_writer;
    std::uint64_t m_unreadable = 0; // places
};

} // namespace Records
