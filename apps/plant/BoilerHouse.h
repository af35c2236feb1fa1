#pragma once

#include "apps/plant/Boiler.h"
#include "apps/plant/HeatNetwork.h"
#include "apps/plant/Noise.h"

#include <array>
#include <cstdint>

namespace Plant {

/// Boiler house with two hot-water boilers of 5 MW on one heating network.
/// Deterministic: the same seed, commands and total time give the same readings, however the
/// time is cut into step() calls. Not thread-safe; one thread owns it.
class BoilerHouse
{
public:
    static constexpr std::size_t boilerCount = 2;

    /// Everything is stopped, the water at 45 degC.
    explicit BoilerHouse(std::uint32_t seed = 1);

    /// Advances the process by @p seconds of plant time; negative and non-finite are ignored.
    void step(double seconds);
    /// Gives the commands of a normal start: one pump per circuit, both burners in automatic.
    void startAll();

    Boiler &boiler(std::size_t index) { return m_boilers[index]; }
    const Boiler &boiler(std::size_t index) const { return m_boilers[index]; }
    HeatNetwork &network() { return m_network; }
    const HeatNetwork &network() const { return m_network; }

    bool emergencyStop() const { return m_emergencyStop; }
    /// While set both burners are tripped and cannot be reset.
    void setEmergencyStop(bool on) { m_emergencyStop = on; }

    double gasPressure() const { return m_gasPressure; } ///< kPa before the burners
    double gasFlow() const;                              ///< m3/h, both boilers
    double gasVolume() const { return m_gasVolume; }     ///< m3 since the start
    double uptime() const { return m_uptime; }           ///< s of plant time
    bool hasAnyFault() const;

private:
    void stepOnce();
    double boilerFlow() const;
    double boilerTemperature() const;

    std::array<Boiler, boilerCount> m_boilers;
    HeatNetwork m_network;
    Noise m_noise;
    bool m_emergencyStop = false;
    double m_pending = 0.0;
    double m_gasPressure;
    double m_gasVolume = 0.0;
    double m_uptime = 0.0;
};

} // namespace Plant
