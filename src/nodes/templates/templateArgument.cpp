#include "nodes/templates/templateArgument.h"

#include "nodes/model/KindBuilder.h"

namespace Nodes {

KindInfo templateArgument::Kind()
{
    return KindBuilder::For<templateArgument>("templateArgument", "Argument", "Аргумент шаблона")
        .Property<&templateArgument::m_node>(Prop::Node, "Node", "Узел")
        .Hint("any");
}

} // namespace Nodes
