#include "apps/plant/PlantServer.h"
#include "apps/plant/RegisterMap.h"

#include <CLI/CLI.hpp>

#include <atomic>
#include <csignal>
#include <cstdio>
#include <fstream>
#include <string>

namespace {

std::atomic<bool> stopRequested{false};
static_assert(std::atomic<bool>::is_always_lock_free, "set from a signal handler");

void requestStop(int)
{
    stopRequested = true;
}

// Written aside and renamed, so that whoever waits for the file never reads half a number.
bool writePortFile(const std::string &path, int port)
{
    const std::string aside = path + ".new";
    std::ofstream file(aside, std::ios::trunc);
    file << port << '\n';
    file.close();
    return file.good() && std::rename(aside.c_str(), path.c_str()) == 0;
}

struct Options
{
    Plant::ServerOptions server;
    std::string portFile;
    std::string fault = "none";
    std::uint32_t faultDelay = 2000;
    bool warm = false;
};

void declare(CLI::App &app, Options &options)
{
    app.option_defaults()->always_capture_default();
    app.add_option("--bind", options.server.host, "IPv4 address to listen at");
    app.add_option("--port", options.server.port, "port, 0 for any free one")
        ->check(CLI::Range(0, 65535));
    app.add_option("--port-file", options.portFile, "file to write the port listened at to");
    app.add_option("--seed", options.server.seed, "seed of the measurement noise");
    app.add_option("--time-factor", options.server.timeFactor, "plant seconds per second")
        ->check(CLI::Range(0.0, 1000.0));
    app.add_option("--fault", options.fault, "what is wrong with the line")
        ->check(CLI::IsMember({"none", "late", "garbage", "truncate", "silent"}));
    app.add_option("--fault-delay", options.faultDelay, "delay of late answers, ms")
        ->check(CLI::Range(0U, 60000U));
    app.add_flag("--warm", options.warm, "start both boilers and begin two hours later");
}

int serve(const Options &options)
{
    constexpr double warmUpSeconds = 7200.0;
    Plant::PlantSite site{Plant::BoilerHouse(options.server.seed), {}};
    site.line.kind = Plant::lineFaultByName(options.fault).value_or(Plant::LineFaultKind::None);
    site.line.delayMs = options.faultDelay;
    if (options.warm) {
        site.house.startAll();
        site.house.step(warmUpSeconds);
    }
    Plant::PlantServer server(site, options.server);
    if (const std::string error = server.listen(); !error.empty()) {
        std::fprintf(stderr, "plant: %s\n", error.c_str());
        return 1;
    }
    if (!options.portFile.empty() && !writePortFile(options.portFile, server.port())) {
        std::fprintf(stderr, "plant: cannot write the port to \"%s\"; is the folder there?\n",
                     options.portFile.c_str());
        return 1;
    }
    server.run(stopRequested);
    return 0;
}

} // namespace

int main(int argc, char **argv)
{
    std::signal(SIGTERM, requestStop);
    std::signal(SIGINT, requestStop);
    CLI::App app("Simulated boiler house behind a Modbus TCP server");
    Options options;
    declare(app, options);
    CLI11_PARSE(app, argc, argv);
    return serve(options);
}
