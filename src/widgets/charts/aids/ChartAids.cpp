#include "widgets/charts/aids/ChartAids.h"

#include "widgets/charts/axes/ToolBar.h"
#include "widgets/charts/axes/ToolBarChart.h"
#include "widgets/charts/export/ChartExport.h"
#include "widgets/charts/legend/Legend.h"
#include "widgets/charts/marks/EventMarks.h"
#include "widgets/charts/menus/TouchMenu.h"
#include "widgets/charts/overlay/PastPeriodDialog.h"
#include "widgets/charts/overlay/PastPeriods.h"
#include "widgets/charts/own/OwnTrend.h"
#include "widgets/charts/pickers/CursorRelay.h"
#include "widgets/charts/pickers/IPickerCanvas.h"
#include "widgets/charts/plots/ChartGroupManager.h"
#include "widgets/charts/plots/Plot.h"
#include "widgets/charts/plots/PlotCanvas.h"
#include "widgets/charts/plots/PlotXY.h"
#include "widgets/charts/series/ISerie.h"
#include "widgets/charts/statistics/CursorPanel.h"
#include "widgets/charts/time/ChartTime.h"
#include "widgets/dialogs/Dialogs.h"

#include "nodes/charts/widgetChart.h"
#include "nodes/charts/widgetChartBasicSerie.h"
#include "nodes/signals/BasicSignal.h"
#include "utils/convert/PlainTip.h"

#include <QAction>
#include <QContextMenuEvent>
#include <QVBoxLayout>

#include <algorithm>

