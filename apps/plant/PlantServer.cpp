#include "apps/plant/PlantServer.h"

#include "apps/plant/RegisterMap.h"

#include <modbus.h>

#include <algorithm>
#include <arpa/inet.h>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>
#include <utility>

namespace Plant {

namespace {
constexpr std::size_t mostClients = 200;
constexpr int backlog = 32;
constexpr int tickMs = 50;
constexpr int highestPort = 65535;
// After a suspended machine wakes up the plant goes on from where it was.
constexpr double longestCatchUp = 1.0;

void log(const std::string &line)
{
    std::fprintf(stderr, "plant: %s\n", line.c_str());
}

std::string withErrno(const std::string &what)
{
    return what + ": " + std::strerror(errno);
}

int boundPort(int socket)
{
    sockaddr_in address{};
    socklen_t size = sizeof address;
    if (::getsockname(socket, reinterpret_cast<sockaddr *>(&address), &size) != 0)
        return 0;
    return ntohs(address.sin_port);
}

std::string peerName(const sockaddr_in &address)
{
    char text[INET_ADDRSTRLEN] = "";
    ::inet_ntop(AF_INET, &address.sin_addr, text, sizeof text);
    return std::string(text) + ":" + std::to_string(ntohs(address.sin_port));
}
} // namespace

PlantServer::PlantServer(PlantSite &site, ServerOptions options)
    : m_site(site), m_options(std::move(options)), m_image(site), m_random(m_options.seed)
{
}

PlantServer::~PlantServer()
{
    if (m_listener >= 0)
        ::close(m_listener);
}

std::string PlantServer::listen()
{
    in_addr parsed{};
    if (::inet_pton(AF_INET, m_options.host.c_str(), &parsed) != 1)
        return "cannot listen at \"" + m_options.host + "\": give an IPv4 address, e.g. 127.0.0.1";
    if (m_options.port < 0 || m_options.port > highestPort)
        return "port " + std::to_string(m_options.port) + " is not in 0..65535";
    if (std::string error = m_image.open(); !error.empty())
        return error;
    const std::unique_ptr<modbus_t, void (*)(modbus_t *)> context(
        modbus_new_tcp(m_options.host.c_str(), m_options.port), &modbus_free);
    m_listener = context ? modbus_tcp_listen(context.get(), backlog) : -1;
    if (m_listener < 0)
        return withErrno("cannot listen at " + m_options.host + ":" +
                         std::to_string(m_options.port));
    ::fcntl(m_listener, F_SETFL, ::fcntl(m_listener, F_GETFL) | O_NONBLOCK);
    m_port = boundPort(m_listener);
    log("listening at " + m_options.host + ":" + std::to_string(m_port));
    return {};
}

void PlantServer::run(const std::atomic<bool> &stop)
{
    m_lastStep = Clock::now();
    while (!stop)
        serveOnce();
    m_clients.clear();
    log("stopped");
}

void PlantServer::serveOnce()
{
    std::vector<pollfd> sockets = watched(Clock::now());
    const int ready = ::poll(sockets.data(), sockets.size(), timeoutMs(Clock::now()));
    advancePlant();
    // Clients accepted below are not in the poll result; they get their turn next time.
    const std::size_t polled = m_clients.size();
    if (ready > 0 && (sockets[0].revents & POLLIN) != 0)
        acceptClient();
    for (std::size_t i = 0; i < polled; ++i)
        serve(*m_clients[i], ready > 0 ? sockets[i + 1].revents : short(0));
    dropClosed();
}

std::vector<pollfd> PlantServer::watched(Clock::time_point now) const
{
    std::vector<pollfd> sockets;
    sockets.reserve(m_clients.size() + 1);
    sockets.push_back({m_listener, POLLIN, 0});
    for (const auto &client : m_clients) {
        const int events =
            (client->wantsInput() ? POLLIN : 0) | (client->wantsOutput(now) ? POLLOUT : 0);
        sockets.push_back({client->socket(), static_cast<short>(events), 0});
    }
    return sockets;
}

int PlantServer::timeoutMs(Clock::time_point now) const
{
    int timeout = tickMs;
    for (const auto &client : m_clients) {
        const auto due = client->nextDue();
        if (!due || *due <= now)
            continue;
        const auto wait = std::chrono::ceil<std::chrono::milliseconds>(*due - now);
        timeout = static_cast<int>(std::min<long long>(timeout, wait.count()));
    }
    return timeout;
}

void PlantServer::acceptClient()
{
    sockaddr_in address{};
    socklen_t size = sizeof address;
    const int socket = ::accept4(m_listener, reinterpret_cast<sockaddr *>(&address), &size,
                                 SOCK_NONBLOCK | SOCK_CLOEXEC);
    if (socket < 0)
        return;
    auto client = std::make_unique<Connection>(socket, peerName(address));
    if (m_clients.size() >= mostClients) {
        log("refused " + client->peer() + ": too many clients");
        return;
    }
    const int on = 1;
    ::setsockopt(socket, IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
    ::setsockopt(socket, SOL_SOCKET, SO_KEEPALIVE, &on, sizeof on);
    log("client " + client->peer() + " connected");
    m_clients.push_back(std::move(client));
}

void PlantServer::serve(Connection &client, short events)
{
    if ((events & (POLLIN | POLLHUP | POLLERR)) != 0)
        client.receive();
    answerFrames(client);
    client.flush(Clock::now());
}

void PlantServer::answerFrames(Connection &client)
{
    while (const auto frame = client.takeFrame()) {
        // The fault as it was before the request: the write that ends a fault is still harmed by
        // it, and the one that begins a fault is confirmed.
        const LineFault line = m_site.line;
        const auto due = Clock::now() + std::chrono::milliseconds(line.delay());
        client.send(line.harmed(m_image.answer(*frame), m_random), due);
    }
}

void PlantServer::dropClosed()
{
    const auto isGone = [](const std::unique_ptr<Connection> &client) {
        if (client->isOpen())
            return false;
        const std::string why = client->closeReason();
        log("client " + client->peer() + (why.empty() ? " left" : " dropped: " + why));
        return true;
    };
    m_clients.erase(std::remove_if(m_clients.begin(), m_clients.end(), isGone), m_clients.end());
}

void PlantServer::advancePlant()
{
    const auto now = Clock::now();
    const double elapsed = std::chrono::duration<double>(now - m_lastStep).count();
    m_lastStep = now;
    m_site.house.step(std::min(elapsed, longestCatchUp) * m_options.timeFactor);
    m_image.refresh();
}

} // namespace Plant
