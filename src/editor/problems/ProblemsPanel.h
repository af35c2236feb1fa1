#pragma once

#include "nodes/values/Connection.h"
#include "widgets/tools/problems/ProblemsView.h"

#include <QTimer>
#include <QWidget>

class QPushButton;

namespace Editor {

class Workspace;

/// What is wrong with the open project, looked for again some time after each edit; a double click
/// or Enter leads to the node. GUI thread.
class ProblemsPanel : public QWidget
{
    Q_OBJECT

public:
    ProblemsPanel(Workspace &workspace, QWidget *parent);

    /// Puts right what is chosen, where it is known how.
    QPushButton &mendButton() const { return *m_mend; }
    Widgets::ProblemsView &view() const { return *m_view; }
    /// From the last edit to the next look, ms.
    void setDelay(int milliseconds) { m_timer.setInterval(milliseconds); }

private:
    void begin();
    void end();
    void check();
    void mend();
    void showMend();
    void goTo(const Nodes::NodeLink &node, const QString &property);

    Workspace &m_workspace;
    Widgets::ProblemsView *m_view;
    QPushButton *m_mend;
    QTimer m_timer;
    Nodes::ScopedConnection m_changes;
};

} // namespace Editor
