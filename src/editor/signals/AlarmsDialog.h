#pragma once

#include "editor/signals/LimitAlarms.h"

#include <QDialog>

#include <array>
#include <vector>

class QCheckBox;
class QComboBox;
class QDialogButtonBox;
class QDoubleSpinBox;
class QGridLayout;
class QLineEdit;

namespace Editor {

/// Asks which limits many signals are to alarm at. GUI thread.
class AlarmsDialog : public QDialog
{
    Q_OBJECT

public:
    AlarmsDialog(int signalCount, QWidget *parent);

    std::vector<LimitAlarm> alarms() const;
    std::string deadband() const;
    int delay() const; ///< ms

private:
    struct Row
    {
        QCheckBox *isWanted;
        QLineEdit *limit;
        QComboBox *priority;
        QLineEdit *text;
    };

    void addRow(QGridLayout &grid, int row);
    void check();

    std::array<Row, 4> m_limits; ///< children
    QLineEdit *m_deadband;
    QDoubleSpinBox *m_delay;
    QDialogButtonBox *m_buttons;
};

} // namespace Editor
