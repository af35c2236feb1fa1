#include "nodes/drivers/modbus/ModbusAddresses.h"

#include "nodes/drivers/modbus/modbusDriver.h"
#include "nodes/drivers/modbus/modbusGroup.h"
#include "nodes/drivers/modbus/modbusSignal.h"

#include <map>

namespace Nodes {

namespace {

/// One register or bit of a device.
using Place = std::pair<ModbusTable, int>;

struct Taken
{
    const modbusSignal *signal;
    int bits; ///< of a register: those that the signal takes
};

int bitsOf(const ModbusPoint &point)
{
    return point.type == ModbusType::Bit ? 1 << point.bit : 0xffff;
}

Result trouble(const ConfigNode &node)
{
    return Result(&node, Result::InvalidArgument, node.GetPath());
}

/// Registers and who takes them, as the groups are gone through.
class Survey
{
public:
    explicit Survey(ValidationResults &results) : m_results(results) {}

    void add(const modbusGroup &group)
    {
        std::vector<bool> isWanted(std::size_t(group.GetPointCount()), false);
        for (const NodeLink &link : group.GetNodes(true)) {
            const auto *signal = dynamic_cast<const modbusSignal *>(link.GetNode());
            if (!signal || signal->GetGroup() != &group)
                continue;
            const ModbusPoint point = signal->GetPoint(group);
            const Result fits = signal->CheckPlace();
            if (fits)
                take(*signal, group, point, isWanted);
            else
                m_results.Add(link, fits,
                              signal->GetName() + ": не помещается в группу «" + group.GetName() +
                                  "»; проверьте смещение, тип и количество в группе");
        }
        tellGaps(group, isWanted);
    }

private:
    void take(const modbusSignal &signal, const modbusGroup &group, const ModbusPoint &point,
              std::vector<bool> &isWanted)
    {
        bool isTold = false;
        for (int i = point.offset; i < point.offset + point.GetWidth(); ++i) {
            isWanted[std::size_t(i)] = true;
            const Place place{group.GetTable(), group.GetFirstAddress() + i};
            for (const Taken &other : m_taken[place]) {
                if ((other.bits & bitsOf(point)) == 0 || isTold)
                    continue;
                isTold = true;
                m_results.Add(signal.GetNodeLink(), trouble(signal),
                              signal.GetName() + ": адрес " + std::to_string(place.second) +
                                  " занят и сигналом «" + other.signal->GetName() +
                                  "»; проверьте смещение и тип");
            }
            m_taken[place].push_back({&signal, bitsOf(point)});
        }
    }

    void tellGaps(const modbusGroup &group, const std::vector<bool> &isWanted)
    {
        int unused = 0;
        int first = -1;
        for (std::size_t i = 0; i < isWanted.size(); ++i) {
            if (isWanted[i])
                continue;
            ++unused;
            if (first < 0)
                first = group.GetFirstAddress() + int(i);
        }
        if (unused > 0)
            m_results.Add(group.GetNodeLink(), trouble(group),
                          group.GetName() +
                              ": читается, но никому не нужно точек: " + std::to_string(unused) +
                              ", первая по адресу " + std::to_string(first));
    }

    ValidationResults &m_results;
    std::map<Place, std::vector<Taken>> m_taken;
};

} // namespace

ValidationResults FindAddressTrouble(const modbusDriver &driver)
{
    ValidationResults results;
    Survey survey(results);
    for (const NodeLink &link : driver.GetNodes(true)) {
        const auto *group = dynamic_cast<const modbusGroup *>(link.GetNode());
        if (group && BasicDriver::Above(*group) == &driver)
            survey.add(*group);
        const auto *signal = dynamic_cast<const modbusSignal *>(link.GetNode());
        if (signal && !signal->GetGroup())
            results.Add(link, trouble(*signal),
                        signal->GetName() +
                            ": вне группы опроса, поэтому не читается; перенесите в группу");
    }
    return results;
}

} // namespace Nodes
