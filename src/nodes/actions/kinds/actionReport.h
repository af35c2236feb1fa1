#pragma once

#include "nodes/actions/BasicAction.h"
#include "nodes/model/properties/PropertyId.h"
#include "nodes/reports/BasicReport.h"
#include "nodes/reports/schedule/reportSchedule.h"

namespace Nodes {

/// Shows a report in a window of its own, prints it or saves it as a file. Its children are
/// variables of the template, in place of the report's own of the same names.
class NODES_EXPORT actionReport : public BasicAction
{
public:
    static constexpr auto Code = NodeType::enNodeSubtype(0x10015);
    struct Prop
    {
        static constexpr PropertyId<NodeLink> Report{27201, "report"};
        static constexpr PropertyId<int> Command{27202, "command"};
        static constexpr PropertyId<int> Period{27203, "period"};
        static constexpr PropertyId<int> Which{27204, "which"};
        static constexpr PropertyId<std::string> Printer{27205, "printer"};
        static constexpr PropertyId<std::string> Folder{27206, "folder"};
        static constexpr PropertyId<std::string> FileName{27207, "fileName"};
        static constexpr PropertyId<int> Format{27208, "fileFormat"};
    };
    enum enCommand { CommandShow = 1, CommandPrint = 2, CommandSave = 3 };
    enum enWhich { WhichCurrent = 1, WhichPrevious = 2 };
    static constexpr int PeriodOfReport = 0; ///< in place of an enReportPeriod

    static KindInfo Kind();

    /// Null when none is set or it is gone.
    BasicReport *GetReport() const;
    enCommand GetCommand() const { return enCommand(m_command); }
    /// That of the report unless the action has one of its own.
    enReportPeriod GetPeriod() const;
    bool IsPrevious() const { return m_which == WhichPrevious; }
    /// The period under way at that moment, or the one before.
    ReportSpan SpanAt(Timestamp now, const ShiftPlan &shifts) const;
    BasicReport::Variables GetVariables() const;

    /// As the station's system knows it; "": its usual one.
    const std::string &GetPrinter() const { return m_printer; }
    reportSchedule::enReportFormat GetFormat() const
    {
        return reportSchedule::enReportFormat(m_format);
    }
    /// See ReportFileRules.
    std::string FileNameOf(const ReportSpan &span, const ShiftPlan &shifts) const;
    [[nodiscard]] Result FindFolder(std::string &folder) const;

protected:
    void Validate(ValidationResults &results) const override;

private:
    NodeLink m_report;
    int m_command = CommandShow;
    int m_period = PeriodOfReport;
    int m_which = WhichCurrent;
    std::string m_printer;
    std::string m_folder;
    std::string m_fileName = "{report} {yyyy}-{MM}-{dd} {HH}-{mm}";
    int m_format = reportSchedule::FormatPdf;
};

} // namespace Nodes
