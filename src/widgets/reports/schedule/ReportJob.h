#pragma once

#include "widgets/WidgetsExport.h"

#include "nodes/auth/ActingUser.h"
#include "nodes/reports/BasicReport.h"
#include "nodes/reports/schedule/reportSchedule.h"

#include <QString>

#include <optional>

namespace Widgets {

/// A report that is to be put out. Plain value.
struct WIDGETS_EXPORT ReportJob
{
    Nodes::NodeLink report;
    Nodes::enReportPeriod period = Nodes::PeriodShift;
    Nodes::ReportSpan span;
    Nodes::BasicReport::Variables variables; ///< in place of the report's own
    /// For whom: with the rights of that user. None: for the station, which sees every signal.
    std::optional<Nodes::ActingUser> user;

    bool isPrinted = false;
    QString printer; ///< "": the usual one of the system
    QString folder;
    QString name; ///< of the file, without ending; of a printed one its title
    Nodes::reportSchedule::enReportFormat format = Nodes::reportSchedule::FormatPdf;
    QString error; ///< found before it was begun, for operators: nothing but told

    /// What a schedule wants of a period; for the station itself.
    static ReportJob of(const Nodes::reportSchedule &schedule, const Nodes::ReportSpan &span,
                        const Nodes::ShiftPlan &shifts);
    /// Takes over where a node that has `FindFolder` wants its files, or the error.
    template <class Node> void setFolder(const Node &node)
    {
        std::string found;
        const Nodes::Result result = node.FindFolder(found);
        folder = QString::fromStdString(found);
        if (!result)
            error = QStringLiteral("Папка отчётов не годится (%1). Она должна лежать внутри "
                                   "каталога отчётов станции.")
                        .arg(QString::fromStdString(result.GetDetail()));
    }
};

} // namespace Widgets
