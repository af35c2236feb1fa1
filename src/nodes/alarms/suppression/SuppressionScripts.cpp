#include "nodes/alarms/suppression/SuppressionScripts.h"

#include "nodes/scripts/LuaSandbox.h"
#include "nodes/values/ValueCell.h"
#include "nodes/values/ValueSubscription.h"

#include <algorithm>
#include <atomic>
#include <utility>

namespace Nodes {

namespace {

bool isTrusted(const SignalValue &value)
{
    return value.GetQuality() != Quality::Bad && value.GetQuality() != Quality::Stale;
}

} // namespace

struct SuppressionScripts::Watched
{
    explicit Watched(Script s) : script(std::move(s)), subscriptions(script.inputs.size()) {}

    void Evaluate(LuaSandbox &sandbox, const Tell &tell);
    void Fail(const std::string &error, const Tell &tell);
    void Publish(SignalValue value);

    const Script script;
    std::vector<ValueSubscription> subscriptions;
    std::shared_ptr<ValueCell> cell = std::make_shared<ValueCell>();
    LuaSandbox::Script compiled = 0;
    std::atomic<bool> isChanged{true};
    bool isUsable = false;
    bool hasFailed = false;
};

void SuppressionScripts::Watched::Publish(SignalValue value)
{
    if (value != cell->Value())
        cell->Publish(std::move(value));
}

void SuppressionScripts::Watched::Fail(const std::string &error, const Tell &tell)
{
    Publish(Result(Result::Failed, error));
    if (!std::exchange(hasFailed, true))
        tell(script.alarm, error);
}

void SuppressionScripts::Watched::Evaluate(LuaSandbox &sandbox, const Tell &tell)
{
    bool areTrusted = true;
    for (std::size_t i = 0; i < script.inputs.size(); ++i) {
        const SignalValue input = script.inputs[i]->Measured();
        if (input.IsEmpty())
            return;
        areTrusted = areTrusted && isTrusted(input);
        sandbox.SetVariable(compiled, ("s" + std::to_string(i + 1)).c_str(), input);
    }
    if (!areTrusted)
        return Publish(Result(Result::NotConnected));
    SignalValue value;
    const Result result = sandbox.Run(compiled, value);
    if (!result)
        return Fail(result.GetDetail(), tell);
    if (value.GetType() != enSignalValueType::Bool)
        return Fail("the script gives no logical value", tell);
    hasFailed = false;
    Publish(value);
}

SuppressionScripts::SuppressionScripts() = default;

SuppressionScripts::~SuppressionScripts()
{
    Stop();
}

LuaLimits SuppressionScripts::Limits()
{
    return {20000, 20, 8u << 20};
}

std::shared_ptr<ValueCell> SuppressionScripts::Add(Script script)
{
    m_watched.push_back(std::make_unique<Watched>(std::move(script)));
    return m_watched.back()->cell;
}

void SuppressionScripts::Start(Tell tell)
{
    if (m_watched.empty())
        return;
    m_tell = std::move(tell);
    m_sandbox = std::make_unique<LuaSandbox>(Limits());
    for (const auto &watched : m_watched) {
        const Script &script = watched->script;
        const bool areThere =
            std::find(script.inputs.begin(), script.inputs.end(), nullptr) == script.inputs.end();
        const Result compiled =
            areThere ? m_sandbox->Compile("suppressScript", script.text, watched->compiled)
                     : Result(Result::NotFound, "a signal of the script is gone");
        watched->isUsable = compiled.IsSuccess();
        if (!compiled) {
            watched->Fail(compiled.GetDetail(), m_tell);
            continue;
        }
        for (std::size_t i = 0; i < script.inputs.size(); ++i)
            watched->subscriptions[i].Connect(
                script.inputs[i],
                [this, changed = watched.get()](const SignalValue &) {
                    changed->isChanged = true;
                    m_thread.Wake();
                },
                ValueFeed::Measured);
    }
    m_thread.Start([this] { return work(); });
}

void SuppressionScripts::Stop()
{
    for (const auto &watched : m_watched) {
        for (ValueSubscription &subscription : watched->subscriptions)
            subscription.Disconnect();
    }
    m_thread.Stop();
    m_watched.clear();
    m_sandbox.reset();
}

Timestamp SuppressionScripts::work()
{
    for (const auto &watched : m_watched) {
        if (watched->isUsable && watched->isChanged.exchange(false))
            watched->Evaluate(*m_sandbox, m_tell);
    }
    return DeadlineThread::Never;
}

} // namespace Nodes
