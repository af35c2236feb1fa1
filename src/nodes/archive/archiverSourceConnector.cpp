#include "nodes/archive/archiverSourceConnector.h"

#include "nodes/archive/HistoryService.h"
#include "nodes/archive/SessionHistory.h"
#include "nodes/model/KindBuilder.h"
#include "nodes/model/validation/ValidationResults.h"
#include "nodes/signals/BasicSignal.h"
#include "nodes/system/systemCore.h"
#include "nodes/values/ValueCell.h"

namespace Nodes {

archiverSourceConnector::archiverSourceConnector() = default;

archiverSourceConnector::~archiverSourceConnector()
{
    disconnect();
}

KindInfo archiverSourceConnector::Kind()
{
    return KindBuilder::For<archiverSourceConnector>("archiverSource", "Archive source",
                                                     "Источник архива")
        .Property<&archiverSourceConnector::m_signal>(Prop::Signal, "Signal", "Сигнал")
        .Refers({NodeType::TypeSignal})
        .Property<&archiverSourceConnector::m_samples>(Prop::Samples, "Samples in memory",
                                                       "Значений в памяти")
        .Range(1, 10000000);
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
    systemCore *core = GetCore();
    const BasicSignal *source = signal();
    if (!core || !source)
        return Result(this, Result::NotFound, "signal of " + GetName());
    if (m_cell)
        return Result();
    auto history = std::make_shared<SessionHistory>(std::size_t(m_samples));
    const Result added = core->GetHistory().AddSource(source->GetId(), history);
    if (!added)
        return added;
    m_history = std::move(history);
    m_cell = source->GetCell();
    m_cell->AddTap(m_history);
    return ConfigNode::Start();
}

void archiverSourceConnector::disconnect()
{
    if (!m_cell)
        return;
    m_cell->RemoveTap(*m_history);
    m_cell.reset();
    m_history.reset();
}

Result archiverSourceConnector::Stop()
{
    disconnect();
    return ConfigNode::Stop();
}

void archiverSourceConnector::Validate(ValidationResults &results) const
{
    ConfigNode::Validate(results);
    const BasicSignal *source = signal();
    if (!source && m_signal.isEmpty())
        results.Add(GetNodeLink(), Result(this, Result::NotFound, "signal"),
                    GetName() + ": не указан сигнал");
    else if (source && source->GetValueType() == enSignalValueType::String)
        results.Add(GetNodeLink(), Result(this, Result::InvalidArgument, "signal"),
                    GetName() + ": история хранит числа, а «" + source->GetName() + "» — текст");
}

} // namespace Nodes
