#include "widgets/reports/schedule/ReportJob.h"

namespace Widgets {

ReportJob ReportJob::of(const Nodes::reportSchedule &schedule, const Nodes::ReportSpan &span,
                        const Nodes::ShiftPlan &shifts)
{
    ReportJob job;
    if (const Nodes::BasicReport *report = schedule.GetReport())
        job.report = report->GetNodeLink();
    job.period = schedule.GetPeriod();
    job.span = span;
    job.name = QString::fromStdString(schedule.FileNameOf(span, shifts));
    job.format = schedule.GetFormat();
    job.setFolder(schedule);
    return job;
}

} // namespace Widgets
