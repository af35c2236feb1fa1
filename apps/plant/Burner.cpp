#include "apps/plant/Burner.h"

namespace Plant {

namespace {
constexpr double purgeSeconds = 15.0;
constexpr double ignitionSeconds = 5.0;
constexpr double lowFlowDelay = 5.0;
// A running burner at its least load may still overheat a lightly loaded boiler: it idles above
// the set-point by the first margin and relights below it by the second, degC.
constexpr double standbyAbove = 8.0;
constexpr double relightBelow = 1.0;
constexpr double resetHysteresis = 2.0;
} // namespace

bool Burner::isFanOn() const
{
    return m_state == BurnerState::Purge || m_state == BurnerState::Ignition ||
           m_state == BurnerState::Running;
}

void Burner::step(double seconds, bool &start, const BurnerInputs &in)
{
    m_inState += seconds;
    const TripCause found = danger(seconds, in);
    if (m_state != BurnerState::Tripped && found != TripCause::None) {
        m_cause = found;
        enter(BurnerState::Tripped);
    }
    if (m_state == BurnerState::Tripped)
        start = false;
    else if (!start && m_state != BurnerState::Stopped)
        enter(BurnerState::Stopped);
    else if (start)
        advance(in);
}

void Burner::reset(const BurnerInputs &in)
{
    if (m_state != BurnerState::Tripped || causePersists(in))
        return;
    m_cause = TripCause::None;
    m_lowFlow = 0.0;
    enter(BurnerState::Stopped);
}

TripCause Burner::danger(double seconds, const BurnerInputs &in)
{
    m_lowFlow = isFanOn() && in.flow < lowFlowLimit ? m_lowFlow + seconds : 0.0;
    if (in.emergencyStop)
        return TripCause::EmergencyStop;
    if (in.temperature > in.tripTemperature)
        return TripCause::HighTemperature;
    if (in.pressure > highPressureLimit)
        return TripCause::HighPressure;
    if (in.suction < lowPressureLimit)
        return TripCause::LowPressure;
    if (m_lowFlow > lowFlowDelay)
        return TripCause::LowFlow;
    if (in.flameLoss && hasFlame())
        return TripCause::FlameLoss;
    return TripCause::None;
}

bool Burner::causePersists(const BurnerInputs &in) const
{
    switch (m_cause) {
    case TripCause::HighTemperature:
        return in.temperature > in.tripTemperature - resetHysteresis;
    case TripCause::HighPressure:
        return in.pressure > highPressureLimit;
    case TripCause::LowPressure:
        return in.suction < lowPressureLimit;
    case TripCause::EmergencyStop:
        return in.emergencyStop;
    case TripCause::LowFlow:
    case TripCause::FlameLoss:
    case TripCause::None:
        break;
    }
    return false;
}

void Burner::advance(const BurnerInputs &in)
{
    const bool tooHot = in.automatic && in.temperature > in.setpoint + standbyAbove;
    const bool coolEnough = !in.automatic || in.temperature < in.setpoint - relightBelow;
    if (m_state == BurnerState::Stopped)
        enter(BurnerState::Purge);
    else if (m_state == BurnerState::Purge && m_inState >= purgeSeconds)
        enter(BurnerState::Ignition);
    else if (m_state == BurnerState::Ignition && m_inState >= ignitionSeconds)
        enter(BurnerState::Running);
    else if (m_state == BurnerState::Running && tooHot)
        enter(BurnerState::Standby);
    else if (m_state == BurnerState::Standby && coolEnough)
        enter(BurnerState::Purge);
}

void Burner::enter(BurnerState state)
{
    m_state = state;
    m_inState = 0.0;
}

} // namespace Plant
