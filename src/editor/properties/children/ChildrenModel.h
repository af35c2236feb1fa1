#pragma once

#include "editor/properties/PropertyEdits.h"
#include "editor/properties/children/ChildFamilies.h"

#include "nodes/values/Connection.h"

#include <QAbstractTableModel>
#include <QTimer>

namespace Nodes {
class ConfigNode;
class PropertyProxy;
} // namespace Nodes

namespace Editor {

/// The children of one family below a node as a table: a row is a child, in their order, a column a
/// property that at least one of their kinds has. All changes are steps of the history; those made
/// elsewhere are followed. GUI thread.
class ChildrenModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    enum enColumn { ColumnName, ColumnKind, ColumnFirstProperty };

    ChildrenModel(const Nodes::NodeLink &parentNode, ChildFamily family, PropertyEdits::Push push,
                  QObject *parent = nullptr);
    ~ChildrenModel() override;

    void setReadOnly(const QString &reason) { m_edits.setReadOnly(reason); }
    const ChildFamily &family() const { return m_family; }
    /// Empty link for a row that is not there.
    Nodes::NodeLink node(int row) const;
    /// -1 when it has none.
    int rowOf(const Nodes::NodeLink &node) const;
    /// Of a cell; null for name, kind, and where the child's kind has no such property.
    const Nodes::PropertyDescriptor *descriptor(const QModelIndex &index) const;
    /// Whether a child has another value than a fresh one there.
    bool isUsed(int column) const;

    // Each is one step; "" when done, else why not, in Russian.
    QString add(const Nodes::KindInfo &kind);
    /// Copies come right behind the last of the rows.
    QString duplicate(const QVector<int> &rows);
    QString remove(const QVector<int> &rows);
    /// -1: up, 1: down; rows at the end stay.
    QString move(const QVector<int> &rows, int by);
    /// Shows now what would be shown in the next turn of the event loop.
    void refresh();

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    bool setData(const QModelIndex &index, const QVariant &value, int role = Qt::EditRole) override;
    Qt::ItemFlags flags(const QModelIndex &index) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

signals:
    void refused(const QString &reason);
    /// The node whose children these are has left the project.
    void parentRemoved();

private:
    void watch();
    Nodes::NodeLinks standing() const;
    Nodes::NodeLinks nodesOf(const QVector<int> &rows) const;
    QVariant value(const QModelIndex &index, int role) const;

    Nodes::NodeLink m_parentNode;
    ChildFamily m_family;
    PropertyEdits m_edits;
    Nodes::NodeLinks m_nodes;
    std::vector<const Nodes::PropertyDescriptor *> m_columns;
    QString m_error;
    QPersistentModelIndex m_refused;
    Nodes::ScopedConnection m_changes;
    QTimer m_later;
};

} // namespace Editor
