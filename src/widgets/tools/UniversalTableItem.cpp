#include "widgets/tools/UniversalTableItem.h"

#include "nodes/model/ConfigNode.h"

namespace Widgets {

namespace {

constexpr double mebibytesPerByte = 9.5367431640625e-7;
constexpr int sizeDigits = 3;

QString descriptionOf(const Nodes::NodeLink &link)
{
    const Nodes::ConfigNode *node = link.GetNode();
    return node ? QString::fromStdString(node->GetDescription()) : QString();
}

} // namespace

UniversalTableItem::UniversalTableItem(const Nodes::NodeLink &node, QObject *parent)
    : QObject(parent), m_node(node)
{
}

UniversalTableItem::UniversalTableItem(const FileInfoData &file, QObject *parent)
    : QObject(parent), m_file(file)
{
}

QVariant UniversalTableItem::getData(int column, UniversalTableType type) const
{
    const bool isNode = type == UniversalTableNodes;
    switch (column) {
    case 1:
        return isNode ? QString::fromStdString(m_node.GetLinkName(true)) : m_file.name;
    case 2:
        return isNode ? descriptionOf(m_node)
                      : QString::number(double(m_file.size) * mebibytesPerByte, 'G', sizeDigits);
    case 3:
        return isNode ? QVariant() : QVariant(m_file.changed);
    default:
        return {};
    }
}

QVariant UniversalTableItem::sortKey(int column, UniversalTableType type) const
{
    const bool isSize = type == UniversalTableFiles && column == 2;
    return isSize ? QVariant(m_file.size) : getData(column, type);
}

} // namespace Widgets
