#include "nodes/drivers/BasicDriver.h"
#include "nodes/drivers/simulator/simulatorSignal.h"
#include "nodes/texts/LuaLanguages.h"
#include "nodes/texts/LuaTrial.h"
#include "nodes/texts/NodeTexts.h"

#include <algorithm>
#include <map>

namespace Nodes {

namespace {

constexpr int ownInputs = 3; // t, dt, value; then the signals

struct Neighbours
{
    std::string prefix; ///< of the paths of the driver's signals
    std::vector<const simulatorSignal *> signals;
};

Neighbours neighboursOf(const ConfigNode *node)
{
    Neighbours found;
    const BasicDriver *driver = node ? BasicDriver::Above(*node) : nullptr;
    if (!driver)
        return found;
    found.prefix = driver->GetPath() + "/";
    for (const BasicSignal *each : driver->GetSignals()) {
        if (const auto *signal = dynamic_cast<const simulatorSignal *>(each))
            found.signals.push_back(signal);
    }
    return found;
}

// All that a formula may mean by a name: a signal's own, its path or its way from the driver.
std::vector<const simulatorSignal *> called(const std::string &name, const Neighbours &among)
{
    const bool isWay = name.find('/') != std::string::npos;
    std::vector<const simulatorSignal *> found;
    for (const simulatorSignal *signal : among.signals) {
        const std::string path = isWay ? signal->GetPath() : std::string();
        if (signal->GetName() == name || (isWay && (path == name || path == among.prefix + name)))
            found.push_back(signal);
    }
    return found;
}

std::vector<TextWord> words(const ConfigNode *node)
{
    std::vector<TextWord> words{
        {TextWord::Variable, "t", "секунд от запуска имитатора"},
        {TextWord::Variable, "dt", "секунд от прошлого расчёта"},
        {TextWord::Variable, "value", "прошлое или записанное значение этого сигнала"},
        {TextWord::Function, "signal", "signal(\"имя\"): значение другого сигнала имитатора"}};
    std::map<std::string, std::vector<const simulatorSignal *>> byName;
    const Neighbours neighbours = neighboursOf(node);
    for (const simulatorSignal *signal : neighbours.signals)
        byName[signal->GetName()].push_back(signal);
    for (const auto &[name, signals] : byName) {
        for (const simulatorSignal *signal : signals) {
            const std::string way =
                signals.size() == 1 ? name : signal->GetPath().substr(neighbours.prefix.size());
            words.push_back({TextWord::Signal, "\"" + way + "\"", NodeTexts::MeaningOf(*signal)});
        }
    }
    const std::vector<TextWord> common = LuaCheck::CommonWords();
    words.insert(words.end(), common.begin(), common.end());
    return words;
}

std::vector<TextProblem> check(const std::string &text, const ConfigNode *node)
{
    std::vector<TextProblem> problems = LuaCheck::Syntax(text, LuaForm::Value);
    if (!problems.empty())
        return problems;
    const std::vector<LuaCheck::Reference> references = LuaCheck::References(text, {"signal"});
    const Neighbours neighbours = references.empty() ? Neighbours() : neighboursOf(node);
    for (const auto &[token, name] : references) {
        const std::size_t count = called(name, neighbours).size();
        if (count != 1)
            problems.push_back(
                {token.begin, token.length,
                 count == 0 ? "сигнала «" + name + "» в этом имитаторе нет"
                            : "«" + name + "» называются несколько сигналов: укажите путь"});
    }
    for (TextProblem &problem : LuaCheck::UnknownNames(text, words(nullptr)))
        problems.push_back(std::move(problem));
    return problems;
}

std::vector<TrialInput> inputs(const std::string &text, const ConfigNode *node)
{
    const auto *own = dynamic_cast<const simulatorSignal *>(node);
    const enSignalValueType type = own ? own->GetValueType() : enSignalValueType::Double;
    std::vector<TrialInput> inputs{
        {"t", "с от запуска", enSignalValueType::Double, "60"},
        {"dt", "с от прошлого расчёта", enSignalValueType::Double, "0.5"},
        {"value", "прошлое значение", type, own ? own->GetInitialValue().ToString() : "0"}};
    const Neighbours neighbours = neighboursOf(node);
    for (const auto &[token, name] : LuaCheck::References(text, {"signal"})) {
        const auto found = called(name, neighbours);
        const bool isListed = std::any_of(inputs.begin() + ownInputs, inputs.end(),
                                          [&name = name](const auto &i) { return i.name == name; });
        if (!isListed && found.size() == 1)
            inputs.push_back(NodeTexts::InputOf(name, *found[0]));
    }
    return inputs;
}

TrialOutcome run(const std::string &text, const ConfigNode *node,
                 const std::vector<TrialInput> &inputs)
{
    const auto *own = dynamic_cast<const simulatorSignal *>(node);
    LuaTrial trial(inputs, {});
    trial.Sandbox().AddFunction("signal", [&](const LuaSandbox::Arguments &given) -> SignalValue {
        if (given.size() != 1 || given[0].GetType() != enSignalValueType::String)
            return Result(Result::InvalidArgument, "signal: нужно одно имя в кавычках");
        return trial.Value(given[0].ToString());
    });
    TrialOutcome outcome = trial.Run(text.empty() ? "value" : text, LuaForm::Value, ownInputs,
                                     own ? own->GetValueType() : enSignalValueType::Double);
    if (outcome.isDone && own && !own->GetUnit().empty())
        outcome.text += " " + own->GetUnit();
    return outcome;
}

} // namespace

TextLanguage FormulaLanguage()
{
    return {"formula",
            "Выражение, например 50 + 10 * sin(t / 60), или несколько строк с return. Без формулы "
            "сигнал держит записанное значение.",
            TextLanguage::Lua,
            true,
            &words,
            &check,
            &inputs,
            &run};
}

} // namespace Nodes
