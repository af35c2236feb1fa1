#pragma once

namespace Plant {

/// Centrifugal pump with a run-up lag and a latched motor fault.
class Pump
{
public:
    /// Advances the run-up. @p failing trips the motor protection if the pump is commanded to
    /// run; the fault stays until resetFault(). @p start is cleared by a fault, so that a reset
    /// never restarts a pump by itself.
    void step(double seconds, bool &start, bool failing);
    void resetFault();

    /// Speed as a fraction of nominal, 0..1.
    double speed() const { return m_speed; }
    bool isRunning() const { return m_speed > 0.5; }
    bool hasFault() const { return m_fault; }

private:
    double m_speed = 0.0;
    bool m_fault = false;
};

} // namespace Plant
