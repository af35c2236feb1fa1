#pragma once

#include "widgets/WidgetsExport.h"
#include "widgets/dialogs/BasicDialog.h"
#include "widgets/dialogs/DialogRequest.h"

#include "nodes/reports/BasicReport.h"

#include <memory>

namespace Widgets {

class qwidgetReportDisplay;

/// Window with one report, that an action asked for. GUI thread.
class WIDGETS_EXPORT ReportDialog : public BasicDialog
{
    Q_OBJECT

public:
    static constexpr const char *Key = "report";

    /// The period under way, or the one before.
    struct Period
    {
        Nodes::enReportPeriod kind = Nodes::PeriodShift;
        bool isPrevious = false;
    };

    explicit ReportDialog(QWidget *parent = nullptr);
    ~ReportDialog() override;

    /// Opens a window for what `asker` (the id of an action) wants to show, or shows it in the one
    /// that it has opened already; it deletes itself when it is closed.
    static void open(const DialogRequest &request, unsigned long asker,
                     const Nodes::NodeLink &report, const Period &period,
                     const Nodes::BasicReport::Variables &variables);

    /// Null until a report was opened.
    qwidgetReportDisplay *display() const { return m_display.get(); }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void present(const Nodes::NodeLink &report, const Period &period,
                 const Nodes::BasicReport::Variables &variables);
    bool makeDisplay(const Nodes::NodeLink &report);
    void endDisplay();
    void placeDisplay();

    QWidget *m_area;
    unsigned long m_asker = 0;
    Nodes::NodeLink m_node;                          // a display that is in no tree
    std::unique_ptr<qwidgetReportDisplay> m_display; // gone before its node
};

} // namespace Widgets
