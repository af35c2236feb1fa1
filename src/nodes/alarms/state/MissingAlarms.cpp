#include "nodes/alarms/state/MissingAlarms.h"

namespace Nodes {

namespace {

constexpr int missingDays = 90;

/// The alarm and what of its state was set by hand or waits for somebody.
std::string describe(unsigned long node, const StoredAlarm &stored)
{
    const AlarmMemory &memory = stored.memory;
    std::string text = "«" + stored.path + "» (узел " + std::to_string(node) + ")";
    if (memory.isOutOfService)
        text += ", выведена из работы";
    if (memory.isSuppressed)
        text += ", подавлена";
    if (memory.shelvedUntil != 0)
        text += ", отложена";
    if (memory.isActive)
        text += ", активна";
    if (memory.isResetDue)
        text += ", ждёт сброса";
    if (!memory.Deeds().tuning.isEmpty())
        text += ", подстроена";
    return text + (memory.isAcked ? "" : ", не квитирована");
}

} // namespace

void MissingAlarms::Keep(unsigned long node, const StoredAlarm &stored, Timestamp now) const
{
    const std::string days = std::to_string(missingDays) + " дней";
    if (stored.missingSince == 0 || stored.missingSince == StoredAlarm::Unclaimed) {
        StoredAlarm missing = stored;
        missing.missingSince = now;
        m_put(node, std::move(missing));
        m_tell("Тревоги с сохранённым состоянием нет в проекте: " + describe(node, stored) +
               ". Состояние хранится " + days + ".");
    } else if (now - stored.missingSince > Timestamp(missingDays) * 86400 * 1000000) {
        forget(node, stored, "её нет в проекте дольше " + days);
    }
}

bool MissingAlarms::IsAnothers(unsigned long node, const StoredAlarm &stored,
                               const std::string &path) const
{
    if (stored.missingSince == 0 || stored.path == path)
        return false;
    forget(node, stored, "её номер носит теперь другая тревога, «" + path + "»");
    return true;
}

void MissingAlarms::forget(unsigned long node, const StoredAlarm &stored,
                           const std::string &why) const
{
    m_put(node, StoredAlarm());
    m_tell("Состояние тревоги забыто: " + describe(node, stored) + "; " + why);
}

} // namespace Nodes
