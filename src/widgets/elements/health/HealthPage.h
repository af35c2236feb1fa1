#pragma once

#include "widgets/WidgetsExport.h"
#include "widgets/elements/health/BarsChart.h"
#include "widgets/elements/health/HealthAsker.h"
#include "widgets/elements/health/HealthPeriod.h"
#include "widgets/elements/health/NuisanceList.h"

#include <QTimer>
#include <QWidget>

class QLabel;
class QTableView;

namespace Nodes {
class systemCore;
}

namespace Widgets {

class ChoiceButtons;
class HealthBar;
class HealthCsv;
class MeasureModel;
class RateChart;

/// What a period says of the alarm system: measures with their verdicts, charts, and the alarms
/// that trouble operators. Computed off the GUI thread; what was shown stays until the new is
/// there. GUI thread.
class WIDGETS_EXPORT HealthPage : public QWidget
{
    Q_OBJECT

public:
    struct Settings
    {
        HealthPeriod period;
        int refreshMinutes = 5; ///< 0: only when asked
        Nodes::Timestamp fleeting = Nodes::Timestamp(10) * 1000000;
        Nodes::Timestamp standing = Nodes::AlarmStatistics::Day;

        bool operator==(const Settings &o) const
        {
            return period.kind == o.period.kind && refreshMinutes == o.refreshMinutes &&
                   fleeting == o.fleeting && standing == o.standing;
        }
        bool operator!=(const Settings &o) const { return !(*this == o); }
    };

    explicit HealthPage(QWidget *parent = nullptr);

    /// Computes nothing by itself.
    void setSettings(const Settings &settings);
    /// Begins with a computation and goes on refreshing; null ends both. The core outlives this.
    void setCore(Nodes::systemCore *core);
    void refresh();
    bool isBusy() const { return m_asker.isBusy(); }
    const AlarmFiguresPtr &figures() const { return m_figures; }

    /// What the bars tell of.
    enum Breakdown { ByAlarm, ByArea, ByShift };
    void showBreakdown(Breakdown breakdown);

    NuisanceList *nuisances() const { return m_nuisances; }
    HealthBar *bar() const { return m_bar; }
    MeasureModel *measures() const { return m_measures; }
    QString rateTitle() const;
    std::vector<BarsChart::Bar> breakdownBars() const;

private:
    QWidget *buildLeft();
    QWidget *buildRight();
    QLabel *title(const QString &text);
    void choose(HealthPeriod::Kind kind);
    void askPeriod();
    void take(const Nodes::Result &result, const AlarmFiguresPtr &figures);
    void showFigures();
    void tell(const QString &text);
    void tellInterval();
    void cancel();
    void save();

    Settings m_settings;
    Nodes::systemCore *m_core = nullptr;
    HealthAsker m_asker;
    QTimer m_timer;
    QTimer m_waiting; // for the core to run
    HealthBar *m_bar;
    QLabel *m_message;
    MeasureModel *m_measures;
    QTableView *m_table = nullptr;
    RateChart *m_rate = nullptr;
    BarsChart *m_priorities = nullptr;
    BarsChart *m_top = nullptr;
    QLabel *m_rateTitle = nullptr;
    ChoiceButtons *m_breakdowns = nullptr;
    Breakdown m_breakdown = ByAlarm;
    NuisanceList *m_nuisances = nullptr;
    HealthCsv *m_csv;
    AlarmFiguresPtr m_figures;
};

} // namespace Widgets
