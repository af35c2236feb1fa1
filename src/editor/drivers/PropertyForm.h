#pragma once

#include "nodes/model/links/NodeLink.h"
#include "nodes/values/Connection.h"

#include <QWidget>

#include <map>

class QFormLayout;

namespace Nodes {
struct PropertyDescriptor;
} // namespace Nodes

namespace Editor {

class Workspace;

/// The properties of one node as a form, a line each, made from its kind's descriptors; links,
/// files, colours and secrets are left out. What is entered becomes a command when the line is
/// left; what does not fit is told and stays, marked, to be
/// corrected; Escape takes it back. Follows the node. GUI thread.
class PropertyForm : public QWidget
{
    Q_OBJECT

public:
    PropertyForm(Workspace &workspace, const Nodes::NodeLink &node, QWidget *parent);
    ~PropertyForm() override;

    /// Line of that property; null without one.
    QWidget *field(const std::string &key) const;

private:
    void addField(QFormLayout &form, const Nodes::PropertyDescriptor &descriptor);
    /// The field with what may stand in it and what it does beside it.
    QWidget *withHelp(QWidget *field, const Nodes::PropertyDescriptor &descriptor);
    void commit(const Nodes::PropertyDescriptor &descriptor, const QString &text);
    void refresh();
    void showValue(QWidget &field, const Nodes::PropertyDescriptor &descriptor) const;

    Workspace &m_workspace;
    Nodes::NodeLink m_node;
    std::map<std::string, QWidget *> m_fields; ///< by key; children
    Nodes::ScopedConnection m_connection;
};

} // namespace Editor
