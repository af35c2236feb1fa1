#include "editor/usages/ReplaceModel.h"

#include "editor/tree/KindIcons.h"
#include "editor/usages/UsagesModel.h"

#include <QBrush>
#include <QGuiApplication>
#include <QPalette>

namespace Editor {

namespace {

QString cell(const PlannedLink &planned, int column)
{
    const Utils::LinkReplacement &link = planned.link;
    switch (column) {
    case ReplaceModel::ColumnWho:
        return QString::fromStdString(link.node.GetLinkName(true));
    case ReplaceModel::ColumnProperty:
        return propertyName({link.node, link.valueId});
    case ReplaceModel::ColumnFrom:
        return QString::fromStdString(link.from.GetLinkName(true));
    case ReplaceModel::ColumnTo:
        return planned.toPath;
    case ReplaceModel::ColumnNote:
        return planned.objection;
    default:
        return {};
    }
}

} // namespace

ReplaceModel::ReplaceModel(QObject *parent) : QAbstractTableModel(parent) {}

ReplaceModel::~ReplaceModel() = default;

void ReplaceModel::setPlan(ReplacePlan plan)
{
    beginResetModel();
    m_plan = std::move(plan);
    endResetModel();
}

int ReplaceModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_plan.links().size());
}

int ReplaceModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : ColumnCount;
}

QVariant ReplaceModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid())
        return {};
    const PlannedLink &planned = m_plan.links()[std::size_t(index.row())];
    const bool isPossible = planned.objection.isEmpty();
    if (role == Qt::DisplayRole || role == Qt::ToolTipRole)
        return cell(planned, index.column());
    if (role == Qt::CheckStateRole && index.column() == ColumnWho)
        return isPossible && planned.isChosen ? Qt::Checked : Qt::Unchecked;
    if (role == Qt::DecorationRole && index.column() == ColumnWho)
        return KindIcons::of(planned.link.node.GetNodeType());
    if (role == Qt::ForegroundRole && !isPossible)
        return QGuiApplication::palette().brush(QPalette::Disabled, QPalette::Text);
    return {};
}

bool ReplaceModel::setData(const QModelIndex &index, const QVariant &value, int role)
{
    if (role != Qt::CheckStateRole || !(flags(index) & Qt::ItemIsUserCheckable))
        return false;
    m_plan.links()[std::size_t(index.row())].isChosen = value.toInt() == Qt::Checked;
    emit dataChanged(index, index, {Qt::CheckStateRole});
    return true;
}

QVariant ReplaceModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return {};
    static const char *const titles[ColumnCount] = {"Кто ссылается", "Свойство", "Сейчас", "Станет",
                                                    "Примечание"};
    return section >= 0 && section < ColumnCount ? QString::fromUtf8(titles[section]) : QVariant();
}

Qt::ItemFlags ReplaceModel::flags(const QModelIndex &index) const
{
    Qt::ItemFlags flags = QAbstractTableModel::flags(index);
    const bool isPossible = index.isValid() && index.column() == ColumnWho &&
                            m_plan.links()[std::size_t(index.row())].objection.isEmpty();
    if (isPossible)
        flags |= Qt::ItemIsUserCheckable;
    return flags;
}

} // namespace Editor
