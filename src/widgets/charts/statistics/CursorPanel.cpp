#include "widgets/charts/statistics/CursorPanel.h"

#include "widgets/charts/aids/HistoryAsker.h"
#include "widgets/charts/legend/LegendDelegate.h"
#include "widgets/charts/pickers/CursorRelay.h"
#include "widgets/charts/pickers/IPickerCanvas.h"
#include "widgets/charts/plots/Plot.h"
#include "widgets/charts/series/ISerie.h"
#include "widgets/charts/statistics/CursorTable.h"
#include "widgets/charts/statistics/SerieSpan.h"
#include "widgets/charts/statistics/SpanReader.h"
#include "widgets/charts/time/ChartTime.h"
#include "widgets/dialogs/DialogLook.h"

#include "nodes/archive/HistoryAnswer.h"
#include "nodes/charts/widgetChart.h"
#include "nodes/charts/widgetChartBasicSerie.h"
#include "nodes/signals/BasicSignal.h"
#include "utils/convert/TimeConversions.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QTableView>
#include <QToolButton>
#include <QVBoxLayout>

#include <cmath>

namespace Widgets {

namespace {

constexpr int rowHeight = 28;
constexpr int askDelay = 300; // ms
constexpr int visibleRows = 5;
constexpr int nameWidth = 120;

QString spanText(double ms)
{
    const auto whole = qint64(std::llround(std::abs(ms)));
    const QString days =
        whole >= 86400000 ? QStringLiteral("%1 д ").arg(whole / 86400000) : QString();
    return (ms < 0 ? QStringLiteral("−") : QString()) + days +
           QTime::fromMSecsSinceStartOfDay(int(whole % 86400000))
               .toString(QStringLiteral("hh:mm:ss.zzz"));
}

} // namespace

CursorPanel::CursorPanel(Plot *plot, QWidget *parent)
    : QFrame(parent),
      m_plot(plot),
      m_table(new CursorTable(this)),
      m_view(new QTableView(this)),
      m_heading(new QLabel(this)),
      m_asker(new HistoryAsker(this)),
      m_reader(new SpanReader(this))
{
    auto *close = new QToolButton(this);
    close->setText(QStringLiteral("×"));
    close->setToolTip(QStringLiteral("Убрать второй визир"));
    close->setFixedSize(rowHeight, rowHeight);
    close->setAutoRaise(true);
    MakeLegible(*close);
    MakeLegible(*m_heading);
    m_heading->setTextFormat(Qt::PlainText);
    m_heading->setTextInteractionFlags(Qt::TextSelectableByMouse);
    m_heading->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    auto *top = new QHBoxLayout;
    top->setContentsMargins(LegendDelegate::Margin, 0, 0, 0);
    top->addWidget(m_heading);
    top->addWidget(close);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addLayout(top);
    layout->addWidget(m_view);
    m_view->setModel(m_table);
    m_view->setItemDelegate(new LegendDelegate(m_view));
    MakeLegible(*m_view);
    MakeLegible(*m_view->horizontalHeader());
    m_view->setFrameShape(NoFrame);
    m_view->setShowGrid(false);
    m_view->setAlternatingRowColors(true);
    m_view->setSelectionMode(QAbstractItemView::NoSelection);
    m_view->setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    m_view->viewport()->installEventFilter(this);
    m_view->verticalHeader()->hide();
    m_view->verticalHeader()->setMinimumSectionSize(rowHeight);
    m_view->verticalHeader()->setDefaultSectionSize(rowHeight);
    m_view->horizontalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    m_view->horizontalHeader()->setHighlightSections(false);
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Maximum);
    setFrameShape(StyledPanel);
    setAutoFillBackground(true);
    hide();
    m_askTimer.setSingleShot(true);
    m_askTimer.setInterval(askDelay);
    connect(&m_askTimer, &QTimer::timeout, this, &CursorPanel::askArchive);
    connect(close, &QToolButton::clicked, this, &CursorPanel::removeSecond);
    connect(m_asker, &HistoryAsker::answered, this, &CursorPanel::onAnswered);
    connect(m_reader, &SpanReader::completed, m_table, &CursorTable::setStatistics);
    connect(m_table, &QAbstractItemModel::modelReset, this, &CursorPanel::fitColumns);
    connect(m_table, &QAbstractItemModel::dataChanged, this, &CursorPanel::fitColumns);
    connect(&CursorRelay::of(*plot), &CursorRelay::changed, this, &CursorPanel::onCursors);
}

CursorPanel::~CursorPanel() = default;

QString CursorPanel::heading() const
{
    return m_heading->text();
}

IPickerCanvas *CursorPanel::picker() const
{
    return m_plot ? CursorRelay::of(*m_plot).picker() : nullptr;
}

