#include "editor/symbols/SymbolModel.h"

#include "widgets/elements/symbols/SymbolStore.h"

#include "nodes/model/links/ResourceLink.h"
#include "nodes/visual/elements/widgetSymbol.h"

#include <QDataStream>
#include <QGuiApplication>
#include <QMimeData>
#include <QPainter>

namespace Editor {

namespace {

const QString typesFormat = QStringLiteral("application/nodetype");

} // namespace

SymbolModel::SymbolModel(QObject *parent)
    : QAbstractListModel(parent), m_rows(SymbolCatalogue::builtIn())
{
}

void SymbolModel::setDirectory(const QString &directory)
{
    beginResetModel();
    m_rows = SymbolCatalogue::builtIn() + SymbolCatalogue::own(directory);
    m_pictures.clear();
    endResetModel();
}

int SymbolModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : m_rows.size();
}

QVariant SymbolModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid())
        return {};
    const SymbolRow &row = m_rows[index.row()];
    switch (role) {
    case Qt::DisplayRole:
    case Qt::AccessibleTextRole:
        return row.title;
    case Qt::DecorationRole:
        return picture(row);
    case Qt::SizeHintRole:
        return QSize(ItemWidth, ItemHeight);
    case Qt::TextAlignmentRole:
        return int(Qt::AlignHCenter | Qt::AlignTop);
    case Qt::ToolTipRole:
        return QStringLiteral("%1\n%2").arg(row.title, row.source);
    case Group:
        return row.group;
    case Source:
        return row.source;
    default:
        return {};
    }
}

QPixmap SymbolModel::picture(const SymbolRow &row) const
{
    QPixmap &kept = m_pictures[row.source];
    if (!kept.isNull())
        return kept;
    const auto symbol =
        Widgets::SymbolStore::getInstance().get(Nodes::ResourceLink(row.source.toStdString()));
    const qreal ratio = qGuiApp->devicePixelRatio();
    Widgets::SymbolPlace place;
    place.area = QSize(PictureSize, PictureSize);
    Widgets::SymbolStyle style;
    style.level = QColor(126, 147, 164);
    kept = symbol->draw(style, place, place.area * ratio);
    kept.setDevicePixelRatio(ratio);
    return kept;
}

Qt::ItemFlags SymbolModel::flags(const QModelIndex &index) const
{
    return index.isValid() ? Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsDragEnabled
                           : Qt::NoItemFlags;
}

QStringList SymbolModel::mimeTypes() const
{
    return {typesFormat, QLatin1String(Widgets::DroppedProperties::Format)};
}

QMimeData *SymbolModel::mimeData(const QModelIndexList &indexes) const
{
    if (indexes.isEmpty())
        return nullptr;
    QByteArray types;
    QDataStream stream(&types, QIODevice::WriteOnly);
    stream << QString::fromStdString(Nodes::NodeType(Nodes::widgetSymbol::Code).ToString());
    auto *data = new QMimeData;
    data->setData(typesFormat, types);
    Widgets::DroppedProperties::put(m_rows[indexes.front().row()].properties(), *data);
    return data;
}

} // namespace Editor
