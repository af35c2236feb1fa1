#pragma once

#include "nodes/NodesExport.h"
#include "nodes/drivers/modbus/ModbusPoints.h"
#include "nodes/values/SignalValue.h"

#include <condition_variable>
#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace Nodes {

class ModbusConnection;

/// Where a trial speaks to; ms.
struct ProbeTarget
{
    std::string host;
    std::string port;
    int unit = 1;
    int timeout = 1000;
};

/// What a trial reads: `point.offset` counts from `start`.
struct ProbePoint
{
    int start = 0; ///< address over the wire
    ModbusPoint point;

    int GetAddress() const { return start + point.offset; }
};

/// What came back for one point.
struct ProbeReading
{
    Result result = Result::NotAvailable;
    std::vector<std::uint16_t> words; ///< as they came, or the bit
    SignalValue raw;                  ///< of the type chosen, not scaled
    SignalValue scaled;               ///< engineering value
    double milliseconds = 0;          ///< its request took
};

/// One round.
struct ProbeOutcome
{
    Result connection; ///< success, or why there is none
    double connectMs = 0;
    int requests = 0;
    std::vector<ProbeReading> readings; ///< one a point, in their order
};

/// Tries a device out, apart from every driver: connects, reads the points asked for, and again
/// each period. Never writes. Neighbouring points go into one request; when the device objects to
/// it they are read one by one, so that each gets its own answer. Points are wholly in the caller's
/// hands: those that make no sense answer InvalidArgument. Made, started and destroyed on one
/// thread; nothing of it waits but the destructor, and that for a twentieth of a second at most.
class NODES_EXPORT ModbusProbe
{
public:
    /// Called on the probe's own thread after each round, never again once Cancel returned.
    using Report = std::function<void(const ProbeOutcome &)>;

    ModbusProbe();
    ~ModbusProbe();
    ModbusProbe(const ModbusProbe &) = delete;
    ModbusProbe &operator=(const ModbusProbe &) = delete;

    /// Ends an earlier trial. `period` in ms; 0: one round.
    void Start(ProbeTarget target, std::vector<ProbePoint> points, int period, Report report);
    /// Interrupts what is running.
    void Cancel();

    /// What an answer means and what to do about it, in Russian; "" for success.
    static std::string Explain(const Result &result);

private:
    struct Trial;

    void run(Trial &trial);
    static void readAll(Trial &trial, ProbeOutcome &outcome);
    static Result readRun(Trial &trial, const std::vector<std::size_t> &run, ProbeOutcome &outcome);
    bool waitPeriod(int period);

    std::unique_ptr<Trial> m_trial;
    std::mutex m_mutex;
    std::condition_variable m_wake;
    bool m_isStopping = false; // guarded
    std::thread m_thread;
};

} // namespace Nodes
