#pragma once

#include "utils/UtilsExport.h"

#include "nodes/model/links/NodeLink.h"

#include <QList>
#include <QUndoGroup>

namespace Utils {

class DocumentUndo;

/// The undo stacks of all open documents. The active one is where IUndo pushes, from the group's
/// making to its end; a host makes one group. Actions of menus come from QUndoGroup and follow the
/// active document. GUI thread.
class UTILS_EXPORT UndoGroup : public QUndoGroup
{
    Q_OBJECT

public:
    explicit UndoGroup(QObject *parent = nullptr);
    ~UndoGroup() override;

    /// Stack of the document, made when it is not open yet. The first one becomes active.
    DocumentUndo &open(const Nodes::NodeLink &node);
    /// Null when it is not open.
    DocumentUndo *find(const Nodes::NodeLink &node) const;
    /// The open document that `node` belongs to: the nearest at or above it. Null when there is
    /// none.
    DocumentUndo *documentOf(const Nodes::NodeLink &node) const;
    /// False when it is not open: the active document stays.
    bool activate(const Nodes::NodeLink &node);
    /// Ends the document's stack with all its commands; nothing is undone. The one that was active
    /// before it becomes active.
    void close(const Nodes::NodeLink &node);

    /// Whether the project differs from what was last saved, as far as commands have changed it: a
    /// document that was closed changed counts.
    bool isModified() const { return m_isModified; }
    /// After saving the project.
    void setSaved();

signals:
    void modifiedChanged(bool isModified);

private:
    void refreshModified();

    QList<DocumentUndo *> m_documents; ///< the one active last is the last
    bool m_wasClosedModified = false;
    bool m_isModified = false;
};

} // namespace Utils
