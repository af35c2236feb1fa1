#pragma once

#include "widgets/WidgetsExport.h"

#include "nodes/alarms/AlarmTuning.h"

#include <QWidget>

namespace Widgets {

class NumberField;

/// The numbers of one variant, to be changed. GUI thread.
class WIDGETS_EXPORT TrialForm : public QWidget
{
    Q_OBJECT

public:
    explicit TrialForm(QWidget *parent = nullptr);

    /// Range of the signal, in its unit; not above the minimum: unknown.
    void setSignal(double minimum, double maximum, const QString &unit);
    void setTuning(const Nodes::AlarmTuning &tuning);

signals:
    void changed(const Nodes::AlarmTuning &tuning);

private:
    NumberField *add(const QString &name);
    void take();

    Nodes::AlarmTuning m_tuning;
    NumberField *m_limit;
    NumberField *m_deadband;
    NumberField *m_onDelay;
    NumberField *m_offDelay;
};

} // namespace Widgets
