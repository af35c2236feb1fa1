#pragma once

#include "nodes/model/NodesArray.h"
#include "nodes/model/properties/PropertyId.h"
#include "nodes/visual/SharedProperties.h"
#include "nodes/visual/elements/BasicTextWidget.h"

namespace Nodes {

/// A value that the operator may replace by typing.
class NODES_EXPORT widgetEditBox : public BasicTextWidget
{
public:
    static constexpr auto Code = NodeType::enNodeSubtype(0x1500B);
    struct Prop : BasicTextWidget::Prop, AngleProp, EditTimeoutProp
    {
        static constexpr PropertyId<int> Type{12140, "type"};
        static constexpr PropertyId<bool> StepButtons{12141, "stepButtons"};
        static constexpr PropertyId<bool> KeyboardButton{12142, "keyboardButton"};
        static constexpr PropertyId<bool> KeyboardOnClick{12143, "keyboardOnClick"};
        static constexpr PropertyId<bool> Limits{12144, "limits"};
        static constexpr PropertyId<double> Minimum{12145, "minimum"};
        static constexpr PropertyId<double> Maximum{12146, "maximum"};
        static constexpr PropertyId<double> Step{12147, "step"};
        static constexpr PropertyId<bool> Confirm{12148, "confirm"};
        static constexpr PropertyId<bool> CheckRights{12149, "checkRights"};
        static constexpr PropertyId<int> WriteFont{12150, "writeFont"};
        static constexpr PropertyId<std::string> WriteFontFamily{12151, "writeFontFamily"};
        static constexpr PropertyId<int> WriteFontSize{12152, "writeFontSize"};
        static constexpr PropertyId<bool> WriteBold{12153, "writeBold"};
        static constexpr PropertyId<bool> WriteItalic{12154, "writeItalic"};
    };

    widgetEditBox();
    static KindInfo Kind();

    /// As configured; by default the signal's.
    enSignalValueType GetValueType() const;
    bool GetShowStepButtons() const { return m_hasStepButtons; }
    bool GetShowKeyboardButton() const { return m_hasKeyboardButton; }
    /// A click opens the on-screen keyboard at once.
    bool GetKeyboardOnClick() const { return m_opensKeyboard; }
    /// Whether the box itself takes only values within its limits; the signal checks its own. A
    /// range without extent is none.
    bool GetUseLimits() const { return m_hasLimits && GetMinimum() < GetMaximum(); }
    /// The signal's limits unless a range of its own is configured.
    double GetMinimum() const { return ownsRange() ? m_minimum : signalLimit(true); }
    double GetMaximum() const { return ownsRange() ? m_maximum : signalLimit(false); }
    /// Above 0; by default one unit of the last decimal that the signal shows.
    double GetStep() const;
    /// 0 to 9; the value shown has as many.
    int GetStepDecimals() const;
    bool isConfirmed() const { return m_isConfirmed; }
    /// Editing starts only for users that may write.
    bool GetCheckRights() const { return m_checksRights; }
    /// Seconds without input after which an edit is given up; 0: never.
    int GetEditTimeout() const { return m_editTimeout; }
    double GetAngle() const { return m_angle; }
    /// 1: users that may write see the value in the second font.
    int GetFontSelector() const { return m_fontSelector; }
    NFont GetWriteFont() const;

    /// Appends the nodes that the box writes to.
    virtual void GetWriteNodes(NodesArray &nodes) const;
    void CollectDemands(AccessDemands &demands) const override;
    /// The value alone, rounded to the step's decimals, yes/no values as 1 and 0, without unit:
    /// the text that editing starts with. "----" for a bad value.
    using BasicWidget::GetDisplayText;
    std::string GetDisplayText(const SignalValue &value) const override;

private:
    bool ownsRange() const { return m_minimum < m_maximum; }
    double signalLimit(bool isLower) const;

    int m_valueType = -1; // the signal's
    bool m_hasStepButtons = false;
    bool m_hasKeyboardButton = false;
    bool m_opensKeyboard = false;
    bool m_hasLimits = true;
    double m_minimum = 0;
    double m_maximum = 0;
    double m_step = 0;
    bool m_isConfirmed = false;
    bool m_checksRights = true;
    int m_editTimeout = 60;
    double m_angle = 0;
    int m_fontSelector = 0;
    std::string m_writeFamily = "DejaVu Sans";
    int m_writePointSize = 11;
    bool m_isWriteBold = true;
    bool m_isWriteItalic = false;
};

} // namespace Nodes
