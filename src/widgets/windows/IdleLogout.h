#pragma once

#include "widgets/WidgetsExport.h"

#include "nodes/values/Timestamp.h"

#include <boost/signals2/connection.hpp>

#include <QObject>
#include <QTimer>

namespace Nodes {
class systemAuthentication;
}

namespace Widgets {

/// Logs the current user out when nobody has touched mouse, keys or screen for as long as the
/// project says. GUI thread; the user subsystem outlives it.
class WIDGETS_EXPORT IdleLogout : public QObject
{
    Q_OBJECT

public:
    explicit IdleLogout(Nodes::systemAuthentication &users, QObject *parent = nullptr);

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void start();
    void look();

    Nodes::systemAuthentication &m_users;
    boost::signals2::scoped_connection m_connection;
    Nodes::Timestamp m_lastInput = 0; // steady
    QTimer m_timer;
};

} // namespace Widgets
