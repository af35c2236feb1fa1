#pragma once

#include "nodes/model/links/NodeLink.h"

#include <QAbstractItemModel>

#include <functional>
#include <vector>

namespace Nodes {
class ConfigNode;
class NodesCollection;
} // namespace Nodes

namespace Editor {

/// The tree of a project as it is when the model is made, cut down to the nodes that can be
/// picked and those above them, and further to those that a text is found in. A project of
/// 100,000 nodes is searched as fast as one types. GUI thread.
class NodePickerModel : public QAbstractItemModel
{
    Q_OBJECT

public:
    enum enRole {
        IdRole = Qt::UserRole, ///< qulonglong
        PickableRole           ///< bool
    };

    /// Whether a node can be picked.
    using Test = std::function<bool(const Nodes::ConfigNode &)>;

    NodePickerModel(const Nodes::NodesCollection *project, const Test &isPickable,
                    QObject *parent = nullptr);
    ~NodePickerModel() override;

    /// Shows what has the text in its name or description, in capitals or not, or in its path when
    /// the text has a "/"; "" shows everything.
    void search(const QString &text);
    /// Pickable nodes shown.
    int count() const { return m_count; }
    /// Index of a node that is shown.
    QModelIndex find(unsigned long id) const;
    /// The first one that can be picked, in the order of the tree.
    QModelIndex first() const;

    QModelIndex index(int row, int column, const QModelIndex &parent = {}) const override;
    QModelIndex parent(const QModelIndex &index) const override;
    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    Qt::ItemFlags flags(const QModelIndex &index) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    /// One node; the first stands above the root's children and is not shown.
    struct Item
    {
        unsigned long id = 0;
        QString name{};
        QString kind{};
        QString folded{}; ///< name and description to be searched
        int parent = -1;
        int place = 0; ///< among those shown below the parent
        bool isPickable = false;
        std::vector<int> shown{};
    };

    bool add(const Nodes::ConfigNode &node, int parent, const Test &isPickable);
    bool has(const Item &item, const QString &folded) const;
    QModelIndex indexOf(int item) const;

    std::vector<Item> m_items; ///< parents before children
    int m_count = 0;
};

} // namespace Editor
