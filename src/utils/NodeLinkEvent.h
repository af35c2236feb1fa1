#pragma once

#include "utils/UtilsExport.h"

#include "nodes/model/NodeLink.h"

#include <QEvent>
#include <QPointer>

namespace Utils {

/// Request to the application to open (show, select) a node. The application object receives it:
/// hosts install an event filter there.
class UTILS_EXPORT NodeLinkEvent : public QEvent
{
public:
    NodeLinkEvent(const Nodes::NodeLink &link, QObject *sender);

    /// Number of this event, registered with Qt on first use.
    static QEvent::Type eventType();
    /// Posts the request; `sender` is who asks. Nothing happens without an application object.
    static void SendEventToApp(const Nodes::NodeLink &link, QObject *sender);

    /// Empty when nothing is selected any more.
    const Nodes::NodeLink &getNodeLink() const { return m_link; }
    /// Null when the sender is gone by now.
    QObject *getSender() const { return m_sender; }

private:
    Nodes::NodeLink m_link;
    QPointer<QObject> m_sender;
};

} // namespace Utils
