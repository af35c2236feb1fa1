#include "nodes/drivers/modbus/TcpConnect.h"

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <future>
#include <memory>
#include <system_error>
#include <thread>

#include <netdb.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

namespace Nodes {

namespace {

using SteadyTime = std::chrono::steady_clock::time_point;
using Addresses = std::shared_ptr<addrinfo>;

constexpr int sliceMs = 50; // between looks at `cancel`

struct LookUp
{
    Addresses addresses;
    int error = 0;
};

LookUp lookUp(const std::string &host, const std::string &port, int flags)
{
    addrinfo hints{};
    hints.ai_family = AF_UNSPEC;
    hints.ai_socktype = SOCK_STREAM;
    hints.ai_flags = flags | AI_NUMERICSERV;
    addrinfo *found = nullptr;
    const int error = ::getaddrinfo(host.c_str(), port.c_str(), &hints, &found);
    return {found ? Addresses(found, &::freeaddrinfo) : nullptr, error};
}

/// One attempt with its time and its way out.
class Attempt
{
public:
    Attempt(std::string host, std::string port, int timeout, const std::atomic<bool> &cancel)
        : m_host(std::move(host)),
          m_port(std::move(port)),
          m_cancel(cancel),
          m_deadline(std::chrono::steady_clock::now() + std::chrono::milliseconds(timeout))
    {
    }

    Result connect(int &socket)
    {
        LookUp found = lookUp(m_host, m_port, AI_NUMERICHOST);
        if (!found.addresses)
            found = askNameServer();
        if (m_cancel)
            return Result(Result::Cancelled, place());
        if (!found.addresses)
            return Result(Result::NotConnected, place() + ": " + ::gai_strerror(found.error));
        Result result(Result::NotConnected, place());
        for (const addrinfo *address = found.addresses.get(); address; address = address->ai_next) {
            result = connectTo(*address, socket);
            if (result || result == Result::Cancelled || result == Result::Timeout)
                break;
        }
        return result;
    }

private:
    std::string place() const { return m_host + ":" + m_port; }
    int remainingMs() const
    {
        const auto left = m_deadline - std::chrono::steady_clock::now();
        const auto ms = std::chrono::duration_cast<std::chrono::milliseconds>(left).count();
        return int(std::max<long long>(ms, 0));
    }
    Result failure(int error) const
    {
        return Result(Result::NotConnected,
                      place() + ": " + std::generic_category().message(error));
    }

    /// The resolver knows no time-out, so it gets a thread that is left behind when it hangs.
    LookUp askNameServer() const
    {
        auto promise = std::make_shared<std::promise<LookUp>>();
        auto future = promise->get_future();
        try {
            std::thread([promise, host = m_host, port = m_port] {
                promise->set_value(lookUp(host, port, 0));
            }).detach();
        } catch (const std::system_error &) {
            return {nullptr, EAI_AGAIN}; // too many threads, perhaps such as these
        }
        while (!m_cancel && remainingMs() > 0) {
            const std::chrono::milliseconds slice(std::min(sliceMs, remainingMs()));
            if (future.wait_for(slice) == std::future_status::ready)
                return future.get();
        }
        return {nullptr, EAI_AGAIN};
    }

    Result waitConnected(int socket) const
    {
        pollfd watched{socket, POLLOUT, 0};
        int ready = 0;
        while (ready == 0 && !m_cancel && remainingMs() > 0)
            ready = ::poll(&watched, 1, std::min(sliceMs, remainingMs()));
        if (m_cancel)
            return Result(Result::Cancelled, place());
        if (ready == 0)
            return Result(Result::Timeout, place() + " does not answer");
        int error = ready < 0 ? errno : 0;
        socklen_t size = sizeof error;
        if (ready > 0)
            ::getsockopt(socket, SOL_SOCKET, SO_ERROR, &error, &size);
        return error == 0 ? Result() : failure(error);
    }

    Result connectTo(const addrinfo &address, int &socket) const
    {
        const int fresh =
            ::socket(address.ai_family, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0);
        if (fresh < 0)
            return failure(errno);
        const int on = 1;
        ::setsockopt(fresh, IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
        Result result;
        if (::connect(fresh, address.ai_addr, address.ai_addrlen) != 0)
            result = errno == EINPROGRESS ? waitConnected(fresh) : failure(errno);
        if (result)
            socket = fresh;
        else
            ::close(fresh);
        return result;
    }

    std::string m_host;
    std::string m_port;
    const std::atomic<bool> &m_cancel;
    SteadyTime m_deadline;
};

} // namespace

Result ConnectTcp(const std::string &host, const std::string &port, int timeout,
                  const std::atomic<bool> &cancel, int &socket)
{
    return Attempt(host, port, timeout, cancel).connect(socket);
}

} // namespace Nodes
