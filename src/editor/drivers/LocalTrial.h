#pragma once

#include "nodes/model/links/NodeLink.h"
#include "nodes/values/Connection.h"

#include <QTimer>
#include <QWidget>

#include <memory>

class QLabel;
class QPushButton;
class QTableWidget;

namespace Editor {

class DriverCopy;
class Workspace;

/// Values that a driver of this machine gives its signals, tried out while the project is edited: a
/// copy of the driver works, and is made anew when the driver or a signal of it is changed. GUI
/// thread.
class LocalTrial : public QWidget
{
    Q_OBJECT

public:
    LocalTrial(Workspace &workspace, const Nodes::NodeLink &driver, QWidget *parent);
    ~LocalTrial() override;

    bool isRunning() const { return m_copy != nullptr; }

public slots:
    void start();
    void stop();

private:
    void makeTable();
    void follow(const Nodes::NodeLink &changed);
    void restart();
    void addRows();
    void showValues();

    Nodes::NodeLink m_driver;
    QPushButton *m_button; ///< children
    QLabel *m_status;
    QTableWidget *m_table;
    QTimer m_refresh;
    QTimer m_restart;
    std::unique_ptr<DriverCopy> m_copy;
    Nodes::ScopedConnection m_connection;
};

} // namespace Editor
