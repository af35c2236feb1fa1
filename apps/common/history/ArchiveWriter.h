#pragma once

#include "nodes/archive/store/SamplePacket.h"
#include "nodes/values/Result.h"

#include <cstdint>
#include <memory>
#include <string>

namespace Nodes {
class ArchiveStore;
}

namespace Host {

/// Takes samples into an archive beside whoever else writes into it: in short transactions, waiting
/// for those of others.
/// One thread.
class ArchiveWriter
{
public:
    /// Samples that one transaction holds at most.
    static constexpr std::size_t Portion = 16384;

    ArchiveWriter();
    ~ArchiveWriter();

    /// Makes the archive when there is none. A damaged one is set aside, see setAside().
    [[nodiscard]] Nodes::Result open(const std::string &location);
    /// Where a damaged archive is now that was found by open(); "" when it was sound.
    const std::string &setAside() const { return m_setAside; }

    /// Samples of one signal, ascending; in portions. What was stored before a failure stays.
    [[nodiscard]] Nodes::Result write(const Nodes::ArchiveSignalKey &signal,
                                      const Nodes::SampleRun &run, bool isGenerated);
    /// Stores what write() has gathered for the next transaction.
    [[nodiscard]] Nodes::Result commit();
    /// Likewise, waits for the disk, packs what came in and closes.
    [[nodiscard]] Nodes::Result finish();
    /// Samples that were stored.
    std::uint64_t written() const { return m_written; }

private:
    [[nodiscard]] Nodes::Result add(const Nodes::ArchiveSignalKey &signal,
                                    const Nodes::SampleRun &run, std::size_t begin, std::size_t end,
                                    bool isGenerated);
    [[nodiscard]] Nodes::Result patiently(Nodes::Result (ArchiveWriter::*step)());
    [[nodiscard]] Nodes::Result openOnce();
    [[nodiscard]] Nodes::Result writeOnce();
    [[nodiscard]] Nodes::Result flushOnce();
    void pack();

    std::unique_ptr<Nodes::ArchiveStore> m_store;
    Nodes::SamplePacket m_packet; // of the transaction that is being gathered
    std::string m_bytes;          // packed
    std::uint64_t m_key = 0;      // of the last record
    std::uint64_t m_written = 0;
    std::string m_setAside;
};

} // namespace Host
