#include "utils/undo/UndoGroup.h"

#include "utils/undo/DocumentUndo.h"
#include "utils/undo/IUndo.h"

#include "nodes/model/ConfigNode.h"

#include <algorithm>

namespace Utils {

UndoGroup::UndoGroup(QObject *parent) : QUndoGroup(parent)
{
    IUndo::setUndoGroup(this);
}

UndoGroup::~UndoGroup()
{
    // A stack tells of its state once more while it ends.
    for (DocumentUndo *document : qAsConst(m_documents)) {
        document->disconnect(this);
        delete document;
    }
}

DocumentUndo &UndoGroup::open(const Nodes::NodeLink &node)
{
    if (DocumentUndo *known = find(node))
        return *known;
    auto *document = new DocumentUndo(node, this);
    addStack(document);
    connect(document, &QUndoStack::cleanChanged, this, &UndoGroup::refreshModified);
    m_documents.prepend(document);
    if (!activeStack())
        setActiveStack(document);
    return *document;
}

DocumentUndo *UndoGroup::find(const Nodes::NodeLink &node) const
{
    const auto found =
        std::find_if(m_documents.begin(), m_documents.end(),
                     [&node](const DocumentUndo *known) { return known->node() == node; });
    return found == m_documents.end() ? nullptr : *found;
}

DocumentUndo *UndoGroup::documentOf(const Nodes::NodeLink &node) const
{
    for (const Nodes::ConfigNode *at = node.GetNode(); at; at = at->GetParent()) {
        if (DocumentUndo *document = find(Nodes::NodeLink(at)))
            return document;
    }
    return nullptr;
}

bool UndoGroup::activate(const Nodes::NodeLink &node)
{
    DocumentUndo *document = find(node);
    if (!document)
        return false;
    m_documents.removeOne(document);
    m_documents.append(document);
    setActiveStack(document);
    return true;
}

void UndoGroup::close(const Nodes::NodeLink &node)
{
    DocumentUndo *document = find(node);
    if (!document)
        return;
    const bool wasActive = activeStack() == document;
    m_wasClosedModified = m_wasClosedModified || !document->isClean();
    m_documents.removeOne(document);
    document->disconnect(this);
    removeStack(document);
    delete document;
    if (wasActive && !m_documents.isEmpty())
        setActiveStack(m_documents.last());
    refreshModified();
}

void UndoGroup::setSaved()
{
    m_wasClosedModified = false;
    for (DocumentUndo *document : qAsConst(m_documents))
        document->setClean();
    refreshModified();
}

void UndoGroup::refreshModified()
{
    const bool isModified =
        m_wasClosedModified ||
        std::any_of(m_documents.begin(), m_documents.end(),
                    [](const DocumentUndo *known) { return !known->isClean(); });
    if (isModified == m_isModified)
        return;
    m_isModified = isModified;
    emit modifiedChanged(isModified);
}

} // namespace Utils
