#pragma once

#include "widgets/WidgetsExport.h"
#include "widgets/dialogs/BasicDialog.h"

#include <QDateTime>

class QDateTimeEdit;
class QLabel;
class QPushButton;

namespace Widgets {

/// Asks from when on a past period is to be laid over: its begin comes to stand at a moment of the
/// present one. GUI thread.
class WIDGETS_EXPORT PastPeriodDialog : public BasicDialog
{
    Q_OBJECT

public:
    static constexpr const char *Key = "pastPeriod";

    explicit PastPeriodDialog(QWidget *parent = nullptr);

    /// Where the begin comes to stand; a day before is proposed.
    void setPresent(const QDateTime &begin);
    QDateTime begin() const;

signals:
    /// Accepted; milliseconds between both begins, above 0.
    void chosen(double shift);

private:
    void check();

    QLabel *m_present;
    QDateTimeEdit *m_edit;
    QPushButton *m_accept;
    QDateTime m_presentBegin;
};

} // namespace Widgets
