#pragma once

#include "widgets/WidgetsExport.h"
#include "widgets/dialogs/BasicDialog.h"

#include "nodes/charts/widgetChartAxis.h"

class QComboBox;
class QLabel;
class QPushButton;
class QSpinBox;

namespace Widgets {

/// Asks for a length of time as a whole number and its unit. When exec() gives Accepted, getTime()
/// is what was chosen. GUI thread.
class WIDGETS_EXPORT TimeDialog : public BasicDialog
{
    Q_OBJECT

public:
    static constexpr const char *Key = "time";
    using Unit = Nodes::widgetChartAxis::enRangeUnit;
    struct Time
    {
        int count; ///< at least 1
        Unit unit;
    };

    explicit TimeDialog(QWidget *parent = nullptr);
    TimeDialog(double length, Unit unit, QWidget *parent = nullptr);

    /// Rounded to a whole number of units, at least 1; an unknown unit becomes seconds.
    void setTime(double length, Unit unit);
    Time getTime() const;
    /// Longest time that can be chosen. Units that are longer are not offered; a longer time that
    /// is set already is cut. What is no time: no limit.
    void setMaxRange(double length, Unit unit);

protected:
    void showEvent(QShowEvent *event) override;

private:
    void build();
    QWidget *makeCountRow();
    QPushButton *makeStepButton(const QString &text, const QString &name);
    void applyLimit();
    void step(int by);
    void stepUp();
    void stepDown();
    void openNumpad();
    Unit unit() const;

    QSpinBox *m_count = nullptr;
    QComboBox *m_unit = nullptr;
    QLabel *m_limit = nullptr;
    double m_maximum; // milliseconds
};

} // namespace Widgets
