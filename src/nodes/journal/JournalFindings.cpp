#include "nodes/journal/JournalFindings.h"

namespace Nodes {

std::string JournalFindingText(const RecordFinding &finding)
{
    switch (finding.kind) {
    case RecordFinding::StoreMoved:
        return "Файл журнала удалён или заменён при работе станции: " + finding.place;
    case RecordFinding::StoreRestored:
        return "Журнал восстановлен на прежнем месте: " + finding.place;
    case RecordFinding::StoreReplaced:
        return "На месте журнала другой файл, записи продолжены в нём: " + finding.place;
    case RecordFinding::StoreSetAside:
        return "База журнала повреждена и отложена: " + finding.detail + "; начат новый журнал";
    case RecordFinding::SpillRestored:
        return "Файл " + finding.place + " был удалён; его записи сохранены заново";
    case RecordFinding::SpillTorn:
        return TornText(finding);
    case RecordFinding::SpillDamaged:
        return "Повреждён файл отложенных записей: " + finding.detail;
    case RecordFinding::SpillRefused:
        return "Файл " + finding.place + " недоступен: " + finding.detail;
    case RecordFinding::UpkeepFailed:
        return "Старые записи журнала не удалены: " + finding.detail;
    case RecordFinding::RecordsRejected:
        return "Потеряно записей журнала: " + std::to_string(finding.count) +
               "; не пишутся ни база, ни файл рядом с ней";
    }
    return {};
}

} // namespace Nodes
