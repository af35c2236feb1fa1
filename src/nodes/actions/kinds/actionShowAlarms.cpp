#include "nodes/actions/kinds/actionShowAlarms.h"

#include "nodes/model/KindBuilder.h"

namespace Nodes {

KindInfo actionShowAlarms::Kind()
{
    return KindBuilder::For<actionShowAlarms>(NodeType::enNodeSubtype(0x10012), "actionShowAlarms",
                                              "Show alarms", "Показ тревог");
}

} // namespace Nodes
