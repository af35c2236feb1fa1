#include "editor/properties/PropertyModel.h"

#include "editor/properties/PropertyCells.h"
#include "editor/properties/PropertyRows.h"

#include "nodes/model/ConfigNode.h"
#include "nodes/model/properties/PropertyDescriptor.h"
#include "nodes/model/properties/PropertyProxy.h"

#include <algorithm>
#include <utility>

namespace Editor {

namespace {

const PropertyRow *findRow(const PropertyRow &row, const QString &key)
{
    if (row.key == key)
        return &row;
    for (const auto &part : row.rows) {
        if (const PropertyRow *found = findRow(*part, key))
            return found;
    }
    return nullptr;
}

} // namespace

PropertyModel::PropertyModel(PropertyEdits::Push push, QObject *parent)
    : QAbstractItemModel(parent),
      m_edits(std::move(push)),
      m_nodes(std::make_unique<Nodes::PropertyProxy>()),
      m_top(std::make_unique<PropertyRow>())
{
    m_later.setSingleShot(true);
    m_later.setInterval(0);
    connect(&m_later, &QTimer::timeout, this, &PropertyModel::refresh);
}

PropertyModel::~PropertyModel() = default;

void PropertyModel::setNodes(const Nodes::NodeLinks &nodes)
{
    m_later.stop();
    m_changed.clear();
    m_isAllChanged = false;
    m_interaction = {};
    auto proxy = std::make_unique<Nodes::PropertyProxy>();
    for (const Nodes::NodeLink &node : nodes)
        proxy->AddNode(node);
    auto top = makePropertyRows(*proxy);
    const bool isSame = !m_top->rows.empty() && isSameTable(*top, *m_top);
    if (!isSame)
        beginResetModel();
    m_nodes = std::move(proxy);
    using Change = Nodes::PropertyProxy::Change;
    m_changes = m_nodes->ConnectChanged([this](const Change &change) {
        note(change.valueId, change.what != Change::Property || change.valueId == 0);
    });
    if (isSame) {
        refreshRows(*m_top);
    } else {
        m_top = std::move(top);
        refreshPropertyRow(*m_top, *m_nodes);
        endResetModel();
    }
    emit nodesChanged(isSame);
}

const Nodes::NodesArray &PropertyModel::nodes() const
{
    return m_nodes->GetNodes();
}

const Nodes::NodesCollection *PropertyModel::project() const
{
    return nodes().empty() ? nullptr : nodes()[0].GetNodesCollection();
}

void PropertyModel::setReadOnly(const QString &reason)
{
    if (reason == m_edits.readOnly())
        return;
    m_edits.setReadOnly(reason);
    for (const auto &group : m_top->rows)
        emit dataChanged(indexOf(*group, ColumnName), indexOf(*group, ColumnReset));
}

void PropertyModel::note(unsigned valueId, bool isAll)
{
    m_isAllChanged = m_isAllChanged || isAll;
    m_changed.insert(valueId);
    if (!m_later.isActive())
        m_later.start();
}

void PropertyModel::dropRemoved()
{
    Nodes::NodeLinks left;
    for (const Nodes::NodeLink &link : nodes()) {
        if (link.isValid())
            left.push_back(link);
    }
    if (left.size() != nodes().size())
        setNodes(left);
}

void PropertyModel::refresh()
{
    m_later.stop();
    if (m_isAllChanged)
        dropRemoved();
    refreshRows(*m_top);
    m_changed.clear();
    m_isAllChanged = false;
}

// Only rows that look different are told of: editors of others are left alone.
bool PropertyModel::refreshRows(PropertyRow &row)
{
    bool isChanged = false;
    for (const auto &part : row.rows)
        isChanged = refreshRows(*part) || isChanged;
    const bool isAll = m_isAllChanged || m_changed.empty();
    const bool isConcerned =
        row.what == PropertyRow::Font
            ? isChanged
            : isAll || (row.descriptor && m_changed.count(row.descriptor->valueId) != 0);
    if (row.what == PropertyRow::Group || !isConcerned)
        return false;
    if (!refreshPropertyRow(row, *m_nodes) && !isChanged)
        return false;
    row.error.clear();
    emit dataChanged(indexOf(row, ColumnName), indexOf(row, ColumnName));
    emit dataChanged(indexOf(row, ColumnValue), indexOf(row, ColumnValue));
    emit dataChanged(indexOf(row, ColumnReset), indexOf(row, ColumnReset));
    return true;
}

void PropertyModel::tellValue(const PropertyRow &row, unsigned valueId)
{
    if (row.descriptor && row.descriptor->valueId == valueId)
        emit dataChanged(indexOf(row, ColumnValue), indexOf(row, ColumnValue));
    for (const auto &part : row.rows)
        tellValue(*part, valueId);
}

void PropertyModel::setPreview(const PropertyEdits::Texts &texts)
{
    if (texts == m_preview)
        return;
    const PropertyEdits::Texts previous = std::exchange(m_preview, texts);
    for (const auto &[valueId, text] : previous.empty() ? texts : previous)
        tellValue(*m_top, valueId);
}

const QString *PropertyModel::preview(const PropertyRow &row) const
{
    for (const auto &[valueId, text] : m_preview) {
        if (row.descriptor && row.descriptor->valueId == valueId)
            return &text;
    }
    return nullptr;
}

const PropertyRow *PropertyModel::row(const QModelIndex &index)
{
    return static_cast<const PropertyRow *>(index.data(RowRole).value<void *>());
}

QModelIndex PropertyModel::find(const QString &key) const
{
    const PropertyRow *found = key.isEmpty() ? nullptr : findRow(*m_top, key);
    return found ? indexOf(*found, ColumnName) : QModelIndex();
}

QModelIndex PropertyModel::indexOf(const PropertyRow &row, int column) const
{
    return row.parent ? createIndex(row.place, column, const_cast<PropertyRow *>(&row))
                      : QModelIndex();
}

QModelIndex PropertyModel::index(int place, int column, const QModelIndex &parent) const
{
    const auto *above =
        parent.isValid() ? static_cast<const PropertyRow *>(parent.internalPointer()) : m_top.get();
    const bool isThere =
        place >= 0 && place < int(above->rows.size()) && column >= 0 && column < ColumnCount;
    return isThere ? indexOf(*above->rows[std::size_t(place)], column) : QModelIndex();
}

QModelIndex PropertyModel::parent(const QModelIndex &index) const
{
    const auto *own = static_cast<const PropertyRow *>(index.internalPointer());
    return own && own->parent ? indexOf(*own->parent, ColumnName) : QModelIndex();
}

int PropertyModel::rowCount(const QModelIndex &parent) const
{
    if (parent.column() > 0)
        return 0;
    const auto *above =
        parent.isValid() ? static_cast<const PropertyRow *>(parent.internalPointer()) : m_top.get();
    return int(above->rows.size());
}

int PropertyModel::columnCount(const QModelIndex &) const
{
    return ColumnCount;
}

QVariant PropertyModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid())
        return {};
    auto *shown = static_cast<PropertyRow *>(index.internalPointer());
    switch (role) {
    case RowRole:
        return QVariant::fromValue<void *>(shown);
    case KeyRole:
        return shown->key;
    case MixedRole:
        return shown->value.isMixed;
    case ErrorRole:
        return shown->error;
    case Qt::DisplayRole:
        if (const QString *text = index.column() == ColumnValue ? preview(*shown) : nullptr)
            return *text;
        [[fallthrough]];
    default:
        return propertyCell(*shown, index.column(), role, *m_nodes);
    }
}

Qt::ItemFlags PropertyModel::flags(const QModelIndex &index) const
{
    const auto *own =
        index.isValid() ? static_cast<const PropertyRow *>(index.internalPointer()) : nullptr;
    if (!own)
        return Qt::NoItemFlags;
    const Qt::ItemFlags flags = Qt::ItemIsEnabled | Qt::ItemIsSelectable;
    if (index.column() != ColumnValue || !own->isEditable() || !m_edits.readOnly().isEmpty())
        return flags;
    if (own->descriptor && own->descriptor->binding.type == Nodes::PropertyType::Bool)
        return flags | Qt::ItemIsUserCheckable;
    return flags | Qt::ItemIsEditable | Qt::ItemIsDropEnabled;
}

QVariant PropertyModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    static const char *const titles[] = {"Свойство", "Значение", ""};
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole || section >= ColumnCount)
        return {};
    return QString::fromUtf8(titles[section]);
}

} // namespace Editor
