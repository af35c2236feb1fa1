#pragma once

#include "widgets/WidgetsExport.h"

#include <QTableWidget>

namespace Nodes {
class LoadReport;
struct LoadMessage;
} // namespace Nodes

namespace Widgets {

/// Findings of a project load as the engineer reads them: how bad, what is wrong and what to do,
/// in which file and line, at which element. The worst stand first.
class WIDGETS_EXPORT LoadReportTable : public QTableWidget
{
    Q_OBJECT

public:
    enum Column { SeverityColumn, TextColumn, PlaceColumn, ElementColumn, ColumnCount };
    /// Findings beyond this number are left to the log.
    static constexpr int MaximumRows = 500;

    explicit LoadReportTable(QWidget *parent = nullptr);

    void setReport(const Nodes::LoadReport &report);

protected:
    void resizeEvent(QResizeEvent *event) override;

private:
    void addMessage(const Nodes::LoadMessage &message);
};

} // namespace Widgets
