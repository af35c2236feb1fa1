#include "nodes/system/BasicStation.h"

#include "nodes/auth/systemAuthentication.h"
#include "nodes/model/KindBuilder.h"
#include "nodes/model/NodesCollection.h"
#include "nodes/reports/ReportCodes.h"

namespace Nodes {

KindInfo BasicStation::Kind()
{
    return KindBuilder::For<BasicStation>("station", "Station", "Станция")
        .Children({NodeType::TypeSubsystem, NodeType::TypeFolder, NodeType::TypeDriver,
                   NodeType::TypeSignal, NodeType::TypeSecurity, NodeType::TypeFrame,
                   NodeType::TypeWindow, NodeType::TypeComposition, NodeType::TypeAction,
                   NodeType::TypeTimer, NodeType::TypeMenu, NodeType::TypeAlarm,
                   NodeType::TypeArchive, NodeType::TypeArchiverAction,
                   NodeType(NodeType::SubtypeReport), NodeType(ReportCodes::Schedule),
                   NodeType(ReportCodes::ShiftTable)})
        .Property<&BasicStation::m_journalDays>(Prop::JournalDays, "Journal is kept for, days",
                                                "Хранить журнал, суток")
        .Range(0, 36500)
        .Property<&BasicStation::m_journalMegabytes>(Prop::JournalMegabytes,
                                                     "Size of the journal at most, MB",
                                                     "Размер журнала не более, МБ")
        .Range(0, 10000000)
        .Property<&BasicStation::m_journalLocation>(Prop::JournalLocation, "Journal's location",
                                                    "Где хранится журнал")
        .Hint("defines");
}

JournalRetention BasicStation::GetJournalRetention() const
{
    constexpr Timestamp day = Timestamp(86400) * 1000000;
    return {m_journalDays * day, std::uint64_t(m_journalMegabytes) << 20};
}

systemAuthentication *BasicStation::GetSystemAuthentication() const
{
    const NodesCollection *project = GetNodesCollection();
    const auto search = [&] { return findAuthentication(project ? project->GetRoot() : nullptr); };
    return project ? m_authentication.Get(*project, search) : search();
}

systemAuthentication *BasicStation::findAuthentication(const ConfigNode *root) const
{
    for (const ConfigNode *owner : {static_cast<const ConfigNode *>(this), root}) {
        if (!owner)
            continue;
        for (const auto &node : owner->Children()) {
            if (node->GetNodeType().GetFamily() != NodeType::TypeSubsystem)
                continue;
            if (auto *authentication = dynamic_cast<systemAuthentication *>(node.get()))
                return authentication;
        }
    }
    return nullptr;
}

} // namespace Nodes
