#include "editor/jump/JumpModel.h"

#include "editor/tables/DocumentTable.h"
#include "editor/tree/KindIcons.h"

#include "nodes/model/ConfigNode.h"
#include "nodes/model/NodesCollection.h"
#include "utils/convert/PlainTip.h"

#include <QAction>

#include <algorithm>

namespace Editor {

namespace {

constexpr std::size_t looked = 1000; // nodes among which documents are put first

QString pathAbove(const Nodes::ConfigNode &node)
{
    const Nodes::ConfigNode *parent = node.GetParent();
    return parent ? QString::fromStdString(Nodes::NodeLink(parent).GetLinkName(true)) : QString();
}

} // namespace

JumpModel::JumpModel(const Nodes::NodesCollection *project, Nodes::NodeLinks latest,
                     QVector<MenuEntry> commands, QObject *parent)
    : QAbstractTableModel(parent), m_project(project), m_latest(std::move(latest))
{
    for (const MenuEntry &entry : qAsConst(commands))
        m_commands.push_back({entry.action, entry.place, entry.text, TreeSearch::folded(entry.text),
                              TreeSearch::folded(entry.text + QLatin1Char('\n') + entry.place)});
    search(QString());
}

JumpModel::~JumpModel() = default;

void JumpModel::search(const QString &text)
{
    beginResetModel();
    m_rows.clear();
    m_count = 0;
    const QString words = text.simplified();
    const bool isCommand = words.startsWith(QLatin1Char('>'));
    if (words.isEmpty()) {
        for (const Nodes::NodeLink &node : m_latest) {
            if (node.isValid())
                m_rows.push_back({0, node, nullptr});
        }
        m_count = m_rows.size();
    } else {
        if (!isCommand && m_project)
            addNodes(words);
        addCommands(isCommand ? words.mid(1).trimmed() : words);
        std::stable_sort(m_rows.begin(), m_rows.end(),
                         [](const Row &left, const Row &right) { return left.rank < right.rank; });
        m_rows.resize(std::min(m_rows.size(), rowsAtMost), {0, {}, nullptr});
    }
    endResetModel();
}

// Of what is equally near a document comes first, then a command, then what lies in documents.
void JumpModel::addNodes(const QString &text)
{
    const TreeSearch::Best best = m_search.best(*m_project, text, looked);
    m_count += best.count;
    for (const TreeSearch::Hit &hit : best.hits) {
        const Nodes::NodeLink link(hit.id, m_project);
        if (link.isValid())
            m_rows.push_back(
                {hit.rank * 3 + (FindDocument(*link.GetNode()) ? 0 : 2), link, nullptr});
    }
}

void JumpModel::addCommands(const QString &text)
{
    const QByteArray typed = TreeSearch::folded(text);
    const QList<QByteArray> words = typed.split(' ');
    for (const Command &command : m_commands) {
        const bool isFound =
            command.action && std::all_of(words.begin(), words.end(), [&](const QByteArray &word) {
                return command.all.contains(word);
            });
        if (!isFound)
            continue;
        m_rows.push_back({TreeSearch::nearness(command.name, typed) * 3 + 1, {}, &command});
        ++m_count;
    }
}

Nodes::NodeLink JumpModel::node(int row) const
{
    return row >= 0 && row < rowCount() ? m_rows[std::size_t(row)].node : Nodes::NodeLink();
}

QAction *JumpModel::command(int row) const
{
    const Command *command =
        row >= 0 && row < rowCount() ? m_rows[std::size_t(row)].command : nullptr;
    return command ? command->action.data() : nullptr;
}

int JumpModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_rows.size());
}

int JumpModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : ColumnCount;
}

QVariant JumpModel::nodeData(const Nodes::ConfigNode &node, int column, int role) const
{
    const bool isName = column == ColumnName;
    if (role == Qt::DisplayRole)
        return isName ? QString::fromStdString(node.GetName()) : pathAbove(node);
    if (role == Qt::DecorationRole && isName)
        return KindIcons::of(node.GetNodeType());
    if (role == Qt::ToolTipRole)
        return Utils::PlainTip(QString::fromStdString(node.GetDescription()));
    return {};
}

QVariant JumpModel::commandData(const Command &command, int column, int role)
{
    const QString keys = command.action->shortcut().toString(QKeySequence::NativeText);
    if (role == Qt::DecorationRole && column == ColumnName)
        return command.action->icon();
    if (role != Qt::DisplayRole)
        return {};
    if (column == ColumnName)
        return command.text;
    const QString place = QStringLiteral("Команда: ") + command.place;
    return keys.isEmpty() ? place : place + QStringLiteral("   ") + keys;
}

QVariant JumpModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid())
        return {};
    const Row &row = m_rows[std::size_t(index.row())];
    if (row.command)
        return row.command->action ? commandData(*row.command, index.column(), role) : QVariant();
    const Nodes::ConfigNode *node = row.node.GetNode();
    return node ? nodeData(*node, index.column(), role) : QVariant();
}

Qt::ItemFlags JumpModel::flags(const QModelIndex &index) const
{
    if (!index.isValid())
        return Qt::NoItemFlags;
    const QAction *action = command(index.row());
    const bool isPossible = action ? action->isEnabled() : node(index.row()).isValid();
    return Qt::ItemIsSelectable | (isPossible ? Qt::ItemIsEnabled : Qt::NoItemFlags);
}

} // namespace Editor
