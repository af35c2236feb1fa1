#pragma once

#include "widgets/WidgetsExport.h"

#include <QMenu>

namespace Nodes {
class actionShowMenu;
class BasicMenu;
class BasicMenuItem;
} // namespace Nodes

namespace Widgets {

/// Operator menu built from nodes, with large entries for touch; arrow keys, Enter and Esc work
/// too. The nodes outlive it. GUI thread.
class WIDGETS_EXPORT MirelMenu : public QMenu
{
    Q_OBJECT

public:
    /// A menu without entries, with the look that the action gives.
    explicit MirelMenu(Nodes::actionShowMenu *action, QWidget *parent = nullptr);
    /// The same with the entries of `menu`.
    MirelMenu(Nodes::actionShowMenu *action, Nodes::BasicMenu *menu, QWidget *parent = nullptr);

    /// Appends an entry for each child that is a menu or an item; null adds nothing.
    void createMenu(Nodes::BasicMenu *menu);
    void addItem(Nodes::BasicMenuItem &item);

private:
    void onHovered(QAction *hovered);
    void resetEntries();
    void clearHovered();
    template <class Act> void forEachEntry(Act act) const;

    Nodes::actionShowMenu *m_action;
};

} // namespace Widgets
