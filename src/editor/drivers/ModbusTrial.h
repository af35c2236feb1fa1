#pragma once

#include "nodes/drivers/modbus/ModbusProbe.h"
#include "nodes/model/links/NodeLink.h"
#include "nodes/values/Connection.h"

#include <QWidget>

class QCheckBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QTableWidget;

namespace Nodes {
class ConfigNode;
} // namespace Nodes

namespace Editor {

class SheetPage;
class Workspace;

/// Reads the signals of a Modbus device live, as they are configured at the moment, without
/// starting anything of the project: raw registers, values before and after scaling, times, and
/// what the device objects to. The reading is done by a thread of its own; nothing here waits. GUI
/// thread.
class ModbusTrial : public QWidget
{
    Q_OBJECT

public:
    /// Of the signals selected in `page`, or all when less than two are.
    ModbusTrial(Workspace &workspace, const Nodes::NodeLink &driver, SheetPage &page,
                QWidget *parent);
    ~ModbusTrial() override;

    bool isRunning() const { return m_isRunning; }

public slots:
    void start();
    void stop();

private:
    void makeTable();
    bool gatherPoints();
    bool readTarget(Nodes::ProbeTarget &target);
    /// Host and port of the project, where they are others than when they were filled in last.
    void fillPlace();
    void take(const Nodes::ProbeOutcome &outcome, int trial);
    void addRow(const Nodes::ConfigNode &signal);
    void showReading(int row, const Nodes::ProbeReading &reading);
    /// What to say of the reading as a whole: the causes too, as their column is narrow.
    QString summary(const Nodes::ProbeOutcome &outcome) const;
    void setRunning(bool isRunning);

    Workspace &m_workspace;
    Nodes::NodeLink m_driver;
    SheetPage &m_page;
    QLineEdit *m_host; ///< children
    QLineEdit *m_port;
    QString m_filledHost; ///< by the project; the user may have typed others since
    QString m_filledPort;
    QPushButton *m_button;
    QCheckBox *m_repeats;
    QLabel *m_status;
    QTableWidget *m_table;
    std::vector<Nodes::ProbePoint> m_points;
    std::vector<int> m_rows; ///< of the points
    int m_unread = 0;        ///< signals that no group reads, with a row but no point
    int m_leftOut = 0;       ///< signals beyond what is read at once
    int m_trial = 0;         ///< which one is running: answers of older ones do not count
    bool m_isRunning = false;
    Nodes::ModbusProbe m_probe;
    Nodes::ScopedConnection m_connection;
};

} // namespace Editor
