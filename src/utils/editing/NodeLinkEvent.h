#pragma once

#include "utils/UtilsExport.h"

#include "nodes/model/links/NodeLink.h"

#include <QEvent>
#include <QPointer>

namespace Utils {

/// Request to the application to open (show, select) one node or several at once, as a selection.
/// The application object receives it: hosts install an event filter there. A scene is the sender
/// of its selection and has its common properties (ProxyScene::getSelectedItemsProxy).
class UTILS_EXPORT NodeLinkEvent : public QEvent
{
public:
    NodeLinkEvent(const Nodes::NodeLink &link, QObject *sender);
    NodeLinkEvent(Nodes::NodeLinks links, QObject *sender);

    /// Number of this event, registered with Qt on first use.
    static QEvent::Type eventType();
    /// Posts the request; `sender` is who asks. Nothing happens without an application object.
    static void SendEventToApp(const Nodes::NodeLink &link, QObject *sender);
    static void SendEventToApp(const Nodes::NodeLinks &links, QObject *sender);

    /// The first one; empty when nothing is selected any more.
    Nodes::NodeLink getNodeLink() const { return m_links.empty() ? Nodes::NodeLink() : m_links[0]; }
    /// All of them, the key one first, the others in the order of selection; none when nothing is
    /// selected any more.
    const Nodes::NodeLinks &getNodeLinks() const { return m_links; }
    /// Null when the sender is gone by now.
    QObject *getSender() const { return m_sender; }

private:
    Nodes::NodeLinks m_links;
    QPointer<QObject> m_sender;
};

} // namespace Utils
