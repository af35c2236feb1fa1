#include "nodes/system/BasicFolder.h"

#include "nodes/model/KindBuilder.h"
#include "nodes/reports/ReportCodes.h"

namespace Nodes {

KindInfo BasicFolder::Kind()
{
    return KindBuilder::For<BasicFolder>("folder", "Folder", "Папка")
        .Children({NodeType::TypeFolder, NodeType::TypeDriver, NodeType::TypeDriverGroup,
                   NodeType::TypeSignal, NodeType::TypeSecurity, NodeType::TypeFrame,
                   NodeType::TypeWindow, NodeType::TypeComposition, NodeType::TypeAction,
                   NodeType::TypeTimer, NodeType::TypeMenu, NodeType::TypeAlarm,
                   NodeType::TypeArchive, NodeType::TypeArchiverAction,
                   NodeType(NodeType::SubtypeReport), NodeType(ReportCodes::Schedule),
                   NodeType(ReportCodes::ShiftTable)});
}

} // namespace Nodes
