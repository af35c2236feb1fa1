#include "editor/templates/NodePathDelegate.h"

#include <QAbstractItemView>
#include <QCompleter>
#include <QLineEdit>

namespace Editor {

NodePathDelegate::NodePathDelegate(Paths paths, QObject *parent)
    : QStyledItemDelegate(parent), m_paths(std::move(paths))
{
}

QWidget *NodePathDelegate::createEditor(QWidget *parent, const QStyleOptionViewItem &,
                                        const QModelIndex &) const
{
    constexpr int shown = 15; // lines of the list
    auto *line = new QLineEdit(parent);
    line->setClearButtonEnabled(true);
    auto *completer = new QCompleter(m_paths(), line);
    completer->setFilterMode(Qt::MatchContains);
    completer->setCaseSensitivity(Qt::CaseInsensitive);
    completer->setMaxVisibleItems(shown);
    line->setCompleter(completer);
    return line;
}

void NodePathDelegate::setModelData(QWidget *editor, QAbstractItemModel *model,
                                    const QModelIndex &index) const
{
    const QString path = static_cast<QLineEdit *>(editor)->text().trimmed();
    if (path != index.data(Qt::EditRole).toString() && !model->setData(index, path))
        emit refused(path);
}

} // namespace Editor
