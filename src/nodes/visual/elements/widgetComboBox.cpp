#include "nodes/visual/elements/widgetComboBox.h"

#include "nodes/model/KindBuilder.h"
#include "nodes/model/validation/ValidationResults.h"
#include "nodes/signals/BasicSignal.h"
#include "nodes/values/NumberText.h"
#include "nodes/visual/elements/comboItem.h"

namespace Nodes {

namespace {

bool isSame(const SignalValue &item, const SignalValue &value)
{
    if (item.GetType() == enSignalValueType::Double || value.GetType() == enSignalValueType::Double)
        return FormatFixed(item.ToDouble(), 6) == FormatFixed(value.ToDouble(), 6);
    return item.ToString() == value.ToString();
}

} // namespace

widgetComboBox::widgetComboBox() : BasicTextWidget(NColor(250, 251, 252), 1, AlignmentLeft) {}

KindInfo widgetComboBox::Kind()
{
    return KindBuilder::For<widgetComboBox>("comboBox", "Combo box", "Выпадающий список")
        .Inherit<BasicTextWidget>()
        .Property<&widgetComboBox::m_targets>(Prop::Targets, "Written nodes", "Куда записывается")
        .Refers({NodeType::TypeSignal, NodeType::TypeWidget})
        .Property<&widgetComboBox::m_isPopupUpward>(Prop::PopupUp, "List opens upward",
                                                    "Список раскрывается вверх")
        .Property<&widgetComboBox::m_isConfirmed>(Prop::Confirm, "Ask before writing",
                                                  "Спрашивать перед записью")
        .Property<&widgetComboBox::m_selectionColor>(Prop::SelectionColor, "Selection colour",
                                                     "Цвет выделения")
        .Property<&widgetComboBox::m_editTimeout>(Prop::EditTimeout,
                                                  "Choice ends without input after, s; 0: never",
                                                  "Выбор прекращается без нажатий через, с; 0: нет")
        .Range(0, 3600)
        .Property<&widgetComboBox::m_currentIndex>(Prop::Index, "Current index", "Текущий вариант")
        .Range(-1, 9999)
        .Children({NodeType(comboItem::Kind().type)});
}

StringValueMap widgetComboBox::GetItems() const
{
    StringValueMap items;
    const BasicSignal *signal = GetSignal();
    for (const auto &child : Children()) {
        const auto *item = dynamic_cast<const comboItem *>(child.get());
        if (!item)
            continue;
        const SignalValue text(item->GetValueText());
        items.emplace_back(item->GetText(), signal ? signal->Convert(text) : text);
    }
    return items;
}

int widgetComboBox::FindItem(const StringValueMap &items, const SignalValue &value)
{
    if (value.GetQuality() == Quality::Bad)
        return -1;
    for (std::size_t i = 0; i < items.size(); ++i) {
        if (!items[i].second.IsError() && isSame(items[i].second, value))
            return static_cast<int>(i);
    }
    return -1;
}

void widgetComboBox::GetWriteNodes(NodesArray &nodes) const
{
    for (const NodeLink &target : m_targets)
        nodes.push_back(target);
    if (m_targets.empty() && !GetSignalLink().isEmpty())
        nodes.push_back(GetSignalLink());
}

Result widgetComboBox::WriteNode(const NodeLink &target, const SignalValue &value)
{
    ConfigNode *node = target.GetNode();
    if (auto *signal = dynamic_cast<BasicSignal *>(node))
        return signal->WriteValue(value);
    auto *element = dynamic_cast<BasicWidget *>(node);
    if (element && element != this)
        return element->BasicWidget::WriteValue(value); // lists may target each other
    return Result(this, Result::NotFound, GetPath() + ", " + std::to_string(target.GetNodeId()));
}

Result widgetComboBox::WriteValue(const SignalValue &value)
{
    NodesArray nodes;
    GetWriteNodes(nodes);
    if (nodes.empty())
        return Result(this, Result::NotFound, GetPath());
    for (const NodeLink &node : nodes) {
        const Result result = WriteNode(node, value);
        if (!result)
            return result;
    }
    return Result();
}

std::string widgetComboBox::GetDisplayText(const SignalValue &value) const
{
    const StringValueMap items = GetItems();
    const int index = FindItem(items, value);
    return index < 0 ? NoValueText : items[std::size_t(index)].first;
}

void widgetComboBox::Validate(ValidationResults &results) const
{
    BasicTextWidget::Validate(results);
    for (const auto &[text, value] : GetItems()) {
        if (value.IsError())
            results.Add(GetNodeLink(), value.GetError(),
                        "Список «" + GetPath() + "»: значение варианта «" + text +
                            "» не подходит к типу сигнала. Исправьте значение варианта.");
    }
}

void widgetComboBox::CollectDemands(AccessDemands &demands) const
{
    NodesArray nodes;
    GetWriteNodes(nodes);
    for (const NodeLink &node : nodes) {
        const auto *element = dynamic_cast<const BasicWidget *>(node.GetNode());
        demands.push_back({PrivilegeWrite, element ? element->GetSignalLink() : node});
    }
}

} // namespace Nodes
