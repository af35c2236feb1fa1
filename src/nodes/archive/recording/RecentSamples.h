#pragma once

#include "nodes/NodesExport.h"
#include "nodes/archive/store/SampleRun.h"
#include "nodes/values/Timestamp.h"

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

namespace Nodes {

/// The latest samples of one signal on their way into a store: those that are not in it yet, and
/// some that are, so that readers find neither a hole nor a duplicate between memory and store. Any
/// thread; nobody waits for more than a few samples to be noted.
class NODES_EXPORT RecentSamples
{
public:
    struct Sample
    {
        Timestamp time = 0;
        double number = 0;
        Quality quality = Quality::Good;
        SampleKind kind = SampleKind::Number;
    };
    struct Block;
    /// Samples of one block. They stay as they are while somebody holds them.
    struct Part
    {
        const Sample *begin() const;
        const Sample *end() const;
        /// Text of a sample of the part; "" where it has none.
        const std::string &TextOf(const Sample &sample) const;

        std::shared_ptr<const Block> block;
        std::size_t first = 0; ///< within the block
        std::size_t last = 0;  ///< behind the last one
    };
    using Parts = std::vector<Part>;
    struct Limits
    {
        std::size_t stored = 512; ///< samples that stay although the store has them
        /// That stay for certain while it has them not. A text weighs as many samples here, and
        /// above, as have room in its bytes.
        std::size_t unstored = 10000;
        /// Bytes of all signals beyond which those that are not in the store, but safe elsewhere,
        /// go from memory.
        std::size_t bytes = 64u << 20;
    };
    /// What memory knows of a span. What is before `begin` stands in the store, all of it.
    struct View
    {
        Parts parts;           ///< with the samples before and behind the span
        Timestamp begin = 0;   ///< of the first sample in memory; INT64_MAX when there is none
        Timestamp missing = 0; ///< last time of those that went before they were stored; 0: none
    };

    /// What the signals of one archive share.
    struct Progress
    {
        std::atomic<std::size_t> bytes{0}; ///< of samples that are not stored
        /// Records are stored in the order of their keys: up to this one they are.
        std::atomic<std::uint64_t> storedKey{0};
    };

    RecentSamples(const Limits &limits, std::shared_ptr<Progress> progress);
    ~RecentSamples();

    /// Later than those before. False when so many wait to be taken that it was not kept.
    [[nodiscard]] bool Add(const Sample &sample, std::string text = {});
    /// The oldest samples that were not taken yet, some `most` of them, of texts not much more than
    /// `mostTextBytes`; they are then sent, before the next call.
    Parts Take(std::size_t most, std::size_t mostTextBytes);
    /// The record with that key carries what was taken; 0: it is lost.
    void Send(std::uint64_t key);
    View Look(Timestamp from, Timestamp to) const;
    bool HasUntaken() const;
    /// Of time 0 before the first.
    Sample Last() const;

private:
    struct Range
    {
        std::uint64_t key; // of the record
        std::uint64_t end;
    };

    void noteStored();
    void makeRoom();
    bool mayGo(const Block &oldest) const;
    std::size_t weightBehind(const Block &oldest) const;
    void release(std::uint64_t upTo);

    const Limits m_limits;
    const std::shared_ptr<Progress> m_progress;
    mutable std::mutex m_mutex; // of the rest
    std::deque<std::shared_ptr<Block>> m_blocks;
    // Samples are counted through: up to these they have gone from memory, ...
    std::uint64_t m_begin = 0;
    std::uint64_t m_stored = 0;
    std::uint64_t m_released = 0; // counted in no bytes
    std::size_t m_textBytes = 0;  // of the blocks
    std::uint64_t m_sent = 0;
    std::uint64_t m_taken = 0;
    std::uint64_t m_end = 0;
    std::deque<Range> m_underWay; // ascending
    Timestamp m_missing = 0;
    std::uint64_t m_missingKey = 0; // of the record that carries the last of those
    Sample m_last{0, 0, Quality::Bad, SampleKind::Gap};
};

/// Whether nothing is known of the signal from that sample on.
NODES_EXPORT bool IsGap(const RecentSamples::Sample &sample);

} // namespace Nodes
