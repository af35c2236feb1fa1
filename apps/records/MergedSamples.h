#pragma once

#include "nodes/archive/store/ArchiveReader.h"

#include <atomic>
#include <functional>
#include <vector>

namespace Records {

/// Reads the samples of several signals in the order of their times, those of one time in the order
/// of the ids, in bounded memory.
class MergedSamples
{
public:
    MergedSamples(Nodes::ArchiveReader &reader, std::vector<Nodes::ArchiveSignalKey> signals);

    /// False ends the reading, as a success.
    using Visitor =
        std::function<bool(unsigned long signal, const Nodes::SampleRun &run, std::size_t index)>;
    /// All with `from` <= time <= `to`. Where the archive is damaged the rest is visited, and the
    /// result tells of it.
    [[nodiscard]] Nodes::Result visit(Nodes::Timestamp from, Nodes::Timestamp to,
                                      const Visitor &visitor, const std::atomic<bool> &isCancelled);

private:
    /// Samples of one signal that are held, and where those follow that are not.
    struct Stream
    {
        const Nodes::ArchiveSignalKey *key;
        Nodes::SampleRun held;
        std::size_t next = 0;
        Nodes::Timestamp from = 0;

        Nodes::Timestamp time() const { return held.times[next]; }
        bool isLater(const Stream &other) const;
    };

    [[nodiscard]] Nodes::Result refill(Stream &stream, Nodes::Timestamp to,
                                       const std::atomic<bool> &isCancelled);

    Nodes::ArchiveReader &m_reader;
    const std::vector<Nodes::ArchiveSignalKey> m_signals;
    const std::size_t m_portion; // samples of a signal that are held, about
    Nodes::Result m_damage;
};

} // namespace Records
