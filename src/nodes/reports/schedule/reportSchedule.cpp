#include "nodes/reports/schedule/reportSchedule.h"

#include "nodes/model/KindBuilder.h"
#include "nodes/model/validation/ValidationResults.h"
#include "nodes/reports/BasicReport.h"
#include "nodes/reports/ReportFileRules.h"

#include <algorithm>

namespace Nodes {

namespace {

constexpr Timestamp minute = 60 * Timestamp(1000000);
constexpr int mostMinutes = 31 * 24 * 60;
constexpr int mostLookedBack = 1000; // periods

} // namespace

KindInfo reportSchedule::Kind()
{
    return KindBuilder::For<reportSchedule>("reportSchedule", "Report schedule",
                                            "Расписание отчёта")
        .Property<&reportSchedule::m_report>(Prop::Report, "Report", "Отчёт")
        .Refers({NodeType::TypeReportItem})
        .Property<&reportSchedule::m_period>(Prop::Period, "After each", "После каждой")
        .Choice(PeriodShift, "shift", "Смены")
        .Choice(PeriodDay, "day", "Суток")
        .Choice(PeriodWeek, "week", "Недели")
        .Choice(PeriodMonth, "month", "Месяца")
        .Property<&reportSchedule::m_delay>(Prop::Delay, "Minutes after its end",
                                            "Через, мин после конца")
        .Range(0, mostMinutes)
        .Property<&reportSchedule::m_folder>(Prop::Folder, "Folder", "Папка")
        .Hint("defines")
        .Property<&reportSchedule::m_fileName>(Prop::FileName, "File name", "Имя файла")
        .Hint("fileName")
        .Property<&reportSchedule::m_format>(Prop::Format, "Format", "Формат")
        .Choice(FormatPdf, "pdf", "PDF")
        .Choice(FormatCsv, "csv", "CSV")
        .Choice(FormatXlsx, "xlsx", "XLSX")
        .Property<&reportSchedule::m_keepCount>(Prop::KeepCount, "Files kept", "Хранить файлов")
        .Range(0, 100000)
        .Property<&reportSchedule::m_keepDays>(Prop::KeepDays, "Days kept", "Хранить, суток")
        .Range(0, 36500)
        .Property<&reportSchedule::m_catchUp>(Prop::CatchUp, "Missed ones made up at most",
                                              "Восполнить пропущенных не более")
        .Range(0, 100)
        .Property<&reportSchedule::m_isEnabled>(Prop::Enabled, "Enabled", "Включено");
}

BasicReport *reportSchedule::GetReport() const
{
    return dynamic_cast<BasicReport *>(m_report.GetNode());
}

Timestamp reportSchedule::GetDelay() const
{
    return m_delay * minute;
}

std::vector<ReportSpan> reportSchedule::FindDue(Timestamp made, Timestamp now,
                                                const ShiftPlan &shifts, int &skipped) const
{
    skipped = 0;
    int missed = 0;
    std::vector<ReportSpan> due;
    ReportSpan span = PeriodAt(GetPeriod(), now - GetDelay(), shifts);
    for (int back = 0; back < mostLookedBack; ++back) {
        span = PeriodBefore(GetPeriod(), span, shifts);
        if (span.end <= made)
            break;
        const bool isMissed = span.end + GetDelay() + Punctual < now;
        missed += isMissed ? 1 : 0;
        if (missed > m_catchUp)
            ++skipped;
        else
            due.push_back(span);
    }
    std::reverse(due.begin(), due.end());
    return due;
}

std::string reportSchedule::FileNameOf(const ReportSpan &span, const ShiftPlan &shifts) const
{
    const BasicReport *report = GetReport();
    return ReportFileRules::NameOf(m_fileName, report ? report->GetName() : GetName(), span,
                                   shifts);
}

Result reportSchedule::FindFolder(std::string &folder) const
{
    return ReportFileRules::FindFolder(*this, m_folder, folder);
}

void reportSchedule::Validate(ValidationResults &results) const
{
    ConfigNode::Validate(results);
    if (!GetReport())
        results.Add(GetNodeLink(), Result(this, Result::NotFound, "report"),
                    GetPath() + ": не указан отчёт, который составлять по расписанию.");
    ReportFileRules::CheckFolder(*this, m_folder, results);
}

} // namespace Nodes
