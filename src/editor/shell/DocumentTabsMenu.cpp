// Closing, opening again and going through the tabs.
#include "editor/shell/DocumentTabs.h"

#include "editor/shell/MenuLetters.h"
#include "editor/workspace/DocumentView.h"
#include "editor/workspace/Workspace.h"

#include <QMenu>
#include <QMouseEvent>
#include <QTabBar>
#include <QToolButton>

#include <algorithm>

namespace Editor {

namespace {

constexpr std::size_t seenAtMost = 50;

} // namespace

void DocumentTabs::noteSeen()
{
    const DocumentView *shown = at(currentIndex());
    if (!shown || !shown->isOfNode())
        return;
    m_seen.erase(std::remove(m_seen.begin(), m_seen.end(), shown->node()), m_seen.end());
    m_seen.insert(m_seen.begin(), shown->node());
    if (m_seen.size() > seenAtMost)
        m_seen.pop_back();
}

Nodes::NodeLinks DocumentTabs::latest() const
{
    Nodes::NodeLinks nodes;
    const DocumentView *shown = at(currentIndex());
    std::copy_if(m_seen.begin(), m_seen.end(), std::back_inserter(nodes),
                 [shown](const Nodes::NodeLink &node) {
                     return node.isValid() && !(shown && shown->node() == node);
                 });
    return nodes;
}

void DocumentTabs::closeOthers(int index)
{
    for (int i = count() - 1; i >= 0; --i) {
        if (i != index)
            closeAt(i);
    }
}

Nodes::NodeLink DocumentTabs::reopenable() const
{
    const auto found =
        std::find_if(m_closed.rbegin(), m_closed.rend(),
                     [this](const Nodes::NodeLink &node) { return node.isValid() && !find(node); });
    return found == m_closed.rend() ? Nodes::NodeLink() : *found;
}

void DocumentTabs::reopenClosed()
{
    const Nodes::NodeLink node = reopenable();
    m_closed.erase(std::remove(m_closed.begin(), m_closed.end(), node), m_closed.end());
    open(node);
}

void DocumentTabs::step(int by)
{
    if (count() == 0)
        return;
    setCurrentIndex((currentIndex() + by + count()) % count());
    currentWidget()->setFocus(Qt::ShortcutFocusReason);
}

// All tabs by name, where not all of them fit in beside each other.
void DocumentTabs::makeList()
{
    auto *list = new QToolButton(this);
    list->setObjectName(QStringLiteral("tabList"));
    list->setAutoRaise(true);
    list->setArrowType(Qt::DownArrow);
    list->setPopupMode(QToolButton::InstantPopup);
    list->setToolTip(tr("Все вкладки"));
    list->setAccessibleName(tr("Все вкладки"));
    auto *menu = new QMenu(list);
    list->setMenu(menu);
    connect(menu, &QMenu::aboutToShow, this, [this, menu] {
        menu->clear();
        for (int i = 0; i < count(); ++i) {
            QAction *action = menu->addAction(tabIcon(i), tabText(i), this, [this, i] {
                setCurrentIndex(i);
                currentWidget()->setFocus(Qt::OtherFocusReason);
            });
            action->setCheckable(true);
            action->setChecked(i == currentIndex());
        }
        MenuLetters::assign(*menu);
    });
    setCornerWidget(list);
}

void DocumentTabs::openMenu(const QPoint &point)
{
    const int index = tabBar()->tabAt(point);
    if (index < 0)
        return;
    const auto icon = [](const char *name) {
        return QIcon(QStringLiteral(":/editor/icons/%1.svg").arg(QLatin1String(name)));
    };
    QMenu menu(this);
    menu.addAction(icon("tabClose"), tr("Закрыть вкладку"), this,
                   [this, index] { closeAt(index); });
    menu.addAction(icon("tabCloseOthers"), tr("Закрыть остальные вкладки"), this,
                   [this, index] { closeOthers(index); })
        ->setEnabled(count() > 1);
    menu.addAction(icon("tabReopen"), tr("Открыть закрытую вкладку"), this,
                   &DocumentTabs::reopenClosed)
        ->setEnabled(canReopen());
    menu.addSeparator();
    menu.addAction(icon("find"), tr("Показать в дереве"), this,
                   [this, index] { m_workspace.reveal(at(index)->node()); });
    MenuLetters::assign(menu);
    menu.exec(tabBar()->mapToGlobal(point));
}

// The middle button closes a tab, as it does elsewhere on the desktop.
bool DocumentTabs::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == tabBar() && event->type() == QEvent::MouseButtonRelease) {
        const auto *mouse = static_cast<const QMouseEvent *>(event);
        if (mouse->button() == Qt::MiddleButton && tabBar()->tabAt(mouse->pos()) >= 0) {
            closeAt(tabBar()->tabAt(mouse->pos()));
            return true;
        }
    }
    return QTabWidget::eventFilter(watched, event);
}

} // namespace Editor
