#include "nodes/archive/recording/ArchiveWatch.h"

#include "nodes/values/Clock.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace Nodes {

namespace {

constexpr Timestamp second = 1000000;
constexpr Timestamp grace = 3 * second; // a backup may hold a file for a moment
constexpr std::size_t mostNamed = 5;

} // namespace

void ArchiveWatch::Look(const StoreHealth &store)
{
    if (!store.isWell() && store.troubledFor > grace && !m_isAwayTold) {
        m_isAwayTold = true;
        m_awaySince = Clock::Current().Steady() - store.troubledFor;
        m_tell(LevelCritical, "Архив не записывается: " + store.trouble +
                                  "; значения откладываются и будут дописаны");
    }
    if (store.isWell() && m_isAwayTold) {
        m_isAwayTold = false;
        const Timestamp away = (Clock::Current().Steady() - m_awaySince) / second;
        m_tell(LevelInformation,
               "Архив снова записывается, перерыв " + std::to_string(away) + " с");
    }
}

void ArchiveWatch::TellLosses()
{
    if (m_lost.empty())
        return;
    std::vector<std::pair<std::string, std::uint64_t>> all(m_lost.begin(), m_lost.end());
    std::sort(all.begin(), all.end(),
              [](const auto &a, const auto &b) { return a.second > b.second; });
    std::uint64_t count = 0;
    std::string names;
    for (std::size_t i = 0; i < all.size(); ++i) {
        count += all[i].second;
        if (i < mostNamed)
            names += (i == 0 ? "" : ", ") + all[i].first + " — " + std::to_string(all[i].second);
    }
    if (all.size() > mostNamed)
        names += " и другие, сигналов: " + std::to_string(all.size());
    m_tell(LevelCritical,
           "Архив потерял значений: " + std::to_string(count) + ", нет места: " + names);
    m_lost.clear();
}

std::string ArchiveWatch::TextOf(const RecordFinding &finding)
{
    switch (finding.kind) {
    case RecordFinding::StoreMoved:
        return "Файл архива удалён или заменён при работе станции: " + finding.place;
    case RecordFinding::StoreRestored:
        return "Архив восстановлен на прежнем месте: " + finding.place;
    case RecordFinding::StoreReplaced:
        return "На месте архива другой файл, запись продолжена в нём: " + finding.place;
    case RecordFinding::StoreSetAside:
        return "Архив повреждён и отложен: " + finding.detail + "; начат новый архив";
    case RecordFinding::SpillRestored:
        return "Файл " + finding.place + " был удалён; его значения сохранены заново";
    case RecordFinding::SpillTorn:
        return TornText(finding);
    case RecordFinding::SpillDamaged:
        return "Повреждён файл отложенных значений: " + finding.detail;
    case RecordFinding::SpillRefused:
        return "Файл " + finding.place + " недоступен: " + finding.detail;
    case RecordFinding::UpkeepFailed:
        return "Старые значения архива не удалены или не упакованы: " + finding.detail;
    case RecordFinding::RecordsRejected:
        return {}; // told signal by signal
    }
    return {};
}

} // namespace Nodes
