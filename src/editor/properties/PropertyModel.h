#pragma once

#include "editor/properties/PropertyEdits.h"
#include "editor/properties/PropertyRow.h"

#include "nodes/values/Connection.h"

#include <QAbstractItemModel>
#include <QTimer>

#include <memory>
#include <set>

namespace Editor {

/// The property table of a selection: headings, below them what all its nodes have in common. It
/// follows the nodes: any number of changes is shown in one turn of the event loop, and what has
/// been deleted drops out. GUI thread.
class PropertyModel : public QAbstractItemModel
{
    Q_OBJECT

public:
    enum enColumn { ColumnName, ColumnValue, ColumnReset, ColumnCount };
    enum enRole {
        RowRole = Qt::UserRole, ///< const PropertyRow * as void *; valid until the model is reset
        KeyRole,                ///< QString that stays with a row from selection to selection
        MixedRole,              ///< bool: the nodes differ
        ErrorRole,              ///< QString: why the last value was refused, "" when it was taken
        StepRole                ///< setData only: a step of the interaction that is going on
    };

    explicit PropertyModel(PropertyEdits::Push push, QObject *parent = nullptr);
    ~PropertyModel() override;

    /// Shows these nodes from now on, at once. Rows stay where the nodes have the same ones.
    void setNodes(const Nodes::NodeLinks &nodes);
    const Nodes::NodesArray &nodes() const;
    /// Null when nothing is shown.
    const Nodes::NodesCollection *project() const;
    /// Nothing may be edited for that reason; "" for none.
    void setReadOnly(const QString &reason);
    PropertyEdits &edits() { return m_edits; }

    /// The values set with StepRole from now on are one undoable step until it ends.
    void beginInteraction();
    void endInteraction();
    /// Ends it and takes it back.
    void cancelInteraction();

    /// Gives a property, or each of a font, the value of a fresh node.
    bool reset(const QModelIndex &index);
    /// Sets several properties of all nodes as one step. An error stands at the row then.
    bool setProperties(const QModelIndex &index, const PropertyEdits::Texts &texts);
    /// Shows these texts in place of the values until others are given; nothing is set. By value
    /// id.
    void setPreview(const PropertyEdits::Texts &texts);
    static const PropertyRow *row(const QModelIndex &index);
    /// First column of the row with that key; invalid when there is none.
    QModelIndex find(const QString &key) const;
    /// Shows now what would be shown in the next turn of the event loop.
    void refresh();

    QModelIndex index(int place, int column, const QModelIndex &parent = {}) const override;
    QModelIndex parent(const QModelIndex &index) const override;
    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    bool setData(const QModelIndex &index, const QVariant &value, int role = Qt::EditRole) override;
    Qt::ItemFlags flags(const QModelIndex &index) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    QStringList mimeTypes() const override;
    bool canDropMimeData(const QMimeData *mime, Qt::DropAction action, int place, int column,
                         const QModelIndex &parent) const override;
    /// Nodes dropped on a row that refers to nodes: taken as its link, or added to its list.
    bool dropMimeData(const QMimeData *mime, Qt::DropAction action, int place, int column,
                      const QModelIndex &parent) override;

signals:
    /// The nodes shown are others; `isSameTable`: only their values are.
    void nodesChanged(bool isSameTable);
    /// Nodes were dropped on a row and taken.
    void dropped();
    /// A value was refused, or "" after one that was taken.
    void refused(const QString &reason);

private:
    void note(unsigned valueId, bool isAll);
    void dropRemoved();
    bool refreshRows(PropertyRow &row);
    void tellValue(const PropertyRow &row, unsigned valueId);
    const QString *preview(const PropertyRow &row) const;
    QModelIndex indexOf(const PropertyRow &row, int column) const;
    bool conclude(const QModelIndex &index, const QString &error);
    QString apply(const PropertyRow &row, const QString &text, bool isStep);

    PropertyEdits m_edits;
    std::unique_ptr<Nodes::PropertyProxy> m_nodes;
    std::unique_ptr<PropertyRow> m_top;
    Nodes::ScopedConnection m_changes;
    Utils::Interaction m_interaction;
    QTimer m_later;
    PropertyEdits::Texts m_preview;
    std::set<unsigned> m_changed; ///< properties to be read again
    bool m_isAllChanged = false;
};

} // namespace Editor
