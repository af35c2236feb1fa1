#include "nodes/actions/kinds/actionShowTrend.h"

#include "nodes/model/KindBuilder.h"

namespace Nodes {

KindInfo actionShowTrend::Kind()
{
    return KindBuilder::For<actionShowTrend>("actionShowTrend", "Show trend", "Показ тренда")
        .Property<&actionShowTrend::m_signals>(Prop::Signals, "Signals", "Сигналы")
        .Refers({NodeType::TypeSignal});
}

} // namespace Nodes
