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

TrialOutcome outcomeOf(const SignalValue &value, enSignalValueType type)
{
    if (type == enSignalValueType::None)
        return {true, value.IsEmpty() ? std::string() : value.ToString()};
    if (value.IsEmpty())
        return {false, "значение не получено: нужно выражение или return"};
    if (value.IsNumber() && !std::isfinite(value.ToDouble()))
        return {false, "получается не число: деление на ноль или корень из отрицательного?"};
    const bool isLogical = type == enSignalValueType::Bool;
    const SignalValue converted = value.ConvertedTo(type);
    if (converted.IsError() || (isLogical && value.GetType() != enSignalValueType::Bool))
        return {false, "«" + value.ToString() + "» не подходит: нужно " +
                           (isLogical ? "да или нет (true или false)" : "число")};
    return {true, converted.ToString()};
}

} // namespace

LuaTrial::LuaTrial(const std::vector<TrialInput> &inputs) : m_inputs(inputs) {}

SignalValue LuaTrial::Value(const std::string &name) const
{
    const auto found = std::find_if(m_inputs.begin(), m_inputs.end(),
                                    [&](const TrialInput &input) { return input.name == name; });
    return found == m_inputs.end() ? Result(Result::NotFound, "сигнала «" + name + "» нет")
                                   : SignalValue(found->value).ConvertedTo(found->type);
}

TrialOutcome LuaTrial::Run(const std::string &text, LuaForm form, bool areGlobals,
                           enSignalValueType type)
{
    LuaSandbox::Script script = 0;
    const Result compiled = form == LuaForm::Block ? m_sandbox.CompileBlock("text", text, script)
                                                   : m_sandbox.Compile("text", text, script);
    if (!compiled)
        return failed(compiled);
    for (const TrialInput &input : m_inputs) {
        if (areGlobals)
            m_sandbox.SetVariable(script, input.name.c_str(), Value(input.name));
    }
    SignalValue value;
    const Result result = m_sandbox.Run(script, value);
    TrialOutcome outcome = result ? outcomeOf(value, type) : failed(result);
    outcome.steps = std::move(steps);
    return outcome;
}

} // namespace Nodes
