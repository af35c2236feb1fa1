#pragma once

#include "widgets/WidgetsExport.h"
#include "widgets/dialogs/BasicDialog.h"
#include "widgets/elements/health/HealthPeriod.h"

class QDateTimeEdit;
class QLabel;
class QPushButton;

namespace Widgets {

/// Asks for a period of the past. When exec() gives Accepted, period() is what was chosen. GUI
/// thread.
class WIDGETS_EXPORT HealthPeriodDialog : public BasicDialog
{
    Q_OBJECT

public:
    static constexpr const char *Key = "healthPeriod";

    explicit HealthPeriodDialog(QWidget *parent = nullptr);

    void setPeriod(Nodes::Timestamp from, Nodes::Timestamp to);
    HealthPeriod period() const;

private:
    void check();

    QDateTimeEdit *m_from;
    QDateTimeEdit *m_to;
    QLabel *m_trouble;
    QPushButton *m_accept;
};

} // namespace Widgets
