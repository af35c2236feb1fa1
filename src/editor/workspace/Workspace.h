#pragma once

#include "editor/workspace/Selection.h"

#include <QPointer>
#include <QWidget>

class QUndoCommand;

namespace Editor {

class DocumentView;
class ProjectSession;

/// What panels, documents and commands of the configurator share: the open project, the selection,
/// the active document, and ways to show a node and to tell the user something. GUI thread.
class Workspace : public QObject
{
    Q_OBJECT

public:
    enum Level { Info, Warning, Error };
    Q_ENUM(Level)

    /// `window` is the parent of dialogs; both outlive the workspace.
    Workspace(ProjectSession &session, QWidget &window);

    ProjectSession &session() { return m_session; }
    Selection &selection() { return m_selection; }
    QWidget *window() const { return &m_window; }

    /// Opens the node's document or brings it forward; a node without one: the nearest above that
    /// has.
    void open(const Nodes::NodeLink &node);
    /// Into a tab of its own, in place of one of the same class, which the tab takes over.
    void show(DocumentView *document);
    /// Selects the node in the project tree and, where its document is open, there.
    void reveal(const Nodes::NodeLink &node);
    /// The same, and goes to a property of it, by its key, in the property table.
    void revealProperty(const Nodes::NodeLink &node, const QString &property);
    /// A line that does not wait for an answer; Russian.
    void tell(Level level, const QString &text);
    /// Executes the command as a step of the history. False when it was not executed (the project
    /// is open for reading only); a refusal by the model is told by itself.
    bool push(QUndoCommand *command);

    /// Null while no document is open.
    DocumentView *document() const;
    void setDocument(DocumentView *document);

signals:
    void openRequested(const Nodes::NodeLink &node);
    void showRequested(Editor::DocumentView *document);
    void revealRequested(const Nodes::NodeLink &node);
    void propertyRequested(const QString &key);
    void told(Editor::Workspace::Level level, const QString &text);
    void documentChanged(Editor::DocumentView *document);
    /// Something that commands depend on has changed: they ask again whether they are possible.
    void commandsChanged();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    Nodes::NodeLinks unselected(const QObject *sender) const;

    ProjectSession &m_session;
    QWidget &m_window;
    Selection m_selection;
    QPointer<QWidget> m_document;
};

} // namespace Editor
