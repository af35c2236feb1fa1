#pragma once

#include <QStyledItemDelegate>

#include <functional>

namespace Editor {

/// Edits a cell that holds the path of a node: what is typed finds paths by any part of them. GUI
/// thread.
class NodePathDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    /// Paths to choose from, asked whenever editing begins.
    using Paths = std::function<QStringList()>;

    NodePathDelegate(Paths paths, QObject *parent);

    QWidget *createEditor(QWidget *parent, const QStyleOptionViewItem &option,
                          const QModelIndex &index) const override;
    /// A path that leads nowhere is told and changes nothing.
    void setModelData(QWidget *editor, QAbstractItemModel *model,
                      const QModelIndex &index) const override;

signals:
    void refused(const QString &path) const;

private:
    Paths m_paths;
};

} // namespace Editor
