#include "editor/tree/TreeFilterView.h"

#include "editor/tree/ProjectTreeModel.h"
#include "editor/workspace/KeyboardAccess.h"

#include "nodes/model/ConfigNode.h"
#include "nodes/model/NodesCollection.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QTreeView>
#include <QVBoxLayout>

#include <algorithm>

namespace Editor {

namespace {

/// With more hits than can be looked through only the way to the first ones is opened.
constexpr std::size_t mostExpandedHits = 500;

// In letters.
constexpr int wideForKind = 50;
constexpr int wideForDescription = 75;

void setUpView(QTreeView &view, ProjectTreeModel &model)
{
    view.setModel(&model);
    view.setUniformRowHeights(true); // or it would measure every row of a large project
    view.setSelectionMode(QAbstractItemView::ExtendedSelection);
    view.setExpandsOnDoubleClick(false);
    view.setTextElideMode(Qt::ElideRight);
    view.header()->setStretchLastSection(false);
    view.header()->setSectionResizeMode(ProjectTreeModel::ColumnName, QHeaderView::Stretch);
}

/// Rows below each other become one range: what selections cost grows with the ranges.
void appendRow(QItemSelection &rows, const QModelIndex &index)
{
    const QModelIndex end = index.sibling(index.row(), ProjectTreeModel::ColumnCount - 1);
    const bool isNext = !rows.isEmpty() && rows.last().parent() == index.parent() &&
                        rows.last().bottom() + 1 == index.row();
    if (isNext)
        rows.last() = QItemSelectionRange(rows.last().topLeft(), end);
    else
        rows.append(QItemSelectionRange(index, end));
}

} // namespace

TreeFilterView::TreeFilterView(ProjectTreeModel &model, QTreeView *view, QWidget *parent)
    : QWidget(parent),
      m_model(model),
      m_line(new QHBoxLayout),
      m_search(new QLineEdit(this)),
      m_count(new QLabel(this)),
      m_view(view)
{
    setUpView(*m_view, model);
    m_view->setAccessibleName(QStringLiteral("Узлы проекта"));
    KeyboardAccess::makeSearchLine(*m_search, QStringLiteral("Поиск"));
    m_search->setToolTip(QStringLiteral("Слова имени или описания; с «/» — часть пути, "
                                        "#12 — узел с этим номером"));
    m_search->installEventFilter(this);
    m_count->hide();
    m_line->addWidget(m_search, 1);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(4);
    layout->addLayout(m_line);
    layout->addWidget(m_count);
    layout->addWidget(m_view, 1);
    setFocusProxy(m_view);

    connect(m_search, &QLineEdit::textChanged, this, &TreeFilterView::applyFilter);
    connect(m_view, &QTreeView::expanded, this,
            [this](const QModelIndex &index) { keepExpanded(index, true); });
    connect(m_view, &QTreeView::collapsed, this,
            [this](const QModelIndex &index) { keepExpanded(index, false); });
    connect(&model, &QAbstractItemModel::rowsInserted, this, &TreeFilterView::expandRows);
    connect(&model, &QAbstractItemModel::modelReset, this, [this] {
        if (!m_isApplying) // another project: its filter is empty
            m_search->clear();
        expandKept();
    });
    expandKept();
}

TreeFilterView::~TreeFilterView() = default;

void TreeFilterView::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    fitColumns();
}

/// Names first: the other columns are shown where there is room for them beside.
void TreeFilterView::fitColumns()
{
    const int room = m_view->viewport()->width();
    const int unit = m_view->fontMetrics().averageCharWidth();
    const bool hasKind = room > unit * wideForKind;
    const bool hasDescription = room > unit * wideForDescription;
    m_view->setColumnHidden(ProjectTreeModel::ColumnKind, !hasKind);
    m_view->setColumnHidden(ProjectTreeModel::ColumnDescription, !hasDescription);
    m_view->header()->resizeSection(ProjectTreeModel::ColumnKind, room / (hasDescription ? 5 : 3));
    m_view->header()->resizeSection(ProjectTreeModel::ColumnDescription, room / 3);
}

void TreeFilterView::addToLine(QWidget *widget)
{
    m_line->insertWidget(0, widget);
}

void TreeFilterView::startSearch()
{
    m_search->setFocus(Qt::ShortcutFocusReason);
    m_search->selectAll();
}

void TreeFilterView::setFilter(const QString &text)
{
    m_search->setText(text);
}

