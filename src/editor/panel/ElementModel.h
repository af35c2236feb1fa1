#pragma once

#include "nodes/model/NodeType.h"

#include <QStandardItemModel>

namespace Editor {

/// Element kinds in their groups; kinds are dragged as "application/nodetype". GUI thread.
class ElementModel : public QStandardItemModel
{
    Q_OBJECT

public:
    /// What a search looks in: the shown name, and the kind's key as it stands in project files.
    static constexpr int SearchRole = Qt::UserRole;

    explicit ElementModel(QObject *parent = nullptr);
    ~ElementModel() override;

    /// Empty for a group.
    static Nodes::NodeType typeAt(const QModelIndex &index);

    QStringList mimeTypes() const override;
    QMimeData *mimeData(const QModelIndexList &indexes) const override;
    Qt::DropActions supportedDragActions() const override;
};

} // namespace Editor
