#include "widgets/events/TableAlarms.h"

#include "widgets/events/AlarmRowDelegate.h"
#include "widgets/events/AlarmSigns.h"
#include "widgets/events/ModelAlarms.h"
#include "widgets/events/filter/AlarmList.h"

#include "nodes/alarms/alarmColumn.h"

#include <QApplication>
#include <QHash>
#include <QHeaderView>
#include <QMouseEvent>
#include <QScopedValueRollback>
#include <QScrollBar>
#include <QScroller>

#include <numeric>

namespace Widgets {

namespace {

constexpr int smallestRow = 40;
constexpr int cellMargin = 24;
constexpr int indicatorWidth = 24;

} // namespace

TableAlarms::TableAlarms(QWidget *parent) : QTableView(parent)
{
    setSelectionBehavior(SelectRows);
    setSelectionMode(SingleSelection);
    setEditTriggers(NoEditTriggers);
    setItemDelegate(new AlarmRowDelegate(this));
    setVerticalScrollMode(ScrollPerPixel);
    setHorizontalScrollMode(ScrollPerPixel);
    setWordWrap(false);
    QScroller::grabGesture(viewport(), QScroller::TouchGesture);
    verticalHeader()->hide();
    horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    horizontalHeader()->setMinimumHeight(smallestRow);
    horizontalHeader()->setHighlightSections(false);
    horizontalHeader()->setSectionsClickable(true);
    connect(horizontalHeader(), &QHeaderView::sectionClicked, this, &TableAlarms::onHeaderClicked);
    horizontalHeader()->setSortIndicatorShown(true);
    setStyleSheet(QStringLiteral("QTableView { background: %1; gridline-color: #4a535b; }"
                                 "QHeaderView::section { background: #eef0f2; padding: 0 8px; "
                                 "border: none; border-right: 1px solid #b4bac0; "
                                 "border-bottom: 1px solid #787e84; }"
                                 "QScrollBar:vertical { width: 28px; }"
                                 "QScrollBar:horizontal { height: 28px; }")
                      .arg(AlarmSigns::listGround().name()));
}

void TableAlarms::setAlarms(ModelAlarms &model, AlarmList &sorting)
{
    m_model = &model;
    m_sorting = &sorting;
    setModel(&sorting);
    connect(selectionModel(), &QItemSelectionModel::selectionChanged, this, &TableAlarms::selected);
    connect(&model, &ModelAlarms::columnsChanged, this, &TableAlarms::takeColumns);
    // After the table itself, which forgets its selection.
    connect(&sorting, &QAbstractItemModel::modelAboutToBeReset, this, &TableAlarms::keepPlace);
    connect(&sorting, &QAbstractItemModel::modelReset, this, &TableAlarms::restorePlace);
    takeColumns();
}

void TableAlarms::takeColumns()
{
    const AlarmColumns &columns = m_model->columns();
    m_widths.clear();
    QFont widest = m_model->font();
    widest.setBold(true); // as that of rows that wait
    for (int column = 0; column < m_model->columnCount(); ++column) {
        const auto header =
            m_model->headerData(column, Qt::Horizontal, Qt::FontRole).value<QFont>();
        const QString name =
            m_model->headerData(column, Qt::Horizontal, Qt::DisplayRole).toString();
        const int ofName = QFontMetrics(header, this).horizontalAdvance(name) + indicatorWidth;
        const int ofRows = QFontMetrics(widest, this)
                               .horizontalAdvance(AlarmColumns::widestText(columns[column].kind)) +
                           (column == columns.badgeColumn() ? m_model->badgeHeight() : 0);
        const int configured = columns[column].width;
        m_widths.append(configured > 0 ? configured : qMax(ofName, ofRows) + cellMargin);
    }
    fitColumns();
    horizontalHeader()->setStretchLastSection(true);
    verticalHeader()->setDefaultSectionSize(qMax(smallestRow, m_model->badgeHeight() + 8));
    setIconSize(QSize(m_model->badgeHeight(), m_model->badgeHeight()));
    const int sorted = columns.columnOf(m_sortKind);
    if (sorted >= 0)
        sortBy(sorted, m_sortOrder);
    else
        sortBy(qMax(columns.columnOf(Nodes::alarmColumn::Group), 0), Qt::AscendingOrder);
}

void TableAlarms::onHeaderClicked(int column)
{
    const bool isTurned = m_sorting->sortColumn() == column &&
                          horizontalHeader()->sortIndicatorOrder() == Qt::AscendingOrder;
    sortBy(column, isTurned ? Qt::DescendingOrder : Qt::AscendingOrder);
}

// Among equals the newest stands first.
void TableAlarms::sortBy(int column, Qt::SortOrder order)
{
    m_sorting->clearSortColumns();
    m_sorting->addSortColumn(column, order);
    const int time = m_model->columns().columnOf(Nodes::alarmColumn::Time);
    if (time != column)
        m_sorting->addSortColumn(time, Qt::DescendingOrder);
    horizontalHeader()->setSortIndicator(column, order);
    m_sortKind = m_model->columns()[column].kind;
    m_sortOrder = order;
}

QModelIndex TableAlarms::selectedRow() const
{
    const QModelIndexList selected = selectionModel()->selectedRows();
    return selected.isEmpty() ? QModelIndex() : m_sorting->mapToSource(selected.first());
}

int TableAlarms::headerWidth() const
{
    return std::accumulate(m_widths.begin(), m_widths.end(), 0);
}

unsigned TableAlarms::seenRevision() const
{
    return isVisible() && m_isPainted ? m_painted : m_model->revision();
}

void TableAlarms::paintEvent(QPaintEvent *event)
{
    QTableView::paintEvent(event);
    if (!m_model)
        return;
    m_painted = m_model->revision();
    m_isPainted = true;
    if (verticalScrollBar()->value() == 0)
        m_beginningSeen = m_painted;
    m_shown = inSight();
}

QVector<TableAlarms::Shown> TableAlarms::inSight() const
{
    QVector<Shown> rows;
    for (int row = qMax(0, rowAt(0)); row < m_sorting->rowCount(); ++row) {
        rows.append(shown(m_sorting->index(row, 0)));
        if (rows.last().bottom >= viewport()->height())
            break;
    }
    return rows;
}

int TableAlarms::newAbove() const
{
    int count = 0;
    const int end = verticalScrollBar()->value() > 0 ? rowAt(0) : 0;
    for (int row = 0; row < end; ++row) {
        const AlarmRow &alarm =
            m_model->row(m_sorting->mapToSource(m_sorting->index(row, 0)).row());
        count += !alarm.isAcknowledged && alarm.waitsSince > m_beginningSeen ? 1 : 0;
    }
    return count;
}

void TableAlarms::keepSight()
{
    m_keptAlarm = selectedAlarm();
    m_sight = verticalScrollBar()->value() > 0 ? inSight() : QVector<Shown>();
}

unsigned long TableAlarms::selectedAlarm() const
{
    const QModelIndex selected = selectedRow();
    return selected.isValid() ? m_model->row(selected.row()).alarm() : 0;
}

// What moved for a reason of its own, being acknowledged, is outvoted by what lies around it.
void TableAlarms::restoreSight()
{
    // The base class selects a neighbour of a row that goes: nobody chose that one.
    if (selectedAlarm() != m_keptAlarm) {
        selectionModel()->clear();
        select(m_keptAlarm);
    }
    if (m_sight.isEmpty())
        return;
    QHash<int, int> votes; // by the place of the scroll bar that a row needs
    for (const Shown &row : qAsConst(m_sight)) {
        const int number = m_model->rowOf(row.alarm);
        const QModelIndex listed =
            number >= 0 ? m_sorting->mapFromSource(m_model->index(number, 0)) : QModelIndex();
        if (listed.isValid())
            ++votes[listed.row() * verticalHeader()->defaultSectionSize() - row.top];
    }
    int place = -1;
    for (auto vote = votes.cbegin(); vote != votes.cend(); ++vote) {
        const bool isBetter = place < 0 || vote.value() > votes.value(place) ||
                              (vote.value() == votes.value(place) && vote.key() < place);
        if (isBetter)
            place = vote.key();
    }
    m_sight.clear();
    executeDelayedItemsLayout();
    if (place >= 0)
        verticalScrollBar()->setValue(place);
}

TableAlarms::Shown TableAlarms::shown(const QModelIndex &index) const
{
    const AlarmRow &row = m_model->row(m_sorting->mapToSource(index).row());
    const int top = rowViewportPosition(index.row());
    return {top, top + rowHeight(index.row()), row.alarm(), row.event().occurrence};
}

void TableAlarms::keepPlace()
{
    m_selectedAlarm = selectedAlarm();
    m_scrolled = {horizontalScrollBar()->value(), verticalScrollBar()->value()};
}

void TableAlarms::restorePlace()
{
    select(m_selectedAlarm);
    executeDelayedItemsLayout();
    horizontalScrollBar()->setValue(m_scrolled.x());
    verticalScrollBar()->setValue(m_scrolled.y());
}

// Rows may have moved since they were painted: what is meant is what stood on the display.
TableAlarms::Press TableAlarms::pressAt(const QMouseEvent &event) const
{
    Press press;
    press.place = event.pos();
    press.time = event.timestamp();
    if (event.button() != Qt::LeftButton)
        return press;
    QVector<Shown> rows = m_shown;
    const QModelIndex index = indexAt(event.pos());
    if (!isVisible() || !m_isPainted)
        rows = index.isValid() ? QVector<Shown>{shown(index)} : QVector<Shown>();
    for (const Shown &row : qAsConst(rows)) {
        if (event.pos().y() >= row.top && event.pos().y() < row.bottom) {
            press.alarm = row.alarm;
            press.occurrence = row.occurrence;
        }
    }
    return press;
}

bool TableAlarms::follows(const QMouseEvent &event) const
{
    const int distance = (event.pos() - m_pressed.place).manhattanLength();
    return m_pressed.time != 0 && distance < QApplication::startDragDistance() &&
           event.timestamp() - m_pressed.time <=
               static_cast<unsigned long>(QApplication::doubleClickInterval());
}

void TableAlarms::select(unsigned long alarm)
{
    const int row = alarm != 0 ? m_model->rowOf(alarm) : -1;
    const QModelIndex selected = m_sorting->mapFromSource(m_model->index(row, 0));
    const QScopedValueRollback<bool> late(m_isLate,
                                          true); // where the list stands is the operator's
    if (selected.isValid())
        selectionModel()->setCurrentIndex(selected, QItemSelectionModel::ClearAndSelect |
                                                        QItemSelectionModel::Rows);
}

void TableAlarms::mousePressEvent(QMouseEvent *event)
{
    m_pressed = pressAt(*event);
    QTableView::mousePressEvent(event);
    select(m_pressed.alarm);
}

// The table itself would press, and select, what the second click meets.
void TableAlarms::mouseDoubleClickEvent(QMouseEvent *event)
{
    const Press pressed = follows(*event) ? m_pressed : pressAt(*event);
    m_pressed = {};
    select(pressed.alarm);
    const int row = pressed.alarm != 0 ? m_model->rowOf(pressed.alarm) : -1;
    if (row >= 0 && columnAt(pressed.place.x()) == 0 &&
        m_model->row(row).event().occurrence == pressed.occurrence)
        emit rowDoubleClicked(m_model->index(row, 0));
    event->accept();
}

// Some time after a click the base class brings the pressed row into sight: one that moved because
// it was acknowledged is not run after.
void TableAlarms::timerEvent(QTimerEvent *event)
{
    const QScopedValueRollback<bool> late(m_isLate, true);
    QTableView::timerEvent(event);
}

void TableAlarms::scrollTo(const QModelIndex &index, ScrollHint hint)
{
    if (!m_isLate)
        QTableView::scrollTo(index, hint);
}

void TableAlarms::resizeEvent(QResizeEvent *event)
{
    QTableView::resizeEvent(event);
    fitColumns();
}

void TableAlarms::fitColumns()
{
    const AlarmColumns &columns = m_model->columns();
    int surplus = -viewport()->width();
    for (const int width : qAsConst(m_widths))
        surplus += width;
    for (int column = 0; column < m_widths.size(); ++column) {
        const int wanted = m_widths[column];
        const bool isFixed = columns[column].width > 0;
        const int least = qMin(wanted, AlarmColumns::leastWidth(columns[column].kind));
        const int cut = isFixed ? 0 : qBound(0, surplus, wanted - least);
        setColumnWidth(column, wanted - cut);
        surplus -= cut;
    }
}

} // namespace Widgets
