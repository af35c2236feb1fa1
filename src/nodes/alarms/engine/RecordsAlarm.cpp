#include "nodes/alarms/engine/RecordsAlarm.h"

#include "nodes/alarms/engine/AlarmCondition.h"
#include "nodes/alarms/state/AlarmHealth.h"
#include "nodes/archive/recording/ArchiveHealth.h"
#include "nodes/storage/StoreHealth.h"
#include "nodes/values/Clock.h"
#include "nodes/values/ValueCell.h"

namespace Nodes {

namespace {

constexpr Timestamp second = 1000000;
constexpr Timestamp grace = 3 * second;      // a backup may hold a file for a moment
constexpr Timestamp shownLoss = 60 * second; // for how long entries that were lost count

class TrueCondition : public AlarmCondition
{
public:
    std::unique_ptr<AlarmCondition> Clone() const override
    {
        return std::make_unique<TrueCondition>(*this);
    }
    AlarmVerdict Judge(const AlarmInput &input) override
    {
        return input.value.ToBool() ? AlarmVerdict::Alarm : AlarmVerdict::Normal;
    }
};

/// Judges what it is told every second.
class Watch
{
public:
    bool AreAtRisk(const StoreHealth &journal, const AlarmHealth &alarms,
                   const ArchiveHealth &archive)
    {
        const std::uint64_t lost = journal.lost + alarms.refused + archive.lost;
        const Timestamp now = Clock::Current().Steady();
        if (lost > m_lost)
            m_lossShownUntil = now + shownLoss;
        m_lost = lost;
        return journal.troubledFor > grace || archive.packets.troubledFor > grace ||
               now < m_lossShownUntil || (alarms.isKeeping && alarms.unkeptFor > grace);
    }

private:
    std::uint64_t m_lost = 0;
    Timestamp m_lossShownUntil = 0;
};

} // namespace

RecordsAlarm::RecordsAlarm() : m_cell(std::make_shared<ValueCell>())
{
    m_cell->Publish(false);
}

AlarmInputs RecordsAlarm::Describe(const NodeLink &node) const
{
    AlarmInputs inputs;
    AlarmSettings &settings = inputs.settings;
    settings.node = node;
    settings.source = node.GetLinkName(LinkNamePath);
    settings.text =
        "Записи станции под угрозой: журнал, архив или состояния тревог не пишутся на диск";
    settings.priority = 1;
    settings.condition = std::make_shared<TrueCondition>();
    inputs.cell = m_cell;
    return inputs;
}

void RecordsAlarm::Start(Sources sources)
{
    m_worker.Start(second,
                   [cell = m_cell, sources = std::move(sources), watch = Watch()]() mutable {
                       const bool areAtRisk =
                           watch.AreAtRisk(sources.journal(), sources.alarms(), sources.archive());
                       if (areAtRisk != cell->Value().ToBool())
                           cell->Publish(areAtRisk);
                   });
}

} // namespace Nodes
