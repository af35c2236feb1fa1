#include "editor/picker/NodePickerModel.h"

#include "nodes/model/ConfigNode.h"
#include "nodes/model/KindInfo.h"
#include "nodes/model/NodesCollection.h"

#include <QColor>

#include <algorithm>

namespace Editor {

NodePickerModel::NodePickerModel(const Nodes::NodesCollection *project, const Test &isPickable,
                                 QObject *parent)
    : QAbstractItemModel(parent), m_items(1)
{
    const Nodes::ConfigNode *root = project ? project->GetRoot() : nullptr;
    if (root)
        add(*root, 0, isPickable);
    search(QString());
}

NodePickerModel::~NodePickerModel() = default;

// A node without anything to pick at or below it is taken back.
bool NodePickerModel::add(const Nodes::ConfigNode &node, int parent, const Test &isPickable)
{
    const int own = int(m_items.size());
    Item item;
    item.id = node.GetId();
    item.parent = parent;
    item.isPickable = isPickable(node);
    m_items.push_back(item);
    bool isNeeded = item.isPickable;
    for (const auto &child : node.Children())
        isNeeded = add(*child, own, isPickable) || isNeeded;
    if (!isNeeded) {
        m_items.resize(std::size_t(own));
        return false;
    }
    Item &kept = m_items[std::size_t(own)];
    kept.name = QString::fromStdString(node.GetName());
    kept.kind = node.GetKind() ? QString::fromStdString(node.GetKind()->nameRu) : QString();
    kept.folded = (kept.name + QLatin1Char('\n') + QString::fromStdString(node.GetDescription()))
                      .toCaseFolded();
    return true;
}

bool NodePickerModel::has(const Item &item, const QString &folded) const
{
    if (!folded.contains(QLatin1Char('/')))
        return item.folded.contains(folded);
    QString path = item.name;
    for (int above = item.parent; above > 1; above = m_items[std::size_t(above)].parent)
        path.prepend(m_items[std::size_t(above)].name + QLatin1Char('/'));
    return path.toCaseFolded().contains(folded);
}

void NodePickerModel::search(const QString &text)
{
    beginResetModel();
    const QString folded = text.trimmed().toCaseFolded();
    std::vector<char> isShown(m_items.size(), 0);
    m_count = 0;
    for (std::size_t i = m_items.size(); i-- > 1;) {
        Item &item = m_items[i];
        item.shown.clear();
        const bool isFound = item.isPickable && has(item, folded);
        m_count += isFound ? 1 : 0;
        isShown[i] = char(isShown[i] != 0 || isFound);
        if (isShown[i] != 0)
            isShown[std::size_t(item.parent)] = 1;
    }
    m_items[0].shown.clear();
    for (std::size_t i = 1; i < m_items.size(); ++i) {
        if (isShown[i] == 0)
            continue;
        std::vector<int> &siblings = m_items[std::size_t(m_items[i].parent)].shown;
        m_items[i].place = int(siblings.size());
        siblings.push_back(int(i));
    }
    endResetModel();
}

QModelIndex NodePickerModel::indexOf(int item) const
{
    return item > 0 ? createIndex(m_items[std::size_t(item)].place, 0, quintptr(item))
                    : QModelIndex();
}

// What is not shown is not below its parent there.
QModelIndex NodePickerModel::find(unsigned long id) const
{
    const auto found = std::find_if(m_items.begin() + 1, m_items.end(),
                                    [id](const Item &item) { return item.id == id; });
    if (found == m_items.end())
        return {};
    const int own = int(found - m_items.begin());
    const std::vector<int> &siblings = m_items[std::size_t(found->parent)].shown;
    const bool isShown =
        found->place < int(siblings.size()) && siblings[std::size_t(found->place)] == own;
    return isShown ? indexOf(own) : QModelIndex();
}

QModelIndex NodePickerModel::first() const
{
    for (std::size_t i = 1; i < m_items.size(); ++i) {
        if (m_items[i].isPickable) {
            const QModelIndex index = find(m_items[i].id);
            if (index.isValid())
                return index;
        }
    }
    return {};
}

QModelIndex NodePickerModel::index(int row, int column, const QModelIndex &parent) const
{
    const std::vector<int> &shown = m_items[parent.isValid() ? parent.internalId() : 0].shown;
    if (row < 0 || row >= int(shown.size()) || column < 0 || column > 1)
        return {};
    return createIndex(row, column, quintptr(shown[std::size_t(row)]));
}

QModelIndex NodePickerModel::parent(const QModelIndex &index) const
{
    return index.isValid() ? indexOf(m_items[index.internalId()].parent) : QModelIndex();
}

int NodePickerModel::rowCount(const QModelIndex &parent) const
{
    return parent.column() > 0
               ? 0
               : int(m_items[parent.isValid() ? parent.internalId() : 0].shown.size());
}

int NodePickerModel::columnCount(const QModelIndex &) const
{
    return 2;
}

QVariant NodePickerModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid())
        return {};
    const Item &item = m_items[index.internalId()];
    switch (role) {
    case Qt::DisplayRole:
        return index.column() == 0 ? item.name : item.kind;
    case Qt::ForegroundRole:
        return item.isPickable && index.column() == 0 ? QVariant()
                                                      : QVariant(QColor(0x5d, 0x66, 0x6e));
    case IdRole:
        return qulonglong(item.id);
    case PickableRole:
        return item.isPickable;
    default:
        return {};
    }
}

Qt::ItemFlags NodePickerModel::flags(const QModelIndex &index) const
{
    return index.isValid() ? Qt::ItemIsEnabled | Qt::ItemIsSelectable : Qt::NoItemFlags;
}

QVariant NodePickerModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return {};
    return section == 0 ? QStringLiteral("Узел") : QStringLiteral("Тип");
}

} // namespace Editor
