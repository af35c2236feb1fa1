#include "widgets/menus/WidgetAction.h"

#include "widgets/menus/MirelMenu.h"
#include "widgets/menus/PushButtonMenuItem.h"

namespace Widgets {

WidgetAction::WidgetAction(Nodes::actionShowMenu *action, Nodes::BasicMenu *menu, MirelMenu *parent)
    : QWidgetAction(parent),
      m_item(new PushButtonMenuItem(action, menu)),
      m_submenu(new MirelMenu(action, menu, parent))
{
    setDefaultWidget(m_item);
    setMenu(m_submenu);
}

WidgetAction::WidgetAction(Nodes::actionShowMenu *action, Nodes::BasicMenuItem *item,
                           MirelMenu *parent)
    : QWidgetAction(parent), m_item(new PushButtonMenuItem(action, item))
{
    setDefaultWidget(m_item);
    connect(this, &QAction::triggered, m_item, &PushButtonMenuItem::onTriggered);
}

} // namespace Widgets
