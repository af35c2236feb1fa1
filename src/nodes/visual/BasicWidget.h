#pragma once

#include "nodes/model/ConfigNode.h"
#include "nodes/model/properties/PropertyId.h"
#include "nodes/model/services/AccessDemand.h"
#include "nodes/values/NPoint.h"
#include "nodes/values/NRect.h"
#include "nodes/values/SignalValue.h"
#include "nodes/values/ValueSubscription.h"
#include "nodes/visual/ActionLists.h"
#include "nodes/visual/SharedProperties.h"

#include <atomic>

namespace Nodes {

class BasicSignal;
class KindBuilder;

/// A visual element's configuration: place, behaviour, action lists and the signal it shows.
/// While started it hands each value of that signal to its own value subscribers, on the thread
/// that published it.
class NODES_EXPORT BasicWidget : public ConfigNode
{
public:
    struct Prop : GeometryProp, GestureProp
    {
        static constexpr PropertyId<int> ZOrder{12096, "zOrder"};
        static constexpr PropertyId<bool> Visible{12097, "visible"};
        static constexpr PropertyId<bool> Selectable{12103, "selectable"};
        static constexpr PropertyId<bool> Movable{12104, "movable"};
        static constexpr PropertyId<bool> Disabled{12128, "disabled"};
        static constexpr PropertyId<std::string> Tooltip{12120, "tooltip"};
        static constexpr PropertyId<NodeLink> Signal{12001, "signal"};
        static constexpr PropertyId<NodeLinks> OnFocusLoss{12115, "onFocusLoss"};
        static constexpr PropertyId<NodeLinks> AfterWrite{12116, "afterWrite"};
        static constexpr PropertyId<bool> AlarmIndication{12450, "alarmIndication"};
        static constexpr PropertyId<std::string> Group{12453, "elementGroup"};
    };

    BasicWidget();
    ~BasicWidget() override;

    NRect GetGeometry() const { return {m_x, m_y, m_width, m_height}; }
    NPoint GetPosition() const { return {m_x, m_y}; }
    void SetPosition(int x, int y);
    int GetZOrder() const { return m_zOrder; }
    /// As configured, but never for a user who may not see the element; see JudgeAccess.
    bool isVisible() const { return m_isVisible && m_denial != AccessDeniedHide; }
    /// As configured, and always for a user who may not use it; see JudgeAccess.
    bool isDisabled() const { return m_isDisabled || m_denial == AccessDeniedDisable; }
    bool isMovable() const { return m_isMovable; }
    bool isSelectable() const { return m_isSelectable; }
    /// At run time a sign on the element tells how the alarms of its signal stand.
    bool hasAlarmIndication() const { return m_hasAlarmIndication; }
    const std::string &GetTooltip() const { return m_tooltip; }
    /// The elements of its layer that the editor treats as one with it, as a GroupPath; empty for
    /// none. Means nothing at run time.
    const std::string &GetGroup() const;

    ActionLists GetActionLists() const
    {
        return {m_onPress, m_onRelease, m_onEnter, m_onMove, m_onLeave};
    }
    const NodeLinks &GetFocusLossActions() const { return m_onFocusLoss; }
    /// Run after the operator wrote a value through this element.
    const NodeLinks &GetAfterWriteActions() const { return m_afterWrite; }

    /// The signal shown; null when none is set or it is gone.
    BasicSignal *GetSignal() const;
    const NodeLink &GetSignalLink() const { return m_signal; }
    /// Latest value of that signal, as far as the current user may view it; an error value when
    /// the link leads nowhere, empty when there is no link.
    virtual SignalValue GetValue() const;
    /// Text the element shows for that value; quality is not part of it.
    virtual std::string GetDisplayText(const SignalValue &value) const;
    /// The same for the value of now. Whoever shows more of a value than its text reads it once.
    std::string GetDisplayText() const { return GetDisplayText(GetValue()); }
    /// Writes on behalf of the current user; NotFound without a signal.
    virtual Result WriteValue(const SignalValue &value);

    /// Appends what the current user must be allowed to do to use this element; by default nothing:
    /// elements that only show something are for everybody who may view them.
    virtual void CollectDemands(AccessDemands &demands) const;
    /// Judges, at run time, whether the element is for the current user, and remembers the outcome:
    /// hidden without the right to view it, or when a rule forbids to view its signal; a control
    /// that demands more than the user may do is dealt with as the project's users say. To be
    /// asked when it is shown and when the user changes. GUI thread.
    enAccessDeniedAction JudgeAccess();
    /// Outcome of the last judgement; AccessDeniedRefuse while there is nothing to hide or disable.
    enAccessDeniedAction GetDenial() const { return m_denial; }

    /// Counted: a window may be open on several displays, and closing one of them must not freeze
    /// the values of the others. GUI thread.
    Result Start() final;
    Result Stop() final;

protected:
    /// The first of the views was started, the last one stopped. Kinds extend them and call the
    /// base. GUI thread.
    virtual Result OnFirstStart();
    virtual Result OnLastStop();

    static void Describe(KindBuilder &builder);
    friend class KindBuilder;
    void OnPropertyChanged(const PropertyDescriptor &descriptor) override;
    /// NotifyValueChanged with a value of the signal shown, unless its view is forbidden.
    void NotifyShown(const SignalValue &value) const;

private:
    void subscribe();
    enAccessDeniedAction findDenial() const;

    int m_x = 0;
    int m_y = 0;
    int m_width = 100;
    int m_height = 30;
    int m_zOrder = 0;
    bool m_isVisible = true;
    bool m_isDisabled = false;
    bool m_isMovable = true;
    bool m_isSelectable = true;
    bool m_hasAlarmIndication = true;
    enAccessDeniedAction m_denial = AccessDeniedRefuse; // run-time state, never saved
    std::string m_tooltip;
    NodeLink m_signal;
    NodeLinks m_onPress;
    NodeLinks m_onRelease;
    NodeLinks m_onEnter;
    NodeLinks m_onMove;
    NodeLinks m_onLeave;
    NodeLinks m_onFocusLoss;
    NodeLinks m_afterWrite;
    int m_starts = 0;
    std::atomic<bool> m_isForbiddenToView{false};      // the signal's value, when last judged
    std::unique_ptr<ValueSubscription> m_subscription; // only while started
};

} // namespace Nodes