bool TreeFilterView::eventFilter(QObject *watched, QEvent *event)
{
    if (watched != m_search || event->type() != QEvent::KeyPress)
        return QWidget::eventFilter(watched, event);
    const int key = static_cast<QKeyEvent *>(event)->key();
    if (key == Qt::Key_Down || key == Qt::Key_Return || key == Qt::Key_Enter) {
        if (m_model.rowCount() == 0)
            return true; // there is nowhere to go from what is typed
        selectFirstHit();
        m_view->setFocus(Qt::OtherFocusReason);
        return true;
    }
    if (key == Qt::Key_Escape && !m_search->text().isEmpty()) {
        m_search->clear();
        return true;
    }
    return QWidget::eventFilter(watched, event);
}

void TreeFilterView::selectFirstHit()
{
    if (m_model.hits().empty() || m_view->currentIndex().isValid())
        return;
    select({Nodes::NodeLink(m_model.hits().front(), m_model.project())}, true);
}

void TreeFilterView::applyFilter()
{
    const Nodes::NodeLinks nodes = selected();
    m_isApplying = true;
    m_model.setFilter(m_search->text());
    m_isApplying = false;
    if (m_model.isFiltered())
        expandHits();
    m_count->setVisible(m_model.isFiltered());
    m_count->setText(m_model.hits().empty()
                         ? QStringLiteral("Не найдено")
                         : QStringLiteral("Найдено: %1").arg(m_model.hits().size()));
    select(nodes, true);
}

void TreeFilterView::expandHits()
{
    const std::size_t count = std::min(mostExpandedHits, m_model.hits().size());
    for (std::size_t i = 0; i < count; ++i) {
        const Nodes::NodeLink hit(m_model.hits()[i], m_model.project());
        QModelIndex above = m_model.indexOf(hit).parent();
        for (; above.isValid() && !m_view->isExpanded(above); above = above.parent())
            m_view->expand(above);
    }
}

void TreeFilterView::expandKept()
{
    if (m_model.isFiltered())
        return;
    m_view->expand(m_model.index(0, 0));
    const QSet<quint64> ids = m_expanded;
    for (const quint64 id : ids) {
        const QModelIndex index = m_model.indexOf(Nodes::NodeLink(id, m_model.project()));
        if (index.isValid())
            m_view->expand(index);
    }
}

void TreeFilterView::expandRows(const QModelIndex &parent, int first, int last)
{
    for (int row = first; row <= last; ++row) {
        const QModelIndex index = m_model.index(row, 0, parent);
        if (!m_expanded.contains(m_model.nodeAt(index).GetNodeId()))
            continue;
        m_view->expand(index);
        expandRows(index, 0, m_model.rowCount(index) - 1);
    }
}

void TreeFilterView::keepExpanded(const QModelIndex &index, bool isExpanded)
{
    if (m_model.isFiltered())
        return;
    const quint64 id = m_model.nodeAt(index).GetNodeId();
    if (isExpanded)
        m_expanded.insert(id);
    else
        m_expanded.remove(id);
}

void TreeFilterView::setExpanded(const QSet<quint64> &ids)
{
    m_expanded = ids;
    expandKept();
}

Nodes::NodeLinks TreeFilterView::selectedInOrder() const
{
    return m_model.inTreeOrder(
        m_view->selectionModel()->selectedRows(ProjectTreeModel::ColumnName));
}

Nodes::NodeLinks TreeFilterView::selected() const
{
    Nodes::NodeLinks nodes = selectedInOrder();
    const auto current =
        std::find(nodes.begin(), nodes.end(), m_model.nodeAt(m_view->currentIndex()));
    if (current != nodes.end())
        std::rotate(nodes.begin(), current, current + 1);
    return nodes;
}

void TreeFilterView::select(const Nodes::NodeLinks &nodes, bool isRevealing)
{
    QItemSelection rows;
    QModelIndex key;
    for (const Nodes::NodeLink &node : nodes) {
        const QModelIndex index = m_model.indexOf(node);
        if (!index.isValid())
            continue;
        if (!key.isValid())
            key = index;
        appendRow(rows, index);
    }
    QItemSelectionModel *selection = m_view->selectionModel();
    selection->setCurrentIndex(key, QItemSelectionModel::NoUpdate);
    selection->select(rows, QItemSelectionModel::ClearAndSelect);
    if (isRevealing && key.isValid())
        m_view->scrollTo(key);
}

void TreeFilterView::reveal(const Nodes::NodeLink &node)
{
    if (m_model.isFiltered() && !m_model.indexOf(node).isValid())
        m_search->clear();
    select({node}, true);
}

} // namespace Editor
