#pragma once

#include "widgets/WidgetsExport.h"
#include "widgets/reports/export/ExportSheet.h"

#include "nodes/reports/BasicReport.h"

#include <QList>
#include <QString>

class QThreadPool;

namespace LimeReport {
class ReportEngine;
}

namespace Nodes {
class systemCore;
}

namespace Widgets {

class ReportModelTable;

/// How a report node gets into a report engine, whoever shows or files it. GUI thread.
namespace ReportSetup {

/// File of the template: a path that begins with a drive ("C:/") or a slash as it is, any other
/// below the project's directory. "" when none is set.
WIDGETS_EXPORT QString templatePath(const Nodes::BasicReport &report,
                                    const Nodes::systemCore &core);
/// Sets what the station tells of the report (see docs/reports.md) and, over that, the variables of
/// its node, and over those the ones given.
WIDGETS_EXPORT void setVariables(LimeReport::ReportEngine &engine, const Nodes::BasicReport &report,
                                 const Nodes::systemCore &core, Nodes::enReportPeriod period,
                                 const Nodes::ReportSpan &span,
                                 const Nodes::BasicReport::Variables &given = {});
/// One model for each data source of the report, known to the engine by the source's name and owned
/// by the engine.
WIDGETS_EXPORT QList<ReportModelTable *>
addModels(LimeReport::ReportEngine &engine, const Nodes::BasicReport &report, QThreadPool *pool);
/// What is wrong with the data of the models, for operators, each once; "" when nothing is.
WIDGETS_EXPORT QString faults(const QList<ReportModelTable *> &models);
/// What the models hold, for a file of tables.
WIDGETS_EXPORT ExportSheets sheets(const QList<ReportModelTable *> &models);

} // namespace ReportSetup

} // namespace Widgets
