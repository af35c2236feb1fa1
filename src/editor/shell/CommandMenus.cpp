#include "editor/shell/CommandMenus.h"

#include "editor/project/ProjectSession.h"
#include "editor/tables/CommandTable.h"
#include "editor/workspace/Workspace.h"

#include <QAction>
#include <QIcon>
#include <QMenu>
#include <QMenuBar>
#include <QTimerEvent>

namespace Editor {

CommandMenus::CommandMenus(Workspace &workspace, QMenuBar &bar)
    : QObject(&bar), m_workspace(workspace), m_bar(bar)
{
    const QList<QAction *> tops = bar.actions();
    for (QAction *top : tops) {
        if (top->menu())
            m_menus.insert(top->menu()->title().remove(QLatin1Char('&')), top->menu());
    }
    for (const CommandRow &row : CommandTable())
        add(row);
    connect(&workspace, &Workspace::commandsChanged, this, &CommandMenus::refreshSoon);
    refresh();
}

QMenu *CommandMenus::menu(const QString &path)
{
    QMenu *&found = m_menus[path];
    if (found)
        return found;
    const int slash = path.lastIndexOf(QLatin1Char('/'));
    QMenu *made =
        slash < 0 ? m_bar.addMenu(path) : menu(path.left(slash))->addMenu(path.mid(slash + 1));
    connect(made, &QMenu::aboutToShow, this, &CommandMenus::refresh);
    return m_menus[path] = made; // the hash may have grown meanwhile
}

void CommandMenus::add(const CommandRow &row)
{
    QMenu *in = menu(QString::fromUtf8(row.menu));
    if (!*row.id) {
        in->addSeparator();
        return;
    }
    QAction *action =
        in->addAction(QIcon(QString::fromUtf8(row.icon)), QString::fromUtf8(row.text));
    if (in->icon().isNull() && QString::fromUtf8(row.menu).contains(QLatin1Char('/')))
        in->setIcon(action->icon()); // a menu below another is shown by what it begins with
    action->setObjectName(QString::fromUtf8(row.id));
    action->setShortcut(
        QKeySequence::fromString(QString::fromUtf8(row.shortcut), QKeySequence::PortableText));
    const auto run = row.run;
    connect(action, &QAction::triggered, this, [this, run] { run(m_workspace); });
    m_entries.append({&row, action});
    m_actions.insert(action->objectName(), action);
}

void CommandMenus::refreshSoon()
{
    if (!m_timer)
        m_timer = startTimer(0);
}

void CommandMenus::timerEvent(QTimerEvent *event)
{
    killTimer(event->timerId());
    m_timer = 0;
    refresh();
}

void CommandMenus::refresh()
{
    const bool isOpen = m_workspace.session().isOpen();
    for (const Entry &entry : m_entries) {
        const auto asked = entry.row->isEnabled;
        entry.action->setEnabled(asked ? asked(m_workspace) : isOpen);
    }
}

} // namespace Editor