namespace Widgets {

namespace {

constexpr int keyGap = 9; // pixels between the key of the menu and what it stands under

struct Period
{
    const char *text;
    double shift; // ms
};

constexpr double hour = 3600e3;
constexpr Period periods[] = {
    {"Час назад", hour}, {"Сутки назад", 24 * hour}, {"Неделю назад", 7 * 24 * hour}};

} // namespace

ChartAids::ChartAids(Plot *plot, ChartGroupManager *manager, Legend *legend, QWidget *element)
    : m_plot(plot),
      m_manager(manager),
      m_element(element),
      m_panel(new CursorPanel(plot, element)),
      m_marks(new EventMarks(plot, manager)),
      m_periods(new PastPeriods(plot, manager, legend)),
      m_export(new ChartExport(plot, legend, element)),
      m_key(new ToolBar(plot->chart(), plot->canvas()))
{
    for (QObject *part : std::initializer_list<QObject *>{m_marks, m_periods, m_export})
        part->setParent(this);
    if (auto *layout = qobject_cast<QVBoxLayout *>(element->layout()))
        layout->addWidget(m_panel);
    QAction *key = m_key->addAction(QStringLiteral("⋮"));
    key->setToolTip(QStringLiteral("Меню графика"));
    connect(key, &QAction::triggered, this, [this] { openMenu(m_key->geometry().bottomLeft()); });
    m_key->onUpdateProperties();
    connect(plot, &Plot::userChanged, this, &ChartAids::onUserChanged);
    plot->canvas()->installEventFilter(this);
    plot->plotCanvas()->tbChart()->installEventFilter(this);
    placeKey();
    if (plot->chart())
        m_marks->setShown(plot->chart()->GetShowMarks());
}

ChartAids::~ChartAids()
{
    delete m_panel;
    delete m_key;
}

CursorPanel *ChartAids::cursorPanel() const
{
    return m_panel;
}

bool ChartAids::eventFilter(QObject *watched, QEvent *event)
{
    if (!m_plot)
        return QObject::eventFilter(watched, event);
    if (event->type() == QEvent::Resize || event->type() == QEvent::Move) {
        placeKey();
    } else if (watched == m_plot->canvas() && event->type() == QEvent::ContextMenu &&
               m_plot->isAtWork()) {
        openMenu(static_cast<QContextMenuEvent *>(event)->pos());
        return true;
    }
    return QObject::eventFilter(watched, event);
}

// Marks of the cursors tell values, as do their table, past periods and events.
void ChartAids::onUserChanged()
{
    IPickerCanvas *picker = CursorRelay::of(*m_plot).picker();
    const QList<ISerie *> series = m_plot->series();
    const bool isForbidden = std::any_of(series.begin(), series.end(), [](const ISerie *serie) {
        return serie->getNode() && serie->getNode()->IsForbidden();
    });
    if (picker && isForbidden)
        for (const auto cursor : {IPickerCanvas::SecondCursor, IPickerCanvas::FirstCursor})
            picker->remove(cursor);
    m_marks->takeSources();
    m_periods->readAnew();
}

// Under the tool bar of the chart, as the keys of the values' scales stand under that of the time;
// where the tool bars are out of sight, in their corner.
void ChartAids::placeKey()
{
    const QWidget *bar = m_plot->plotCanvas()->tbChart();
    const QWidget *canvas = m_plot->canvas();
    const int top = bar->geometry().bottom() < 0 ? 0 : bar->geometry().bottom();
    m_key->move(canvas->rect().right() - m_key->width(), top + keyGap);
}

void ChartAids::openMenu(const QPoint &place)
{
    if (!m_plot->isAtWork())
        return;
    auto *menu = new TouchMenu(m_element);
    fillMenu(*menu, place);
    menu->openAt(m_plot->canvas()->mapToGlobal(place));
}

void ChartAids::fillMenu(QMenu &menu, const QPoint &)
{
    addCursors(menu);
    if (auto *xy = qobject_cast<PlotXY *>(m_plot.data()))
        connect(menu.addAction(QStringLiteral("Период: ") + xy->lengthText() + QStringLiteral("…")),
                &QAction::triggered, xy, &PlotXY::onActionLengthX, Qt::QueuedConnection);
    else
        addPeriods(menu);
    QAction *marks = menu.addAction(QStringLiteral("Отметки событий"));
    marks->setCheckable(true);
    marks->setChecked(m_marks->isShown());
    connect(marks, &QAction::toggled, m_marks, &EventMarks::setShown);
    menu.addSeparator();
    addSignals(menu);
    menu.addSeparator();
    m_export->fill(menu);
}

void ChartAids::addCursors(QMenu &menu)
{
    const QPointer<IPickerCanvas> picker = CursorRelay::of(*m_plot).picker();
    if (!picker)
        return;
    QAction *second = menu.addAction(QStringLiteral("Второй визир здесь"));
    second->setEnabled(picker->canSplit());
    connect(second, &QAction::triggered, picker, &IPickerCanvas::splitLast);
    QAction *remove = menu.addAction(QStringLiteral("Убрать второй визир"));
    remove->setEnabled(picker->position(IPickerCanvas::SecondCursor).has_value());
    connect(remove, &QAction::triggered, picker,
            [picker] { picker->remove(IPickerCanvas::SecondCursor); });
    menu.addSeparator();
}

void ChartAids::addPeriods(QMenu &menu)
{
    auto *past = new TouchMenu(QStringLiteral("Наложить прошлый период"), &menu);
    const auto add = [&](const QString &text, double shift) {
        connect(past->addAction(text), &QAction::triggered, m_periods,
                [this, shift] { m_periods->add(shift); });
    };
    for (const Period &period : periods)
        add(QString::fromUtf8(period.text), period.shift);
    add(QStringLiteral("Предыдущий интервал"), m_plot->window().width());
    connect(past->addAction(QStringLiteral("С выбранного начала…")), &QAction::triggered, this,
            &ChartAids::askPeriod);
    menu.addMenu(past);
    QAction *clear = menu.addAction(QStringLiteral("Убрать наложение"));
    clear->setEnabled(!m_periods->isEmpty());
    connect(clear, &QAction::triggered, m_periods, &PastPeriods::clear);
}

// Begins at the first cursor, if there is one: a batch begins where the operator sees it begin.
void ChartAids::askPeriod()
{
    const IPickerCanvas *picker = CursorRelay::of(*m_plot).picker();
    const auto cursor = picker ? picker->position(IPickerCanvas::FirstCursor) : std::nullopt;
    DialogRequest request;
    request.parent = TouchMenu::windowOf(m_element);
    auto *dialog = Dialogs::make<PastPeriodDialog>(request);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setPresent(ChartTime::toDateTime(cursor.value_or(m_plot->window().minValue())));
    connect(dialog, &PastPeriodDialog::chosen, m_periods, &PastPeriods::add);
    dialog->open();
}

void ChartAids::addSignals(QMenu &menu)
{
    const QList<ISerie *> series = m_plot->series();
    auto *own = new TouchMenu(QStringLiteral("Добавить в свой тренд"), &menu);
    for (const ISerie *serie : series) {
        const Nodes::widgetChartBasicSerie *node = serie->getNode();
        if (!node || !node->GetSignal() || node->IsForbidden())
            continue;
        const Nodes::NodeLink signal = node->GetSignal()->GetNodeLink();
        connect(own->addAction(Utils::PlainCaption(QString::fromStdString(node->GetText()))),
                &QAction::triggered, this, [signal] { OwnTrend::add({signal}); });
    }
    own->setEnabled(!own->isEmpty());
    menu.addMenu(own);
    connect(menu.addAction(QStringLiteral("Свой тренд…")), &QAction::triggered, this,
            [] { OwnTrend::open(); });
}

} // namespace Widgets
