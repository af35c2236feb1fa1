#pragma once

#include "widgets/elements/qwidgetImage.h"

namespace Nodes {
class widgetMultiImage;
}

namespace Widgets {

/// Picture of a Nodes::widgetMultiImage: that of the state which the value matches. A value that
/// turns bad never hides the element: the operator has to see what is no longer known. A state
/// whose picture cannot be shown is told by its name.
class WIDGETS_EXPORT qwidgetMultiImage : public qwidgetImage
{
    Q_OBJECT

public:
    using Node = Nodes::widgetMultiImage;

    qwidgetMultiImage(Nodes::BasicWidget *node, QWidget *parent,
                      const SceneContextPtr &context = SceneContext::process());
    ~qwidgetMultiImage() override;

    const PropertyBindings &bindings() const override;

public slots:
    void onValueUpdated(Nodes::SignalValue value) override;
    void onUpdateProperties(Nodes::BasicProperty *property) override;

protected:
    void showEvent(QShowEvent *event) override;

private:
    void showState(int state);
    void showWithoutPicture(int state);
    QString placeholderOf(int state) const;
    void setHiddenByState(bool isHidden);

    static constexpr int noState = 99999;

    int m_lastState = noState;
    bool m_isForced = true; ///< show also the state that is shown already
    bool m_isHiddenByState = false;
    Utils::WatchedNode<Nodes::widgetMultiImage> m_multi; ///< null also for another class
};

} // namespace Widgets
