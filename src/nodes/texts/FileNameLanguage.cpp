#include "nodes/model/ConfigNode.h"
#include "nodes/model/NodesCollection.h"
#include "nodes/reports/ReportFileRules.h"
#include "nodes/reports/time/shiftTable.h"
#include "nodes/texts/FieldTexts.h"
#include "nodes/values/Clock.h"

namespace Nodes {

namespace {

std::vector<TextWord> words(const ConfigNode *)
{
    return {{TextWord::Field, "{report}", "имя отчёта"},
            {TextWord::Field, "{shift}", "название смены"},
            {TextWord::Field, "{yyyy}", "год начала периода, 4 цифры"},
            {TextWord::Field, "{MM}", "месяц, 01 - 12"},
            {TextWord::Field, "{dd}", "число, 01 - 31"},
            {TextWord::Field, "{HH}", "час, 00 - 23"},
            {TextWord::Field, "{mm}", "минуты"},
            {TextWord::Field, "{ww}", "неделя года, 01 - 53"}};
}

std::vector<TextProblem> check(const std::string &text, const ConfigNode *node)
{
    std::vector<TextProblem> problems = FieldTexts::Check(text, "{", words(node));
    if (const std::size_t at = text.find_first_of("/\\:*?\"<>|"); at != std::string::npos)
        problems.push_back(
            {at, 1, "этот знак в именах файлов не допускается, вместо него будет _", true});
    return problems;
}

TrialOutcome run(const std::string &text, const ConfigNode *node, const std::vector<TrialInput> &)
{
    const ShiftPlan shifts = shiftTable::PlanOf(node ? node->GetNodesCollection() : nullptr);
    const ReportSpan span = PeriodAt(PeriodShift, Clock::Current().Now(), shifts);
    const std::string report = node ? node->GetName() : "report";
    return {true, ReportFileRules::NameOf(text, report, span, shifts)};
}

} // namespace

TextLanguage FileNameLanguage()
{
    return {"fileName",
            "Имя файла без расширения. Поля в скобках заменяются при сохранении отчёта.",
            TextLanguage::Braces,
            false,
            &words,
            &check,
            nullptr,
            &run};
}

} // namespace Nodes
