#include "editor/compare/CompareDocument.h"

#include "editor/compare/CompareView.h"
#include "editor/project/ProjectSession.h"
#include "editor/workspace/Workspace.h"

#include "nodes/model/ConfigNode.h"
#include "nodes/model/NodesCollection.h"

#include <QUndoStack>
#include <QVBoxLayout>

namespace Editor {

CompareDocument::CompareDocument(Workspace &workspace,
                                 std::unique_ptr<Nodes::NodesCollection> other,
                                 const QString &title, QWidget *parent)
    : DocumentView(workspace, Nodes::NodeLink(workspace.session().root()), parent),
      m_other(std::move(other)),
      m_title(title),
      m_view(new CompareView(this))
{
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_view);
    setFocusProxy(m_view);
    connect(m_view, &CompareView::nodeActivated, this, &CompareDocument::goTo);
    connect(&workspace.session().undoStack(), &QUndoStack::indexChanged, this, [this] {
        m_isOld = true;
        if (isVisible())
            compare();
    });
}

CompareDocument::~CompareDocument()
{
    delete m_view; // it shows the project that goes now
}

QString CompareDocument::title() const
{
    return tr("Сравнение");
}

QIcon CompareDocument::icon() const
{
    return QIcon(QStringLiteral(":/editor/icons/compare.svg"));
}

void CompareDocument::showEvent(QShowEvent *event)
{
    DocumentView::showEvent(event);
    if (m_isOld)
        compare();
}

void CompareDocument::compare()
{
    m_isOld = false;
    m_view->setProjects({m_title, m_other.get()},
                        {tr("Открытый проект"), workspace().session().project()});
}

void CompareDocument::goTo(const Nodes::NodeLink &node)
{
    workspace().open(node);
    workspace().reveal(node);
}

} // namespace Editor
