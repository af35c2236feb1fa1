#pragma once

#include "apps/plant/Connection.h"
#include "apps/plant/RegisterImage.h"

#include <atomic>
#include <chrono>
#include <cstdint>
#include <memory>
#include <random>
#include <string>
#include <vector>

struct pollfd;

namespace Plant {

struct PlantSite;

struct ServerOptions
{
    std::string host = "127.0.0.1"; ///< IPv4 address to listen at
    int port = 0;                   ///< 0: any free port
    double timeFactor = 1.0;        ///< plant seconds per real second, 0 stops the plant's clock
    std::uint32_t seed = 1;         ///< of the garbage a line fault sends
};

/// Modbus TCP server of one plant: steps the process in real time and serves every client from
/// one thread, the one that calls run(). listen() and run() may be called from different threads
/// one after the other.
class PlantServer
{
public:
    /// @p site must outlive the server; while run() is going only the server touches it.
    PlantServer(PlantSite &site, ServerOptions options);
    ~PlantServer();
    PlantServer(const PlantServer &) = delete;
    PlantServer &operator=(const PlantServer &) = delete;

    /// Opens the port; empty, or what went wrong.
    [[nodiscard]] std::string listen();
    /// The port really listened at; 0 before listen().
    int port() const { return m_port; }

    /// Serves until @p stop is set; returns within a tenth of a second after that.
    void run(const std::atomic<bool> &stop);

private:
    using Clock = Connection::Clock;

    void serveOnce();
    std::vector<pollfd> watched(Clock::time_point now) const;
    int timeoutMs(Clock::time_point now) const;
    void acceptClient();
    void serve(Connection &client, short events);
    void answerFrames(Connection &client);
    void dropClosed();
    void advancePlant();

    PlantSite &m_site;
    ServerOptions m_options;
    RegisterImage m_image;
    std::mt19937 m_random;
    int m_listener = -1;
    int m_port = 0;
    Clock::time_point m_lastStep;
    std::vector<std::unique_ptr<Connection>> m_clients;
};

} // namespace Plant
