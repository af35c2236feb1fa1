#include "nodes/actions/kinds/actionExecuteScript.h"
#include "nodes/model/NodesCollection.h"
#include "nodes/scripts/ScriptRunner.h"
#include "nodes/signals/BasicSignal.h"
#include "nodes/texts/LuaLanguages.h"
#include "nodes/texts/LuaTrial.h"
#include "nodes/texts/NodeTexts.h"

#include <algorithm>

namespace Nodes {

namespace {

constexpr int longestTrial = 250; // ms

const std::vector<std::string_view> functionsOfSignals{"read", "quality", "write"};

NodeLinks numbered(const ConfigNode *node)
{
    return NodeTexts::LinksOf(node, actionExecuteScript::Prop::Signals.valueId);
}

struct Called
{
    std::size_t count = 0; ///< of the nodes of that path
    const BasicSignal *signal = nullptr;
};

Called byPath(const ConfigNode *node, const std::string &path)
{
    const NodesCollection *project = node ? node->GetNodesCollection() : nullptr;
    const auto nodes = project ? project->GetNodesByPath(path) : std::vector<ConfigNode *>();
    return {nodes.size(),
            nodes.size() == 1 ? dynamic_cast<const BasicSignal *>(nodes[0]) : nullptr};
}

std::vector<TextWord> ownWords()
{
    return {{TextWord::Function, "read", "read(1): значение сигнала 1; nil, пока оно недостоверно"},
            {TextWord::Function, "quality",
             "quality(1): \"good\", \"uncertain\", \"stale\" или \"bad\""},
            {TextWord::Function, "write", "write(1, x): записать x с правами оператора"},
            {TextWord::Function, "journal", "journal(\"текст\"): сообщение в журнал"}};
}

std::vector<TextWord> words(const ConfigNode *node)
{
    std::vector<TextWord> words = ownWords();
    int number = 0;
    for (const NodeLink &link : numbered(node)) {
        const BasicSignal *signal = NodeTexts::SignalOf(link);
        words.push_back({TextWord::Signal, std::to_string(++number),
                         signal ? NodeTexts::MeaningOf(*signal) : "сигнала нет"});
    }
    const std::vector<TextWord> common = LuaCheck::CommonWords();
    words.insert(words.end(), common.begin(), common.end());
    NodeLinks all; // last: there may be thousands
    if (node && node->GetNodesCollection())
        node->GetNodesCollection()->FindNodes(NodeType(NodeType::TypeSignal), &all);
    for (const NodeLink &link : all) {
        if (const BasicSignal *signal = NodeTexts::SignalOf(link))
            words.push_back(
                {TextWord::Signal, "\"" + signal->GetPath() + "\"", NodeTexts::MeaningOf(*signal)});
    }
    return words;
}

// Numbers behind read(, quality( and write(.
std::vector<LuaToken> numbersIn(const std::string &text)
{
    const std::vector<LuaToken> tokens = LuaTokens(text);
    std::vector<LuaToken> numbers;
    for (std::size_t i = 2; i + 1 < tokens.size(); ++i) {
        const std::string_view next = tokens[i + 1].In(text);
        const bool isCalled = tokens[i - 1].In(text) == "(" &&
                              std::find(functionsOfSignals.begin(), functionsOfSignals.end(),
                                        tokens[i - 2].In(text)) != functionsOfSignals.end();
        const bool isWhole = next == ")" || next == ",";
        if (isCalled && isWhole && tokens[i].sort == LuaToken::Number)
            numbers.push_back(tokens[i]);
    }
    return numbers;
}

void checkSignals(const std::string &text, const ConfigNode *node,
                  std::vector<TextProblem> &problems)
{
    const std::size_t count = numbered(node).size();
    for (const LuaToken &token : numbersIn(text)) {
        const std::string number(token.In(text));
        const double value = SignalValue(number).ToDouble();
        if (!(value >= 1 && value <= double(count)))
            problems.push_back({token.begin, token.length,
                                "сигнала с номером " + number + " нет, их " +
                                    std::to_string(count) + ": добавьте в «Сигналы по номерам»"});
    }
    for (const auto &[token, name] : LuaCheck::References(text, functionsOfSignals)) {
        const Called called = byPath(node, name);
        if (!called.signal)
            problems.push_back({token.begin, token.length,
                                called.count > 1 ? "«" + name + "» называются несколько узлов"
                                                 : "сигнала «" + name + "» в проекте нет"});
    }
}

std::vector<TextProblem> check(const std::string &text, const ConfigNode *node)
{
    std::vector<TextProblem> problems = LuaCheck::Syntax(text, LuaForm::Block);
    if (!problems.empty())
        return problems;
    if (node)
        checkSignals(text, node, problems);
    std::vector<TextWord> words = ownWords();
    const std::vector<TextWord> common = LuaCheck::CommonWords();
    words.insert(words.end(), common.begin(), common.end());
    for (TextProblem &problem : LuaCheck::UnknownNames(text, words))
        problems.push_back(std::move(problem));
    return problems;
}

std::vector<TrialInput> inputs(const std::string &text, const ConfigNode *node)
{
    std::vector<TrialInput> inputs;
    for (const NodeLink &link : numbered(node)) {
        const std::string name = std::to_string(inputs.size() + 1);
        const BasicSignal *signal = NodeTexts::SignalOf(link);
        inputs.push_back(signal
                             ? NodeTexts::InputOf(name, *signal)
                             : TrialInput{name, "сигнала нет", enSignalValueType::Bool, "false"});
    }
    for (const auto &[token, name] : LuaCheck::References(text, functionsOfSignals)) {
        const BasicSignal *signal = byPath(node, name).signal;
        const bool isListed = std::any_of(inputs.begin(), inputs.end(),
                                          [&name = name](const auto &i) { return i.name == name; });
        if (!isListed && signal)
            inputs.push_back(NodeTexts::InputOf(name, *signal));
    }
    return inputs;
}

std::string nameOf(const LuaSandbox::Arguments &given)
{
    return given.empty() ? std::string() : given[0].ToString();
}

// An endless loop must not hold the window up at every key.
LuaLimits limitsOf(const ConfigNode *node)
{
    const auto *script = dynamic_cast<const actionExecuteScript *>(node);
    LuaLimits limits = ScriptRunner::Limits(script ? script->GetTimeLimit() : longestTrial);
    limits.milliseconds = std::min(limits.milliseconds, longestTrial);
    return limits;
}

TrialOutcome run(const std::string &text, const ConfigNode *node,
                 const std::vector<TrialInput> &inputs)
{
    LuaTrial trial(inputs, limitsOf(node));
    LuaSandbox &sandbox = trial.Sandbox();
    using Given = LuaSandbox::Arguments;
    sandbox.AddFunction("read", [&](const Given &given) { return trial.Value(nameOf(given)); });
    sandbox.AddFunction("quality", [&](const Given &given) {
        const SignalValue value = trial.Value(nameOf(given));
        return value.IsError() ? value : SignalValue(value.IsEmpty() ? "bad" : "good");
    });
    sandbox.AddFunction("write", [&](const Given &given) -> SignalValue {
        const SignalValue value = trial.Value(nameOf(given));
        if (value.IsError() || given.size() != 2)
            return value.IsError() ? value
                                   : Result(Result::InvalidArgument, "write: сигнал и значение");
        trial.steps.push_back("записать " + given[1].ToString() + " в сигнал " + nameOf(given));
        return true;
    });
    sandbox.AddFunction(
        "journal",
        [&, left = ScriptRunner::MaximumMessages](const Given &given) mutable -> SignalValue {
            if (given.size() != 1)
                return Result(Result::InvalidArgument, "journal: нужен один текст");
            if (--left < 0)
                return Result(Result::LimitExceeded, "слишком много сообщений в журнал");
            trial.steps.push_back("в журнал: " + nameOf(given));
            return true;
        });
    TrialOutcome outcome = trial.Run(text, LuaForm::Block, 0, enSignalValueType::None);
    if (outcome.isDone)
        outcome.text =
            "выполнен" + std::string(outcome.steps.empty() ? ", ничего не записано" : "");
    return outcome;
}

} // namespace

TextLanguage ScriptLanguage()
{
    return {"script",
            "Действия по порядку, например if read(1) then write(1, false) end. Сигнал называют "
            "номером в «Сигналы по номерам» или путём в кавычках.",
            TextLanguage::Lua,
            true,
            &words,
            &check,
            &inputs,
            &run};
}

} // namespace Nodes
