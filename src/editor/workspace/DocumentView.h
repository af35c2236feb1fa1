#pragma once

#include "nodes/model/links/NodeLink.h"

#include <QIcon>
#include <QWidget>

namespace Widgets {
class ProxyScene;
class ProxyView;
} // namespace Widgets

namespace Editor {

class Workspace;

/// One tab of the main window: an editor of one node. Which class opens which node says
/// DocumentTable. GUI thread.
class DocumentView : public QWidget
{
    Q_OBJECT

public:
    DocumentView(Workspace &workspace, const Nodes::NodeLink &node, QWidget *parent);
    ~DocumentView() override;

    const Nodes::NodeLink &node() const { return m_node; }
    /// The node's name by default.
    virtual QString title() const;
    virtual QIcon icon() const;
    /// Opened for its node and found by it. Others, such as a comparison, are shown by
    /// Workspace::show and not opened again with the project.
    virtual bool isOfNode() const { return true; }
    /// Selects the node and scrolls to it when it stands in this document; false when it does not.
    virtual bool reveal(const Nodes::NodeLink &node);
    /// Null unless the document shows a scene.
    virtual Widgets::ProxyScene *scene() const { return nullptr; }
    virtual Widgets::ProxyView *view() const { return nullptr; }

signals:
    void titleChanged();

protected:
    Workspace &workspace() const { return m_workspace; }

private:
    Workspace &m_workspace;
    Nodes::NodeLink m_node;
};

} // namespace Editor
