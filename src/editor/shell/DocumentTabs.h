#pragma once

#include "nodes/model/links/NodeLink.h"
#include "nodes/values/Connection.h"

#include <QTabWidget>

namespace Editor {

class DocumentView;
class Workspace;

/// The open documents. One whose node leaves the project closes; undoing that does not open it
/// again. Which ones were open is kept for each project; one that is opened for the first time
/// shows its first window. GUI thread.
class DocumentTabs : public QTabWidget
{
    Q_OBJECT

public:
    DocumentTabs(Workspace &workspace, QWidget *parent);
    ~DocumentTabs() override;

    /// Opens or activates the document of the node, or of the nearest one above that has a
    /// document; false when there is none.
    bool open(const Nodes::NodeLink &node);
    /// Null when it is not open.
    DocumentView *find(const Nodes::NodeLink &node) const;
    DocumentView *at(int index) const;
    void closeAll();

private:
    void closeAt(int index);
    void add(DocumentView *document);
    /// In place of one of the same class.
    void showDocument(DocumentView *document);
    void onCurrentChanged();
    void onReveal(const Nodes::NodeLink &node);
    void watchProject();
    void keepOpen() const;
    void reopen();
    void refresh();
    void timerEvent(QTimerEvent *event) override;

    Workspace &m_workspace;
    Nodes::ScopedConnection m_changes;
    int m_timer = 0;
};

} // namespace Editor
