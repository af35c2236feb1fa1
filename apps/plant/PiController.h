#pragma once

namespace Plant {

/// Proportional-integral controller with clamped output and anti-windup.
/// The output is a fraction in [low, high]; the error is in the controlled unit.
class PiController
{
public:
    /// @param gain output per unit of error; @param integralSeconds reset time, above 0.
    PiController(double gain, double integralSeconds);

    /// Advances by @p seconds and returns the new output.
    double step(double seconds, double error, double low, double high);

    /// Follows @p output while something else drives the actuator, so that the return
    /// to automatic control is bumpless.
    void track(double output);

private:
    double m_gain;
    double m_integralSeconds;
    double m_integral = 0.0;
};

} // namespace Plant
