#include "editor/resources/Resources.h"

#include <QDir>

// The macro must stand outside of namespaces.
static void init()
{
    Q_INIT_RESOURCE(editor);
    Q_INIT_RESOURCE(kinds);
}

namespace Editor {

void InitResources()
{
    init();
}

} // namespace Editor
