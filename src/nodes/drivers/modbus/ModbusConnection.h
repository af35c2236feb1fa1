#pragma once

#include "nodes/NodesExport.h"
#include "nodes/drivers/modbus/ModbusPoints.h"

#include <atomic>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

struct _modbus;

namespace Nodes {

/// Modbus TCP client connection. Requests run on one thread, the poller's; each takes at most its
/// time-out. DeviceError means that the device answered with an exception: the connection is fine.
/// Every other failure (Timeout, NotConnected, ParseError for an answer that is none) leaves an
/// unknown rest on the line: close it.
class NODES_EXPORT ModbusConnection
{
public:
    /// Unit number 0 to 247 of the device behind the address.
    explicit ModbusConnection(int unit);
    ~ModbusConnection();
    ModbusConnection(const ModbusConnection &) = delete;
    ModbusConnection &operator=(const ModbusConnection &) = delete;

    /// Time-outs are milliseconds, here and below.
    [[nodiscard]] Result Open(const std::string &host, const std::string &port, int timeout);
    void Close();
    bool IsOpen() const { return m_isOpen; }

    /// Reads `count` points from address `start`; a bit table gives words 0 and 1.
    [[nodiscard]] Result Read(ModbusTable table, int start, int count, int timeout,
                              std::vector<std::uint16_t> &data);
    /// Writes the words at `address`; `isMultiple` uses the functions for several points even for
    /// one. A mask reads the register first.
    [[nodiscard]] Result Write(ModbusTable table, int address, const ModbusWords &words,
                               bool isMultiple, int timeout);

    /// Any thread: ends what is running and refuses everything from now on.
    void Interrupt();

private:
    void setTimeout(int timeout);
    Result result(int count, int wanted) const;
    Result merge(int address, int timeout, ModbusWords &words);

    std::unique_ptr<_modbus, void (*)(_modbus *)> m_context;
    bool m_isOpen = false;
    std::atomic<bool> m_isInterrupted{false};
    std::mutex m_socketMutex; // guards the socket against being closed while it is interrupted
    int m_socket = -1;
};

} // namespace Nodes
