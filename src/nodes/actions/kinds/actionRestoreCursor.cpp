#include "nodes/actions/kinds/actionRestoreCursor.h"

#include "nodes/model/KindBuilder.h"

namespace Nodes {

KindInfo actionRestoreCursor::Kind()
{
    return KindBuilder::For<actionRestoreCursor>("actionRestoreCursor", "Restore cursor",
                                                 "Возврат указателя");
}

} // namespace Nodes
