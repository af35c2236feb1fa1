#pragma once

#include "widgets/WidgetsExport.h"

#include <QWidgetAction>

namespace Nodes {
class actionShowMenu;
class BasicMenu;
class BasicMenuItem;
} // namespace Nodes

namespace Widgets {

class MirelMenu;
class PushButtonMenuItem;

/// Entry of a MirelMenu: shows an item, or a nested menu that it builds and owns through `parent`.
class WIDGETS_EXPORT WidgetAction : public QWidgetAction
{
    Q_OBJECT

public:
    WidgetAction(Nodes::actionShowMenu *action, Nodes::BasicMenu *menu, MirelMenu *parent);
    WidgetAction(Nodes::actionShowMenu *action, Nodes::BasicMenuItem *item, MirelMenu *parent);

    PushButtonMenuItem *item() const { return m_item; }
    /// Null for an item.
    MirelMenu *submenu() const { return m_submenu; }

private:
    PushButtonMenuItem *m_item;
    MirelMenu *m_submenu = nullptr;
};

} // namespace Widgets
