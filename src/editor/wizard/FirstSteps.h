#pragma once

#include "nodes/values/Connection.h"

#include <QScrollArea>
#include <QVector>

class QHBoxLayout;
class QLabel;
class QPushButton;
class QVBoxLayout;

namespace Editor {

class Workspace;

/// Shown while no document is open: the way from an empty project to a live value on a screen, and
/// how much of it is done. GUI thread.
class FirstSteps : public QScrollArea
{
    Q_OBJECT

public:
    FirstSteps(Workspace &workspace, QWidget *parent);
    ~FirstSteps() override;

signals:
    void runRequested();

private:
    struct Step
    {
        QLabel *mark;
        QHBoxLayout *line;
        bool (*isDone)(Workspace &workspace);
        QVector<QPushButton *> buttons;
    };

    Step &addStep(QVBoxLayout &column, const QString &title, const QString &text,
                  bool (*isDone)(Workspace &workspace));
    QPushButton *addButton(Step &step, const QString &text, const char *objectName);
    void watchProject();
    void refresh();
    void timerEvent(QTimerEvent *event) override;

    Workspace &m_workspace;
    Nodes::ScopedConnection m_changes;
    QVector<Step> m_steps;
    int m_timer = 0;
};

} // namespace Editor
