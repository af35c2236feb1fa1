#include "widgets/elements/health/HealthPage.h"

#include "widgets/charts/menus/TouchMenu.h"
#include "widgets/dialogs/DialogLook.h"
#include "widgets/dialogs/Dialogs.h"
#include "widgets/dialogs/SaveFileQuestion.h"
#include "widgets/elements/health/ChoiceButtons.h"
#include "widgets/elements/health/HealthBar.h"
#include "widgets/elements/health/HealthBars.h"
#include "widgets/elements/health/HealthCsv.h"
#include "widgets/elements/health/HealthTable.h"
#include "widgets/elements/health/HealthText.h"
#include "widgets/elements/health/MeasureModel.h"
#include "widgets/elements/health/RateChart.h"
#include "widgets/eventlist/DateIntervalWidget.h"

#include "nodes/reports/data/AlarmShifts.h"
#include "nodes/reports/time/shiftTable.h"
#include "nodes/system/systemCore.h"
#include "nodes/values/Clock.h"

#include <QDateTime>
#include <QHBoxLayout>
#include <QLabel>
#include <QTableView>
#include <QVBoxLayout>

#include <algorithm>

namespace Widgets {

namespace {

constexpr int spacing = 8;
constexpr int measureRow = 28;
constexpr int millisecondsPerMinute = 60000;
constexpr int waitingMilliseconds = 500;

QDateTime timeOf(Nodes::Timestamp at)
{
    return QDateTime::fromMSecsSinceEpoch(at / 1000);
}

} // namespace

HealthPage::HealthPage(QWidget *parent)
    : QWidget(parent),
      m_bar(new HealthBar(this)),
      m_message(new QLabel(this)),
      m_measures(new MeasureModel(this)),
      m_csv(new HealthCsv(this))
{
    auto *columns = new QHBoxLayout;
    columns->setSpacing(2 * spacing);
    columns->addWidget(buildLeft(), 5);
    columns->addWidget(buildRight(), 7);
    auto *layout = new QVBoxLayout(this);
    layout->setSizeConstraint(QLayout::SetNoConstraint);
    layout->setContentsMargins(spacing, spacing, spacing, spacing);
    layout->setSpacing(spacing);
    layout->addWidget(m_bar);
    layout->addWidget(m_message);
    layout->addLayout(columns, 1);
    MakeLegible(*m_message);
    m_message->setWordWrap(true);
    m_message->hide();
    connect(m_bar, &HealthBar::periodChosen, this, &HealthPage::choose);
    connect(m_bar, &HealthBar::refreshPressed, this, &HealthPage::refresh);
    connect(m_bar, &HealthBar::cancelPressed, this, &HealthPage::cancel);
    connect(m_bar, &HealthBar::exportPressed, this, &HealthPage::save);
    connect(&m_asker, &HealthAsker::progressed, m_bar, &HealthBar::setProgress);
    connect(&m_asker, &HealthAsker::answered, this, &HealthPage::take);
    connect(&m_timer, &QTimer::timeout, this, &HealthPage::refresh);
    m_waiting.setSingleShot(true);
    connect(&m_waiting, &QTimer::timeout, this, &HealthPage::refresh);
    connect(m_csv, &HealthCsv::saved, this, [this](const QString &file, const QString &error) {
        tell(error.isEmpty() ? QStringLiteral("Сохранено: ") + file : error);
    });
}

QLabel *HealthPage::title(const QString &text)
{
    auto *label = new QLabel(text, this);
    MakeLegible(*label);
    QFont font = label->font();
    font.setBold(true);
    label->setFont(font);
    return label;
}

QWidget *HealthPage::buildLeft()
{
    auto *left = new QWidget(this);
    m_table = new QTableView(left);
    m_table->setModel(m_measures);
    PrepareHealthTable(*m_table, measureRow, MeasureModel::Name);
    m_table->setSelectionMode(QAbstractItemView::NoSelection);
    m_table->setFocusPolicy(Qt::NoFocus);
    m_priorities = new BarsChart(left);
    m_priorities->setNameShare(0.4);
    auto *layout = new QVBoxLayout(left);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(spacing);
    layout->addWidget(title(QStringLiteral("Показатели")));
    layout->addWidget(m_table, 5);
    layout->addWidget(title(QStringLiteral("Приоритеты; черта — рекомендуемая доля")));
    layout->addWidget(m_priorities, 1);
    return left;
}

QWidget *HealthPage::buildRight()
{
    auto *right = new QWidget(this);
    m_rate = new RateChart(right);
    m_top = new BarsChart(right);
    m_nuisances = new NuisanceList(right);
    auto *layout = new QVBoxLayout(right);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(spacing);
    m_rateTitle = title(QStringLiteral("Тревог за 10 минут; штриховая черта — 10"));
    m_breakdowns = new ChoiceButtons({{ByAlarm, QStringLiteral("Десять самых частых")},
                                      {ByArea, QStringLiteral("По участкам")},
                                      {ByShift, QStringLiteral("По сменам")}},
                                     right);
    m_breakdowns->choose(ByAlarm);
    connect(m_breakdowns, &ChoiceButtons::pressed, this,
            [this](int id) { showBreakdown(Breakdown(id)); });
    layout->addWidget(m_rateTitle);
    layout->addWidget(m_rate, 3);
    layout->addWidget(m_breakdowns, 0, Qt::AlignLeft);
    layout->addWidget(m_top, 4);
    layout->addWidget(m_nuisances, 5);
    connect(m_top, &BarsChart::pressed, this, [this](int bar) {
        if (!m_figures || m_breakdown != ByAlarm || bar >= int(m_figures->alarms.size()))
            return;
        m_nuisances->show(NuisanceModel::Frequent);
        m_nuisances->select(m_figures->alarms[std::size_t(bar)].alarm);
    });
    return right;
}

void HealthPage::setSettings(const Settings &settings)
{
    m_settings = settings;
    m_bar->setPeriod(settings.period.kind);
    m_timer.setInterval(settings.refreshMinutes * millisecondsPerMinute);
}

void HealthPage::setCore(Nodes::systemCore *core)
{
    m_core = core;
    m_timer.stop();
    m_waiting.stop();
    m_asker.cancel();
    m_bar->setProgress(-1);
    if (!m_core)
        return;
    refresh();
    if (m_settings.refreshMinutes > 0)
        m_timer.start();
}

void HealthPage::refresh()
{
    const bool isDone = m_figures && !m_settings.period.reachesPresent() &&
                        sender() == &m_timer; // the past does not change
    if (!m_core || isDone || m_asker.isBusy())
        return;
    if (m_core->GetState() != Nodes::NodeState::Running) { // its journal is not open yet
        m_waiting.start(waitingMilliseconds);
        return;
    }
    const Nodes::Timestamp now = Nodes::Clock::Current().Now();
    Nodes::AlarmStatisticsReading reading;
    reading.begin = m_settings.period.begin(now);
    reading.end = m_settings.period.end(now);
    if (reading.end <= reading.begin)
        return tell(QStringLiteral("Период ещё не наступил"));
    reading.fleeting = m_settings.fleeting;
    reading.standing = m_settings.standing;
    reading.shifts = Nodes::AlarmShiftsOf(Nodes::shiftTable::PlanOf(m_core->GetNodesCollection()),
                                          reading.begin, reading.end);
    m_asker.ask(*m_core, std::move(reading));
    if (!m_figures)
        m_bar->setProgress(0);
}

void HealthPage::choose(HealthPeriod::Kind kind)
{
    if (kind == HealthPeriod::Free)
        return askPeriod();
    m_settings.period = {kind, 0, 0};
    m_bar->setPeriod(kind);
    m_asker.cancel();
    refresh();
}

void HealthPage::askPeriod()
{
    const Nodes::Timestamp now = Nodes::Clock::Current().Now();
    DialogRequest request;
    request.parent = TouchMenu::windowOf(this);
    const QPointer<HealthPage> alive(this);
    OwnedDialog<DateIntervalWidget> dialog(request);
    if (!dialog)
        return;
    dialog->setInterval(timeOf(m_settings.period.begin(now)), timeOf(m_settings.period.end(now)));
    const bool isChosen = dialog->exec() == QDialog::Accepted;
    if (!alive || !dialog || !isChosen)
        return;
    m_settings.period = {HealthPeriod::Free, dialog->from().toMSecsSinceEpoch() * 1000,
                         (dialog->to().toMSecsSinceEpoch() + 1) * 1000};
    m_bar->setPeriod(HealthPeriod::Free);
    m_asker.cancel();
    refresh();
}

void HealthPage::cancel()
{
    m_asker.cancel();
    m_bar->setProgress(-1);
    tell(QStringLiteral("Расчёт отменён"));
}

void HealthPage::take(const Nodes::Result &result, const AlarmFiguresPtr &figures)
{
    m_bar->setProgress(-1);
    if (!result || !figures) {
        tell(QStringLiteral("Журнал не прочитан: %1. Показано рассчитанное раньше.")
                 .arg(QString::fromStdString(result.GetDetail())));
        return;
    }
    m_figures = figures;
    showFigures();
}

void HealthPage::showFigures()
{
    const Nodes::AlarmFigures &figures = *m_figures;
    const std::vector<Nodes::AlarmMeasure> measures = Nodes::MeasuresOf(figures);
    m_bar->setOverall(Nodes::OverallOf(measures), Nodes::IsTelling(figures));
    m_bar->setExportable(true);
    m_measures->setMeasures(measures);
    m_rate->setBars(figures.begin, Nodes::AlarmFigures::Bin, figures.perBin);
    m_priorities->setBars(PriorityBars(figures));
    m_top->setBars(breakdownBars());
    m_rateTitle->setText(
        QStringLiteral("Тревог за 10 минут; штриховая черта — 10; лавина: более %1, до менее %2")
            .arg(figures.floodAbove)
            .arg(figures.floodBelow));
    m_nuisances->setFigures(m_figures);
    tellInterval();
}

QString HealthPage::rateTitle() const
{
    return m_rateTitle->text();
}

std::vector<BarsChart::Bar> HealthPage::breakdownBars() const
{
    if (!m_figures)
        return {};
    return m_breakdown == ByArea    ? AreaBars(*m_figures)
           : m_breakdown == ByShift ? ShiftBars(*m_figures)
                                    : TopTenBars(*m_figures);
}

void HealthPage::showBreakdown(Breakdown breakdown)
{
    m_breakdown = breakdown;
    m_breakdowns->choose(breakdown);
    m_top->setBars(breakdownBars());
}

void HealthPage::tellInterval()
{
    m_bar->setInterval(QStringLiteral("%1 – %2").arg(HealthText::time(m_figures->begin),
                                                     HealthText::time(m_figures->end)));
    QStringList notes;
    if (m_figures->raised == 0)
        notes << QStringLiteral("Тревог за период не было");
    const Nodes::Timestamp now = Nodes::Clock::Current().Now();
    if (m_figures->begin > m_settings.period.begin(now) + Nodes::AlarmFigures::Bin)
        notes << QStringLiteral("Журнал начинается %1").arg(HealthText::time(m_figures->begin));
    if (m_figures->foreign > 0)
        notes
            << QStringLiteral("Записей других проектов: %1, они не учтены").arg(m_figures->foreign);
    tell(notes.join(QStringLiteral(". ")));
}

void HealthPage::tell(const QString &text)
{
    m_message->setText(text);
    m_message->setVisible(!text.isEmpty());
}

void HealthPage::save()
{
    if (!m_figures)
        return;
    const AlarmFiguresPtr figures = m_figures;
    const QPointer<HealthPage> alive(this);
    const SaveFileQuestion question{
        QStringLiteral("Сохранить данные"),
        QStringLiteral("Здоровье тревог %1 – %2.csv")
            .arg(HealthText::time(figures->begin), HealthText::time(figures->end)),
        QStringLiteral("csv"), QStringLiteral("Таблица CSV (*.csv)")};
    const QString file = question.ask(TouchMenu::windowOf(this));
    if (alive && !file.isEmpty())
        m_csv->save(file, figures);
}

} // namespace Widgets
