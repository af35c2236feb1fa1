#include "widgets/menus/MirelMenu.h"

#include "widgets/menus/PushButtonMenuItem.h"
#include "widgets/menus/WidgetAction.h"

#include "nodes/actions/kinds/actionShowMenu.h"
#include "nodes/menus/BasicMenu.h"
#include "nodes/menus/BasicMenuItem.h"
#include "nodes/model/services/AccessCheck.h"

namespace Widgets {

namespace {

QString styleSheetFor(const Nodes::actionShowMenu &action)
{
    return QStringLiteral("QMenu { background-color: rgba(%1);                                    "
                          "border: %2px solid rgba(%3);}")
        .arg(QString::fromStdString(action.GetMenuBackgroundColor().ToString(true)))
        .arg(action.GetBorderWidth())
        .arg(QString::fromStdString(action.GetBorderColor().ToString(true)));
}

} // namespace

MirelMenu::MirelMenu(Nodes::actionShowMenu *action, QWidget *parent)
    : QMenu(parent), m_action(action)
{
    setWindowFlags(windowFlags() | Qt::NoDropShadowWindowHint | Qt::FramelessWindowHint |
                   Qt::MSWindowsFixedSizeDialogHint);
    setContentsMargins(1, 1, 1, 0);
    setStyleSheet(styleSheetFor(*action));
    connect(this, &QMenu::aboutToShow, this, &MirelMenu::resetEntries);
    connect(this, &QMenu::aboutToHide, this, &MirelMenu::clearHovered);
    connect(this, &QMenu::hovered, this, &MirelMenu::onHovered);
}

MirelMenu::MirelMenu(Nodes::actionShowMenu *action, Nodes::BasicMenu *menu, QWidget *parent)
    : MirelMenu(action, parent)
{
    if (menu)
        setTitle(QString::fromStdString(menu->GetName()));
    createMenu(menu);
}

void MirelMenu::createMenu(Nodes::BasicMenu *menu)
{
    if (!menu)
        return;
    for (const Nodes::NodeLink &link : menu->GetNodes()) {
        if (auto *nested = dynamic_cast<Nodes::BasicMenu *>(link.GetNode()))
            addAction(new WidgetAction(m_action, nested, this));
        else if (auto *item = dynamic_cast<Nodes::BasicMenuItem *>(link.GetNode()))
            addItem(*item);
    }
}

// A menu is made each time it is shown: what the user may do does not change meanwhile.
void MirelMenu::addItem(Nodes::BasicMenuItem &item)
{
    Nodes::AccessDemands demands;
    Nodes::BasicAction::AppendDemands(item.GetActions(), demands);
    const Nodes::enAccessDeniedAction denial = Nodes::DenialOf(demands);
    if (denial == Nodes::AccessDeniedHide)
        return;
    auto *entry = new WidgetAction(m_action, &item, this);
    entry->setEnabled(denial != Nodes::AccessDeniedDisable);
    addAction(entry);
}

template <class Act> void MirelMenu::forEachEntry(Act act) const
{
    for (QAction *action : actions()) {
        if (auto *entry = qobject_cast<WidgetAction *>(action))
            act(*entry);
    }
}

// Entries of nested menus are announced here too; the one that opened them stays marked.
void MirelMenu::onHovered(QAction *hovered)
{
    if (actions().contains(hovered))
        forEachEntry(
            [hovered](WidgetAction &entry) { entry.item()->setHovered(&entry == hovered); });
}

void MirelMenu::resetEntries()
{
    forEachEntry([](WidgetAction &entry) { entry.item()->reset(); });
    update();
}

void MirelMenu::clearHovered()
{
    forEachEntry([](WidgetAction &entry) { entry.item()->setHovered(false); });
    update();
}

} // namespace Widgets
