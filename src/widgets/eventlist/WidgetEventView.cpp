#include "widgets/eventlist/WidgetEventView.h"

#include "widgets/charts/menus/TouchMenu.h"
#include "widgets/eventlist/EventCellDelegate.h"
#include "widgets/eventlist/EventColumnWatch.h"
#include "widgets/eventlist/EventListLook.h"
#include "widgets/eventlist/WidgetEventModel.h"
#include "widgets/eventlist/WidgetEventSortModel.h"

#include "nodes/visual/events/widgetEventList.h"

#include <QApplication>
#include <QHeaderView>
#include <QScrollBar>
#include <QScroller>

#include <algorithm>

namespace Widgets {

using Nodes::ColumnInfo;

namespace {

constexpr int leastWidth = 48;

} // namespace

WidgetEventView::WidgetEventView(Nodes::widgetEventList *node, WidgetEventSortModel *sorting,
                                 QWidget *parent)
    : QTableView(parent), m_node(node), m_sorting(sorting)
{
    setSelectionBehavior(SelectRows);
    setSelectionMode(ExtendedSelection);
    setEditTriggers(NoEditTriggers);
    setVerticalScrollMode(ScrollPerPixel);
    setHorizontalScrollMode(ScrollPerPixel);
    setWordWrap(false);
    setTextElideMode(Qt::ElideRight);
    setShowGrid(false);
    setMinimumSize(1, 1); // whatever the bars take
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Ignored);
    setAlternatingRowColors(false);
    verticalHeader()->hide();
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    QHeaderView *header = horizontalHeader();
    header->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    header->setMinimumHeight(EventListLook::Touch);
    header->setHighlightSections(false);
    header->setSectionsMovable(true);
    header->setSectionsClickable(true);
    header->setMinimumSectionSize(leastWidth);
    header->setContextMenuPolicy(Qt::CustomContextMenu);
    header->setStyleSheet(QStringLiteral("QHeaderView::section { background-color:lightgray }"));
    connect(header, &QWidget::customContextMenuRequested, this, &WidgetEventView::onHeaderMenu);
    // Before the view's own, which loses its place.
    connect(sorting, &QAbstractItemModel::modelAboutToBeReset, this, &WidgetEventView::keepPlace);
    connect(sorting, &QAbstractItemModel::rowsAboutToBeInserted, this, &WidgetEventView::keepPlace);
    connect(sorting, &QAbstractItemModel::layoutAboutToBeChanged, this,
            &WidgetEventView::keepPlace);
    setModel(sorting);
    connect(sorting, &QAbstractItemModel::modelReset, this, &WidgetEventView::restorePlace);
    connect(sorting, &QAbstractItemModel::rowsInserted, this, &WidgetEventView::restorePlace);
    connect(sorting, &QAbstractItemModel::layoutChanged, this, &WidgetEventView::restorePlace);
    header->setSortIndicator(sorting->sortColumn(), sorting->sortOrder());
    setSortingEnabled(true);
    connect(header, &QHeaderView::sortIndicatorChanged, this, &WidgetEventView::onSorted);
    connect(header, &QHeaderView::sectionResized, this, &WidgetEventView::columnsArranged);
    connect(header, &QHeaderView::sectionMoved, this, &WidgetEventView::columnsArranged);
    setItemDelegate(new EventCellDelegate(Qt::ElideRight, this));
    // The end of a path tells more than its beginning.
    setItemDelegateForColumn(WidgetEventModel::columnOf(ColumnInfo::ColumnSource),
                             new EventCellDelegate(Qt::ElideLeft, this));
    auto *columns = new EventColumnWatch(node, this);
    connect(columns, &EventColumnWatch::changed, this, &WidgetEventView::updateProperties);
    updateProperties();
}

void WidgetEventView::updateProperties()
{
    if (!m_node)
        return;
    QFont font(QStringLiteral("DejaVu Sans"));
    font.setPointSize(std::max(m_node->GetFontSize(), 1));
    setFont(font);
    QFont ofHeader = font;
    ofHeader.setBold(true);
    horizontalHeader()->setFont(ofHeader);
    verticalHeader()->setDefaultSectionSize(
        std::max(EventListLook::Row, QFontMetrics(font, this).height() + EventListLook::Gap));
    const int bar = m_node->GetScrollBarSize();
    horizontalScrollBar()->setStyleSheet(
        QStringLiteral("QScrollBar:horizontal { height: %1px; }").arg(bar));
    verticalScrollBar()->setStyleSheet(
        QStringLiteral("QScrollBar:vertical { width: %1px; }").arg(bar));
    takeColumns();
}

void WidgetEventView::takeColumns()
{
    m_isTakingColumns = true;
    std::vector<ColumnInfo> columns = m_node->GetColumns();
    std::stable_sort(columns.begin(), columns.end(),
                     [](const ColumnInfo &left, const ColumnInfo &right) {
                         return left.position < right.position;
                     });
    QHeaderView *header = horizontalHeader();
    if (header->count() < int(columns.size()))
        columns.clear(); // a table of nothing yet
    for (int place = 0; place < int(columns.size()); ++place) {
        const ColumnInfo &info = columns[std::size_t(place)];
        const int column = WidgetEventModel::columnOf(info.column);
        header->moveSection(header->visualIndex(column), place);
        setColumnHidden(column, !info.isVisible);
        header->setSectionResizeMode(column, info.width > 0 ? QHeaderView::Interactive
                                                            : QHeaderView::Stretch);
        if (info.width > 0)
            header->resizeSection(column, std::max(info.width, leastWidth));
    }
    m_isTakingColumns = false;
}

