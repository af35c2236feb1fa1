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

    /// Documents seen in this session besides the one shown, the latest first, closed ones too.
    Nodes::NodeLinks latest() const;
    void closeAt(int index);
    void closeOthers(int index);
    /// A document closed by hand whose node is still there.
    bool canReopen() const { return reopenable().isValid(); }
    void reopenClosed();
    /// The tab that many places further; those beyond the last begin anew.
    void step(int by);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    Nodes::NodeLink reopenable() const;
    void makeList();
    void openMenu(const QPoint &point);
    void noteSeen();
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
    Nodes::NodeLinks m_seen;   ///< the latest first
    Nodes::NodeLinks m_closed; ///< the latest last
    int m_timer = 0;
};

} // namespace Editor
