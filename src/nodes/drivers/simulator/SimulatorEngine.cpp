#include "nodes/drivers/simulator/SimulatorEngine.h"

#include "nodes/drivers/SignalSink.h"

#include <algorithm>
#include <cctype>
#include <cmath>
#include <limits>

namespace Nodes {

namespace {

constexpr auto ambiguous = std::numeric_limits<std::size_t>::max();

/// The text without its digits: an error that quotes a changing number is still the same error.
std::string withoutDigits(std::string text)
{
    text.erase(std::remove_if(text.begin(), text.end(),
                              [](unsigned char c) { return std::isdigit(c) != 0; }),
               text.end());
    return text;
}

std::string lastPart(const std::string &path)
{
    return path.substr(path.rfind('/') + 1);
}

SignalValue checked(enSignalValueType type, const SignalValue &value)
{
    if (value.IsEmpty())
        return Result(Result::WrongType, "the formula gives no value");
    if (value.IsNumber() && !std::isfinite(value.ToDouble()))
        return Result(Result::OutOfRange, "the formula gives " + value.ToString());
    return value.ConvertedTo(type);
}

} // namespace

SimulatorEngine::SimulatorEngine(Report report, LuaLimits limits)
    : m_report(std::move(report)), m_sandbox(limits)
{
    m_sandbox.AddFunction("signal", [this](const auto &arguments) { return lookUp(arguments); });
}

void SimulatorEngine::addName(const std::string &name, std::size_t index)
{
    const auto [place, isNew] = m_byName.emplace(name, index);
    if (!isNew && place->second != index)
        place->second = ambiguous;
}

std::size_t SimulatorEngine::Add(SimulatedSignal signal)
{
    const std::size_t index = m_entries.size();
    addName(signal.path, index);
    addName(signal.relativePath, index);
    addName(lastPart(signal.path), index);
    Entry &entry = m_entries.emplace_back();
    entry.value = signal.initial;
    entry.compiled = m_sandbox.Compile(
        lastPart(signal.path), signal.formula.empty() ? "value" : signal.formula, entry.script);
    entry.signal = std::move(signal);
    return index;
}

void SimulatorEngine::Write(std::size_t index, const SignalValue &value)
{
    m_entries[index].value = value;
}

SignalValue SimulatorEngine::lookUp(const LuaSandbox::Arguments &arguments)
{
    if (arguments.size() != 1 || arguments[0].GetType() != enSignalValueType::String)
        return Result(Result::InvalidArgument, "signal() wants one name in quotes");
    const std::string name = arguments[0].ToString();
    const auto found = m_byName.find(name);
    if (found == m_byName.end())
        return Result(Result::NotFound, "no signal '" + name + "' in this driver");
    if (found->second == ambiguous)
        return Result(Result::InvalidArgument, "several signals are called '" + name + "'");
    const Entry &asked = m_entries[found->second];
    if (asked.isLent)
        return asked.value;
    const SignalValue &outcome = asked.outcome;
    if (outcome.IsError() || outcome.IsEmpty())
        m_missed.push_back(found->second);
    return outcome.IsError() ? SignalValue(Result(Result::Failed, "signal '" + name + "' is bad"))
                             : outcome;
}

SignalValue SimulatorEngine::run(Entry &entry, double time, double elapsed)
{
    if (!entry.compiled)
        return entry.compiled;
    m_sandbox.SetVariable(entry.script, "t", time);
    m_sandbox.SetVariable(entry.script, "dt", elapsed);
    m_sandbox.SetVariable(entry.script, "value", entry.value);
    SignalValue value;
    const Result result = m_sandbox.Run(entry.script, value);
    return result ? checked(entry.signal.type, value) : SignalValue(result);
}

void SimulatorEngine::evaluate(Entry &entry, double time, double elapsed)
{
    m_missed.clear();
    entry.outcome = run(entry, time, elapsed);
    entry.missed = m_missed;
    if (!entry.outcome.IsError())
        entry.value = entry.outcome;
}

/// Whether the entry fails for nothing but signals that may be lent.
bool SimulatorEngine::isHeldUp(const Entry &entry) const
{
    return entry.outcome.IsError() && !entry.missed.empty() &&
           std::all_of(entry.missed.begin(), entry.missed.end(),
                       [this](std::size_t missed) { return m_entries[missed].isLent; });
}

/// Takes away what waits for a signal that is not lent.
void SimulatorEngine::dropBlocked()
{
    for (bool isSettled = false; !isSettled;) {
        isSettled = true;
        for (Entry &entry : m_entries) {
            if (!entry.isLent || isHeldUp(entry))
                continue;
            entry.isLent = false;
            isSettled = false;
        }
    }
}

/// Formulas that wait for each other in a circle would never give a value: they see the last good
/// one, or the initial one, of each other. One that fails even so lends nothing, and what needs it
/// stays bad.
void SimulatorEngine::closeCircles(double time, double elapsed)
{
    for (Entry &entry : m_entries)
        entry.isLent = entry.outcome.IsError() && !entry.missed.empty();
    for (bool isSettled = false; !isSettled;) {
        isSettled = true;
        dropBlocked();
        for (Entry &entry : m_entries) {
            if (!entry.isLent || m_isAborted)
                continue;
            entry.attempt = run(entry, time, elapsed);
            if (!entry.attempt.IsError())
                continue;
            entry.outcome = entry.attempt;
            entry.isLent = false;
            isSettled = false;
        }
    }
    for (Entry &entry : m_entries) {
        if (entry.isLent)
            entry.outcome = entry.value = entry.attempt;
        entry.isLent = false;
    }
}

/// Evaluates one formula of the first step and those that this lets succeed in turn. Each runs once
/// by itself and once for every signal it waited for.
void SimulatorEngine::settle(std::size_t index, double time, double elapsed)
{
    std::vector<std::size_t> ready{index};
    while (!ready.empty() && !m_isAborted) {
        const std::size_t current = ready.back();
        Entry &entry = m_entries[current];
        ready.pop_back();
        if (!entry.outcome.IsError() && !entry.outcome.IsEmpty())
            continue;
        evaluate(entry, time, elapsed);
        if (entry.outcome.IsError()) {
            for (const std::size_t missed : m_missed)
                m_entries[missed].waiting.push_back(current);
        } else {
            ready.insert(ready.end(), entry.waiting.begin(), entry.waiting.end());
            entry.waiting.clear();
        }
    }
}

void SimulatorEngine::report(Entry &entry)
{
    const Result error = entry.outcome.GetError();
    const std::string text = error ? std::string() : withoutDigits(error.ToString());
    if (text == entry.reported)
        return;
    entry.reported = text;
    m_report(entry.signal, error);
}

bool SimulatorEngine::Step(double time, double elapsed)
{
    for (std::size_t i = 0; i < m_entries.size() && !m_isAborted; ++i) {
        if (m_isFirstStep)
            settle(i, time, elapsed);
        else
            evaluate(m_entries[i], time, elapsed);
    }
    closeCircles(time, elapsed);
    if (m_isAborted)
        return false;
    m_isFirstStep = false;
    for (Entry &entry : m_entries)
        report(entry);
    return true;
}

} // namespace Nodes
