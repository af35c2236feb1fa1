#include "nodes/scripts/ScriptHost.h"

#include "nodes/model/NodesCollection.h"
#include "nodes/scripts/ScriptTreeCalls.h"
#include "nodes/signals/BasicSignal.h"
#include "nodes/values/ValueCell.h"

namespace Nodes {

namespace {

Result wants(const char *what)
{
    return Result(Result::InvalidArgument, what);
}

} // namespace

ScriptHost::ScriptHost(const ScriptJob &job, ScriptTreeCalls &calls, LuaSandbox &sandbox)
    : m_job(job), m_calls(calls)
{
    sandbox.AddFunction("read", [this](const Arguments &given) { return read(given); });
    sandbox.AddFunction("quality", [this](const Arguments &given) { return quality(given); });
    sandbox.AddFunction("write", [this](const Arguments &given) { return write(given); });
    sandbox.AddFunction("journal", [this](const Arguments &given) { return journal(given); });
}

BasicSignal *ScriptHost::lookUp(const SignalValue &name, Result &error) const
{
    ConfigNode *node = nullptr;
    if (name.GetType() != enSignalValueType::String) {
        const int number = name.ToInt();
        const bool exists = number >= 1 && number <= int(m_job.inputs.size());
        node = exists ? m_job.inputs[std::size_t(number) - 1].GetNode() : nullptr;
    } else if (const NodesCollection *project = NodesCollection::Current()) {
        const std::vector<ConfigNode *> nodes = project->GetNodesByPath(name.ToString());
        if (nodes.size() > 1)
            error = Result(Result::InvalidArgument,
                           "several signals are called '" + name.ToString() + "'");
        node = nodes.size() == 1 ? nodes.front() : nullptr;
    }
    auto *signal = dynamic_cast<BasicSignal *>(node);
    if (!signal && error)
        error = Result(Result::NotFound, "no signal '" + name.ToString() + "'");
    return signal;
}

const ScriptHost::Found *ScriptHost::find(const Arguments &arguments, Result &error)
{
    if (arguments.empty() || arguments[0].IsEmpty()) {
        error = wants("a signal is named by its path in quotes or by its number");
        return nullptr;
    }
    const std::string key = arguments[0].ToString();
    const auto known = m_found.find(key);
    if (known != m_found.end())
        return &known->second;
    Found found;
    const Result called = m_calls.Call([&] {
        if (const BasicSignal *signal = lookUp(arguments[0], error))
            found = {signal->GetNodeLink(), signal->GetCell()};
    });
    if (!called)
        error = called;
    return found.cell ? &(m_found[key] = found) : nullptr;
}

SignalValue ScriptHost::read(const Arguments &arguments)
{
    Result error;
    const Found *found = find(arguments, error);
    if (!found)
        return error;
    const SignalValue value = found->cell->Value();
    const Quality quality = value.GetQuality();
    return quality == Quality::Bad || quality == Quality::Stale ? SignalValue() : value;
}

SignalValue ScriptHost::quality(const Arguments &arguments)
{
    Result error;
    const Found *found = find(arguments, error);
    return found ? SignalValue(QualityToken(found->cell->Value().GetQuality()))
                 : SignalValue(error);
}

SignalValue ScriptHost::write(const Arguments &arguments)
{
    if (arguments.size() != 2)
        return wants("write(signal, value) wants two arguments");
    Result error;
    const Found *found = find(arguments, error);
    if (!found)
        return error;
    Result written(Result::NotFound, "the signal is gone");
    const Result called = m_calls.Call([&] {
        const ActingScope acting(m_job.user);
        if (auto *signal = dynamic_cast<BasicSignal *>(found->signal.GetNode()))
            written = signal->WriteValue(arguments[1]);
    });
    const Result &result = called ? written : called;
    if (result)
        return true;
    if (result == Result::AccessDenied)
        m_denial = result;
    return Result(result.GetType(),
                  "write('" + arguments[0].ToString() + "'): " + result.ToString());
}

SignalValue ScriptHost::journal(const Arguments &arguments)
{
    if (arguments.size() != 1)
        return wants("journal(text) wants one argument");
    if (++m_messages > ScriptRunner::MaximumMessages)
        return Result(Result::LimitExceeded, "too many messages in one run");
    const std::string text = arguments[0].ToString();
    const Result called = m_calls.Call([&] { m_job.journal(text); });
    return called ? SignalValue(true) : SignalValue(called);
}

} // namespace Nodes
