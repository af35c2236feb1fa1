// What the operator asks of a report display.
#include "widgets/charts/menus/TouchMenu.h"
#include "widgets/dialogs/Dialogs.h"
#include "widgets/dialogs/SaveFileQuestion.h"
#include "widgets/reports/data/ReportModelTable.h"
#include "widgets/reports/data/ReportSetup.h"
#include "widgets/reports/display/ReportChoiceStore.h"
#include "widgets/reports/display/ReportIntervalDialog.h"
#include "widgets/reports/display/ReportNote.h"
#include "widgets/reports/display/ReportToolBar.h"
#include "widgets/reports/export/DataExport.h"

#include "nodes/auth/systemAuthentication.h"
#include "nodes/reports/time/shiftTable.h"
#include "nodes/system/systemCore.h"
#include "nodes/values/Clock.h"

#include <QAction>
#include <QComboBox>

#include <lrpreviewreportwidget.h>
#include <lrreportengine.h>

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

void qwidgetReportDisplay::present(const ReportChoice &choice,
                                   const Nodes::BasicReport::Variables &variables)
{
    m_choice = choice;
    m_variables = variables;
    if (isActive())
        generate();
}

void qwidgetReportDisplay::askInterval()
{
    const Nodes::systemCore *core = context().model();
    if (!core)
        return;
    DialogRequest request;
    request.element = m_toolBar->widgetForAction(m_toolBar->interval);
    request.parent = TouchMenu::windowOf(this);
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

QString qwidgetReportDisplay::outputName() const
{
    const QString interval =
        m_toolBar->interval->text().replace(QLatin1Char(':'), QLatin1Char('-'));
    return QStringLiteral("%1 %2").arg(m_toolBar->reports->currentText(), interval);
}

void qwidgetReportDisplay::savePdf()
{
    m_preview->setWindowTitle(outputName()); // the file is called so
    m_preview->printToPDF();
}

void qwidgetReportDisplay::saveTable(bool isXlsx)
{
    if (m_export->isRunning() || m_models.isEmpty())
        return;
    const QString ending = isXlsx ? QStringLiteral("xlsx") : QStringLiteral("csv");
    const QString name = QStringLiteral("%1.%2").arg(outputName(), ending);
    const QPointer<qwidgetReportDisplay> self = this;
    const SaveFileQuestion question{isXlsx ? m_toolBar->xlsx->text() : m_toolBar->csv->text(), name,
                                    ending,
                                    QStringLiteral("%1 (*.%2)").arg(ending.toUpper(), ending)};
    const QString file = question.ask(TouchMenu::windowOf(this));
    if (file.isEmpty() || !self)
        return;
    m_toolBar->setProgress(tr("Сохраняется…"));
    m_export->start(file, isXlsx ? DataExport::Format::Xlsx : DataExport::Format::Csv,
                    ReportSetup::sheets(m_models));
}

void qwidgetReportDisplay::cancelWork()
{
    m_engine->cancelRender();
    m_export->cancel();
}

void qwidgetReportDisplay::giveUp()
{
    if (m_pending == 0)
        return;
    for (ReportModelTable *model : qAsConst(m_models))
        model->cancel();
    endWaiting();
    tellMissing(tr("Чтение данных прервано. Чтобы повторить, нажмите «Сформировать отчет»."));
}

Nodes::NodeLink qwidgetReportDisplay::currentUser() const
{
    const Nodes::systemCore *core = context().model();
    const Nodes::systemAuthentication *users = core ? core->GetSystemAuthentication() : nullptr;
    return users ? users->GetCurrentUser() : Nodes::NodeLink();
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
