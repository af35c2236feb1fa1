#include "widgets/charts/legend/Legend.h"

#include "widgets/charts/legend/ColorDelegate.h"
#include "widgets/charts/legend/HeaderView.h"
#include "widgets/charts/legend/LegendDelegate.h"
#include "widgets/charts/legend/LegendModel.h"
#include "widgets/charts/legend/SerieHighlight.h"
#include "widgets/charts/plots/ChartGroupManager.h"
#include "widgets/charts/plots/Plot.h"
#include "widgets/charts/series/ISerie.h"
#include "widgets/dialogs/DialogLook.h"

#include "nodes/charts/widgetChartBasicSerie.h"

#include "nodes/charts/widgetChart.h"

#include <QEvent>

#include <algorithm>

#include <qwt_scale_widget.h>

namespace Widgets {

namespace {

constexpr int minimumRowHeight = 28;
constexpr int visibleWidth = 36;
constexpr int nameWidth = 120; // pixels, at least: below that names tell nothing

// Shown when the node says nothing that can be shown.
const std::vector<SerieColumn> usual{SerieColumn::Visible, SerieColumn::Color,
                                     SerieColumn::Name,    SerieColumn::CursorValue,
                                     SerieColumn::Value,   SerieColumn::Unit};

bool has(const std::vector<SerieColumn> &columns, SerieColumn column)
{
    return std::find(columns.begin(), columns.end(), column) != columns.end();
}

} // namespace

Legend::Legend(ChartGroupManager *manager, QWidget *parent)
    : QTableView(parent),
      m_manager(manager),
      m_model(new LegendModel(this)),
      m_header(new HeaderView(this)),
      m_highlight(new SerieHighlight(this)),
      m_configured(usual)
{
    setModel(m_model);
    setHorizontalHeader(m_header);
    MakeLegible(*this);
    MakeLegible(*m_header);
    setItemDelegate(new LegendDelegate(this));
    setItemDelegateForColumn(int(SerieColumn::Color), new ColorDelegate(this));
    setSelectionBehavior(SelectRows);
    setSelectionMode(NoSelection); // rows are chosen by taps, which also take the choice back
    setEditTriggers(NoEditTriggers);
    setFrameShape(NoFrame);
    setShowGrid(false);
    setAlternatingRowColors(true);
    setWordWrap(false);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollMode(ScrollPerPixel);
    verticalHeader()->hide();
    verticalHeader()->setMinimumSectionSize(minimumRowHeight);
    verticalHeader()->setDefaultSectionSize(qMax(minimumRowHeight, fontMetrics().height() + 8));
    m_header->setSectionResizeMode(QHeaderView::Fixed);
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Maximum);
    connect(this, &QTableView::clicked, this, &Legend::onClicked);
    connect(m_model, &LegendModel::serieChanged, this, &Legend::seriesUpdated);
    connect(m_model, &LegendModel::dataChanged, this, &Legend::onCellsChanged);
    connect(m_header, &HeaderView::columnToggled, this, &Legend::setColumnShown);
    if (m_manager)
        connect(m_manager, &ChartGroupManager::seriesAboutToGo, this, &Legend::forgetSeries);
    if (parent)
        parent->installEventFilter(this);
}

Legend::~Legend() = default;

void Legend::setPlot(Plot *plot)
{
    if (m_plot)
        m_plot->axisWidget(QwtAxisId(QwtAxis::xBottom))->disconnect(m_model);
    m_plot = plot;
    // Minimum and maximum are those of the visible range.
    if (plot)
        connect(plot->axisWidget(QwtAxisId(QwtAxis::xBottom)), &QwtScaleWidget::scaleDivChanged,
                m_model, &LegendModel::askAll);
}

void Legend::setArchiverMode(bool on)
{
    if (m_isArchive == on)
        return;
    m_isArchive = on;
    showColumns();
    updateGeometry();
}

std::vector<SerieColumn> Legend::columns() const
{
    std::vector<SerieColumn> shown = m_chosen.empty() ? m_configured : m_chosen;
    if (!m_isArchive || !m_chosen.empty())
        return shown;
    shown.erase(std::remove(shown.begin(), shown.end(), SerieColumn::Value), shown.end());
    for (const SerieColumn column : {SerieColumn::Maximum, SerieColumn::Minimum})
        if (!has(shown, column)) {
            const auto name = std::find(shown.begin(), shown.end(), SerieColumn::Name);
            shown.insert(name == shown.end() ? name : name + 1, column);
        }
    return shown;
}

void Legend::setColumnShown(SerieColumn column, bool isShown)
{
    std::vector<SerieColumn> shown = columns();
    if (has(shown, column) == isShown)
        return;
    if (isShown) // where its kind stands usually
        shown.insert(std::find_if(shown.begin(), shown.end(),
                                  [column](SerieColumn other) { return other > column; }),
                     column);
    else
        shown.erase(std::remove(shown.begin(), shown.end(), column), shown.end());
    m_chosen = std::move(shown);
    showColumns();
}

ISerie *Legend::highlighted() const
{
    return m_highlight->serie();
}

void Legend::highlight(ISerie *serie)
{
    m_highlight->set(serie);
    const int row = m_model->rowOf(serie);
    m_model->setMarked(row);
    if (row >= 0)
        scrollTo(m_model->index(row, int(SerieColumn::Name)));
    emit seriesUpdated();
}

void Legend::onUpdateProperties()
{
    takeColumns();
    takeSeries();
    showColumns();
    updateGeometry();
}

void Legend::setAdded(const std::vector<ISerie *> &series)
{
    if (m_added == series)
        return;
    m_added = series;
    takeSeries();
    fitColumns();
    updateGeometry();
}

