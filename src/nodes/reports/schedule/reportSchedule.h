#pragma once

#include "nodes/model/ConfigNode.h"
#include "nodes/model/properties/PropertyId.h"
#include "nodes/reports/ReportCodes.h"
#include "nodes/reports/time/ReportPeriod.h"

namespace Nodes {

class BasicReport;

/// Makes a report into a file after each shift, day, week or month. It is only the order: who runs
/// it asks what is due.
class NODES_EXPORT reportSchedule : public ConfigNode
{
public:
    static constexpr auto Code = ReportCodes::Schedule;
    struct Prop
    {
        static constexpr PropertyId<NodeLink> Report{13140, "report"};
        static constexpr PropertyId<int> Period{13141, "period"};
        static constexpr PropertyId<int> Delay{13142, "delay"};
        static constexpr PropertyId<std::string> Folder{13143, "folder"};
        static constexpr PropertyId<std::string> FileName{13144, "fileName"};
        static constexpr PropertyId<int> Format{13145, "fileFormat"};
        static constexpr PropertyId<int> KeepCount{13146, "keepCount"};
        static constexpr PropertyId<int> KeepDays{13147, "keepDays"};
        static constexpr PropertyId<int> CatchUp{13148, "catchUp"};
        static constexpr PropertyId<bool> Enabled{13149, "enabled"};
    };
    enum enReportFormat { FormatPdf = 1, FormatCsv = 2, FormatXlsx = 3 };

    static KindInfo Kind();

    /// Null when none is set or it is gone.
    BasicReport *GetReport() const;
    enReportPeriod GetPeriod() const { return enReportPeriod(m_period); }
    enReportFormat GetFormat() const { return enReportFormat(m_format); }
    /// A report that is later than that after its time was missed.
    static constexpr Timestamp Punctual = Timestamp(10) * 60 * 1000000;

    /// Microseconds after the end of a period at which its report is made.
    Timestamp GetDelay() const;
    /// Files of its own that stay, the newest ones; 0: all.
    int GetKeepCount() const { return m_keepCount; }
    /// For so many days; 0: for ever.
    int GetKeepDays() const { return m_keepDays; }
    bool IsEnabled() const { return m_isEnabled; }

    /// Periods whose reports are to be made at `now`, the oldest first: those that ended after
    /// `made`, a delay ago at least. One that is late by more than `Punctual` was missed; of more
    /// than "catchUp" that were missed the newest are made, and `skipped` is how many are not.
    std::vector<ReportSpan> FindDue(Timestamp made, Timestamp now, const ShiftPlan &shifts,
                                    int &skipped) const;
    /// Name of the file of that period, without ending: what no file system takes is replaced.
    std::string FileNameOf(const ReportSpan &span, const ShiftPlan &shifts) const;
    /// Where the files go: below `reports` in the data directory of the station, or, where the
    /// folder begins with a ${name}, what the station is started with. AccessDenied for a path that
    /// leads elsewhere: projects may not write wherever they like. NotFound for an unknown name.
    [[nodiscard]] Result FindFolder(std::string &folder) const;

protected:
    void Validate(ValidationResults &results) const override;

private:
    NodeLink m_report;
    int m_period = PeriodShift;
    int m_delay = 5; // minutes
    std::string m_folder;
    std::string m_fileName = "{report} {yyyy}-{MM}-{dd} {HH}-{mm}";
    int m_format = FormatPdf;
    int m_keepCount = 0;
    int m_keepDays = 0;
    int m_catchUp = 7;
    bool m_isEnabled = true;
};

} // namespace Nodes
