#pragma once

#include "apps/plant/RegisterMap.h"

#include <modbus.h>

#include <cmath>
#include <memory>

/// A Modbus client of the plant that reads and writes registers by name, in engineering units.
class PlantClient
{
public:
    explicit PlantClient(int port, int timeoutMs = 1000)
        : m_context(modbus_new_tcp("127.0.0.1", port), &modbus_free)
    {
        modbus_set_response_timeout(m_context.get(), timeoutMs / 1000, timeoutMs % 1000 * 1000);
        modbus_connect(m_context.get());
    }
    ~PlantClient() { modbus_close(m_context.get()); }

    modbus_t *raw() const { return m_context.get(); }

    /// NaN when the plant does not answer.
    double read(const char *name) const
    {
        using Plant::RegisterTable;
        const Plant::RegisterEntry &row = *Plant::findRegister(name);
        std::uint16_t words[2] = {};
        std::uint8_t bit = 0;
        int count = -1;
        if (row.table == RegisterTable::Coil)
            count = modbus_read_bits(m_context.get(), row.address, 1, &bit);
        else if (row.table == RegisterTable::DiscreteInput)
            count = modbus_read_input_bits(m_context.get(), row.address, 1, &bit);
        else if (row.table == RegisterTable::Holding)
            count = modbus_read_registers(m_context.get(), row.address, row.width(), words);
        else
            count = modbus_read_input_registers(m_context.get(), row.address, row.width(), words);
        if (count != row.width())
            return std::nan("");
        return row.type == Plant::RegisterType::Bit ? bit : Plant::decode(row, words);
    }

    /// Whether the plant said that it carried the write out; a faulty line does, but does not say.
    bool write(const char *name, double value) const
    {
        const Plant::RegisterEntry &row = *Plant::findRegister(name);
        if (row.table == Plant::RegisterTable::Coil)
            return modbus_write_bit(m_context.get(), row.address, value != 0.0) == 1;
        std::uint16_t words[2] = {};
        Plant::encode(row, value, words);
        return modbus_write_registers(m_context.get(), row.address, row.width(), words) ==
               row.width();
    }

private:
    std::unique_ptr<modbus_t, void (*)(modbus_t *)> m_context;
};
