#include "widgets/events/TableAlarms.h"

#include "widgets/events/AlarmRowDelegate.h"
#include "widgets/events/AlarmSigns.h"
#include "widgets/events/ModelAlarms.h"

#include "nodes/alarms/alarmColumn.h"
#include "utils/SortingModel.h"

#include <QHeaderView>
#include <QMouseEvent>
#include <QScroller>

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
    connect(&model, &QAbstractItemModel::modelReset, this, &TableAlarms::takeColumns);
    takeColumns();
}

void TableAlarms::takeColumns()
{
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
        setColumnWidth(column, configured > 0 ? configured : qMax(ofName, ofRows) + cellMargin);
    }
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
    return horizontalHeader()->length();
}

void TableAlarms::mouseDoubleClickEvent(QMouseEvent *event)
{
    const QModelIndex index = indexAt(event->pos());
    if (event->button() == Qt::LeftButton && index.isValid() && index.column() == 0)
        emit rowDoubleClicked(m_sorting->mapToSource(index));
    QTableView::mouseDoubleClickEvent(event);
}

} // namespace Widgets
