#include "nodes/visual/elements/widgetReportDisplay.h"

#include "nodes/model/KindBuilder.h"
#include "nodes/model/NodesCollection.h"
#include "nodes/model/services/AccessCheck.h"
#include "nodes/reports/BasicReport.h"

namespace Nodes {

widgetReportDisplay::widgetReportDisplay() : BasicFramedWidget(NColor(255, 255, 255), 1) {}

KindInfo widgetReportDisplay::Kind()
{
    return KindBuilder::For<widgetReportDisplay>("reportDisplay", "Report display",
                                                 "Просмотр отчётов")
        .Inherit<BasicFramedWidget>()
        .Property<&widgetReportDisplay::m_reports>(Prop::Reports, "Reports", "Отчёты")
        .Refers({NodeType::TypeReportItem});
}

std::vector<BasicReport *> widgetReportDisplay::GetReports() const
{
    NodeLinks links = m_reports;
    const NodesCollection *project = GetNodesCollection();
    if (links.empty() && project)
        project->FindNodes(NodeType(BasicReport::Code), &links);
    std::vector<BasicReport *> reports;
    for (const NodeLink &link : links) {
        auto *report = dynamic_cast<BasicReport *>(link.GetNode());
        if (report && report->IsLocal() && !IsForbiddenToView(*report))
            reports.push_back(report);
    }
    return reports;
}

} // namespace Nodes
