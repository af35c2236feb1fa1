#pragma once

#include "widgets/WidgetsExport.h"
#include "widgets/dialogs/BasicDialog.h"

#include "nodes/alarms/AlarmTuning.h"
#include "nodes/model/links/NodeLink.h"

#include <array>

class QGridLayout;
class QLabel;
class QLineEdit;
class QPushButton;

namespace Nodes {
class Result;
}

namespace Widgets {

/// Limit, deadband and delays of an alarm: what counts now beside what the project says, and a way
/// to change it while the station runs. The alarm subsystem checks, journals and keeps it. GUI
/// thread.
class WIDGETS_EXPORT AlarmLimitsDialog : public BasicDialog
{
    Q_OBJECT

public:
    static constexpr const char *Key = "alarmLimits";

    explicit AlarmLimitsDialog(QWidget *parent = nullptr);

    void setAlarm(const Nodes::NodeLink &alarm);

private:
    enum Number { Limit, Deadband, OnDelay, OffDelay, NumberCount };
    struct Row
    {
        QLabel *name = nullptr;
        QLineEdit *edit = nullptr;
        QPushButton *numpad = nullptr;
        QLabel *project = nullptr;
    };

    void buildRow(QGridLayout &grid, int number);
    void buildButtons(QGridLayout &grid, int row);
    void showTuning();
    /// What was changed by the operator; false when a field holds no number, which is told.
    bool read(Nodes::AlarmTuning &tuning);
    void apply();
    void revert();
    void openNumpad(int number);
    void tell(const Nodes::Result &result);

    QLabel *m_subject;
    QLabel *m_range;
    std::array<Row, NumberCount> m_rows;
    QLabel *m_message;
    QPushButton *m_apply;
    QPushButton *m_revert;
    QPushButton *m_whatIf;
    Nodes::NodeLink m_alarm;
    Nodes::AlarmTuning m_now; // as shown when the dialog was filled
};

} // namespace Widgets
