#include "nodes/actions/kinds/actionRestoreCursor.h"

#include "nodes/model/KindBuilder.h"

namespace Nodes {

KindInfo actionRestoreCursor::Kind()
{
    return KindBuilder::For<actionRestoreCursor>(NodeType::enNodeSubtype(0x10011),
                                                 "actionRestoreCursor", "Restore cursor",
                                                 "Возврат указателя");
}

} // namespace Nodes
