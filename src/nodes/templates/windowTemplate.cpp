#include "nodes/templates/windowTemplate.h"

#include "nodes/model/KindBuilder.h"

namespace Nodes {

KindInfo windowTemplate::Kind()
{
    return KindBuilder::For<windowTemplate>("windowTemplate", "Window template", "Шаблон окна")
        .Inherit<BasicWindow>()
        .Property<&windowTemplate::m_titleText>(Prop::Title, "Title of instances",
                                                "Заголовок экземпляров")
        .Hint("title")
        .Children({NodeType::TypeWidget, NodeType::TypeAction,
                   NodeType(NodeType::SubtypeTemplateParameter)});
}

} // namespace Nodes
