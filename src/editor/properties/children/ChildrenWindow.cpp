#include "editor/properties/children/ChildrenWindow.h"

#include "editor/properties/PropertyDelegate.h"
#include "editor/properties/PropertyModel.h"
#include "editor/properties/PropertyView.h"
#include "editor/properties/children/ChildrenModel.h"

#include "nodes/model/ConfigNode.h"
#include "nodes/model/KindInfo.h"

#include <QHeaderView>
#include <QLabel>
#include <QMenu>
#include <QPushButton>
#include <QSplitter>
#include <QTableView>
#include <QVBoxLayout>

#include <algorithm>

namespace Editor {

namespace {

constexpr int shownColumns = 7;

ChildFamily familyOf(const Nodes::NodeLink &parent, Nodes::NodeType::enNodeType family)
{
    if (parent.isValid()) {
        for (const ChildFamily &known : childFamilies(*parent->GetKind())) {
            if (known.family == family)
                return known;
        }
    }
    return {family, {}};
}

} // namespace

ChildrenWindow::ChildrenWindow(const Nodes::NodeLink &parentNode,
                               Nodes::NodeType::enNodeType family, const PropertyHost &host,
                               const QString &readOnly, QWidget *parent)
    : QDialog(parent),
      m_model(new ChildrenModel(parentNode, familyOf(parentNode, family), host.push, this)),
      m_table(new QTableView(this)),
      m_details(new PropertyView(host, this)),
      m_error(new QLabel(this))
{
    m_model->setReadOnly(readOnly);
    m_details->setReadOnly(readOnly);
    setUpTable(host);
    m_table->setAccessibleName(QStringLiteral("Список"));
    auto *halves = new QSplitter(this);
    halves->setChildrenCollapsible(false);
    halves->addWidget(m_table);
    halves->addWidget(m_details);
    halves->setStretchFactor(0, 3);
    halves->setStretchFactor(1, 2);
    m_error->setWordWrap(true);
    m_error->setStyleSheet(QStringLiteral("color: #8c1d18;"));
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(halves, 1);
    layout->addWidget(m_error);
    layout->addWidget(makeButtons(readOnly));
    connect(m_model, &ChildrenModel::refused, m_error, &QLabel::setText);
    connect(m_model, &ChildrenModel::parentRemoved, this, &QDialog::reject);
    connect(m_model, &QAbstractItemModel::modelReset, this, &ChildrenWindow::showCurrent);
    resize(1000, 520);
    if (m_model->rowCount() > 0)
        m_table->setCurrentIndex(m_model->index(0, 0));
    showCurrent();
}

ChildrenWindow::~ChildrenWindow() = default;

void ChildrenWindow::setUpTable(const PropertyHost &host)
{
    auto *delegate = new PropertyDelegate(
        [this, host](const QModelIndex &index) {
            const Nodes::NodeLink node = m_model->node(index.row());
            return ValueContext{m_model->descriptor(index), node, node.GetNodesCollection(),
                                host.reveal};
        },
        this);
    m_table->setModel(m_model);
    m_table->setItemDelegate(delegate);
    m_table->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_table->setEditTriggers(QAbstractItemView::DoubleClicked | QAbstractItemView::EditKeyPressed |
                             QAbstractItemView::AnyKeyPressed);
    m_table->verticalHeader()->setDefaultSectionSize(26);
    m_table->horizontalHeader()->setContextMenuPolicy(Qt::ActionsContextMenu);
    for (int column = ChildrenModel::ColumnFirstProperty; column < m_model->columnCount();
         ++column) {
        auto *action =
            new QAction(m_model->headerData(column, Qt::Horizontal, Qt::DisplayRole).toString(),
                        m_table->horizontalHeader());
        action->setCheckable(true);
        m_table->horizontalHeader()->addAction(action);
        connect(action, &QAction::toggled, m_table,
                [this, column](bool isShown) { m_table->setColumnHidden(column, !isShown); });
    }
    hideColumns();
    m_table->resizeColumnsToContents();
    connect(m_table->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            &ChildrenWindow::showCurrent);
}

// The first ones, and those that a child makes use of; the others are in the header's menu.
void ChildrenWindow::hideColumns()
{
    m_table->setColumnHidden(ChildrenModel::ColumnKind, m_model->family().kinds.size() < 2);
    const QList<QAction *> actions = m_table->horizontalHeader()->actions();
    for (int i = 0; i < actions.size(); ++i) {
        const int column = ChildrenModel::ColumnFirstProperty + i;
        const bool isShown = i < shownColumns || m_model->isUsed(column);
        actions.at(i)->setChecked(isShown);
        m_table->setColumnHidden(column, !isShown);
    }
}

QWidget *ChildrenWindow::makeButtons(const QString &readOnly)
{
    auto *bar = new QWidget(this);
    auto *layout = new QHBoxLayout(bar);
    layout->setContentsMargins(0, 0, 0, 0);
    const auto add = [&](const QString &text) {
        auto *button = new QPushButton(text, bar);
        button->setAutoDefault(false);
        button->setEnabled(readOnly.isEmpty());
        layout->addWidget(button);
        return button;
    };
    QPushButton *adding = add(QStringLiteral("Добавить"));
    auto *menu = new QMenu(adding);
    for (const Nodes::KindInfo *kind : m_model->family().kinds) {
        QAction *action = menu->addAction(QString::fromStdString(kind->nameRu));
        connect(action, &QAction::triggered, this, [this, kind] {
            const QString error = m_model->add(*kind);
            conclude(error, {m_model->node(m_model->rowCount() - 1)});
        });
    }
    if (m_model->family().kinds.size() == 1)
        connect(adding, &QPushButton::clicked, menu->actions().first(), &QAction::trigger);
    else
        adding->setMenu(menu);
    connect(add(QStringLiteral("Дублировать")), &QPushButton::clicked, this,
            &ChildrenWindow::duplicate);
    connect(add(QStringLiteral("Удалить")), &QPushButton::clicked, this,
            [this] { conclude(m_model->remove(rows()), {}); });
    for (const int by : {-1, 1}) {
        connect(add(by < 0 ? QStringLiteral("Выше") : QStringLiteral("Ниже")),
                &QPushButton::clicked, this, [this, by] {
                    const Nodes::NodeLinks moved = selected();
                    conclude(m_model->move(rows(), by), moved);
                });
    }
    layout->addStretch();
    QPushButton *close = add(QStringLiteral("Закрыть"));
    close->setEnabled(true);
    connect(close, &QPushButton::clicked, this, &QDialog::accept);
    return bar;
}

void ChildrenWindow::duplicate()
{
    const QVector<int> copied = rows();
    const QString error = m_model->duplicate(copied);
    Nodes::NodeLinks copies;
    for (int i = 1; i <= copied.size(); ++i)
        copies.push_back(m_model->node(*std::max_element(copied.begin(), copied.end()) + i));
    conclude(error, error.isEmpty() ? copies : Nodes::NodeLinks());
}

QVector<int> ChildrenWindow::rows() const
{
    QVector<int> rows;
    for (const QModelIndex &index : m_table->selectionModel()->selectedRows())
        rows << index.row();
    return rows;
}

Nodes::NodeLinks ChildrenWindow::selected() const
{
    Nodes::NodeLinks nodes;
    for (const int row : rows())
        nodes.push_back(m_model->node(row));
    return nodes;
}

void ChildrenWindow::conclude(const QString &error, const Nodes::NodeLinks &selected)
{
    m_error->setText(error);
    QItemSelection selection;
    for (const Nodes::NodeLink &node : selected) {
        const int row = m_model->rowOf(node);
        if (row >= 0)
            selection.select(m_model->index(row, 0),
                             m_model->index(row, m_model->columnCount() - 1));
    }
    if (selection.isEmpty())
        return;
    m_table->setCurrentIndex(selection.indexes().first());
    m_table->selectionModel()->select(selection, QItemSelectionModel::ClearAndSelect);
}

void ChildrenWindow::showCurrent()
{
    const Nodes::NodeLinks nodes = selected();
    if (nodes != m_details->properties().nodes().GetLinks())
        m_details->setNodes(nodes);
}

} // namespace Editor
