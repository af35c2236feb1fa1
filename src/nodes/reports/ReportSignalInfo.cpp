#include "nodes/reports/ReportSignalInfo.h"

#include "nodes/model/KindBuilder.h"
#include "nodes/signals/BasicSignal.h"

namespace Nodes {

KindInfo ReportSignalInfo::Kind()
{
    return KindBuilder::For<ReportSignalInfo>("reportSignal", "Report signal", "Сигнал отчёта")
        .Property<&ReportSignalInfo::m_signal>(Prop::Signal, "Signal", "Сигнал")
        .Refers({NodeType::TypeSignal});
}

BasicSignal *ReportSignalInfo::GetSignal() const
{
    return dynamic_cast<BasicSignal *>(m_signal.GetNode());
}

} // namespace Nodes
