#include "nodes/reports/schedule/reportSchedule.h"

#include "nodes/model/KindBuilder.h"
#include "nodes/model/validation/ValidationResults.h"
#include "nodes/reports/BasicReport.h"
#include "nodes/reports/time/LocalCalendar.h"
#include "nodes/system/systemCore.h"

#include <algorithm>
#include <filesystem>

namespace Nodes {

namespace {

namespace fs = std::filesystem;

constexpr Timestamp minute = 60 * Timestamp(1000000);
constexpr int mostMinutes = 31 * 24 * 60;
constexpr int mostLookedBack = 1000;     // periods
constexpr std::size_t longestName = 200; // bytes, of 255 that file systems take

void replaceAll(std::string &text, const std::string &from, const std::string &to)
{
    for (std::size_t at = text.find(from); at != std::string::npos;
         at = text.find(from, at + to.size()))
        text.replace(at, from.size(), to);
}

// A name that every file system takes, cut at no half character.
std::string asFileName(std::string text)
{
    for (char &c : text) {
        if (static_cast<unsigned char>(c) < ' ' ||
            std::string("/\\:*?\"<>|").find(c) != std::string::npos)
            c = '_';
    }
    std::size_t length = std::min(text.size(), longestName);
    while (length < text.size() && (static_cast<unsigned char>(text[length]) & 0xC0U) == 0x80U)
        --length;
    text.resize(length);
    text.erase(0, std::min(text.find_first_not_of(" ."), text.size()));
    text.erase(text.find_last_not_of(" .") + 1);
    return text.empty() ? "report" : text;
}

bool leadsUp(const fs::path &path)
{
    return std::any_of(path.begin(), path.end(), [](const fs::path &part) { return part == ".."; });
}

bool leadsOut(const fs::path &path)
{
    return path.is_absolute() || leadsUp(path);
}

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
        .Property<&reportSchedule::m_fileName>(Prop::FileName, "File name", "Имя файла")
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
    std::string name = m_fileName;
    const std::pair<const char *, const char *> parts[] = {{"{yyyy}", "%Y"}, {"{MM}", "%m"},
                                                           {"{dd}", "%d"},   {"{HH}", "%H"},
                                                           {"{mm}", "%M"},   {"{ww}", "%V"}};
    for (const auto &[part, format] : parts)
        replaceAll(name, part, LocalCalendar::Text(span.begin, format));
    const BasicReport *report = GetReport();
    replaceAll(name, "{shift}", shifts.At(span.begin).name);
    replaceAll(name, "{report}", report ? report->GetName() : GetName());
    return asFileName(std::move(name));
}

Result reportSchedule::FindFolder(std::string &folder) const
{
    const systemCore *core = GetCore();
    if (!core)
        return Result(this, Result::NotAvailable, "no station runs");
    std::string expanded;
    const Result named = core->Expand(m_folder, expanded);
    if (!named)
        return named;
    const fs::path asked(expanded);
    const bool isGiven =
        m_folder.compare(0, 2, "${") == 0 && asked.is_absolute() && !leadsUp(asked);
    if (isGiven) {
        folder = asked.lexically_normal().string();
        return Result();
    }
    if (leadsOut(asked))
        return Result(this, Result::AccessDenied, "folder = " + m_folder);
    folder = (fs::path(core->GetDataDirectory()) / "reports" / asked).lexically_normal().string();
    return Result();
}

void reportSchedule::Validate(ValidationResults &results) const
{
    ConfigNode::Validate(results);
    if (!GetReport())
        results.Add(GetNodeLink(), Result(this, Result::NotFound, "report"),
                    GetPath() + ": не указан отчёт, который составлять по расписанию.");
    if (m_folder.compare(0, 2, "${") != 0 && leadsOut(m_folder))
        results.Add(GetNodeLink(), Result(this, Result::AccessDenied, "folder"),
                    GetPath() + ": папка «" + m_folder +
                        "» лежит вне каталога отчётов станции. Укажите путь внутри него или "
                        "имя ${...}, заданное при запуске станции.");
}

} // namespace Nodes
