#pragma once

#include "widgets/WidgetsExport.h"
#include "widgets/dialogs/BasicDialog.h"
#include "widgets/reports/display/ReportChoice.h"

class QComboBox;
class QDateTimeEdit;
class QLabel;
class QPushButton;

namespace Widgets {

/// Asks for the interval of a report: a shift, day, week or month, stepped through, or any two
/// moments. When exec() gives Accepted, choice() is what was chosen. GUI thread.
class WIDGETS_EXPORT ReportIntervalDialog : public BasicDialog
{
    Q_OBJECT

public:
    static constexpr const char *Key = "reportInterval";

    explicit ReportIntervalDialog(QWidget *parent = nullptr);

    void setShifts(const Nodes::ShiftPlan &shifts);
    /// `now` is the present, beyond which there is nothing to choose.
    void setChoice(const ReportChoice &choice, Nodes::Timestamp now);
    ReportChoice choice() const;

private:
    void build();
    QPushButton *makeButton(const QString &text, const char *name, int width);
    QWidget *makeSteps();
    QWidget *makeFree();
    void onPeriodChosen();
    void stepBack();
    void stepForward();
    void stepToNow();
    void onEdited();
    void look(const Nodes::ReportSpan &span);
    void refresh();

    Nodes::ShiftPlan m_shifts;
    ReportChoice m_choice;
    Nodes::Timestamp m_now = 0;
    QComboBox *m_period = nullptr;
    QWidget *m_steps = nullptr;
    QLabel *m_title = nullptr;
    QPushButton *m_forward = nullptr;
    QPushButton *m_current = nullptr;
    QWidget *m_free = nullptr;
    QDateTimeEdit *m_from = nullptr;
    QDateTimeEdit *m_to = nullptr;
    QLabel *m_fault = nullptr;
    QPushButton *m_ok = nullptr;
};

} // namespace Widgets
