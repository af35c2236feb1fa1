#include "nodes/alarms/engine/AlarmFloodTeller.h"

namespace Nodes {

namespace {

constexpr Timestamp second = 1000000;

std::string turnText(const AlarmFloodWatch &watch)
{
    const AlarmFlood &flood = watch.GetFlood();
    const std::string lately = std::to_string(flood.raisedInTenMinutes);
    if (flood.isFlood)
        return "Лавина тревог: за 10 минут " + lately;
    return "Лавина тревог окончена: всего " + std::to_string(watch.GetRaisedInFlood()) +
           ", за последние 10 минут " + lately;
}

} // namespace

void AlarmFloodTeller::Tell(const AlarmFloodWatch &watch, Timestamp steady, const Journal &journal)
{
    const AlarmFlood &flood = watch.GetFlood();
    const bool isTurn = flood.isFlood != m_told.isFlood;
    const bool isNews = flood.isFlood && flood.raisedInTenMinutes != m_told.raisedInTenMinutes &&
                        steady - m_toldAt >= second;
    if (!isTurn && !isNews)
        return;
    if (isTurn)
        journal(flood.isFlood, turnText(watch));
    m_told = flood;
    m_toldAt = steady;
    m_changed(flood);
}

} // namespace Nodes
