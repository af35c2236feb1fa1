#include "editor/templates/InstancePanel.h"

#include "editor/project/ProjectSession.h"
#include "editor/templates/InstanceModel.h"
#include "editor/templates/NodePathDelegate.h"
#include "editor/workspace/Workspace.h"

#include "nodes/model/ConfigNode.h"
#include "nodes/model/NodesCollection.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QTableView>

namespace Editor {

namespace {

/// Signals, and the nodes that signals stand below: what a parameter may stand for.
bool collectPaths(const Nodes::ConfigNode &node, QStringList &paths)
{
    bool hasSignals = node.GetNodeType().GetFamily() == Nodes::NodeType::TypeSignal;
    const int place = paths.size();
    for (const auto &child : node.Children())
        hasSignals |= collectPaths(*child, paths);
    if (hasSignals && node.GetParent())
        paths.insert(place, QString::fromStdString(node.GetPath()));
    return hasSignals;
}

} // namespace

InstancePanel::InstancePanel(Workspace &workspace, QWidget *parent)
    : QWidget(parent),
      m_workspace(workspace),
      m_model(new InstanceModel(
          [&workspace](QUndoCommand *command) { return workspace.push(command); }, this)),
      m_table(new QTableView),
      m_title(new QLabel),
      m_add(new QPushButton(tr("Ещё экземпляр")))
{
    makeTable();
    m_table->setAccessibleName(tr("Экземпляры шаблона"));
    auto *bar = new QHBoxLayout;
    bar->addWidget(m_title, 1);
    bar->addWidget(m_add);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(4, 4, 4, 4);
    layout->addLayout(bar);
    layout->addWidget(m_table);
    connect(m_add, &QPushButton::clicked, this, &InstancePanel::addInstance);
    connect(&workspace.selection(), &Selection::changed, this, &InstancePanel::takeSelection);
    connect(&workspace.session().undoStack(), &QUndoStack::indexChanged, this,
            &InstancePanel::refresh);
    connect(&workspace.session(), &ProjectSession::aboutToClose, this, &InstancePanel::forget);
    takeSelection();
}

void InstancePanel::makeTable()
{
    m_table->setModel(m_model);
    auto *delegate = new NodePathDelegate([this] { return paths(); }, m_table);
    m_table->setItemDelegate(delegate);
    m_table->setAlternatingRowColors(true);
    m_table->verticalHeader()->hide();
    m_table->horizontalHeader()->setDefaultSectionSize(220);
    m_table->horizontalHeader()->setStretchLastSection(true);
    connect(delegate, &NodePathDelegate::refused, this, &InstancePanel::tellUnknown);
    connect(m_table, &QTableView::activated, this, &InstancePanel::jump);
}

void InstancePanel::takeSelection()
{
    const Nodes::NodeLinks &nodes = m_workspace.selection().nodes();
    const Nodes::NodeLink source =
        InstanceModel::templateOf(nodes.empty() ? nullptr : nodes.front().GetNode());
    if (source.GetNode() || !m_model->source().GetNode())
        m_model->setTemplate(source); // the last one stays while other nodes are looked at
    refresh();
}

void InstancePanel::forget()
{
    m_model->setTemplate({});
}

void InstancePanel::showEvent(QShowEvent *event)
{
    QWidget::showEvent(event);
    refresh();
}

// What nobody looks at is not looked for: it takes a walk over the project.
void InstancePanel::refresh()
{
    if (!isVisible())
        return;
    const Nodes::ConfigNode *source = m_model->source().GetNode();
    const QModelIndex current = m_table->currentIndex();
    m_model->refresh();
    m_table->setCurrentIndex(m_model->index(current.row(), current.column()));
    m_add->setEnabled(source && !m_workspace.session().isReadOnly());
    m_title->setText(
        source ? tr("Шаблон «%1», экземпляров: %2")
                     .arg(QString::fromStdString(source->GetName()))
                     .arg(m_model->rowCount())
               : tr("Выберите шаблон, его экземпляр или действие, которое его открывает."));
}

void InstancePanel::addInstance()
{
    m_model->addInstance();
    m_table->setCurrentIndex(m_model->index(m_model->rowCount() - 1, 1));
}

void InstancePanel::jump(const QModelIndex &index)
{
    if (index.column() == 0)
        m_workspace.reveal(m_model->user(index.row()));
}

QStringList InstancePanel::paths() const
{
    QStringList found;
    if (const Nodes::ConfigNode *root = m_workspace.session().root())
        collectPaths(*root, found);
    return found;
}

void InstancePanel::tellUnknown(const QString &path)
{
    m_workspace.tell(
        Workspace::Warning,
        tr("Нет узла «%1». Выберите его из списка или введите путь целиком.").arg(path));
}

} // namespace Editor
