#pragma once

#include "nodes/actions/kinds/actionToggleWindow.h"
#include "widgets/actions/qBasicAction.h"

#include <QPointer>
#include <QVector>

namespace Nodes {
class BasicWindow;
} // namespace Nodes

namespace Widgets {

class WindowBasic;

/// Shows a hidden window or hides a shown one, and all open instances of a template; a window that
/// is not open is left alone.
class qactionToggleWindow : public qBasicAction
{
public:
    using Node = Nodes::actionToggleWindow;

    using qBasicAction::qBasicAction;
    void Execute() override;

private:
    static QVector<QPointer<WindowBasic>> find(const Nodes::BasicWindow &target, int display);
    void show(WindowBasic &window, const Nodes::actionToggleWindow &node,
              const Nodes::BasicWindow &target) const;
};

} // namespace Widgets
