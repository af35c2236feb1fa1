#pragma once

#include "nodes/model/links/NodeLink.h"

#include <QObject>
#include <QPointer>

namespace Editor {

/// What is selected, in a scene, the project tree or a table; whoever shows nodes follows it. GUI
/// thread.
class Selection : public QObject
{
    Q_OBJECT

public:
    explicit Selection(QObject *parent = nullptr) : QObject(parent) {}

    /// The first is the key one; links to nodes that are gone lead nowhere.
    const Nodes::NodeLinks &nodes() const { return m_nodes; }
    /// Who has selected them last; null when it is gone.
    const QObject *by() const { return m_by; }
    /// `by` is who has selected, and gets the signal too. The same nodes again are not told.
    void select(const Nodes::NodeLinks &nodes, QObject *by);

signals:
    void changed(const Nodes::NodeLinks &nodes, QObject *by);

private:
    Nodes::NodeLinks m_nodes;
    QPointer<QObject> m_by;
};

} // namespace Editor
