#include "widgets/scene/editing/arrange/HiddenElements.h"

#include "widgets/scene/editing/arrange/EditGroup.h"

#include "nodes/model/properties/BasicProperty.h"
#include "nodes/visual/BasicWidget.h"

namespace Widgets {

namespace {

// What rights hide at run time is not hidden here.
bool isHidden(const Nodes::BasicWidget &element)
{
    const Nodes::BasicProperty *property =
        element.GetPropertyByValueId(Nodes::BasicWidget::Prop::Visible);
    return property && !boost::any_cast<bool>(property->GetPropertyValue());
}

} // namespace

std::vector<Nodes::BasicWidget *> HiddenElements::in(const Nodes::ConfigNode &document)
{
    std::vector<Nodes::BasicWidget *> hidden;
    for (const Nodes::NodeLink &link : document.GetNodes(true)) {
        auto *element = dynamic_cast<Nodes::BasicWidget *>(link.GetNode());
        if (element && isHidden(*element))
            hidden.push_back(element);
    }
    return hidden;
}

QUndoCommand *HiddenElements::show(const std::vector<Nodes::BasicWidget *> &hidden)
{
    EditGroup group(QStringLiteral("Показ скрытых виджетов"));
    for (const Nodes::BasicWidget *element : hidden)
        group.set(*element, Nodes::BasicWidget::Prop::Visible, true);
    return group.take();
}

} // namespace Widgets
