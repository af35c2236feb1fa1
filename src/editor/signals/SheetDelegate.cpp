#include "editor/signals/SheetDelegate.h"

#include "editor/signals/SheetModel.h"

#include <QComboBox>
#include <QLineEdit>

namespace Editor {

QWidget *SheetDelegate::createEditor(QWidget *parent, const QStyleOptionViewItem &option,
                                     const QModelIndex &index) const
{
    Q_UNUSED(option)
    const QStringList choices = index.data(SheetModel::ChoicesRole).toStringList();
    if (choices.isEmpty()) {
        auto *line = new QLineEdit(parent);
        line->setFrame(false);
        return line;
    }
    auto *box = new QComboBox(parent);
    box->addItems(choices);
    return box;
}

void SheetDelegate::setEditorData(QWidget *editor, const QModelIndex &index) const
{
    const QString text = index.data(Qt::EditRole).toString();
    if (auto *box = qobject_cast<QComboBox *>(editor))
        box->setCurrentText(text);
    else if (auto *line = qobject_cast<QLineEdit *>(editor))
        line->setText(text);
}

void SheetDelegate::setModelData(QWidget *editor, QAbstractItemModel *model,
                                 const QModelIndex &index) const
{
    if (const auto *box = qobject_cast<QComboBox *>(editor))
        model->setData(index, box->currentText());
    else if (const auto *line = qobject_cast<QLineEdit *>(editor))
        model->setData(index, line->text());
}

} // namespace Editor
