#include "nodes/visual/ElementGroupProperty.h"

#include "nodes/model/BasicNodeRare.h"
#include "nodes/model/properties/PropertyText.h"
#include "nodes/visual/BasicWidget.h"

namespace Nodes {

const std::string &ElementGroupProperty::Of(const BasicNode &node)
{
    static const std::string none;
    return node.m_rare ? node.m_rare->elementGroup : none;
}

PropertyDescriptor ElementGroupProperty::Descriptor()
{
    PropertyDescriptor d;
    d.valueId = BasicWidget::Prop::Group.valueId;
    d.key = BasicWidget::Prop::Group.key;
    d.nameEn = "Group of elements";
    d.nameRu = "Группа элементов";
    d.editorHint = "shared";
    d.binding = {PropertyType::String, &get, &set, &format, &parse, &equal, &copy, &data};
    return d;
}

void ElementGroupProperty::take(BasicNode &node, const std::string &group)
{
    if (group != Of(node))
        node.rare().elementGroup = group;
}

boost::any ElementGroupProperty::get(const BasicNode &node)
{
    return Of(node);
}

bool ElementGroupProperty::set(BasicNode &node, const boost::any &value)
{
    const auto *group = boost::any_cast<std::string>(&value);
    if (group)
        take(node, *group);
    return group != nullptr;
}

std::string ElementGroupProperty::format(const PropertyDescriptor &d, const BasicNode &node)
{
    return FormatProperty(d, Of(node));
}

bool ElementGroupProperty::parse(const PropertyDescriptor &d, BasicNode &node,
                                 std::string_view text)
{
    std::string group;
    const bool isRead = ParseProperty(d, text, nullptr, group);
    if (isRead)
        take(node, group);
    return isRead;
}

bool ElementGroupProperty::equal(const BasicNode &left, const BasicNode &right)
{
    return Of(left) == Of(right);
}

void ElementGroupProperty::copy(const BasicNode &from, BasicNode &to)
{
    take(to, Of(from));
}

const void *ElementGroupProperty::data(const BasicNode &node)
{
    return &Of(node);
}

} // namespace Nodes
