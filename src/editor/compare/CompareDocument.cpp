#include "editor/compare/CompareDocument.h"

#include "editor/compare/CompareView.h"
#include "editor/compare/VersionTaking.h"
#include "editor/project/ProjectSession.h"
#include "editor/workspace/Workspace.h"

#include "nodes/model/ConfigNode.h"
#include "nodes/model/NodesCollection.h"

#include <QUndoStack>
#include <QVBoxLayout>

namespace Editor {

namespace {

constexpr int toldAtMost = 3; // remarks in a line

} // namespace

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
    m_view->setTakeable(true);
    connect(m_view, &CompareView::nodeActivated, this, &CompareDocument::goTo);
    connect(m_view, &CompareView::takeRequested, this, &CompareDocument::take);
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

void CompareDocument::take()
{
    if (workspace().session().isReadOnly()) {
        workspace().tell(Workspace::Warning, tr("Проект открыт только для чтения."));
        return;
    }
    VersionTaking taking(*m_other, *workspace().session().project());
    m_view->addChosen(taking);
    QUndoCommand *const command = taking.make();
    const bool isTaken = command && workspace().push(command);
    const QStringList remarks = taking.remarks();
    if (!remarks.isEmpty())
        workspace().tell(Workspace::Warning,
                         remarks.mid(0, toldAtMost).join(QLatin1Char(' ')) +
                             (remarks.size() > toldAtMost
                                  ? tr(" И ещё: %1.").arg(remarks.size() - toldAtMost)
                                  : QString()));
    else if (isTaken)
        workspace().tell(Workspace::Info, tr("Взято из другой версии."));
}

void CompareDocument::goTo(const Nodes::NodeLink &node)
{
    workspace().open(node);
    workspace().reveal(node);
}

} // namespace Editor
