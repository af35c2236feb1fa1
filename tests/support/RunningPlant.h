#pragma once

#include "apps/plant/PlantServer.h"
#include "apps/plant/RegisterMap.h"

#include <atomic>
#include <stdexcept>
#include <thread>

/// The simulated plant on a free loopback port, served from its own thread.
struct RunningPlant
{
    explicit RunningPlant(double timeFactor = 100.0, bool isWarm = false)
        : server(site, {"127.0.0.1", 0, timeFactor})
    {
        if (isWarm) {
            site.house.startAll();
            site.house.step(7200);
        }
        if (const std::string error = server.listen(); !error.empty())
            throw std::runtime_error(error);
        m_thread = std::thread([this] { server.run(m_stop); });
    }
    ~RunningPlant()
    {
        m_stop = true;
        m_thread.join();
    }

    Plant::PlantSite site; ///< the server's from now on
    Plant::PlantServer server;

private:
    std::atomic<bool> m_stop{false};
    std::thread m_thread;
};
