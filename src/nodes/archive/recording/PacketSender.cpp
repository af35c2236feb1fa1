#include "nodes/archive/recording/PacketSender.h"

#include "nodes/archive/recording/SignalIntake.h"

#include <algorithm>
#include <utility>

namespace Nodes {

namespace {

// A packet is stored as a whole: larger ones would hold up what waits behind them.
constexpr std::size_t mostSamples = 65536;
constexpr std::size_t mostTextBytes = 4u << 20;

} // namespace

PacketSender::PacketSender(std::shared_ptr<RecentSamples::Progress> progress)
    : m_progress(std::move(progress))
{
}

std::uint64_t PacketSender::append(std::string bytes)
{
    const std::lock_guard lock(m_mutex);
    const std::uint64_t key = m_recorder->Append(std::move(bytes));
    if (key == 0)
        return 0;
    if (m_firstKey == 0)
        m_firstKey = key;
    m_lastKey = key;
    return key;
}

bool PacketSender::Send(const SamplePacket &packet)
{
    return packet.parts.empty() || append(packet.Pack()) != 0;
}

bool PacketSender::Send(const Signals &signals)
{
    std::size_t samples = 0;
    std::size_t textBytes = 0;
    bool hasSent = false;
    for (const auto &signal : signals) {
        do {
            SamplePacket::Part part =
                signal->Pack(mostSamples - samples, mostTextBytes - textBytes);
            if (part.run.IsEmpty())
                break;
            samples += part.run.Size();
            textBytes += part.run.TextBytes();
            m_packet.parts.push_back(std::move(part));
            m_carried.push_back(signal);
            hasSent = true;
            if (samples >= mostSamples || textBytes >= mostTextBytes || signal->HasMore()) {
                sendGroup();
                samples = 0;
                textBytes = 0;
            }
        } while (signal->HasMore());
    }
    sendGroup();
    return hasSent;
}

void PacketSender::sendGroup()
{
    if (m_carried.empty())
        return;
    m_samples += m_packet.Size();
    const std::uint64_t key = append(m_packet.Pack());
    for (const auto &signal : m_carried)
        signal->Send(key);
    m_packet.parts.clear();
    m_carried.clear();
}

void PacketSender::NoteStored(const Records &records)
{
    const std::lock_guard lock(m_mutex);
    std::uint64_t last = m_progress->storedKey;
    for (const Record &record : records) {
        // Of an earlier run they have other keys.
        if (m_firstKey != 0 && record.key >= m_firstKey && record.key <= m_lastKey)
            last = std::max(last, record.key);
    }
    m_progress->storedKey.store(last, std::memory_order_release);
}

} // namespace Nodes
