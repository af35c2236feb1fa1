#pragma once

#include "widgets/elements/qbuttonBasic.h"

namespace Nodes {
class widgetButton;
}

namespace Widgets {

/// Button of a Nodes::widgetButton.
class WIDGETS_EXPORT qwidgetButton : public qbuttonBasic
{
    Q_OBJECT

public:
    using Node = Nodes::widgetButton;

    qwidgetButton(Nodes::BasicWidget *node, QWidget *parent,
                  const SceneContextPtr &context = SceneContext::process());
    ~qwidgetButton() override;
};

} // namespace Widgets
