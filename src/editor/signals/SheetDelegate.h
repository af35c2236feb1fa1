#pragma once

#include <QStyledItemDelegate>

namespace Editor {

/// Editors of the cells of a table of nodes: a list where there is a choice, else a line. GUI
/// thread.
class SheetDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    explicit SheetDelegate(QObject *parent) : QStyledItemDelegate(parent) {}

    QWidget *createEditor(QWidget *parent, const QStyleOptionViewItem &option,
                          const QModelIndex &index) const override;
    void setEditorData(QWidget *editor, const QModelIndex &index) const override;
    void setModelData(QWidget *editor, QAbstractItemModel *model,
                      const QModelIndex &index) const override;
};

} // namespace Editor
