#pragma once

#include "nodes/NodesExport.h"
#include "nodes/drivers/PollSchedule.h"
#include "nodes/drivers/SignalSink.h"
#include "nodes/drivers/modbus/Backoff.h"
#include "nodes/drivers/modbus/ModbusConnection.h"
#include "nodes/drivers/modbus/ModbusPoints.h"
#include "nodes/events/EventLevel.h"

#include <atomic>
#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace Nodes {

/// A device and how patient to be with it; times in ms.
struct ModbusSettings
{
    std::string host;
    std::string port;
    int unit = 1;
    int timeout = 1000;
    int retries = 2; ///< requests without a proper answer before the device counts as lost
    int reconnectMinimum = 500;
    int reconnectMaximum = 30000;
};

/// A signal read with a group.
struct PolledPoint
{
    ModbusPoint point;
    SignalSink sink;
};

/// Neighbouring points of one table read with one request.
struct PolledGroup
{
    std::string path; ///< of the group's node, for the journal
    ModbusTable table = ModbusTable::Holding;
    int start = 0;
    int count = 1;
    int period = 1000; ///< ms
    bool writesMultiple = false;
    std::vector<PolledPoint> points;
};

/// A write on its way; `path` names the signal in the journal.
struct QueuedWrite
{
    std::size_t group = 0;
    int address = 0;
    ModbusWords words;
    std::string path;
};

/// Polls one device on a thread of its own: groups by their periods, writes in between, the
/// connection opened, watched and opened again. While the device is lost every point is Bad. A
/// group that stays without an answer while the device answers for another one is Bad by itself and
/// asked again at growing intervals; the others go on.
class NODES_EXPORT ModbusPoller
{
public:
    /// What goes to the outside, called on the poller's thread, or by Stop() after its end.
    struct Listener
    {
        std::function<void(EventLevel, const std::string &text, const std::string &path)> journal;
        std::function<void(bool isConnected)> linkChanged;
    };
    static constexpr std::size_t maximumQueue = 256;
    static constexpr int stopPatience = 2000; ///< ms

    ModbusPoller(ModbusSettings settings, std::vector<PolledGroup> groups, Listener listener);
    ~ModbusPoller();
    ModbusPoller(const ModbusPoller &) = delete;
    ModbusPoller &operator=(const ModbusPoller &) = delete;

    void Start();
    /// Gives writes that were accepted `stopPatience` to go out, then interrupts what is running
    /// and joins the thread; what did not go out is journalled. The poller cannot be started again.
    void Stop();

    /// Any thread, never waits. NotConnected while the device is lost, LimitExceeded when too many
    /// writes are waiting. A write that fails later, or is overtaken by the loss of the device, is
    /// journalled and never sent afterwards.
    [[nodiscard]] Result QueueWrite(QueuedWrite write);
    const PolledGroup &GetGroup(std::size_t index) const { return m_groups[index].config; }

private:
    enum class Link { Unknown, Connected, Lost };

    struct Group
    {
        PolledGroup config;
        PollSchedule schedule;
        Backoff backoff;
        Result error;           ///< what the device objects to, or silence; success: nothing
        Timestamp answered = 0; ///< steady time of the last answer, be it an objection

        bool isSilent() const { return !error && error != Result::DeviceError; }
    };

    void run();
    void connect();
    void serve();
    bool takeWrite(QueuedWrite &write);
    void markSent();
    void letWritesOut();
    void journalUnsent(const std::deque<QueuedWrite> &writes, const char *reason) const;
    void send(const QueuedWrite &write);
    Group &nextDue();
    Group *lastAnswered(const Group *other);
    void pollDue(Group &group);
    Result poll(Group &group, int attempts);
    Result read(const Group &group);
    void publish(Group &group);
    void failGroup(Group &group, const Result &reason);
    void examine(Group &group, const Result &reason);
    void silence(Group &group, const Result &reason);
    void setConnected(Group &answered);
    void lose(const Result &reason);
    void waitUntil(Timestamp steady);

    ModbusSettings m_settings;
    std::vector<Group> m_groups;
    Listener m_listener;
    ModbusConnection m_connection;
    Backoff m_backoff;
    std::vector<std::uint16_t> m_data;
    Link m_link = Link::Unknown;
    bool m_isReached = false;     // the last request without an answer had a connection
    std::size_t m_firstProbe = 0; // group that a round of attempts to reach the device begins with
    std::size_t m_probes = 0;     // groups asked in this round

    std::atomic<bool> m_isStopping{false};
    std::mutex m_mutex;
    std::condition_variable m_wake;
    std::condition_variable m_sent;
    std::atomic<bool> m_isDraining{false}; // only writes are sent any more
    bool m_isSending = false;              // guarded by m_mutex; the first write is on the wire
    bool m_acceptsWrites = false;          // guarded by m_mutex
    std::deque<QueuedWrite> m_queue;       // guarded by m_mutex
    std::thread m_thread;
};

} // namespace Nodes
