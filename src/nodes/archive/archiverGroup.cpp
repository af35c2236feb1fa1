#include "nodes/archive/archiverGroup.h"

#include "nodes/archive/ArchivedSignals.h"
#include "nodes/archive/HistoryTap.h"
#include "nodes/model/KindBuilder.h"
#include "nodes/model/validation/ValidationResults.h"
#include "nodes/signals/BasicSignal.h"
#include "nodes/system/systemCore.h"

#include <algorithm>

namespace Nodes {

archiverGroup::archiverGroup() = default;

archiverGroup::~archiverGroup() = default;

KindInfo archiverGroup::Kind()
{
    return KindBuilder::For<archiverGroup>("archiverGroup", "Archive group", "Группа архива")
        .Property<&archiverGroup::m_scope>(Prop::Scope, "All signals of", "Все сигналы из")
        .Refers({NodeType::TypeFolder, NodeType::TypeDriver, NodeType::TypeDriverGroup,
                 NodeType::TypeSignal})
        .Property<&archiverGroup::m_samples>(Prop::Samples, "Samples in memory",
                                             "Значений в памяти")
        .Range(1, 10000000)
        .Property<&archiverGroup::m_days>(Prop::Days, "Samples are kept for, days",
                                          "Хранить значения, суток")
        .Range(0, 36500)
        .Property<&archiverGroup::m_megabytes>(Prop::Megabytes, "Size of a signal at most, MB",
                                               "Размер сигнала не более, МБ")
        .Range(0, 1000000)
        .Property<&archiverGroup::m_deadband>(Prop::Deadband, "Deadband of the archive",
                                              "Зона нечувствительности архива")
        .Range(0, 1e12);
}

Result archiverGroup::Start()
{
    const systemCore *core = GetCore();
    if (!core)
        return Result(this, Result::NotAvailable, "no running station");
    if (!m_taps.empty())
        return Result();
    Result result;
    for (const auto &[signal, order] : FindArchivedSignals(*this)) {
        if (order.by != this)
            continue;
        auto tap = std::make_unique<HistoryTap>();
        const Result started = tap->Start(*core, *signal, {m_samples, m_deadband});
        if (started)
            m_taps.push_back(std::move(tap));
        else
            result = started;
    }
    const Result own = ConfigNode::Start();
    return result ? own : result;
}

Result archiverGroup::Stop()
{
    m_taps.clear();
    return ConfigNode::Stop();
}

void archiverGroup::Validate(ValidationResults &results) const
{
    ConfigNode::Validate(results);
    if (m_scope.empty())
        results.Add(GetNodeLink(), Result(this, Result::NotFound, "scope"),
                    GetName() + ": не указано, какие сигналы архивировать");
}

} // namespace Nodes