void CursorPanel::onCursors()
{
    const IPickerCanvas *cursors = picker();
    const auto first = cursors ? cursors->position(IPickerCanvas::FirstCursor) : std::nullopt;
    const auto second = cursors ? cursors->position(IPickerCanvas::SecondCursor) : std::nullopt;
    if (!first || !second) {
        m_asker->cancel();
        m_reader->cancel();
        m_askTimer.stop();
        return hide();
    }
    m_from = *first;
    m_to = *second;
    const QString format = QString::fromLatin1(Utils::tableTimeFormat);
    m_heading->setText(QStringLiteral("Визир 1: %1    Визир 2: %2    Δt = %3")
                           .arg(ChartTime::text(m_from, format), ChartTime::text(m_to, format),
                                spanText(m_to - m_from)));
    takeDrawn();
    m_asker->cancel();
    m_reader->cancel();
    m_askTimer.start();
    show();
}

void CursorPanel::takeDrawn()
{
    std::vector<CursorTable::Row> rows;
    for (QwtPlotItem *item : m_plot->itemList()) {
        auto *serie = dynamic_cast<ISerie *>(item);
        if (!serie || !serie->isVisible())
            continue;
        const auto drawn = SerieSpan::ofDrawn(*serie, m_from, m_to);
        if (drawn)
            rows.push_back({serie, SerieSpan::valueAt(*serie, m_from),
                            SerieSpan::valueAt(*serie, m_to), drawn});
    }
    m_table->setRows(std::move(rows));
    updateGeometry();
}

void CursorPanel::askArchive()
{
    Nodes::HistoryRequest request;
    request.from = Nodes::Timestamp(ChartTime::toUtc(std::min(m_from, m_to))) * 1000;
    request.to = Nodes::Timestamp(ChartTime::toUtc(std::max(m_from, m_to))) * 1000;
    request.maxPoints = MaximumSamples;
    for (const CursorTable::Row &row : m_table->rows()) {
        const Nodes::widgetChartBasicSerie *node = row.serie ? row.serie->getNode() : nullptr;
        if (node && row.serie->hasArchiverSource() && node->GetSignal())
            request.nodes.push_back(node->GetSignal()->GetNodeLink());
    }
    if (m_plot && !request.nodes.empty())
        (void)m_asker->ask(m_plot->context().model(), request); // refused: what is drawn stays, ≈
}

void CursorPanel::onAnswered(const std::shared_ptr<const Nodes::HistoryAnswer> &answer)
{
    std::vector<SpanReader::Task> tasks;
    for (std::size_t row = 0; row < m_table->rows().size(); ++row) {
        const ISerie *serie = m_table->rows()[row].serie;
        const Nodes::widgetChartBasicSerie *node = serie ? serie->getNode() : nullptr;
        const Nodes::BasicSignal *signal = node ? node->GetSignal() : nullptr;
        for (const auto &column : answer->columns) {
            if (!signal || column->signal.GetNodeId() != signal->GetId() || !column->result ||
                column->times.empty())
                continue;
            const SpanStatistics found = SerieSpan::ofArchive(*serie, *column, m_from, m_to);
            m_table->setStatistics(int(row), found);
            if (found.isApproximate && found.count <= ExactSamples)
                tasks.push_back({int(row), column->signal, SerieSpan::joinOf(*serie),
                                 SerieSpan::heldUntil(*serie), found.count});
        }
    }
    if (m_plot && !tasks.empty())
        m_reader->read(m_plot->context().model(), std::move(tasks), std::min(m_from, m_to),
                       std::max(m_from, m_to));
    emit completed();
}

void CursorPanel::removeSecond()
{
    if (IPickerCanvas *cursors = picker())
        cursors->remove(IPickerCanvas::SecondCursor);
}

void CursorPanel::fitColumns()
{
    QHeaderView *header = m_view->horizontalHeader();
    int others = 0;
    for (int column = CursorTable::First; column < CursorTable::Count; ++column) {
        m_view->resizeColumnToContents(column);
        others += header->sectionSize(column);
    }
    header->resizeSection(CursorTable::Name, qMax(nameWidth, m_view->viewport()->width() - others));
}

int CursorPanel::heightOf(int rows) const
{
    return rowHeight + m_view->horizontalHeader()->sizeHint().height() + rows * rowHeight +
           2 * frameWidth();
}

QSize CursorPanel::sizeHint() const
{
    return {QFrame::sizeHint().width(), heightOf(qBound(1, m_table->rowCount(), visibleRows))};
}

QSize CursorPanel::minimumSizeHint() const
{
    return {0, heightOf(1)};
}

void CursorPanel::showEvent(QShowEvent *event)
{
    QFrame::showEvent(event);
    emit shown(true);
}

void CursorPanel::hideEvent(QHideEvent *event)
{
    QFrame::hideEvent(event);
    emit shown(isVisibleTo(parentWidget()));
}

bool CursorPanel::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == m_view->viewport() && event->type() == QEvent::Resize)
        fitColumns();
    return QFrame::eventFilter(watched, event);
}

} // namespace Widgets
