#include "nodes/charts/SerieSamples.h"

#include "nodes/values/SampleTap.h"
#include "nodes/values/SignalValue.h"
#include "nodes/values/ValueCell.h"

#include <limits>

namespace Nodes::SerieSamples {

namespace {

/// Owned by the cell, from the connection to its end.
class Tap : public SampleTap, public BasicSlot
{
public:
    Tap(const std::shared_ptr<ValueCell> &cell, Slot slot) : m_cell(cell), m_slot(std::move(slot))
    {
    }

    void Offer(Timestamp time, const SignalValue &value) override
    {
        if (!IsOpen())
            return;
        SignalValue sample = value.IsError() ? gap() : value;
        sample.SetTimes(time, value.GetReceiveTime());
        m_slot({std::move(sample)});
    }

protected:
    void leave() override
    {
        if (const std::shared_ptr<ValueCell> cell = m_cell.lock())
            cell->RemoveTap(*this);
    }

private:
    static SignalValue gap()
    {
        SignalValue value(std::numeric_limits<double>::quiet_NaN());
        value.SetQuality(Quality::Bad);
        return value;
    }

    const std::weak_ptr<ValueCell> m_cell;
    const Slot m_slot;
};

} // namespace

Connection Connect(const std::shared_ptr<ValueCell> &cell, Slot slot)
{
    const auto tap = std::make_shared<Tap>(cell, std::move(slot));
    cell->AddTap(tap);
    return Connection(tap);
}

} // namespace Nodes::SerieSamples
