#include "editor/panel/ElementModel.h"

#include "editor/panel/ElementGroups.h"
#include "editor/tree/KindIcons.h"

#include <QDataStream>
#include <QMimeData>

namespace Editor {

namespace {

const QString typeFormat = QStringLiteral("application/nodetype");
constexpr int typeRole = ElementModel::SearchRole + 1;
const QSize rowSize(0, 24); ///< keeps icons of 20 apart; the width is that of the view

QStandardItem *makeItem(Nodes::NodeType type)
{
    auto *item = new QStandardItem(KindIcons::of(type),
                                   QString::fromStdString(type.GetSubtypeNameTranslated()));
    const QString key = QString::fromStdString(type.ToString());
    item->setData(key, typeRole);
    item->setData(item->text() + QLatin1Char('\n') + key, ElementModel::SearchRole);
    item->setSizeHint(rowSize);
    item->setToolTip(QStringLiteral("Перетащите на мнемосхему; двойной щелчок — в её середину"));
    item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsDragEnabled);
    return item;
}

} // namespace

ElementModel::ElementModel(QObject *parent) : QStandardItemModel(parent)
{
    for (const ElementGroup &group : ElementGroups()) {
        auto *heading = new QStandardItem(group.title);
        QFont font = heading->font();
        font.setBold(true);
        heading->setFont(font);
        heading->setSizeHint(rowSize); // views of uniform heights ask the first row only
        heading->setFlags(Qt::ItemIsEnabled);
        for (const Nodes::NodeType &type : group.types)
            heading->appendRow(makeItem(type));
        appendRow(heading);
    }
}

ElementModel::~ElementModel() = default;

Nodes::NodeType ElementModel::typeAt(const QModelIndex &index)
{
    const QString text = index.data(typeRole).toString();
    return text.isEmpty() ? Nodes::NodeType() : Nodes::NodeType(text.toStdString());
}

QStringList ElementModel::mimeTypes() const
{
    return {typeFormat};
}

Qt::DropActions ElementModel::supportedDragActions() const
{
    return Qt::CopyAction;
}

QMimeData *ElementModel::mimeData(const QModelIndexList &indexes) const
{
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    for (const QModelIndex &index : indexes) {
        const QString text = index.data(typeRole).toString();
        if (!text.isEmpty())
            stream << text; // one after the other, not as a list: readers go on to the end
    }
    if (bytes.isEmpty())
        return nullptr;
    auto *data = new QMimeData;
    data->setData(typeFormat, bytes);
    return data;
}

} // namespace Editor
