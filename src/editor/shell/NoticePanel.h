#pragma once

#include "editor/workspace/Workspace.h"

#include <QHash>
#include <QIcon>

class QPushButton;
class QTreeWidget;

namespace Editor {

/// Everything that was told since the program started, with its time, the latest first: what has
/// gone from the line of notices is read here. GUI thread.
class NoticePanel : public QWidget
{
    Q_OBJECT

public:
    NoticePanel(Workspace &workspace, QWidget *parent);

    static constexpr int keptAtMost = 1000;

private:
    void add(Workspace::Level level, const QString &text);
    void copy() const;
    void clear();

    QHash<int, QIcon> m_marks; ///< by level
    QTreeWidget *m_rows;
    QPushButton *m_copy;
    QPushButton *m_clear;
};

} // namespace Editor