void WidgetEventView::onHeaderMenu(const QPoint &place)
{
    auto *menu = new TouchMenu(this);
    for (int column = 0; column < m_sorting->columnCount(); ++column) {
        QAction *entry = menu->addAction(
            m_sorting->headerData(column, Qt::Horizontal, Qt::DisplayRole).toString());
        entry->setCheckable(true);
        entry->setChecked(!isColumnHidden(column));
        connect(entry, &QAction::toggled, this, [this, column](bool isShown) {
            setColumnHidden(column, !isShown);
            emit columnsArranged();
        });
    }
    menu->openAt(horizontalHeader()->mapToGlobal(place));
}

void WidgetEventView::onSorted(int, Qt::SortOrder)
{
    emit columnsArranged();
    if (m_isTracking)
        showNewest();
}

void WidgetEventView::setTracking(bool isTracking)
{
    m_isTracking = isTracking;
    if (isTracking)
        showNewest();
}

void WidgetEventView::showNewest()
{
    const bool isByTime =
        m_sorting->sortColumn() == WidgetEventModel::columnOf(ColumnInfo::ColumnTime);
    if (isByTime && m_sorting->sortOrder() == Qt::DescendingOrder)
        scrollToTop();
    else if (isByTime)
        scrollToBottom();
    else if (const int rows = m_sorting->events() ? m_sorting->events()->rowCount() : 0)
        scrollTo(m_sorting->index(m_sorting->rowOf(rows - 1), 0));
}

bool WidgetEventView::isAtNewest() const
{
    const QScrollBar *bar = verticalScrollBar();
    const bool isByTime =
        m_sorting->sortColumn() == WidgetEventModel::columnOf(ColumnInfo::ColumnTime);
    return isByTime &&
           (m_sorting->sortOrder() == Qt::DescendingOrder ? bar->value() == bar->minimum()
                                                          : bar->value() == bar->maximum());
}

void WidgetEventView::keepPlace()
{
    const int top = rowAt(0);
    const bool isThere = top >= 0 && top < m_sorting->rowCount();
    m_anchor = isThere ? m_sorting->sourceRow(top) : -1;
    m_anchorOffset = isThere ? -rowViewportPosition(top) : 0;
    const int current = currentIndex().row();
    m_selected =
        current >= 0 && current < m_sorting->rowCount() ? m_sorting->sourceRow(current) : -1;
}

void WidgetEventView::restorePlace()
{
    const int rows = m_sorting->events() ? m_sorting->events()->rowCount() : 0;
    if (!currentIndex().isValid() && m_selected >= 0 && m_selected < rows) {
        const int row = m_sorting->rowOf(m_selected);
        if (row >= 0)
            selectionModel()->setCurrentIndex(m_sorting->index(row, 0),
                                              QItemSelectionModel::ClearAndSelect |
                                                  QItemSelectionModel::Rows);
    }
    if (m_isTracking)
        return showNewest();
    const int row = m_anchor >= 0 && m_anchor < rows ? m_sorting->rowOf(m_anchor) : -1;
    if (row < 0)
        return;
    executeDelayedItemsLayout();
    verticalScrollBar()->setValue(row * verticalHeader()->defaultSectionSize() + m_anchorOffset);
}

WidgetEventView::Place WidgetEventView::place() const
{
    Place place;
    const auto idOf = [this](int row) {
        return row >= 0 && row < m_sorting->rowCount() ? m_sorting->item(row).id() : 0;
    };
    const int top = isAtNewest() ? -1 : rowAt(0);
    place.top = idOf(top);
    place.offset = place.top != 0 ? -rowViewportPosition(top) : 0;
    place.current = idOf(currentIndex().row());
    return place;
}

bool WidgetEventView::restore(const Place &place)
{
    int top = -1;
    int current = -1;
    const int rows = m_sorting->events() ? m_sorting->events()->rowCount() : 0;
    for (int row = 0; row < rows; ++row) {
        const unsigned long id = m_sorting->events()->getItems()[std::size_t(row)].id();
        if (id != 0 && id == place.top)
            top = m_sorting->rowOf(row);
        if (id != 0 && id == place.current)
            current = m_sorting->rowOf(row);
    }
    executeDelayedItemsLayout();
    if (current >= 0)
        setCurrentIndex(m_sorting->index(current, 0));
    if (top >= 0)
        verticalScrollBar()->setValue(top * verticalHeader()->defaultSectionSize() + place.offset);
    else
        showNewest();
    return top >= 0;
}

QByteArray WidgetEventView::columnState() const
{
    return horizontalHeader()->saveState();
}

bool WidgetEventView::restoreColumnState(const QByteArray &state)
{
    const int before = horizontalHeader()->count();
    return !state.isEmpty() && horizontalHeader()->restoreState(state) &&
           horizontalHeader()->count() == before;
}

QString WidgetEventView::selectedText() const
{
    constexpr int most = 10000; // rows on a clipboard
    QModelIndexList rows = selectionModel()->selectedRows();
    std::sort(rows.begin(), rows.end());
    QStringList lines;
    for (const QModelIndex &row : qAsConst(rows)) {
        QStringList cells;
        for (int place = 0; place < horizontalHeader()->count(); ++place) {
            const int column = horizontalHeader()->logicalIndex(place);
            if (!isColumnHidden(column))
                cells << m_sorting->index(row.row(), column).data().toString();
        }
        lines << cells.join(QLatin1Char('\t'));
        if (lines.size() == most)
            break;
    }
    return lines.join(QLatin1Char('\n'));
}

} // namespace Widgets
