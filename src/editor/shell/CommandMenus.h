#pragma once

#include <QHash>
#include <QObject>
#include <QVector>

class QAction;
class QMenu;
class QMenuBar;

namespace Editor {

struct CommandRow;
class Workspace;

/// Menus made of CommandTable; an entry is possible or not as its row says, asked anew a moment
/// after anything has changed and whenever its menu opens. GUI thread.
class CommandMenus : public QObject
{
    Q_OBJECT

public:
    /// The bar has the top menus that rows name, in its order; others are appended.
    CommandMenus(Workspace &workspace, QMenuBar &bar);

    /// Menu of that path, made when it is missing.
    QMenu *menu(const QString &path);
    /// Null when no row has that id.
    QAction *action(const QString &id) const { return m_actions.value(id); }

private:
    struct Entry
    {
        const CommandRow *row;
        QAction *action;
    };

    void add(const CommandRow &row);
    void refreshSoon();
    void refresh();
    void timerEvent(QTimerEvent *event) override;

    Workspace &m_workspace;
    QMenuBar &m_bar;
    QHash<QString, QMenu *> m_menus;
    QHash<QString, QAction *> m_actions;
    QVector<Entry> m_entries;
    int m_timer = 0;
};

} // namespace Editor
