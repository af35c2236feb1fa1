#include "nodes/templates/templateArgument.h"

#include "nodes/model/KindBuilder.h"

namespace Nodes {

KindInfo templateArgument::Kind()
{
    return KindBuilder::For<templateArgument>(NodeType::enNodeSubtype(0xF001), "templateArgument",
                                              "Argument", "Аргумент шаблона")
        .Property<&templateArgument::m_node>(15001, "node", "Node", "Узел");
}

} // namespace Nodes
