// What the operator asks of a report display.
#include "widgets/dialogs/Dialogs.h"
#include "widgets/reports/data/ReportModelTable.h"
#include "widgets/reports/display/ReportChoiceStore.h"
#include "widgets/reports/display/ReportIntervalDialog.h"
#include "widgets/reports/display/ReportNote.h"
#include "widgets/reports/display/ReportToolBar.h"

#include "nodes/reports/BasicReport.h"
#include "nodes/reports/time/shiftTable.h"
#include "nodes/system/systemCore.h"
#include "nodes/values/Clock.h"

#include <QComboBox>

namespace Widgets {

void qwidgetReportDisplay::generate()
{
    if (!currentReport())
        return tellMissing(tr("Нет отчётов для показа."));
    updateReport(true);
}

void qwidgetReportDisplay::setChoice(const ReportChoice &choice)
{
    m_choice = choice;
    const Nodes::BasicReport *report = currentReport();
    const Nodes::systemCore *core = context().model();
    if (report && core)
        (void)ReportChoiceStore(*core).save(*report, choice); // what fails is in the log
}

void qwidgetReportDisplay::askInterval()
{
    const Nodes::systemCore *core = context().model();
    if (!core)
        return;
    DialogRequest request;
    request.element = this;
    request.parent = window();
    const OwnedDialog<ReportIntervalDialog> dialog(request);
    dialog->setShifts(Nodes::shiftTable::PlanOf(core->GetNodesCollection()));
    dialog->setChoice(m_choice, Nodes::Clock::Current().Now());
    const QPointer<qwidgetReportDisplay> self = this;
    if (dialog->exec() != QDialog::Accepted || !dialog || !self)
        return;
    setChoice(dialog->choice());
    generate();
}

void qwidgetReportDisplay::showInterval()
{
    m_toolBar->setInterval(QString::fromStdString(Nodes::ReportIntervalText(m_span)));
}

// Another user has other reports, other rights and other intervals: nothing of the last one's
// stays.
void qwidgetReportDisplay::onUserChanged()
{
    const Nodes::widgetReportDisplay *display = m_display.get();
    if (!display || !isActive())
        return;
    takeReports(*display);
    onCurrentReportChanged(m_toolBar->reports->currentIndex());
}

void qwidgetReportDisplay::onOutputFinished(const QString &error)
{
    if (error.isEmpty())
        m_note->tell(tr("Готово."));
    else
        m_note->warn(error);
}

} // namespace Widgets
