#pragma once

#include "widgets/WidgetsExport.h"
#include "widgets/tools/FileInfoData.h"
#include "widgets/tools/UniversalTableType.h"

#include "nodes/model/links/NodeLink.h"

#include <QObject>
#include <QVariant>

namespace Widgets {

/// One row of a universal table: a node or a file. GUI thread.
class WIDGETS_EXPORT UniversalTableItem : public QObject
{
    Q_OBJECT

public:
    explicit UniversalTableItem(const Nodes::NodeLink &node, QObject *parent = nullptr);
    explicit UniversalTableItem(const FileInfoData &file, QObject *parent = nullptr);

    const Nodes::NodeLink &getNodeLink() const { return m_node; }
    const FileInfoData &getInfoFile() const { return m_file; }
    /// What a column shows, but for the row's number; invalid where it has nothing.
    QVariant getData(int column, UniversalTableType type) const;
    /// What a column sorts by.
    QVariant sortKey(int column, UniversalTableType type) const;

private:
    Nodes::NodeLink m_node;
    FileInfoData m_file;
};

} // namespace Widgets
