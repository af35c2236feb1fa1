#include "nodes/visual/elements/widgetCheckBox.h"

#include "nodes/model/KindBuilder.h"

namespace Nodes {

widgetCheckBox::widgetCheckBox() : BasicFramedWidget(NColor(250, 251, 252), 1) {}

KindInfo widgetCheckBox::Kind()
{
    return KindBuilder::For<widgetCheckBox>("checkBox", "Check box", "Флажок")
        .Inherit<BasicFramedWidget>()
        .Property<&widgetCheckBox::m_image>(Prop::Image, "Check mark", "Изображение отметки");
}

void widgetCheckBox::CollectDemands(AccessDemands &demands) const
{
    if (!GetSignalLink().isEmpty())
        demands.push_back({PrivilegeWrite, GetSignalLink()});
}

} // namespace Nodes
