#include "editor/tables/DocumentTable.h"

namespace Editor {

const QVector<DocumentRow> &DocumentTable()
{
    static const QVector<DocumentRow> rows = {};
    return rows;
}

const DocumentRow *FindDocument(const Nodes::ConfigNode &node)
{
    for (const DocumentRow &row : DocumentTable()) {
        if (row.shows(node))
            return &row;
    }
    return nullptr;
}

} // namespace Editor
