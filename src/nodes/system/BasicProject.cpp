#include "nodes/system/BasicProject.h"

#include "nodes/model/KindBuilder.h"
#include "nodes/reports/ReportCodes.h"

namespace Nodes {

KindInfo BasicProject::Kind()
{
    return KindBuilder::For<BasicProject>("project", "Project", "Проект")
        .Property<&BasicProject::m_title>(Prop::Title, "Title", "Заголовок")
        .Children({NodeType::TypeSystem, NodeType::TypeFolder, NodeType::TypeSubsystem,
                   NodeType::TypeDriver, NodeType::TypeSignal, NodeType::TypeSecurity,
                   NodeType::TypeFrame, NodeType::TypeWindow, NodeType::TypeComposition,
                   NodeType::TypeAction, NodeType::TypeTimer, NodeType::TypeMenu,
                   NodeType::TypeAlarm, NodeType::TypeArchive, NodeType::TypeArchiverAction,
                   NodeType(NodeType::SubtypeReport), NodeType(ReportCodes::Schedule),
                   NodeType(ReportCodes::ShiftTable)});
}

} // namespace Nodes
