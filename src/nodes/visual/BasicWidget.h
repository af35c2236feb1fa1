#pragma once

#include "nodes/model/ConfigNode.h"
#include "nodes/values/NPoint.h"
#include "nodes/values/NRect.h"
#include "nodes/values/SignalValue.h"
#include "nodes/values/ValueSubscription.h"
#include "nodes/visual/ActionLists.h"

namespace Nodes {

class BasicSignal;
class KindBuilder;

/// A visual element's configuration: place, behaviour, action lists and the signal it shows.
/// While started it hands each value of that signal to its own value subscribers, on the thread
/// that published it.
class NODES_EXPORT BasicWidget : public ConfigNode
{
public:
    BasicWidget();
    ~BasicWidget() override;

    NRect GetGeometry() const { return {m_x, m_y, m_width, m_height}; }
    NPoint GetPosition() const { return {m_x, m_y}; }
    void SetPosition(int x, int y);
    int GetZOrder() const { return m_zOrder; }
    bool isVisible() const { return m_isVisible; }
    bool isDisabled() const { return m_isDisabled; }
    bool isMovable() const { return m_isMovable; }
    bool isSelectable() const { return m_isSelectable; }
    const std::string &GetTooltip() const { return m_tooltip; }

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
    /// Latest value of that signal; an error value when the link leads nowhere, empty when there
    /// is no link.
    virtual SignalValue GetValue() const;
    /// Text the element shows; quality is not part of it.
    virtual std::string GetDisplayText() const;
    /// Writes on behalf of the current user; NotFound without a signal.
    virtual Result WriteValue(const SignalValue &value);

    /// Counted: a window may be open on several displays, and closing one of them must not freeze
    /// the values of the others. GUI thread.
    Result Start() override;
    Result Stop() override;

protected:
    static void Describe(KindBuilder &builder);
    friend class KindBuilder;
    void OnPropertyChanged(const PropertyDescriptor &descriptor) override;

private:
    void subscribe();

    int m_x = 0;
    int m_y = 0;
    int m_width = 100;
    int m_height = 30;
    int m_zOrder = 0;
    bool m_isVisible = true;
    bool m_isDisabled = false;
    bool m_isMovable = true;
    bool m_isSelectable = true;
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
    std::unique_ptr<ValueSubscription> m_subscription; // only while started
};

} // namespace Nodes
