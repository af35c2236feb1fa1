#include "nodes/texts/LuaTrial.h"

#include "nodes/texts/LuaMessages.h"

#include <algorithm>
#include <cmath>

namespace Nodes {

namespace {

TrialOutcome failed(const Result &result)
{
    const LuaMessage message = LuaMessage::Of(result.GetDetail());
    const std::string where =
        message.line > 0 ? "строка " + std::to_string(message.line) + ": " : std::string();
    return {false, where + message.ToRussian()};
}

constexpr std::size_t mostShown = 200; // bytes of a value or a step

const char *nameOf(enSignalValueType type)
{
    return type == enSignalValueType::Bool ? "да или нет (true или false)" : "число";
}

TrialOutcome unfit(const SignalValue &value, enSignalValueType wanted)
{
    return {false, "«" + ShortText(value.ToString(), mostShown) + "» не подходит: нужно " +
                       nameOf(wanted)};
}

TrialOutcome outcomeOf(const SignalValue &value, enSignalValueType type)
{
    if (type == enSignalValueType::None)
        return {true, value.IsEmpty() ? std::string() : value.ToString()};
    if (value.IsEmpty())
        return {false, "значение не получено: нужно выражение или return"};
    if (value.IsNumber() && !std::isfinite(value.ToDouble()))
        return {false, "получается не число: деление на ноль или корень из отрицательного?"};
    const SignalValue converted = value.ConvertedTo(type);
    if (converted.IsError())
        return unfit(value, type);
    return {true, ShortText(converted.ToString(), mostShown)};
}

} // namespace

LuaTrial::LuaTrial(const std::vector<TrialInput> &inputs, LuaLimits limits)
    : m_sandbox(limits), m_inputs(inputs)
{
}

SignalValue LuaTrial::Value(const std::string &name) const
{
    const auto found = std::find_if(m_inputs.begin(), m_inputs.end(),
                                    [&](const TrialInput &input) { return input.name == name; });
    if (found == m_inputs.end())
        return Result(Result::NotFound, "сигнала «" + ShortText(name, mostShown) + "» нет");
    if (found->value.empty() && found->type != enSignalValueType::String)
        return {};
    const SignalValue value = SignalValue(found->value).ConvertedTo(found->type);
    return !value.IsError()
               ? value
               : Result(Result::WrongType, "значение «" + found->value + "» для «" + name +
                                               "» не подходит: нужно " + nameOf(found->type));
}

Result LuaTrial::runScript(const std::string &text, LuaForm form, std::size_t globals,
                           SignalValue &value)
{
    LuaSandbox::Script script = 0;
    const Result compiled = form == LuaForm::Block ? m_sandbox.CompileBlock("text", text, script)
                                                   : m_sandbox.Compile("text", text, script);
    if (!compiled)
        return compiled;
    for (std::size_t i = 0; i < std::min(globals, m_inputs.size()); ++i) {
        const SignalValue input = Value(m_inputs[i].name);
        if (input.IsError())
            return input.GetError();
        m_sandbox.SetVariable(script, m_inputs[i].name.c_str(), input);
    }
    return m_sandbox.Run(script, value);
}

TrialOutcome LuaTrial::Run(const std::string &text, LuaForm form, std::size_t globals,
                           enSignalValueType type)
{
    SignalValue value;
    const Result result = runScript(text, form, globals, value);
    TrialOutcome outcome = result ? outcomeOf(value, type) : failed(result);
    for (std::string &step : steps)
        outcome.steps.push_back(ShortText(step, mostShown));
    return outcome;
}

TrialOutcome LuaTrial::RunCondition(const std::string &text)
{
    SignalValue value;
    const Result result = runScript(text, LuaForm::Value, m_inputs.size(), value);
    const bool isUnfit = result && !value.IsEmpty() && value.GetType() != enSignalValueType::Bool;
    if (isUnfit)
        return unfit(value, enSignalValueType::Bool);
    return result ? outcomeOf(value, enSignalValueType::Bool) : failed(result);
}

} // namespace Nodes
