#pragma once

#include "editor/tables/CommandTable.h"

namespace Editor {

/// Commands of the scene that is the active document: clipboard, arranging, zoom, preview.
QVector<CommandRow> SceneCommands();

} // namespace Editor
