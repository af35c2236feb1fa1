#include "editor/properties/children/ChildrenModel.h"

#include "editor/properties/PropertyModel.h"
#include "editor/properties/PropertyTexts.h"
#include "editor/properties/children/ChildrenSteps.h"
#include "editor/properties/values/ColorSwatch.h"

#include "nodes/model/ConfigNode.h"
#include "nodes/model/KindInfo.h"
#include "nodes/model/properties/PropertyDescriptor.h"
#include "nodes/model/properties/PropertyProxy.h"

#include <QColor>

#include <algorithm>

namespace Editor {

namespace {

using Nodes::PropertyDescriptor;

std::vector<const PropertyDescriptor *> columnsOf(const ChildFamily &family)
{
    std::vector<const PropertyDescriptor *> columns;
    for (const Nodes::KindInfo *kind : family.kinds) {
        for (const PropertyDescriptor &d : kind->properties) {
            const bool isKnown = std::any_of(columns.begin(), columns.end(),
                                             [&](const auto *known) { return known->IsSameAs(d); });
            if (!isKnown)
                columns.push_back(&d);
        }
    }
    return columns;
}

} // namespace

ChildrenModel::ChildrenModel(const Nodes::NodeLink &parentNode, ChildFamily family,
                             PropertyEdits::Push push, QObject *parent)
    : QAbstractTableModel(parent),
      m_parentNode(parentNode),
      m_family(std::move(family)),
      m_edits(std::move(push)),
      m_columns(columnsOf(m_family))
{
    m_later.setSingleShot(true);
    m_later.setInterval(0);
    connect(&m_later, &QTimer::timeout, this, &ChildrenModel::refresh);
    m_nodes = standing();
    watch();
}

ChildrenModel::~ChildrenModel() = default;

Nodes::NodeLinks ChildrenModel::standing() const
{
    Nodes::NodeLinks nodes;
    if (const Nodes::ConfigNode *parent = m_parentNode.GetNode()) {
        for (const Nodes::ConfigNode *child : parent->GetObjects(m_family.family))
            nodes.emplace_back(child);
    }
    return nodes;
}

void ChildrenModel::watch()
{
    Nodes::PropertyProxy watched;
    watched.AddNode(m_parentNode);
    for (const Nodes::NodeLink &node : m_nodes)
        watched.AddNode(node);
    m_changes = watched.ConnectChanged([this](const Nodes::PropertyProxy::Change &) {
        if (!m_later.isActive())
            m_later.start();
    });
}

void ChildrenModel::refresh()
{
    m_later.stop();
    const Nodes::NodeLinks now = standing();
    if (now != m_nodes) {
        beginResetModel();
        m_nodes = now;
        endResetModel();
        watch();
    } else if (!m_nodes.empty()) {
        emit dataChanged(index(0, 0), index(rowCount() - 1, columnCount() - 1));
    }
    if (!m_parentNode.isValid())
        emit parentRemoved();
}

Nodes::NodeLink ChildrenModel::node(int row) const
{
    return row >= 0 && row < int(m_nodes.size()) ? m_nodes[std::size_t(row)] : Nodes::NodeLink();
}

int ChildrenModel::rowOf(const Nodes::NodeLink &node) const
{
    const auto found = std::find(m_nodes.begin(), m_nodes.end(), node);
    return found == m_nodes.end() ? -1 : int(found - m_nodes.begin());
}

const PropertyDescriptor *ChildrenModel::descriptor(const QModelIndex &index) const
{
    const Nodes::NodeLink link = node(index.row());
    if (!link.isValid() || index.column() < ColumnFirstProperty)
        return nullptr;
    const PropertyDescriptor *column = m_columns[std::size_t(index.column() - ColumnFirstProperty)];
    const PropertyDescriptor *own = link->GetKind()->FindProperty(column->valueId);
    return own && own->IsSameAs(*column) ? own : nullptr;
}

bool ChildrenModel::isUsed(int column) const
{
    for (int row = 0; row < rowCount(); ++row) {
        const PropertyDescriptor *d = descriptor(index(row, column));
        if (d && !node(row)->GetKind()->IsDefault(*d, *node(row).GetNode()))
            return true;
    }
    return false;
}

Nodes::NodeLinks ChildrenModel::nodesOf(const QVector<int> &rows) const
{
    QVector<int> sorted = rows;
    std::sort(sorted.begin(), sorted.end());
    Nodes::NodeLinks nodes;
    for (const int row : sorted) {
        if (node(row).isValid())
            nodes.push_back(node(row));
    }
    return nodes;
}

QString ChildrenModel::add(const Nodes::KindInfo &kind)
{
    const QString error = ChildrenSteps(m_edits, m_parentNode).add(kind);
    refresh();
    return error;
}

QString ChildrenModel::duplicate(const QVector<int> &rows)
{
    const QString error = ChildrenSteps(m_edits, m_parentNode).duplicate(nodesOf(rows));
    refresh();
    return error;
}

QString ChildrenModel::remove(const QVector<int> &rows)
{
    const QString error = ChildrenSteps(m_edits, m_parentNode).remove(nodesOf(rows));
    refresh();
    return error;
}

QString ChildrenModel::move(const QVector<int> &rows, int by)
{
    const QString error = ChildrenSteps(m_edits, m_parentNode).move(m_nodes, nodesOf(rows), by);
    refresh();
    return error;
}

int ChildrenModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_nodes.size());
}

int ChildrenModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : ColumnFirstProperty + int(m_columns.size());
}

QVariant ChildrenModel::value(const QModelIndex &index, int role) const
{
    const PropertyDescriptor *d = descriptor(index);
    const Nodes::ConfigNode &child = *node(index.row()).GetNode();
    if (!d)
        return role == Qt::DisplayRole ? QVariant(QStringLiteral("—")) : QVariant();
    const QString text = QString::fromStdString(d->binding.format(*d, child));
    const bool isBool = d->binding.type == Nodes::PropertyType::Bool;
    switch (role) {
    case Qt::EditRole:
        return text;
    case Qt::CheckStateRole:
        return isBool ? QVariant(text == QLatin1String("true") ? Qt::Checked : Qt::Unchecked)
                      : QVariant();
    case Qt::DecorationRole:
        return d->binding.type == Nodes::PropertyType::Color ? QVariant(colorSwatch(text))
                                                             : QVariant();
    case Qt::ToolTipRole:
        return PropertyTexts::help(*d, child.GetNodesCollection());
    case Qt::DisplayRole:
        return PropertyTexts::shown(*d, text, child.GetNodesCollection());
    default:
        return {};
    }
}

QVariant ChildrenModel::data(const QModelIndex &index, int role) const
{
    const Nodes::NodeLink link = node(index.row());
    if (!link.isValid())
        return {};
    const bool isRefused = m_refused.isValid() && index == m_refused;
    if (role == PropertyModel::ErrorRole || (isRefused && role == Qt::ToolTipRole))
        return isRefused ? m_error : QString();
    if (isRefused && role == Qt::ForegroundRole)
        return QColor(0xb3, 0x26, 0x1e);
    if (index.column() >= ColumnFirstProperty)
        return value(index, role);
    if (role != Qt::DisplayRole && role != Qt::EditRole)
        return {};
    return QString::fromStdString(index.column() == ColumnName ? link->GetName()
                                                               : link->GetKind()->nameRu);
}

bool ChildrenModel::setData(const QModelIndex &index, const QVariant &value, int role)
{
    const Nodes::NodeLink link = node(index.row());
    if (!link.isValid() || !(flags(index) & (Qt::ItemIsEditable | Qt::ItemIsUserCheckable)))
        return false;
    QString text = value.toString();
    if (role == Qt::CheckStateRole)
        text = value.toInt() == Qt::Checked ? QStringLiteral("true") : QStringLiteral("false");
    const QPersistentModelIndex cell(index);
    const PropertyDescriptor *d = descriptor(index);
    m_error =
        d ? m_edits.setProperty(Nodes::NodesArray({link}), *d, text) : m_edits.setName(link, text);
    m_refused = m_error.isEmpty() ? QPersistentModelIndex() : cell;
    refresh();
    emit refused(m_error);
    return m_error.isEmpty();
}

Qt::ItemFlags ChildrenModel::flags(const QModelIndex &index) const
{
    if (!index.isValid())
        return Qt::NoItemFlags;
    const Qt::ItemFlags flags = Qt::ItemIsEnabled | Qt::ItemIsSelectable;
    if (!m_edits.readOnly().isEmpty() || index.column() == ColumnKind)
        return flags;
    if (index.column() == ColumnName)
        return flags | Qt::ItemIsEditable;
    const PropertyDescriptor *d = descriptor(index);
    if (!d || d->binding.type == Nodes::PropertyType::Links || d->editorHint == "readonly")
        return flags;
    return flags | (d->binding.type == Nodes::PropertyType::Bool ? Qt::ItemIsUserCheckable
                                                                 : Qt::ItemIsEditable);
}

QVariant ChildrenModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (role != Qt::DisplayRole && role != Qt::ToolTipRole)
        return QAbstractTableModel::headerData(section, orientation, role);
    if (orientation == Qt::Vertical)
        return section + 1;
    if (section < ColumnFirstProperty)
        return section == ColumnName ? QStringLiteral("Имя") : QStringLiteral("Тип");
    return QString::fromStdString(m_columns[std::size_t(section - ColumnFirstProperty)]->nameRu);
}

} // namespace Editor
