#pragma once

#include "editor/workspace/DocumentView.h"

#include <memory>

namespace Nodes {
class NodesCollection;
}

namespace Editor {

class CompareView;

/// Tab with what differs from another project to the open one. It is compared anew when it is
/// looked at after a change. GUI thread.
class CompareDocument : public DocumentView
{
    Q_OBJECT

public:
    /// `other` was read from a file; `title` says which one.
    CompareDocument(Workspace &workspace, std::unique_ptr<Nodes::NodesCollection> other,
                    const QString &title, QWidget *parent);
    ~CompareDocument() override;

    QString title() const override;
    QIcon icon() const override;
    bool isOfNode() const override { return false; }
    CompareView &differences() const { return *m_view; }

protected:
    void showEvent(QShowEvent *event) override;

private:
    void compare();
    void take();
    void goTo(const Nodes::NodeLink &node);

    std::unique_ptr<Nodes::NodesCollection> m_other;
    QString m_title;
    CompareView *m_view;
    bool m_isOld = true; ///< the open project has changed since
};

} // namespace Editor
