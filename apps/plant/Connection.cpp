#include "apps/plant/Connection.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <sys/socket.h>
#include <unistd.h>
#include <utility>

namespace Plant {

namespace {
constexpr std::size_t mostWaiting = 64;
constexpr std::size_t headerLength = leastFrame - 1;

bool isPassing(int error)
{
    return error == EAGAIN || error == EWOULDBLOCK || error == EINTR;
}
} // namespace

Connection::Connection(int socket, std::string peer) : m_socket(socket), m_peer(std::move(peer)) {}

Connection::~Connection()
{
    ::close(m_socket);
}

bool Connection::wantsInput() const
{
    return m_open && m_waiting.size() < mostWaiting;
}

bool Connection::wantsOutput(Clock::time_point now) const
{
    return m_open && !m_waiting.empty() && m_waiting.front().due <= now;
}

std::optional<Connection::Clock::time_point> Connection::nextDue() const
{
    if (m_waiting.empty())
        return std::nullopt;
    return m_waiting.front().due;
}

void Connection::receive()
{
    std::array<std::uint8_t, 4096> chunk;
    const ssize_t count = ::recv(m_socket, chunk.data(), chunk.size(), MSG_DONTWAIT);
    if (count > 0)
        m_received.insert(m_received.end(), chunk.begin(), chunk.begin() + count);
    else if (count == 0)
        m_open = false;
    else if (!isPassing(errno))
        giveUp(std::strerror(errno));
}

std::optional<Frame> Connection::takeFrame()
{
    if (!wantsInput() || m_received.size() < headerLength)
        return std::nullopt;
    const std::size_t length = frameLength(m_received.data(), m_received.size());
    if (length == 0) {
        giveUp("bytes that are no Modbus TCP frame");
        return std::nullopt;
    }
    if (m_received.size() < length)
        return std::nullopt;
    const auto end = m_received.begin() + static_cast<std::ptrdiff_t>(length);
    Frame frame(m_received.begin(), end);
    m_received.erase(m_received.begin(), end);
    return frame;
}

void Connection::send(Frame answer, Clock::time_point due)
{
    if (!answer.empty())
        m_waiting.push_back({due, std::move(answer)});
}

void Connection::flush(Clock::time_point now)
{
    while (wantsOutput(now)) {
        Frame &bytes = m_waiting.front().bytes;
        const ssize_t count =
            ::send(m_socket, bytes.data(), bytes.size(), MSG_NOSIGNAL | MSG_DONTWAIT);
        if (count < 0 && !isPassing(errno))
            giveUp(std::strerror(errno));
        if (count <= 0)
            return;
        bytes.erase(bytes.begin(), bytes.begin() + count);
        if (bytes.empty())
            m_waiting.pop_front();
    }
}

void Connection::giveUp(std::string reason)
{
    m_open = false;
    m_closeReason = std::move(reason);
}

} // namespace Plant
