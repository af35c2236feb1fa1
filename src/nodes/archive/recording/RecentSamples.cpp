#include "nodes/archive/recording/RecentSamples.h"

#include "nodes/archive/QualityOrder.h"

#include <algorithm>
#include <limits>

namespace Nodes {

namespace {

constexpr std::size_t smallBlock = 32;
constexpr std::size_t largeBlock = 4096;
constexpr std::size_t fullOfTexts = 64u << 10;  // bytes, of a block
constexpr std::uint64_t mostUntaken = 4u << 20; // 96 MB: whoever takes them does not run any more

} // namespace

/// Never grows, so that what was written stays where it is; who holds a part reads no count.
struct RecentSamples::Block
{
    Block(std::size_t size, bool hasTexts)
        : capacity(size),
          samples(std::make_unique<Sample[]>(size)),
          texts(hasTexts ? std::make_unique<std::string[]>(size) : nullptr)
    {
    }

    const std::size_t capacity;
    std::size_t count = 0;
    std::size_t textBytes = 0;
    const std::unique_ptr<Sample[]> samples;
    const std::unique_ptr<std::string[]> texts;
};

const RecentSamples::Sample *RecentSamples::Part::begin() const
{
    return block->samples.get() + first;
}

const RecentSamples::Sample *RecentSamples::Part::end() const
{
    return block->samples.get() + last;
}

const std::string &RecentSamples::Part::TextOf(const Sample &sample) const
{
    static const std::string none;
    return block->texts ? block->texts[std::size_t(&sample - block->samples.get())] : none;
}

bool IsGap(const RecentSamples::Sample &sample)
{
    return sample.kind == SampleKind::Gap || !IsKnown(sample.quality);
}

RecentSamples::RecentSamples(const Limits &limits, std::shared_ptr<Progress> progress)
    : m_limits(limits), m_progress(std::move(progress))
{
}

RecentSamples::~RecentSamples()
{
    release(m_end);
    m_progress->bytes.fetch_sub(m_textBytes, std::memory_order_relaxed);
}

void RecentSamples::release(std::uint64_t upTo)
{
    if (upTo <= m_released)
        return;
    m_progress->bytes.fetch_sub((upTo - m_released) * sizeof(Sample), std::memory_order_relaxed);
    m_released = upTo;
}

void RecentSamples::noteStored()
{
    const std::uint64_t key = m_progress->storedKey.load(std::memory_order_acquire);
    while (!m_underWay.empty() && m_underWay.front().key <= key) {
        m_stored = m_underWay.front().end;
        m_underWay.pop_front();
    }
    if (m_missingKey <= key)
        m_missing = 0;
    release(m_stored);
}

bool RecentSamples::Add(const Sample &sample, std::string text)
{
    const std::lock_guard lock(m_mutex);
    if (m_end - m_taken >= mostUntaken)
        return false;
    const bool needsTexts = sample.kind == SampleKind::Text;
    const Block *last = m_blocks.empty() ? nullptr : m_blocks.back().get();
    const bool isUnfit = last && needsTexts && (!last->texts || last->textBytes >= fullOfTexts);
    if (!last || last->count == last->capacity || isUnfit) {
        makeRoom();
        const bool areMany = !needsTexts && m_end - m_begin >= largeBlock;
        m_blocks.push_back(std::make_shared<Block>(areMany ? largeBlock : smallBlock, needsTexts));
    }
    Block &block = *m_blocks.back();
    if (needsTexts) {
        block.textBytes += text.size();
        m_textBytes += text.size();
        m_progress->bytes.fetch_add(text.size(), std::memory_order_relaxed);
        block.texts[block.count] = std::move(text);
    }
    block.samples[block.count++] = sample;
    m_last = sample;
    ++m_end;
    m_progress->bytes.fetch_add(sizeof(Sample), std::memory_order_relaxed);
    return true;
}

std::size_t RecentSamples::weightBehind(const Block &oldest) const
{
    const std::uint64_t left = m_end - m_begin - oldest.count;
    return std::size_t(left) + (m_textBytes - oldest.textBytes) / sizeof(Sample);
}

/// When enough stay without it and the store has it; or, when memory is short, something else that
/// is safe.
bool RecentSamples::mayGo(const Block &oldest) const
{
    const std::uint64_t end = m_begin + oldest.count;
    const std::size_t left = weightBehind(oldest);
    if (end <= m_stored)
        return left >= m_limits.stored;
    const bool isShort = m_progress->bytes.load(std::memory_order_relaxed) > m_limits.bytes;
    return end <= m_sent && isShort && left >= m_limits.unstored;
}

void RecentSamples::makeRoom()
{
    noteStored();
    while (m_blocks.size() > 1 && mayGo(*m_blocks.front())) {
        const Block &oldest = *m_blocks.front();
        m_begin += oldest.count;
        if (m_begin > m_stored) {
            m_missing = oldest.samples[oldest.count - 1].time;
            const auto carrier = std::find_if(m_underWay.begin(), m_underWay.end(),
                                              [this](const Range &r) { return r.end >= m_begin; });
            m_missingKey = carrier == m_underWay.end() ? 0 : carrier->key;
            release(m_begin);
        }
        m_textBytes -= oldest.textBytes;
        m_progress->bytes.fetch_sub(oldest.textBytes, std::memory_order_relaxed);
        m_blocks.pop_front();
    }
    // Of records that carry nothing that is still in memory.
    while (!m_underWay.empty() && m_underWay.front().end <= m_begin)
        m_underWay.pop_front();
}

RecentSamples::Parts RecentSamples::Take(std::size_t most, std::size_t mostTextBytes)
{
    Parts parts;
    std::size_t textBytes = 0;
    const std::lock_guard lock(m_mutex);
    noteStored();
    const std::uint64_t limit = m_taken + most;
    std::uint64_t begin = m_begin;
    for (const auto &block : m_blocks) {
        const std::uint64_t end = begin + block->count;
        if (end > m_taken && m_taken < limit && textBytes < mostTextBytes) {
            textBytes += block->textBytes;
            parts.push_back({block, std::size_t(m_taken - begin), block->count});
            m_taken = end;
        }
        begin = end;
    }
    return parts;
}

void RecentSamples::Send(std::uint64_t key)
{
    const std::lock_guard lock(m_mutex);
    if (m_taken > m_sent && key != 0)
        m_underWay.push_back({key, m_taken});
    m_sent = m_taken;
}

RecentSamples::View RecentSamples::Look(Timestamp from, Timestamp to) const
{
    View view;
    const std::lock_guard lock(m_mutex);
    if (m_missingKey > m_progress->storedKey.load(std::memory_order_acquire))
        view.missing = m_missing;
    view.begin = m_blocks.empty() ? std::numeric_limits<Timestamp>::max()
                                  : m_blocks.front()->samples[0].time;
    for (const auto &block : m_blocks) {
        if (block->samples[0].time < from)
            view.parts.clear(); // only the last that begins before it can hold the sample before
        if (!view.parts.empty() && (view.parts.back().end() - 1)->time > to)
            break;
        view.parts.push_back({block, 0, block->count});
    }
    return view;
}

bool RecentSamples::HasUntaken() const
{
    const std::lock_guard lock(m_mutex);
    return m_taken < m_end;
}

RecentSamples::Sample RecentSamples::Last() const
{
    const std::lock_guard lock(m_mutex);
    return m_last;
}

} // namespace Nodes
