#include "editor/wizard/ChoiceDialog.h"

#include "editor/workspace/KeyboardAccess.h"

#include "nodes/model/ConfigNode.h"

#include <QDialogButtonBox>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

namespace Editor {

ChoiceDialog::ChoiceDialog(const QString &title, const Nodes::NodeLinks &nodes, bool isSeveral,
                           QWidget *parent)
    : QDialog(parent),
      m_nodes(nodes),
      m_search(new QLineEdit(this)),
      m_list(new QListWidget(this)),
      m_buttons(new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this))
{
    setWindowTitle(title);
    KeyboardAccess::makeSearchLine(*m_search, tr("Поиск"));
    m_list->setUniformItemSizes(true);
    m_list->setSelectionMode(isSeveral ? QAbstractItemView::ExtendedSelection
                                       : QAbstractItemView::SingleSelection);
    for (const Nodes::NodeLink &node : nodes)
        m_list->addItem(QString::fromStdString(node.GetLinkName(true)));
    m_buttons->button(QDialogButtonBox::Ok)->setText(tr("Выбрать"));
    m_buttons->button(QDialogButtonBox::Cancel)->setText(tr("Отмена"));
    m_list->setAccessibleName(title);
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(m_search);
    layout->addWidget(m_list, 1);
    layout->addWidget(m_buttons);
    resize(560, 480);

    connect(m_search, &QLineEdit::textChanged, this, &ChoiceDialog::filter);
    connect(m_list, &QListWidget::itemSelectionChanged, this, &ChoiceDialog::check);
    connect(m_list, &QListWidget::itemActivated, this, &QDialog::accept);
    connect(m_buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(m_buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    if (m_list->count() > 0)
        m_list->setCurrentRow(0);
    check();
}

Nodes::NodeLinks ChoiceDialog::chosen() const
{
    Nodes::NodeLinks found;
    for (int row = 0; row < m_list->count(); ++row) {
        if (m_list->item(row)->isSelected())
            found.push_back(m_nodes[static_cast<std::size_t>(row)]);
    }
    return found;
}

void ChoiceDialog::filter(const QString &text)
{
    for (int row = 0; row < m_list->count(); ++row) {
        QListWidgetItem *item = m_list->item(row);
        item->setHidden(!item->text().contains(text, Qt::CaseInsensitive));
        if (item->isHidden())
            item->setSelected(false);
    }
}

void ChoiceDialog::check()
{
    m_buttons->button(QDialogButtonBox::Ok)->setEnabled(!m_list->selectedItems().isEmpty());
}

} // namespace Editor
