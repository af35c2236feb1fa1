#pragma once

#include "apps/plant/RequestCheck.h"

#include <chrono>
#include <deque>
#include <optional>
#include <string>

namespace Plant {

/// One client: cuts its byte stream into frames and sends answers when they are due.
/// Never blocks; owns its socket.
class Connection
{
public:
    using Clock = std::chrono::steady_clock;

    /// Takes over the non-blocking @p socket.
    Connection(int socket, std::string peer);
    ~Connection();
    Connection(const Connection &) = delete;
    Connection &operator=(const Connection &) = delete;

    int socket() const { return m_socket; }
    const std::string &peer() const { return m_peer; }
    bool isOpen() const { return m_open; }
    /// Why the connection was given up; empty while it is open or if the client left.
    const std::string &closeReason() const { return m_closeReason; }

    /// False while so many answers wait that nothing more is taken from the client.
    bool wantsInput() const;
    /// True if an answer is due at @p now and not sent yet.
    bool wantsOutput(Clock::time_point now) const;
    /// When the next waiting answer is due.
    std::optional<Clock::time_point> nextDue() const;

    /// Reads what is there.
    void receive();
    /// The next complete request, if any. Gives up the connection on bytes that are no frame.
    [[nodiscard]] std::optional<Frame> takeFrame();
    /// Queues @p answer to be sent at @p due or as soon as the socket takes it afterwards.
    void send(Frame answer, Clock::time_point due);
    /// Sends what is due.
    void flush(Clock::time_point now);

private:
    struct Waiting
    {
        Clock::time_point due;
        Frame bytes;
    };

    void giveUp(std::string reason);

    int m_socket;
    std::string m_peer;
    std::string m_closeReason;
    bool m_open = true;
    Frame m_received;
    std::deque<Waiting> m_waiting;
};

} // namespace Plant
