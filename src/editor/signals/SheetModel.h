#pragma once

#include "nodes/project/signals/SheetColumns.h"
#include "nodes/project/signals/SheetSettings.h"
#include "nodes/values/Connection.h"

#include <QAbstractTableModel>

#include <unordered_map>

namespace Nodes {
struct NodeChange;
class ConfigNode;
} // namespace Nodes

namespace Editor {

class Workspace;

/// All nodes of a family below one node, a row each in tree order, with a column a property. Cells
/// are read when they are shown, so that 100,000 rows cost nothing but their links. Follows the
/// project; edits are commands. GUI thread.
class SheetModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    enum Role {
        ChoicesRole = Qt::UserRole ///< QStringList of what may be chosen; none: free text
    };

    SheetModel(Workspace &workspace, const Nodes::NodeLink &scope, unsigned family,
               QObject *parent = nullptr);
    ~SheetModel() override;

    /// Null once it has left the project.
    Nodes::ConfigNode *scope() const { return m_scope.GetNode(); }
    unsigned family() const { return m_family; }
    const Nodes::SheetColumns &columns() const { return m_columns; }
    const std::vector<const Nodes::KindInfo *> &kinds() const { return m_kinds; }
    /// Of the row shown; may lead nowhere for a moment.
    Nodes::NodeLink node(int row) const;
    const Nodes::NodeLinks &shown() const { return m_rows; }
    int rowOf(const Nodes::NodeLink &node) const;
    int totalCount() const { return int(m_nodes.size()); }
    QString text(int row, int column) const;

    /// Shows the nodes whose path or description contains the text only, capitals or not.
    void setFilter(const QString &text);

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    Qt::ItemFlags flags(const QModelIndex &index) const override;
    /// Takes a text as CellText reads it and pushes a command. False when it does not fit: the
    /// workspace is told why.
    bool setData(const QModelIndex &index, const QVariant &value, int role = Qt::EditRole) override;

private:
    void watch();
    void follow(const Nodes::NodeChange &change);
    void forgetArchive(const Nodes::ConfigNode *changed);
    void rebuildLater();
    void rebuild();
    void applyFilter();
    bool refuse(const QString &why);
    bool setSetting(const Nodes::SheetColumn &column, Nodes::ConfigNode &node,
                    const std::string &text);
    bool setText(Nodes::ConfigNode &node, bool isName, const std::string &text);
    QVariant toolTip(const Nodes::SheetColumn &column, const Nodes::ConfigNode &node) const;

    Workspace &m_workspace;
    Nodes::NodeLink m_scope;
    unsigned m_family;
    std::vector<const Nodes::KindInfo *> m_kinds;
    Nodes::SheetColumns m_columns;
    Nodes::SheetSettings m_settings;
    Nodes::NodeLinks m_nodes;
    Nodes::NodeLinks m_rows; ///< those that the filter lets through
    std::unordered_map<unsigned long, int> m_places;
    QString m_filter;
    bool m_isStale = false;
    Nodes::ScopedConnection m_connection;
};

} // namespace Editor
