#pragma once

#include "nodes/model/links/NodeLink.h"

#include <QTimer>
#include <QWidget>

class QLabel;
class QLineEdit;

namespace Editor {

class PropertyView;
class Workspace;

/// The dock "Свойства": the properties of whatever is selected, with a search above and the reason
/// of the last refusal below. GUI thread.
class PropertyPanel : public QWidget
{
    Q_OBJECT

public:
    PropertyPanel(Workspace &workspace, QWidget *parent);
    ~PropertyPanel() override;

    PropertyView &view() { return *m_view; }
    QSize sizeHint() const override;

private:
    /// What is pressed in a tree or a table may be about to be dragged to a row of what is shown
    /// now: that stays until the button is let go.
    void takeSelection(const Nodes::NodeLinks &nodes, QObject *by);
    void showSelection();
    void goTo(const QString &key);
    void keepNodes();
    void showReadOnly();
    void showRefusal(const QString &reason);

    Workspace &m_workspace;
    QLineEdit *m_search;
    QLabel *m_readOnly;
    PropertyView *m_view;
    QLabel *m_refusal;
    QLabel *m_nothing;
    QTimer m_released; ///< asks whether the button is let go
};

} // namespace Editor
