#include "editor/shell/MenuEntries.h"

#include <QAction>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>

namespace Editor {

namespace {

void collect(const QMenu &menu, const QString &place, QVector<MenuEntry> &entries)
{
    const QList<QAction *> actions = menu.actions();
    for (QAction *action : actions) {
        const QString text = PlainMenuText(action->text());
        if (action->menu())
            collect(*action->menu(), place + QLatin1Char('/') + text, entries);
        else if (!action->isSeparator())
            entries.append({action, place, text});
    }
}

} // namespace

QString PlainMenuText(QString text)
{
    return text.remove(QLatin1Char('&')).section(QLatin1Char('\t'), 0, 0);
}

QVector<MenuEntry> MenuEntries(const QMainWindow &window)
{
    QVector<MenuEntry> entries;
    const auto *bar = qobject_cast<QMenuBar *>(window.menuWidget());
    const QList<QAction *> tops = bar ? bar->actions() : QList<QAction *>();
    for (const QAction *top : tops) {
        if (top->menu())
            collect(*top->menu(), PlainMenuText(top->text()), entries);
    }
    return entries;
}

} // namespace Editor
