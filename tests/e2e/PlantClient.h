#pragma once

#include <memory>

struct _modbus;

namespace EndToEnd {

/// The test's own look at the plant, past the station: registers by name, in engineering units.
/// Each call connects anew, so that restarts and faults of the line leave nothing behind.
class PlantClient
{
public:
    void setPort(int port) { m_port = port; }

    /// NaN when the plant does not answer.
    double read(const char *name) const;
    /// Not told whether it was carried out: a faulty line carries requests out, but does not say.
    void write(const char *name, double value) const;

private:
    using Connection = std::unique_ptr<_modbus, void (*)(_modbus *)>;
    Connection connect() const;

    int m_port = 0;
};

} // namespace EndToEnd
