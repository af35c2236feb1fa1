#include "nodes/actions/kinds/actionReport.h"

#include "nodes/model/KindBuilder.h"
#include "nodes/model/validation/ValidationResults.h"
#include "nodes/reports/ReportFileRules.h"
#include "nodes/reports/reportVariable.h"

namespace Nodes {

KindInfo actionReport::Kind()
{
    return KindBuilder::For<actionReport>("actionReport", "Report", "Отчёт по кнопке")
        .Property<&actionReport::m_report>(Prop::Report, "Report", "Отчёт")
        .Refers({NodeType::TypeReportItem})
        .Property<&actionReport::m_command>(Prop::Command, "What to do", "Что делать")
        .Choice(CommandShow, "show", "Показать")
        .Choice(CommandPrint, "print", "Напечатать")
        .Choice(CommandSave, "save", "Сохранить в файл")
        .Property<&actionReport::m_period>(Prop::Period, "Period", "Период")
        .Choice(PeriodOfReport, "report", "Как у отчёта")
        .Choice(PeriodShift, "shift", "Смена")
        .Choice(PeriodDay, "day", "Сутки")
        .Choice(PeriodWeek, "week", "Неделя")
        .Choice(PeriodMonth, "month", "Месяц")
        .Property<&actionReport::m_which>(Prop::Which, "Which one", "Который")
        .Choice(WhichCurrent, "current", "Текущий")
        .Choice(WhichPrevious, "previous", "Предыдущий")
        .Property<&actionReport::m_printer>(Prop::Printer, "Printer", "Принтер")
        .Hint("defines")
        .Property<&actionReport::m_folder>(Prop::Folder, "Folder", "Папка")
        .Hint("defines")
        .Property<&actionReport::m_fileName>(Prop::FileName, "File name", "Имя файла")
        .Hint("fileName")
        .Property<&actionReport::m_format>(Prop::Format, "Format", "Формат")
        .Choice(reportSchedule::FormatPdf, "pdf", "PDF")
        .Choice(reportSchedule::FormatCsv, "csv", "CSV")
        .Choice(reportSchedule::FormatXlsx, "xlsx", "XLSX")
        .Children({NodeType(reportVariable::Code)});
}

BasicReport *actionReport::GetReport() const
{
    return dynamic_cast<BasicReport *>(m_report.GetNode());
}

enReportPeriod actionReport::GetPeriod() const
{
    if (m_period != PeriodOfReport)
        return enReportPeriod(m_period);
    const BasicReport *report = GetReport();
    return report ? report->GetPeriod() : PeriodShift;
}

ReportSpan actionReport::SpanAt(Timestamp now, const ShiftPlan &shifts) const
{
    const ReportSpan current = PeriodAt(GetPeriod(), now, shifts);
    return IsPrevious() ? PeriodBefore(GetPeriod(), current, shifts) : current;
}

BasicReport::Variables actionReport::GetVariables() const
{
    return BasicReport::VariablesBelow(*this);
}

std::string actionReport::FileNameOf(const ReportSpan &span, const ShiftPlan &shifts) const
{
    const BasicReport *report = GetReport();
    return ReportFileRules::NameOf(m_fileName, report ? report->GetName() : GetName(), span,
                                   shifts);
}

Result actionReport::FindFolder(std::string &folder) const
{
    return ReportFileRules::FindFolder(*this, m_folder, folder);
}

void actionReport::Validate(ValidationResults &results) const
{
    BasicAction::Validate(results);
    if (!GetReport())
        results.Add(GetNodeLink(), Result(this, Result::NotFound, Prop::Report.key),
                    GetPath() + ": не указан отчёт. Укажите, какой отчёт показать, напечатать или "
                                "сохранить.");
    ReportFileRules::CheckFolder(*this, m_folder, results);
}

} // namespace Nodes
