#pragma once

#include <QVector>

namespace Editor {

class Workspace;

/// One entry of the menus. Where several rows name the same menu they stand in the order of the
/// table.
struct CommandRow
{
    const char *id; ///< steady and unique; "" for a separator
    const char *menu; ///< "Правка", or "Размещение/Выровнять" for a menu below another
    const char *text;                        ///< Russian
    const char *icon;                        ///< resource; "" for none
    const char *shortcut;                    ///< portable form of QKeySequence; "" for none
    bool (*isEnabled)(Workspace &workspace); ///< null: while a project is open
    void (*run)(Workspace &workspace);
};

/// All commands of panels and documents; what the main window does itself comes before them.
const QVector<CommandRow> &CommandTable();

} // namespace Editor
