#include "nodes/drivers/modbus/ModbusConnection.h"

#include "nodes/drivers/modbus/TcpConnect.h"

#include <modbus.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <new>

#include <sys/select.h>
#include <sys/socket.h>
#include <unistd.h>

namespace Nodes {

ModbusConnection::ModbusConnection(int unit) : m_context(modbus_new_tcp(nullptr, 502), &modbus_free)
{
    if (!m_context)
        throw std::bad_alloc();
    modbus_set_slave(m_context.get(), unit);
    // Without a time-out of its own for each byte, the whole answer must come within the response
    // time-out: a device that sends byte by byte cannot hold the thread.
    modbus_set_byte_timeout(m_context.get(), 0, 0);
}

ModbusConnection::~ModbusConnection()
{
    Close();
}

Result ModbusConnection::Open(const std::string &host, const std::string &port, int timeout)
{
    Close();
    int socket = -1;
    const Result connected = ConnectTcp(host, port, timeout, m_isInterrupted, socket);
    if (!connected)
        return connected;
    if (socket >= FD_SETSIZE) { // the protocol library waits with select()
        ::close(socket);
        return Result(Result::LimitExceeded, "too many open files in this process");
    }
    const std::lock_guard lock(m_socketMutex);
    m_socket = socket;
    m_isOpen = true;
    modbus_set_socket(m_context.get(), socket);
    if (m_isInterrupted)
        ::shutdown(socket, SHUT_RDWR);
    return Result();
}

void ModbusConnection::Close()
{
    const std::lock_guard lock(m_socketMutex);
    if (m_isOpen)
        modbus_close(m_context.get());
    m_isOpen = false;
    m_socket = -1;
}

void ModbusConnection::Interrupt()
{
    const std::lock_guard lock(m_socketMutex);
    m_isInterrupted = true;
    if (m_socket >= 0)
        ::shutdown(m_socket, SHUT_RDWR);
}

void ModbusConnection::setTimeout(int timeout)
{
    const auto ms = static_cast<std::uint32_t>(std::max(timeout, 1));
    modbus_set_response_timeout(m_context.get(), ms / 1000, ms % 1000 * 1000);
}

Result ModbusConnection::result(int count, int wanted) const
{
    if (count == wanted)
        return Result();
    const int error = errno;
    const std::string reason = count < 0 ? modbus_strerror(error) : "answer of another length";
    if (count < 0 && error > MODBUS_ENOBASE && error < MODBUS_ENOBASE + MODBUS_EXCEPTION_MAX)
        return Result(Result::DeviceError, reason);
    if (count < 0 && error == ETIMEDOUT)
        return Result(Result::Timeout, "no answer in time");
    const bool isGarbage = count >= 0 || error >= MODBUS_ENOBASE;
    return Result(isGarbage ? Result::ParseError : Result::NotConnected, reason);
}

Result ModbusConnection::Read(ModbusTable table, int start, int count, int timeout,
                              std::vector<std::uint16_t> &data)
{
    if (!m_isOpen)
        return Result(Result::NotConnected);
    setTimeout(timeout);
    modbus_t *context = m_context.get();
    data.assign(std::size_t(count), 0);
    if (!IsBitTable(table)) {
        const auto read =
            table == ModbusTable::Holding ? &modbus_read_registers : &modbus_read_input_registers;
        return result(read(context, start, count, data.data()), count);
    }
    std::array<std::uint8_t, MODBUS_MAX_READ_BITS> bits;
    const auto read = table == ModbusTable::Coils ? &modbus_read_bits : &modbus_read_input_bits;
    const Result done = result(read(context, start, count, bits.data()), count);
    if (done)
        std::copy_n(bits.begin(), count, data.begin());
    return done;
}

Result ModbusConnection::merge(int address, int timeout, ModbusWords &words)
{
    std::vector<std::uint16_t> present;
    const Result read = Read(ModbusTable::Holding, address, 1, timeout, present);
    if (read)
        words.words[0] = std::uint16_t((present[0] & ~words.mask) | (words.words[0] & words.mask));
    return read;
}

Result ModbusConnection::Write(ModbusTable table, int address, const ModbusWords &words,
                               bool isMultiple, int timeout)
{
    if (!m_isOpen)
        return Result(Result::NotConnected);
    ModbusWords full = words;
    const bool isCoil = table == ModbusTable::Coils;
    const Result merged =
        !isCoil && words.mask != 0xffff ? merge(address, timeout, full) : Result();
    if (!merged)
        return merged;
    setTimeout(timeout);
    modbus_t *context = m_context.get();
    const auto bit = std::uint8_t(full.words[0] != 0);
    if (isCoil)
        return result(isMultiple ? modbus_write_bits(context, address, 1, &bit)
                                 : modbus_write_bit(context, address, bit),
                      1);
    const bool isSingle = full.count == 1 && !isMultiple;
    return result(isSingle ? modbus_write_register(context, address, full.words[0])
                           : modbus_write_registers(context, address, full.count, full.words),
                  full.count);
}

} // namespace Nodes
