#include "editor/usages/UsagesModel.h"

#include "editor/tree/KindIcons.h"

#include "nodes/model/ConfigNode.h"
#include "nodes/model/properties/BasicProperty.h"

namespace Editor {

namespace {

QString text(const Nodes::NodeLink &link, Nodes::enLinkNameType type)
{
    return link.isValid() ? QString::fromStdString(link.GetLinkName(type))
                          : QStringLiteral("узла больше нет");
}

QVariant cell(const Usage &usage, int column)
{
    const Nodes::NodeLink &who = usage.use.node;
    switch (column) {
    case UsagesModel::ColumnWho:
        return text(who, Nodes::LinkNameShort);
    case UsagesModel::ColumnProperty:
        return propertyName(usage.use);
    case UsagesModel::ColumnKind:
        return QString::fromStdString(who.GetNodeType().GetSubtypeNameTranslated());
    case UsagesModel::ColumnPath:
        return text(who, Nodes::LinkNamePath);
    case UsagesModel::ColumnTarget:
        return text(usage.target, Nodes::LinkNamePath);
    default:
        return {};
    }
}

} // namespace

QString propertyName(const Nodes::LinkUse &use)
{
    const Nodes::ConfigNode *node = use.node.GetNode();
    const Nodes::BasicProperty *property = node ? node->GetPropertyByValueId(use.valueId) : nullptr;
    return property ? QString::fromStdString(property->GetName()) : QString::number(use.valueId);
}

UsagesModel::UsagesModel(QObject *parent) : QAbstractTableModel(parent) {}

UsagesModel::~UsagesModel() = default;

void UsagesModel::setUsages(Usages usages)
{
    beginResetModel();
    m_usages = std::move(usages);
    endResetModel();
}

const Usage *UsagesModel::usageAt(const QModelIndex &index) const
{
    const bool isOwn = index.isValid() && index.model() == this;
    return isOwn ? &m_usages[std::size_t(index.row())] : nullptr;
}

int UsagesModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_usages.size());
}

int UsagesModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : ColumnCount;
}

QVariant UsagesModel::data(const QModelIndex &index, int role) const
{
    const Usage *usage = usageAt(index);
    if (!usage)
        return {};
    if (role == Qt::DisplayRole || role == Qt::ToolTipRole)
        return cell(*usage, index.column());
    if (role == Qt::DecorationRole && index.column() == ColumnWho)
        return KindIcons::of(usage->use.node.GetNodeType());
    return {};
}

QVariant UsagesModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return {};
    static const char *const titles[ColumnCount] = {"Кто использует", "Свойство", "Вид", "Путь",
                                                    "На что ссылается"};
    return section >= 0 && section < ColumnCount ? QString::fromUtf8(titles[section]) : QVariant();
}

} // namespace Editor
