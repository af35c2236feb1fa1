#include "editor/tree/TreePicker.h"

#include "editor/tree/ProjectTreeModel.h"
#include "editor/tree/TreeFilterView.h"

#include "nodes/model/ConfigNode.h"
#include "nodes/model/NodesCollection.h"

#include <QDialogButtonBox>
#include <QItemSelectionModel>
#include <QLabel>
#include <QPushButton>
#include <QTreeView>
#include <QVBoxLayout>

#include <algorithm>

namespace Editor {

TreePicker::TreePicker(Nodes::NodesCollection &project, const QString &title, Test isPickable,
                       QWidget *parent)
    : QDialog(parent),
      m_isPickable(std::move(isPickable)),
      m_model(new ProjectTreeModel(this)),
      m_tree(new TreeFilterView(*m_model, new QTreeView, this)),
      m_path(new QLabel(this))
{
    setWindowTitle(title);
    resize(720, 560);
    m_model->setProject(&project);
    m_tree->view().setSelectionMode(QAbstractItemView::SingleSelection);
    m_path->setTextFormat(Qt::PlainText);
    m_path->setWordWrap(true);
    auto *buttons = new QDialogButtonBox(this);
    m_ok = buttons->addButton(QStringLiteral("Выбрать"), QDialogButtonBox::AcceptRole);
    buttons->addButton(QStringLiteral("Отмена"), QDialogButtonBox::RejectRole);
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(m_tree, 1);
    layout->addWidget(m_path);
    layout->addWidget(buttons);

    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(m_tree->view().selectionModel(), &QItemSelectionModel::selectionChanged, this,
            &TreePicker::refresh);
    connect(&m_tree->view(), &QTreeView::doubleClicked, this, [this] {
        if (!picked().isEmpty())
            accept();
    });
    m_tree->startSearch();
    refresh();
}

TreePicker::~TreePicker() = default;

Nodes::NodeLink TreePicker::picked() const
{
    const Nodes::NodeLinks nodes = m_tree->selected();
    const bool isPicked =
        !nodes.empty() && nodes.front().isValid() && m_isPickable(*nodes.front().GetNode());
    return isPicked ? nodes.front() : Nodes::NodeLink();
}

void TreePicker::setPicked(const Nodes::NodeLink &node)
{
    m_tree->reveal(node);
}

void TreePicker::refresh()
{
    const Nodes::NodeLink node = picked();
    m_ok->setEnabled(!node.isEmpty());
    m_path->setText(node.isEmpty() ? QStringLiteral("Выберите узел подходящего вида.")
                                   : QString::fromStdString(node.GetLinkName(true)));
}

std::optional<Nodes::NodeLink> TreePicker::pick(Nodes::NodesCollection &project,
                                                const QString &title,
                                                const std::vector<unsigned> &families,
                                                const Nodes::NodeLink &current, QWidget *parent)
{
    const auto isPickable = [&families](const Nodes::ConfigNode &node) {
        const unsigned family = node.GetNodeType().GetFamily();
        return families.empty() ||
               std::find(families.begin(), families.end(), family) != families.end();
    };
    TreePicker picker(project, title, isPickable, parent);
    picker.setPicked(current);
    if (picker.exec() != QDialog::Accepted)
        return std::nullopt;
    return picker.picked();
}

} // namespace Editor
