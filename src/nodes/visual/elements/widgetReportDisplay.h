#pragma once

#include "nodes/visual/elements/BasicFramedWidget.h"

namespace Nodes {

class BasicReport;

/// Place of reports on a screen: shows one of them at a time, chosen by the operator.
class NODES_EXPORT widgetReportDisplay : public BasicFramedWidget
{
public:
    static constexpr auto Code = NodeType::enNodeSubtype(0x1500C);
    struct Prop : BasicFramedWidget::Prop
    {
        static constexpr PropertyId<NodeLinks> Reports{12550, "reports"};
    };

    widgetReportDisplay();
    static KindInfo Kind();

    /// Those that are chosen, else all of the project that run here; without those that the current
    /// user may not view. GUI thread.
    std::vector<BasicReport *> GetReports() const;

private:
    NodeLinks m_reports;
};

} // namespace Nodes
