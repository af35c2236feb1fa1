#include "editor/workspace/Workspace.h"

#include "editor/project/ProjectSession.h"
#include "editor/workspace/DocumentView.h"

#include "utils/editing/NodeLinkEvent.h"
#include "utils/undo/IUndo.h"
#include "widgets/scene/ProxyScene.h"

#include <QCoreApplication>

namespace Editor {

namespace {

// What was selected in a document that is left would be edited unseen; what was selected in the
// tree or a list goes along.
bool isSelectedIn(const DocumentView *document, const Selection &selection)
{
    if (!document)
        return false;
    const bool isOwn = document->scene() && selection.by() == document->scene();
    return isOwn || selection.nodes() == Nodes::NodeLinks{document->node()};
}

} // namespace

Workspace::Workspace(ProjectSession &session, QWidget &window)
    : m_session(session), m_window(window)
{
    // Scenes tell the application object what is selected in them.
    QCoreApplication::instance()->installEventFilter(this);
    connect(&session, &ProjectSession::refused, this,
            [this](const QString &text) { tell(Warning, text); });
    connect(&session, &ProjectSession::aboutToClose, this,
            [this] { m_selection.select({}, this); });
    connect(&session, &ProjectSession::opened, this, &Workspace::commandsChanged);
    connect(&session, &ProjectSession::closed, this, &Workspace::commandsChanged);
    connect(&session, &ProjectSession::readOnlyChanged, this, &Workspace::commandsChanged);
    connect(&session, &ProjectSession::modifiedChanged, this, &Workspace::commandsChanged);
    connect(&m_selection, &Selection::changed, this, &Workspace::commandsChanged);
}

void Workspace::open(const Nodes::NodeLink &node)
{
    if (node.isValid())
        emit openRequested(node);
}

void Workspace::show(DocumentView *document)
{
    emit showRequested(document);
}

void Workspace::reveal(const Nodes::NodeLink &node)
{
    if (!node.isValid())
        return;
    m_selection.select({node}, this);
    emit revealRequested(node);
}

void Workspace::revealProperty(const Nodes::NodeLink &node, const QString &property)
{
    reveal(node);
    if (node.isValid() && !property.isEmpty())
        emit propertyRequested(property);
}

void Workspace::tell(Level level, const QString &text)
{
    emit told(level, text);
}

bool Workspace::push(QUndoCommand *command)
{
    return Utils::IUndo::execute(command);
}

DocumentView *Workspace::document() const
{
    return qobject_cast<DocumentView *>(m_document);
}

void Workspace::setDocument(DocumentView *document)
{
    if (m_document.data() == document)
        return;
    const bool isLeft = isSelectedIn(this->document(), m_selection);
    m_document = document;
    if (document && (m_selection.nodes().empty() || isLeft))
        m_selection.select({document->node()}, this);
    emit documentChanged(document);
    emit commandsChanged();
}

// Where no element is selected the window itself is what is edited.
Nodes::NodeLinks Workspace::unselected(const QObject *sender) const
{
    const DocumentView *shown = document();
    return shown && shown->scene() == sender ? Nodes::NodeLinks{shown->node()} : Nodes::NodeLinks();
}

bool Workspace::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == QCoreApplication::instance() &&
        event->type() == Utils::NodeLinkEvent::eventType()) {
        const auto &asked = static_cast<const Utils::NodeLinkEvent &>(*event);
        const bool isEmpty = asked.getNodeLinks().empty();
        // A scene that lets go of its elements because others are selected elsewhere says so later.
        if (isEmpty && m_selection.by() != asked.getSender() && !m_selection.nodes().empty())
            return true;
        m_selection.select(isEmpty ? unselected(asked.getSender()) : asked.getNodeLinks(),
                           asked.getSender());
        return true;
    }
    return QObject::eventFilter(watched, event);
}

} // namespace Editor
