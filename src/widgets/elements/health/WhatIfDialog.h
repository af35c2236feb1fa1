#pragma once

#include "widgets/WidgetsExport.h"
#include "widgets/dialogs/BasicDialog.h"
#include "widgets/elements/health/TrialAsker.h"

#include "nodes/model/links/NodeLink.h"

class QLabel;
class QPushButton;
class QTableView;

namespace Nodes {
class BasicAlarm;
}

namespace Widgets {

class ChoiceButtons;
class TrialChart;
class TrialForm;
class TrialModel;

/// Tries other settings of an alarm on the samples that the archive has of its signal, beside what
/// the journal tells; one of them can be taken over. GUI thread.
class WIDGETS_EXPORT WhatIfDialog : public BasicDialog
{
    Q_OBJECT

public:
    static constexpr const char *Key = "whatIf";

    explicit WhatIfDialog(QWidget *parent = nullptr);

    /// Opens one for the alarm beside `near`, or brings forward the one there is.
    static void open(const Nodes::NodeLink &alarm, const QWidget *near);
    /// Whether the alarm has a signal whose samples are archived here.
    static bool canOpen(const Nodes::NodeLink &alarm);

    /// Proposes variants and tries them.
    void setAlarm(const Nodes::NodeLink &alarm);
    TrialModel *model() const { return m_model; }
    bool isBusy() const { return m_asker.isBusy(); }
    QString message() const;
    void select(int row);
    void compute();
    /// Takes the selected variant over, without asking.
    void accept() override;

private:
    void build();
    QWidget *buildButtons();
    const Nodes::BasicAlarm *node() const;
    void propose();
    void choosePeriod(int days);
    void take(const TrialAsker::AnswerPtr &answer);
    void onSelected();
    void onPressed();
    void ask();
    int selectedRow() const;
    void tell(const QString &text);

    Nodes::NodeLink m_alarm;
    int m_days = 30;
    TrialAsker m_asker;
    QString m_news; // told with the next answer
    TrialModel *m_model;
    QTableView *m_table;
    TrialChart *m_chart;
    TrialForm *m_form;
    QLabel *m_message;
    ChoiceButtons *m_periods;
    QPushButton *m_compute = nullptr;
    QPushButton *m_accept = nullptr;
};

} // namespace Widgets
