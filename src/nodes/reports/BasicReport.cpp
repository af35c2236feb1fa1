#include "nodes/reports/BasicReport.h"

#include "nodes/model/KindBuilder.h"
#include "nodes/model/validation/ValidationResults.h"
#include "nodes/reports/ReportSignalInfo.h"
#include "nodes/reports/reportAlarms.h"
#include "nodes/reports/reportEvents.h"
#include "nodes/reports/reportSummary.h"
#include "nodes/reports/reportVariable.h"

namespace Nodes {

namespace {

constexpr NodeType signalType(ReportSignalInfo::Code);
constexpr NodeType variableType(reportVariable::Code);
constexpr NodeType summaryType(reportSummary::Code);
constexpr NodeType eventsType(reportEvents::Code);
constexpr NodeType alarmsType(reportAlarms::Code);

} // namespace

KindInfo BasicReport::Kind()
{
    return KindBuilder::For<BasicReport>("report", "Report", "Отчёт")
        .Property<&BasicReport::m_template>(Prop::Template, "Template", "Шаблон")
        .Property<&BasicReport::m_period>(Prop::Period, "Period", "Период")
        .Choice(PeriodShift, "shift", "Смена")
        .Choice(PeriodDay, "day", "Сутки")
        .Choice(PeriodWeek, "week", "Неделя")
        .Choice(PeriodMonth, "month", "Месяц")
        .Children({signalType, variableType, summaryType, eventsType, alarmsType});
}

BasicReport::Variables BasicReport::VariablesBelow(const ConfigNode &below)
{
    Variables variables;
    for (const ConfigNode *node : below.GetObjects(variableType))
        variables.emplace_back(node->GetName(),
                               static_cast<const reportVariable *>(node)->GetValue());
    return variables;
}

std::vector<ReportSignalInfo *> BasicReport::GetSignals() const
{
    std::vector<ReportSignalInfo *> signalInfos;
    for (ConfigNode *node : GetObjects(signalType))
        signalInfos.push_back(static_cast<ReportSignalInfo *>(node));
    return signalInfos;
}

std::vector<BasicReportSource *> BasicReport::GetSources() const
{
    std::vector<BasicReportSource *> sources;
    for (const auto &child : Children()) {
        if (auto *source = dynamic_cast<BasicReportSource *>(child.get()))
            sources.push_back(source);
    }
    return sources;
}

void BasicReport::Validate(ValidationResults &results) const
{
    ConfigNode::Validate(results);
    if (GetFilePath().empty())
        results.Add(GetNodeLink(), Result(this, Result::NotFound),
                    GetPath() + ": не задан шаблон отчёта. Выберите файл шаблона.");
}

} // namespace Nodes
