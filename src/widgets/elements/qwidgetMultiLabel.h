#pragma once

#include "widgets/elements/qwidgetLabel.h"

namespace Nodes {
class widgetMultiLabel;
}

namespace Widgets {

/// Label of a Nodes::widgetMultiLabel: text, colours and, where configured, visibility follow the
/// state that the value matches.
class WIDGETS_EXPORT qwidgetMultiLabel : public qwidgetLabel
{
    Q_OBJECT

public:
    using Node = Nodes::widgetMultiLabel;

    qwidgetMultiLabel(Nodes::BasicWidget *node, QWidget *parent,
                      const SceneContextPtr &context = SceneContext::process());
    ~qwidgetMultiLabel() override;

    const PropertyBindings &bindings() const override;

protected:
    void showValue(const Nodes::SignalValue &value) override;
    void showEvent(QShowEvent *event) override;

private:
    bool followsMatches() const;
    void hideUnmatched();

    Utils::WatchedNode<Nodes::widgetMultiLabel> m_multi; ///< null also for another class
    bool m_isMatching = true;                            ///< what is shown
    bool m_wasUnmatched = false;
};

} // namespace Widgets
