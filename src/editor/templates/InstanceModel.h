#pragma once

#include "nodes/model/links/NodeLink.h"

#include <QAbstractTableModel>

#include <functional>
#include <vector>

class QUndoCommand;

namespace Nodes {
class ConfigNode;
} // namespace Nodes

namespace Editor {

/// All instances of one template: a row for each element that shows it and each action that opens
/// it, a column for each of its parameters, in each cell the path of the node that is given.
/// Whoever changes the project asks for a refresh. GUI thread.
class InstanceModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    /// Executes a command as a step; false when it was not.
    using Push = std::function<bool(QUndoCommand *)>;
    static constexpr int SortRole = Qt::UserRole;

    explicit InstanceModel(Push push, QObject *parent = nullptr);

    /// Shows the instances of that template; of none for a link that leads to none.
    void setTemplate(const Nodes::NodeLink &source);
    const Nodes::NodeLink &source() const { return m_source; }
    /// Reads project and template anew.
    void refresh();
    /// Element or action.
    const Nodes::NodeLink &user(int row) const { return m_users[std::size_t(row)]; }
    /// Adds another instance, which gives nothing yet, beside the last one; as an action where
    /// there is none.
    void addInstance();

    /// Template that the node is, shows, opens or stands in; leads nowhere otherwise.
    static Nodes::NodeLink templateOf(const Nodes::ConfigNode *node);

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation,
                        int role = Qt::DisplayRole) const override;
    Qt::ItemFlags flags(const QModelIndex &index) const override;
    /// Takes the path of a node, or "" for none; false for a path that leads to no node.
    bool setData(const QModelIndex &index, const QVariant &value, int role = Qt::EditRole) override;

private:
    Nodes::ConfigNode *argument(int row, const std::string &parameter) const;
    QString pathOf(int row, int column) const;

    Push m_push;
    Nodes::NodeLink m_source;
    Nodes::NodeLinks m_users;
    std::vector<std::string> m_parameters;
};

} // namespace Editor
