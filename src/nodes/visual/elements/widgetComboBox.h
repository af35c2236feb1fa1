#pragma once

#include "nodes/model/NodesArray.h"
#include "nodes/model/properties/PropertyId.h"
#include "nodes/visual/SharedProperties.h"
#include "nodes/visual/elements/BasicTextWidget.h"
#include "nodes/visual/elements/StringValueMap.h"

namespace Nodes {

/// A list of named values, its comboItem children, of which the operator writes one.
class NODES_EXPORT widgetComboBox : public BasicTextWidget
{
public:
    static constexpr auto Code = NodeType::enNodeSubtype(0x1500E);
    struct Prop : BasicTextWidget::Prop, EditTimeoutProp
    {
        static constexpr PropertyId<NodeLinks> Targets{12170, "targets"};
        static constexpr PropertyId<bool> PopupUp{12171, "popupUp"};
        static constexpr PropertyId<bool> Confirm{12172, "confirm"};
        static constexpr PropertyId<NColor> SelectionColor{12173, "selectionColor"};
        static constexpr PropertyId<int> Index{12175, "index"};
    };

    widgetComboBox();
    static KindInfo Kind();

    /// Values have the type of the signal; one that does not fit it is an error value, which no
    /// live value equals and no target accepts.
    StringValueMap GetItems() const;
    bool isPopupUpward() const { return m_isPopupUpward; }
    bool isConfirmed() const { return m_isConfirmed; }
    /// Seconds without input after which an open list or question is given up; 0: never.
    int GetEditTimeout() const { return m_editTimeout; }
    /// Choice shown in the editor; -1: none.
    int GetCurrentIndex() const { return m_currentIndex; }
    void SetCurrentIndex(int index) { m_currentIndex = index; }
    /// Background of the choice under the pointer.
    NColor GetSelectionColor() const { return m_selectionColor; }

    /// Appends what the box writes to: the targets configured, else the signal shown.
    virtual void GetWriteNodes(NodesArray &nodes) const;
    void CollectDemands(AccessDemands &demands) const override;
    /// Writes to one of them on behalf of the current user: a signal takes the value itself,
    /// another element hands it to its own signal. NotFound for anything else.
    [[nodiscard]] Result WriteNode(const NodeLink &target, const SignalValue &value);
    /// Writes to all of them in order; ends with the first refusal.
    Result WriteValue(const SignalValue &value) override;
    /// Text of the choice that the value stands for; "----" for a bad value or no choice.
    using BasicWidget::GetDisplayText;
    std::string GetDisplayText(const SignalValue &value) const override;

    /// Index of the choice with that value, -1 without one. Numbers that are the same to six
    /// decimals are the same choice. A bad value is no choice.
    static int FindItem(const StringValueMap &items, const SignalValue &value);

    void Validate(ValidationResults &results) const override;

private:
    NodeLinks m_targets;
    bool m_isPopupUpward = false;
    bool m_isConfirmed = false;
    int m_editTimeout = 60;
    int m_currentIndex = -1;
    NColor m_selectionColor{200, 214, 226};
};

} // namespace Nodes