void Legend::takeSeries()
{
    ISerie *front = highlighted();
    std::vector<ISerie *> series = m_manager ? m_manager->series() : std::vector<ISerie *>();
    series.insert(series.end(), m_added.begin(), m_added.end());
    m_model->setSeries(series);
    const bool isStillThere = front && m_model->rowOf(front) >= 0;
    m_highlight->set(isStillThere ? front : nullptr);
    m_model->setMarked(isStillThere ? m_model->rowOf(front) : -1);
}

void Legend::forgetSeries()
{
    m_highlight->set(nullptr);
    m_added.clear();
    m_model->setSeries({});
}

void Legend::takeColumns()
{
    m_configured.clear();
    const Nodes::widgetChart *chart = m_manager ? m_manager->chart() : nullptr;
    if (chart)
        for (const std::string &token : chart->GetLegendColumns()) {
            const SerieColumn column = LegendModel::columnOf(token);
            if (column != SerieColumn::Count && !has(m_configured, column))
                m_configured.push_back(column);
        }
    if (m_configured.empty())
        m_configured = usual;
    if (!has(m_configured, SerieColumn::Name))
        m_configured.push_back(SerieColumn::Name);
}

void Legend::showColumns()
{
    const std::vector<SerieColumn> shown = columns();
    for (int column = 0; column < int(SerieColumn::Count); ++column)
        m_header->setSectionHidden(column, !has(shown, SerieColumn(column)));
    int place = 0;
    for (const SerieColumn column : shown)
        m_header->moveSection(m_header->visualIndex(int(column)), place++);
    m_model->setAsked(shown);
    m_model->refresh();
    fitColumns();
}

int Legend::widthOf(int column) const
{
    switch (SerieColumn(column)) {
    case SerieColumn::Visible:
        return visibleWidth;
    case SerieColumn::Name:
        return nameWidth;
    default:
        return qMax(sizeHintForColumn(column),
                    m_header->fontMetrics().horizontalAdvance(
                        m_model->headerData(column, Qt::Horizontal, Qt::DisplayRole).toString()) +
                        2 * LegendDelegate::Margin + 4);
    }
}

// All rows, not only those in sight: scrolling must not change widths.
int Legend::sizeHintForColumn(int column) const
{
    int width = 0;
    QStyleOptionViewItem option = viewOptions();
    for (int row = 0; row < m_model->rowCount(); ++row) {
        const QModelIndex index = m_model->index(row, column);
        width = qMax(width, itemDelegate(index)->sizeHint(option, index).width());
    }
    return width;
}

// The name takes what the others leave: whole, or cut with its tool tip.
void Legend::fitColumns()
{
    int others = 0;
    for (int column = 0; column < int(SerieColumn::Count); ++column) {
        if (m_header->isSectionHidden(column) || SerieColumn(column) == SerieColumn::Name)
            continue;
        m_header->resizeSection(column, widthOf(column));
        others += m_header->sectionSize(column);
    }
    const int left = viewport()->width() - others;
    m_header->resizeSection(int(SerieColumn::Name), qMax(nameWidth, left));
    setHorizontalScrollBarPolicy(left < nameWidth ? Qt::ScrollBarAsNeeded : Qt::ScrollBarAlwaysOff);
}

void Legend::onClicked(const QModelIndex &index)
{
    ISerie *serie = m_model->serie(index.row());
    if (!serie)
        return;
    switch (SerieColumn(index.column())) {
    case SerieColumn::Visible:
        m_model->setData(index, serie->isVisible() ? Qt::Unchecked : Qt::Checked,
                         Qt::CheckStateRole);
        break;
    case SerieColumn::Color:
        offerColors(index);
        break;
    default:
        highlight(serie == highlighted() ? nullptr : serie);
    }
}

void Legend::offerColors(const QModelIndex &index)
{
    const QPersistentModelIndex cell(index);
    const QPoint place = viewport()->mapToGlobal(visualRect(index).bottomLeft());
    const QPointer<LegendModel> model(m_model);
    ColorDelegate::offer(place, this, [model, cell](const QColor &color) {
        if (model && cell.isValid())
            model->setData(cell, color, Qt::DecorationRole);
    });
}

// Columns grow with their texts and never shrink while they change: nothing jumps.
void Legend::onCellsChanged(const QModelIndex &from, const QModelIndex &to)
{
    for (int column = from.column(); column <= to.column(); ++column) {
        if (m_header->isSectionHidden(column) || SerieColumn(column) == SerieColumn::Name)
            continue;
        if (widthOf(column) > m_header->sectionSize(column))
            return fitColumns();
    }
}

QSize Legend::sizeHint() const
{
    const int rowHeight = verticalHeader()->defaultSectionSize();
    const int whole = m_header->sizeHint().height() + m_model->rowCount() * rowHeight;
    const int room = parentWidget() ? parentWidget()->height() / (m_isArchive ? 2 : 3) : whole;
    return {QTableView::sizeHint().width(), qMax(minimumSizeHint().height(), qMin(whole, room))};
}

QSize Legend::minimumSizeHint() const
{
    const int rows = qMin(2, m_model->rowCount());
    return {0, m_header->sizeHint().height() + rows * verticalHeader()->defaultSectionSize()};
}

void Legend::resizeEvent(QResizeEvent *event)
{
    QTableView::resizeEvent(event);
    fitColumns();
}

bool Legend::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == parentWidget() && event->type() == QEvent::Resize)
        updateGeometry(); // the share of its height
    return QTableView::eventFilter(watched, event);
}

} // namespace Widgets
