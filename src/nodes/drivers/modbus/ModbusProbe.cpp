#include "nodes/drivers/modbus/ModbusProbe.h"

#include "nodes/drivers/modbus/ModbusConnection.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <numeric>
#include <system_error>

#include <netdb.h>

namespace Nodes {

namespace {

using Steady = std::chrono::steady_clock;
using Run = std::vector<std::size_t>; // indices of points, by address

double since(Steady::time_point start)
{
    return std::chrono::duration<double, std::milli>(Steady::now() - start).count();
}

Result check(const ProbePoint &point)
{
    const int address = point.GetAddress();
    if (point.start < 0 || point.point.offset < 0 || address + point.point.GetWidth() > 65536)
        return Result(Result::InvalidArgument, "address " + std::to_string(address));
    return point.point.Check(point.point.offset + point.point.GetWidth());
}

/// Points that make sense, gathered into the fewest requests without reading a register nobody
/// asked for.
std::vector<Run> runsOf(const std::vector<ProbePoint> &points, std::vector<ProbeReading> &readings)
{
    Run order(points.size());
    std::iota(order.begin(), order.end(), 0);
    std::stable_sort(order.begin(), order.end(), [&points](std::size_t a, std::size_t b) {
        return std::pair(points[a].point.table, points[a].GetAddress()) <
               std::pair(points[b].point.table, points[b].GetAddress());
    });
    std::vector<Run> runs;
    int end = 0;
    for (const std::size_t index : order) {
        const ProbePoint &point = points[index];
        const Result fits = check(point);
        readings[index].result = fits ? Result(Result::NotAvailable) : fits; // until it is read
        if (!fits)
            continue;
        const int address = point.GetAddress();
        const int last = address + point.point.GetWidth();
        const ProbePoint *first = runs.empty() ? nullptr : &points[runs.back().front()];
        const bool isNext =
            first && first->point.table == point.point.table && address <= end &&
            std::max(last, end) - first->GetAddress() <= MaximumCount(point.point.table);
        if (!isNext)
            runs.emplace_back();
        runs.back().push_back(index);
        end = isNext ? std::max(last, end) : last;
    }
    return runs;
}

void decode(const ProbePoint &asked, int start, const std::vector<std::uint16_t> &data,
            ProbeReading &reading)
{
    ModbusPoint point = asked.point;
    point.offset = asked.GetAddress() - start;
    const auto first = data.begin() + point.offset;
    reading.words.assign(first, first + point.GetWidth());
    reading.scaled = ModbusPoints::Decode(point, data);
    point.scale = 1;
    point.offsetValue = 0;
    reading.raw = ModbusPoints::Decode(point, data);
    reading.result = reading.raw.IsError() ? reading.raw.GetError() : Result();
}

bool says(const Result &result, int error)
{
    const std::string message = std::generic_category().message(error);
    return result.GetDetail().find(message) != std::string::npos;
}

/// Objections of devices, by the words of the protocol library.
std::string explainException(const std::string &detail)
{
    struct Row
    {
        const char *english;
        const char *russian;
    };
    constexpr std::array rows{
        Row{"Illegal function", "устройство не знает этой функции: проверьте таблицу (регистры "
                                "хранения, входные, дискретные)"},
        Row{"Illegal data address", "такого адреса в устройстве нет: проверьте начальный адрес и "
                                    "смещение (в документации нумерация часто с 1)"},
        Row{"Illegal data value", "устройство не принимает такое количество: уменьшите группу"},
        Row{"Slave device or server failure", "неисправность в самом устройстве"},
        Row{"Slave device or server is busy", "устройство занято, повторите позже"},
        Row{"Gateway path unavailable", "шлюз не знает такого номера устройства: проверьте номер"},
        Row{"Target device failed to respond",
            "устройство за шлюзом не отвечает: проверьте номер устройства и линию"},
    };
    for (const Row &row : rows) {
        if (detail.find(row.english) != std::string::npos)
            return row.russian;
    }
    return "устройство ответило отказом: " + detail;
}

std::string explainConnection(const Result &result)
{
    if (says(result, ECONNREFUSED))
        return "в соединении отказано: по этому адресу никто не ждёт на этом порту; проверьте порт "
               "и запущено ли устройство";
    if (says(result, EHOSTUNREACH) || says(result, ENETUNREACH))
        return "до адреса нет пути: проверьте кабель, адрес и маршрут";
    if (says(result, ECONNRESET) || says(result, EPIPE))
        return "устройство оборвало соединение: возможно, занято другим опросом";
    for (const int error : {EAI_NONAME, EAI_NODATA, EAI_AGAIN, EAI_FAIL}) {
        if (result.GetDetail().find(::gai_strerror(error)) != std::string::npos)
            return "имя устройства в сети не найдено: проверьте адрес или впишите его числами, "
                   "например 192.168.0.10";
    }
    return "соединения нет (" + result.GetDetail() + "): проверьте адрес и порт";
}

} // namespace

struct ModbusProbe::Trial
{
    ProbeTarget target;
    std::vector<ProbePoint> points;
    int period;
    Report report;
    ModbusConnection connection;
};

ModbusProbe::ModbusProbe() = default;

ModbusProbe::~ModbusProbe()
{
    Cancel();
}

void ModbusProbe::Start(ProbeTarget target, std::vector<ProbePoint> points, int period,
                        Report report)
{
    Cancel();
    const int unit = target.unit;
    m_trial.reset(new Trial{std::move(target), std::move(points), period, std::move(report),
                            ModbusConnection(unit)});
    m_isStopping = false;
    m_thread = std::thread([this, trial = m_trial.get()] { run(*trial); });
}

void ModbusProbe::Cancel()
{
    {
        const std::lock_guard lock(m_mutex);
        m_isStopping = true;
    }
    m_wake.notify_all();
    if (m_trial)
        m_trial->connection.Interrupt();
    if (m_thread.joinable())
        m_thread.join();
    m_trial.reset();
}

bool ModbusProbe::waitPeriod(int period)
{
    std::unique_lock lock(m_mutex);
    return !m_wake.wait_for(lock, std::chrono::milliseconds(period),
                            [this] { return m_isStopping; });
}

void ModbusProbe::run(Trial &trial)
{
    do {
        ProbeOutcome outcome;
        outcome.readings.resize(trial.points.size());
        if (!trial.connection.IsOpen()) {
            const auto start = Steady::now();
            outcome.connection =
                trial.connection.Open(trial.target.host, trial.target.port, trial.target.timeout);
            outcome.connectMs = since(start);
        }
        if (outcome.connection)
            readAll(trial, outcome);
        {
            const std::lock_guard lock(m_mutex);
            if (m_isStopping)
                return;
        }
        trial.report(outcome);
    } while (trial.period > 0 && waitPeriod(trial.period));
}

void ModbusProbe::readAll(Trial &trial, ProbeOutcome &outcome)
{
    for (const Run &run : runsOf(trial.points, outcome.readings)) {
        Result result =
            trial.connection.IsOpen() ? readRun(trial, run, outcome) : Result(Result::NotConnected);
        if (result != Result::DeviceError || run.size() == 1)
            continue;
        for (std::size_t i = 0; i < run.size() && trial.connection.IsOpen(); ++i)
            (void)readRun(trial, {run[i]}, outcome);
    }
}

Result ModbusProbe::readRun(Trial &trial, const std::vector<std::size_t> &run,
                            ProbeOutcome &outcome)
{
    const ProbePoint &first = trial.points[run.front()];
    int end = 0;
    for (const std::size_t index : run)
        end =
            std::max(end, trial.points[index].GetAddress() + trial.points[index].point.GetWidth());
    const auto start = Steady::now();
    std::vector<std::uint16_t> data;
    const Result result =
        trial.connection.Read(first.point.table, first.GetAddress(), end - first.GetAddress(),
                              trial.target.timeout, data);
    const double took = since(start);
    ++outcome.requests;
    if (!result && result != Result::DeviceError)
        trial.connection.Close(); // what is left on the line answers no later question
    for (const std::size_t index : run) {
        ProbeReading &reading = outcome.readings[index];
        reading.milliseconds = took;
        reading.result = result;
        if (result)
            decode(trial.points[index], first.GetAddress(), data, reading);
    }
    return result;
}

std::string ModbusProbe::Explain(const Result &result)
{
    switch (result.GetType()) {
    case Result::Success:
        return {};
    case Result::DeviceError:
        return explainException(result.GetDetail());
    case Result::Timeout:
        return "ответа нет за время ожидания: проверьте адрес, номер устройства и линию или "
               "увеличьте время ожидания";
    case Result::NotConnected:
        return explainConnection(result);
    case Result::ParseError:
        return "ответ неполный или не по протоколу Modbus TCP: проверьте, то ли это устройство и "
               "порт";
    case Result::InvalidArgument:
        return "адрес, тип или множитель не подходят: " + result.GetDetail();
    case Result::Cancelled:
        return "проверка прервана";
    case Result::NotAvailable:
        return "не читалось: соединение потеряно раньше";
    default:
        return result.GetResultTranslated();
    }
}

} // namespace Nodes
