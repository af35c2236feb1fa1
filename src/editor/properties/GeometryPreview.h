#pragma once

#include <QObject>
#include <QPointer>
#include <QTimer>

class QWidget;

namespace Editor {

class PropertyModel;
class Workspace;

/// While elements are dragged in the active scene their nodes still have the old places: the table
/// shows those under the pointer until the drag ends. GUI thread.
class GeometryPreview : public QObject
{
    Q_OBJECT

public:
    /// Both outlive it.
    GeometryPreview(Workspace &workspace, PropertyModel &model, QObject *parent);
    ~GeometryPreview() override;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void follow();
    void show();

    Workspace &m_workspace;
    PropertyModel &m_model;
    QPointer<QWidget> m_view; ///< of the active scene
    QTimer m_later;           ///< the scene takes the pointer's event first
};

} // namespace Editor
