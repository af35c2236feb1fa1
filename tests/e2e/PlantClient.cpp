#include "e2e/PlantClient.h"

#include "apps/plant/RegisterMap.h"

#include <modbus.h>

#include <cmath>

namespace EndToEnd {

namespace {

void hangUp(modbus_t *context)
{
    modbus_close(context);
    modbus_free(context);
}

} // namespace

PlantClient::Connection PlantClient::connect() const
{
    constexpr unsigned patience = 300000; // microseconds
    Connection context(modbus_new_tcp("127.0.0.1", m_port), &hangUp);
    modbus_set_response_timeout(context.get(), 0, patience);
    modbus_connect(context.get());
    return context;
}

double PlantClient::read(const char *name) const
{
    using Plant::RegisterTable;
    const Plant::RegisterEntry &row = *Plant::findRegister(name);
    const Connection context = connect();
    std::uint16_t words[2] = {};
    std::uint8_t bit = 0;
    int count = -1;
    if (row.table == RegisterTable::Coil)
        count = modbus_read_bits(context.get(), row.address, 1, &bit);
    else if (row.table == RegisterTable::DiscreteInput)
        count = modbus_read_input_bits(context.get(), row.address, 1, &bit);
    else if (row.table == RegisterTable::Holding)
        count = modbus_read_registers(context.get(), row.address, row.width(), words);
    else
        count = modbus_read_input_registers(context.get(), row.address, row.width(), words);
    if (count != row.width())
        return std::nan("");
    return row.type == Plant::RegisterType::Bit ? bit : Plant::decode(row, words);
}

void PlantClient::write(const char *name, double value) const
{
    const Plant::RegisterEntry &row = *Plant::findRegister(name);
    const Connection context = connect();
    if (row.table == Plant::RegisterTable::Coil) {
        modbus_write_bit(context.get(), row.address, value != 0.0);
        return;
    }
    std::uint16_t words[2] = {};
    Plant::encode(row, value, words);
    modbus_write_registers(context.get(), row.address, row.width(), words);
}

} // namespace EndToEnd
