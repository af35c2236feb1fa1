#include "editor/tables/CommandTable.h"

namespace Editor {

const QVector<CommandRow> &CommandTable()
{
    static const QVector<CommandRow> rows = {};
    return rows;
}

} // namespace Editor
