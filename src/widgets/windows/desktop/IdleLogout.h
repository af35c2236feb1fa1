#pragma once

#include "widgets/WidgetsExport.h"

#include "nodes/model/links/NodeLink.h"
#include "nodes/values/Connection.h"
#include "nodes/values/Timestamp.h"

#include <QObject>
#include <QTimer>

namespace Nodes {
class systemAuthentication;
}

namespace Widgets {

/// Logs the current user out when nobody has touched mouse, keys or screen for as long as the
/// project says: its users or its visualisation, the shorter of the two that are set. GUI thread;
/// the user subsystem outlives it.
class WIDGETS_EXPORT IdleLogout : public QObject
{
    Q_OBJECT

public:
    /// `visualization` is what the link leads to, if anything.
    explicit IdleLogout(Nodes::systemAuthentication &users, const Nodes::NodeLink &visualization,
                        QObject *parent = nullptr);

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void start();
    void look();
    int limit() const;

    Nodes::systemAuthentication &m_users;
    Nodes::NodeLink m_visualization;
    Nodes::ScopedConnection m_connection;
    Nodes::Timestamp m_lastInput = 0; // steady
    QTimer m_timer;
};

} // namespace Widgets
