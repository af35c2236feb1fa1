#include "widgets/elements/qwidgetMultiLabel.h"

#include "widgets/elements/binding/PropertyBindings.h"
#include "widgets/elements/binding/StateVisibility.h"

#include "nodes/visual/elements/widgetMultiLabel.h"

#include <QTimer>

namespace Widgets {

qwidgetMultiLabel::qwidgetMultiLabel(Nodes::BasicWidget *node, QWidget *parent,
                                     const SceneContextPtr &context)
    : qwidgetLabel(node, parent, context), m_multi(dynamic_cast<Nodes::widgetMultiLabel *>(node))
{
}

qwidgetMultiLabel::~qwidgetMultiLabel() = default;

const PropertyBindings &qwidgetMultiLabel::bindings() const
{
    using Prop = Node::Prop;
    static constexpr PropertyRow rows[] = {
        PropertyRow::takes<&qwidgetMultiLabel::takeColors>(Then::Value, Prop::StateColors),
        // The host shows and hides it as well; a state may forbid what the node allows.
        PropertyRow::only(Then::Value, Prop::Visibility, Prop::Visible),
    };
    static const PropertyBindings all(rows, &qwidgetLabel::bindings());
    return all;
}

bool qwidgetMultiLabel::followsMatches() const
{
    return m_multi && m_multi->GetVisibilityMode() == Nodes::widgetMultiLabel::VisibleWhileMatching;
}

void qwidgetMultiLabel::showValue(const Nodes::SignalValue &value)
{
    if (m_multi)
        m_isMatching = m_multi->FindMatches(value);
    const bool isUnmatched = followsMatches() && !m_isMatching;
    if (isUnmatched)
        hideUnmatched();
    else if (followsMatches() || m_wasUnmatched) // also when the node shows it always from now on
        setVisibleByState(*this, m_multi->isVisible());
    m_wasUnmatched = isUnmatched;
    qwidgetLabel::showValue(value);
}

void qwidgetMultiLabel::hideUnmatched()
{
    if (isRuntime())
        hide();
}

void qwidgetMultiLabel::showEvent(QShowEvent *event)
{
    qwidgetLabel::showEvent(event);
    // The host shows what the node calls visible; the state may still forbid it. Not at once: a
    // widget cannot be hidden while it is being shown.
    if (followsMatches() && isActive())
        QTimer::singleShot(0, this, [this] {
            if (isActive() && followsMatches() && !m_isMatching)
                hideUnmatched();
        });
}

} // namespace Widgets
