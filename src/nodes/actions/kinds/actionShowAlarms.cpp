#include "nodes/actions/kinds/actionShowAlarms.h"

#include "nodes/model/KindBuilder.h"

namespace Nodes {

KindInfo actionShowAlarms::Kind()
{
    return KindBuilder::For<actionShowAlarms>("actionShowAlarms", "Show alarms", "Показ тревог");
}

} // namespace Nodes
