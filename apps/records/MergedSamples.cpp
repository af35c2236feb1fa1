#include "apps/records/MergedSamples.h"

#include <algorithm>
#include <tuple>

namespace Records {

namespace {

using Nodes::Result;
using Nodes::Timestamp;

constexpr std::size_t mostHeld = 4000000; // samples of all signals
constexpr std::size_t leastPortion = 256;
constexpr std::size_t mostPortion = 65536;

} // namespace

MergedSamples::MergedSamples(Nodes::ArchiveReader &reader,
                             std::vector<Nodes::ArchiveSignalKey> signals)
    : m_reader(reader),
      m_signals(std::move(signals)),
      m_portion(std::clamp(mostHeld / (m_signals.size() + 1), leastPortion, mostPortion))
{
}

bool MergedSamples::Stream::isLater(const Stream &other) const
{
    return std::make_tuple(time(), key->source.node) >
           std::make_tuple(other.time(), other.key->source.node);
}

Result MergedSamples::refill(Stream &stream, Timestamp to, const std::atomic<bool> &isCancelled)
{
    stream.held.Clear();
    stream.next = 0;
    const Result result = m_reader.Visit(
        *stream.key, stream.from, to,
        [&](const Nodes::SampleRun &run) {
            const std::size_t room = m_portion - stream.held.Size();
            stream.held.Append(run, 0, std::min(room, run.Size()));
            return stream.held.Size() < m_portion;
        },
        isCancelled);
    if (stream.held.IsEmpty())
        return result;
    stream.from = stream.held.times.back() + 1;
    if (result != Result::StorageError)
        return result;
    m_damage = result;
    return Result();
}

Result MergedSamples::visit(Timestamp from, Timestamp to, const Visitor &visitor,
                            const std::atomic<bool> &isCancelled)
{
    std::vector<Stream> streams(m_signals.size());
    std::vector<Stream *> waiting; // a heap, the earliest in front
    const auto isLater = [](const Stream *left, const Stream *right) {
        return left->isLater(*right);
    };
    for (std::size_t i = 0; i < m_signals.size(); ++i) {
        streams[i].key = &m_signals[i];
        streams[i].from = from;
        const Result result = refill(streams[i], to, isCancelled);
        if (!result)
            return result;
        if (!streams[i].held.IsEmpty())
            waiting.push_back(&streams[i]);
    }
    std::make_heap(waiting.begin(), waiting.end(), isLater);
    while (!waiting.empty()) {
        std::pop_heap(waiting.begin(), waiting.end(), isLater);
        Stream &stream = *waiting.back();
        // As long as it stays the earliest it is not put back.
        do {
            if (!visitor(stream.key->source.node, stream.held, stream.next))
                return Result();
            ++stream.next;
            if (stream.next == stream.held.Size()) {
                const Result result = refill(stream, to, isCancelled);
                if (!result)
                    return result;
            }
        } while (!stream.held.IsEmpty() && (waiting.size() == 1 || !stream.isLater(*waiting[0])));
        if (stream.held.IsEmpty())
            waiting.pop_back();
        else
            std::push_heap(waiting.begin(), waiting.end(), isLater);
    }
    return m_damage;
}

} // namespace Records
