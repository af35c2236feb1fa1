#include "nodes/archive/archiverSourceConnector.h"

#include "nodes/archive/HistoryTap.h"
#include "nodes/archive/systemArchiver.h"
#include "nodes/model/KindBuilder.h"
#include "nodes/model/NodesCollection.h"
#include "nodes/model/validation/ValidationResults.h"
#include "nodes/signals/BasicSignal.h"
#include "nodes/system/systemCore.h"

namespace Nodes {

namespace {

bool isArchived(const BasicNode &node)
{
    const NodesCollection *project = node.GetNodesCollection();
    NodeLinks found;
    return project && project->FindNodes(NodeType(systemArchiver::Code), &found) > 0;
}

} // namespace

archiverSourceConnector::archiverSourceConnector() : m_tap(std::make_unique<HistoryTap>()) {}

archiverSourceConnector::~archiverSourceConnector() = default;

KindInfo archiverSourceConnector::Kind()
{
    return KindBuilder::For<archiverSourceConnector>("archiverSource", "Archive source",
                                                     "Источник архива")
        .Property<&archiverSourceConnector::m_signal>(Prop::Signal, "Signal", "Сигнал")
        .Refers({NodeType::TypeSignal})
        .Property<&archiverSourceConnector::m_samples>(Prop::Samples, "Samples in memory",
                                                       "Значений в памяти")
        .Range(1, 10000000)
        .Property<&archiverSourceConnector::m_days>(Prop::Days, "Samples are kept for, days",
                                                    "Хранить значения, суток")
        .Range(0, 36500)
        .Property<&archiverSourceConnector::m_megabytes>(Prop::Megabytes, "Size at most, MB",
                                                         "Размер не более, МБ")
        .Range(0, 1000000)
        .Property<&archiverSourceConnector::m_deadband>(Prop::Deadband, "Deadband of the archive",
                                                        "Зона нечувствительности архива")
        .Range(0, 1e12);
}

BasicSignal *archiverSourceConnector::signal() const
{
    return dynamic_cast<BasicSignal *>(m_signal.GetNode());
}

BasicNode *archiverSourceConnector::GetSource() const
{
    return signal();
}

Result archiverSourceConnector::Start()
{
    const systemCore *core = GetCore();
    const BasicSignal *source = signal();
    if (!core || !source)
        return Result(this, Result::NotFound, "signal of " + GetName());
    if (m_tap->IsRunning())
        return Result();
    const Result started = m_tap->Start(*core, *source, {m_samples, m_deadband});
    return started ? ConfigNode::Start() : started;
}

Result archiverSourceConnector::Stop()
{
    m_tap->Stop();
    return ConfigNode::Stop();
}

void archiverSourceConnector::Validate(ValidationResults &results) const
{
    ConfigNode::Validate(results);
    const BasicSignal *source = signal();
    if (!source && m_signal.isEmpty())
        results.Add(GetNodeLink(), Result(this, Result::NotFound, "signal"),
                    GetName() + ": не указан сигнал");
    else if (source && source->GetValueType() == enSignalValueType::String && !isArchived(*this))
        results.Add(GetNodeLink(), Result(this, Result::InvalidArgument, "signal"),
                    GetName() + ": история в памяти хранит числа, а «" + source->GetName() +
                        "» — текст");
}

} // namespace Nodes
