#pragma once

namespace Plant {

/// Motorised control valve: the position follows its target at the speed of the drive.
class Valve
{
public:
    /// @param strokeSeconds time from closed to fully open, above 0.
    explicit Valve(double strokeSeconds, double position = 0.0);

    /// Moves towards @p target, a fraction 0..1 (clamped).
    void step(double seconds, double target);
    /// Shuts at once, as a spring-return safety valve does.
    void slamShut();

    /// Position feedback, 0 closed .. 1 open.
    double position() const { return m_position; }
    bool isOpen() const { return m_position > 0.98; }
    bool isClosed() const { return m_position < 0.02; }

private:
    double m_strokeSeconds;
    double m_position;
};

} // namespace Plant
