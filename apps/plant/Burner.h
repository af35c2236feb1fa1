#pragma once

namespace Plant {

/// Sequence state; the numbers are what the burner-state register shows.
enum class BurnerState {
    Stopped = 0,
    Purge = 1,
    Ignition = 2,
    Running = 3,
    Standby = 4,
    Tripped = 5
};

/// First-out cause of a trip; the numbers are what the trip-cause register shows.
enum class TripCause {
    None = 0,
    HighTemperature = 1,
    LowFlow = 2,
    HighPressure = 3,
    LowPressure = 4,
    FlameLoss = 5,
    EmergencyStop = 6
};

/// What the burner's sequence and protection look at.
struct BurnerInputs
{
    bool automatic = true;
    bool flameLoss = false;
    bool emergencyStop = false;
    double temperature = 0.0;     ///< boiler outlet, degC
    double setpoint = 0.0;        ///< degC; in automatic the burner idles well above it
    double tripTemperature = 0.0; ///< degC
    double flow = 0.0;            ///< t/h through the boiler
    double pressure = 0.0;        ///< MPa in the boiler
    double suction = 0.0;         ///< MPa before the circulation pumps
};

/// Start sequence of a gas burner and its protection with a latched first-out cause.
class Burner
{
public:
    /// Below this flow, t/h, for lowFlowDelay seconds a lit or starting burner trips.
    static constexpr double lowFlowLimit = 30.0;
    /// MPa in the boiler.
    static constexpr double highPressureLimit = 1.0;
    /// MPa before the circulation pumps.
    static constexpr double lowPressureLimit = 0.15;

    /// Advances the sequence. A trip clears @p start, so that a reset never relights by itself.
    void step(double seconds, bool &start, const BurnerInputs &in);
    /// Clears the latch unless its cause is still there.
    void reset(const BurnerInputs &in);

    BurnerState state() const { return m_state; }
    TripCause cause() const { return m_cause; }
    bool hasFlame() const { return m_state == BurnerState::Running; }
    bool isFanOn() const;

private:
    TripCause danger(double seconds, const BurnerInputs &in);
    bool causePersists(const BurnerInputs &in) const;
    void advance(const BurnerInputs &in);
    void enter(BurnerState state);

    BurnerState m_state = BurnerState::Stopped;
    TripCause m_cause = TripCause::None;
    double m_inState = 0.0;
    double m_lowFlow = 0.0;
};

} // namespace Plant
