#pragma once

#include "widgets/WidgetsExport.h"
#include "widgets/elements/health/HealthPeriod.h"

#include "nodes/alarms/statistics/AlarmMeasure.h"

#include <QWidget>

class QLabel;
class QPushButton;

namespace Widgets {

class ChoiceButtons;

/// Upper bar of the alarm health page: the period, the verdict on all, refresh and export. GUI
/// thread.
class WIDGETS_EXPORT HealthBar : public QWidget
{
    Q_OBJECT

public:
    explicit HealthBar(QWidget *parent = nullptr);

    void setPeriod(HealthPeriod::Kind kind);
    void setInterval(const QString &text);
    /// `isTelling`: see Nodes::IsTelling.
    void setOverall(Nodes::HealthVerdict verdict, bool isTelling = true);
    /// Percent done; below 0: nothing is being computed.
    void setProgress(int percent);
    void setExportable(bool on);

signals:
    void periodChosen(HealthPeriod::Kind kind);
    void refreshPressed();
    void cancelPressed();
    void exportPressed();

private:
    QPushButton *addButton(const QString &text);
    void onRefresh();

    ChoiceButtons *m_periods;
    QLabel *m_interval;
    QLabel *m_progress;
    QLabel *m_sign;
    QLabel *m_overall;
    QPushButton *m_refresh = nullptr;
    QPushButton *m_export = nullptr;
    bool m_isBusy = false;
};

} // namespace Widgets
