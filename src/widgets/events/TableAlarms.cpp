#include "widgets/events/TableAlarms.h"

#include "widgets/events/AlarmRowDelegate.h"
#include "widgets/events/AlarmSigns.h"
#include "widgets/events/ModelAlarms.h"

#include "nodes/alarms/alarmColumn.h"
#include "utils/models/SortingModel.h"

#include <QApplication>
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

// What each kind of column has to hold at most; the text takes the rest.
QString widestText(int kind)
{
    switch (kind) {
    case Nodes::alarmColumn::Number:
        return QStringLiteral("00000");
    case Nodes::alarmColumn::Group:
        return QStringLiteral("Активные неквитированные, приоритет 0");
    case Nodes::alarmColumn::Time:
        return QStringLiteral("00.00.0000 00:00:00.000");
    case Nodes::alarmColumn::Level:
        return QStringLiteral("Предупреждение");
    default:
        return QString(40, QLatin1Char('n'));
    }
}

// What is narrower is of no use; the badge tells the state where its words are cut.
int leastWidth(int kind)
{
    switch (kind) {
    case Nodes::alarmColumn::Group:
        return 140;
    case Nodes::alarmColumn::Level:
        return 110;
    case Nodes::alarmColumn::Text:
        return 240;
    default:
        return QWIDGETSIZE_MAX;
    }
}

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
                                 "QScrollBar:vertical { width: 28px; }"
                                 "QScrollBar:horizontal { height: 28px; }")
                      .arg(AlarmSigns::listGround().name()));
}

void TableAlarms::setAlarms(ModelAlarms &model, Utils::SortingModel &sorting)
{
    m_model = &model;
    m_sorting = &sorting;
    setModel(&sorting);
    connect(&model, &ModelAlarms::columnsChanged, this, &TableAlarms::takeColumns);
    // After the table itself, which forgets its selection.
    connect(&sorting, &QAbstractItemModel::modelAboutToBeReset, this, &TableAlarms::keepPlace);
    connect(&sorting, &QAbstractItemModel::modelReset, this, &TableAlarms::restorePlace);
    takeColumns();
}

void TableAlarms::takeColumns()
{
    m_widths.clear();
    QFont widest = m_model->font();
    widest.setBold(true); // as that of rows that wait
    for (int column = 0; column < m_model->columnCount(); ++column) {
        const auto header =
            m_model->headerData(column, Qt::Horizontal, Qt::FontRole).value<QFont>();
        const QString name =
            m_model->headerData(column, Qt::Horizontal, Qt::DisplayRole).toString();
        const int ofName = QFontMetrics(header, this).horizontalAdvance(name) + indicatorWidth;
        const int ofRows =
            QFontMetrics(widest, this).horizontalAdvance(widestText(m_model->columnKind(column))) +
            (column == 0 ? m_model->badgeHeight() : 0);
        const int configured = m_model->columnWidth(column);
        m_widths.append(configured > 0 ? configured : qMax(ofName, ofRows) + cellMargin);
    }
    fitColumns();
    horizontalHeader()->setStretchLastSection(true);
    verticalHeader()->setDefaultSectionSize(qMax(smallestRow, m_model->badgeHeight() + 8));
    setIconSize(QSize(m_model->badgeHeight(), m_model->badgeHeight()));
    const int group = m_model->columnOf(Nodes::alarmColumn::Group);
    sortBy(qMax(group, 0), Qt::AscendingOrder);
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
    const int time = m_model->columnOf(Nodes::alarmColumn::Time);
    if (time != column)
        m_sorting->addSortColumn(time, Qt::DescendingOrder);
    horizontalHeader()->setSortIndicator(column, order);
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
    m_shown.clear();
    for (int row = qMax(0, rowAt(0)); row < m_sorting->rowCount(); ++row) {
        m_shown.append(shown(m_sorting->index(row, 0)));
        if (m_shown.last().bottom >= viewport()->height())
            break;
    }
}

TableAlarms::Shown TableAlarms::shown(const QModelIndex &index) const
{
    const AlarmRow &row = m_model->row(m_sorting->mapToSource(index).row());
    const int top = rowViewportPosition(index.row());
    return {top, top + rowHeight(index.row()), row.alarm(), row.event().occurrence};
}

void TableAlarms::keepPlace()
{
    const QModelIndex selected = selectedRow();
    m_selectedAlarm = selected.isValid() ? m_model->row(selected.row()).alarm() : 0;
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
    int surplus = -viewport()->width();
    for (const int width : qAsConst(m_widths))
        surplus += width;
    for (int column = 0; column < m_widths.size(); ++column) {
        const int wanted = m_widths[column];
        const bool isFixed = m_model->columnWidth(column) > 0;
        const int least = qMin(wanted, leastWidth(m_model->columnKind(column)));
        const int cut = isFixed ? 0 : qBound(0, surplus, wanted - least);
        setColumnWidth(column, wanted - cut);
        surplus -= cut;
    }
}

} // namespace Widgets
