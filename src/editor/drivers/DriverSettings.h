#pragma once

#include "nodes/model/links/NodeLink.h"
#include "nodes/values/Connection.h"

#include <QWidget>

class QTreeWidget;

namespace Editor {

class Workspace;

/// Settings of a driver, and what is wrong with it, addresses included. GUI thread.
class DriverSettings : public QWidget
{
    Q_OBJECT

public:
    DriverSettings(Workspace &workspace, const Nodes::NodeLink &driver, QWidget *parent);
    ~DriverSettings() override;

    /// Lines of what is wrong.
    QStringList findings() const;

private:
    void checkLater();
    void check();

    Workspace &m_workspace;
    Nodes::NodeLink m_driver;
    QTreeWidget *m_findings; ///< child
    bool m_isStale = false;
    Nodes::ScopedConnection m_connection;
};

} // namespace Editor
