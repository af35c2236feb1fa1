#include "nodes/alarms/BasicAlarm.h"
#include "nodes/alarms/suppression/SuppressionScripts.h"
#include "nodes/signals/BasicSignal.h"
#include "nodes/texts/LuaLanguages.h"
#include "nodes/texts/LuaTrial.h"
#include "nodes/texts/NodeTexts.h"

namespace Nodes {

namespace {

std::vector<TrialInput> inputsOf(const ConfigNode *node)
{
    std::vector<TrialInput> inputs;
    for (const NodeLink &link :
         NodeTexts::LinksOf(node, BasicAlarm::Prop::SuppressInputs.valueId)) {
        const std::string name = "s" + std::to_string(inputs.size() + 1);
        const BasicSignal *signal = NodeTexts::SignalOf(link);
        inputs.push_back(signal
                             ? NodeTexts::InputOf(name, *signal)
                             : TrialInput{name, "сигнала нет", enSignalValueType::Bool, "false"});
    }
    return inputs;
}

std::vector<TextWord> words(const ConfigNode *node)
{
    std::vector<TextWord> words;
    for (const TrialInput &input : inputsOf(node))
        words.push_back({TextWord::Variable, input.name, input.meaning});
    const std::vector<TextWord> common = LuaCheck::CommonWords();
    words.insert(words.end(), common.begin(), common.end());
    return words;
}

std::vector<TextProblem> check(const std::string &text, const ConfigNode *node)
{
    std::vector<TextProblem> problems = LuaCheck::Syntax(text, LuaForm::Value);
    return problems.empty() ? LuaCheck::UnknownNames(text, words(node)) : problems;
}

std::vector<TrialInput> inputs(const std::string &, const ConfigNode *node)
{
    return inputsOf(node);
}

TrialOutcome run(const std::string &text, const ConfigNode *, const std::vector<TrialInput> &inputs)
{
    TrialOutcome outcome = LuaTrial(inputs, SuppressionScripts::Limits()).RunCondition(text);
    if (outcome.isDone)
        outcome.text = outcome.text == "true" ? "да: тревога подавлена" : "нет: тревога работает";
    return outcome;
}

} // namespace

TextLanguage ConditionLanguage()
{
    return {"condition",
            "Выражение, которое даёт true, пока тревога подавлена, например not s1 and s2 < 10. "
            "s1, s2, ... - сигналы сценария, они задаются свойством рядом.",
            TextLanguage::Lua,
            true,
            &words,
            &check,
            &inputs,
            &run};
}

} // namespace Nodes
