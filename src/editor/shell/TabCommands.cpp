#include "editor/shell/TabCommands.h"

#include "editor/shell/DocumentTabs.h"
#include "editor/workspace/Workspace.h"

namespace Editor {

namespace {

/// Null where the workspace stands in no main window.
DocumentTabs *tabsOf(Workspace &workspace)
{
    return workspace.window() ? workspace.window()->findChild<DocumentTabs *>() : nullptr;
}

int countOf(Workspace &workspace)
{
    const DocumentTabs *tabs = tabsOf(workspace);
    return tabs ? tabs->count() : 0;
}

} // namespace

bool TabCommands::hasTab(Workspace &workspace)
{
    return countOf(workspace) > 0;
}

bool TabCommands::hasSeveral(Workspace &workspace)
{
    return countOf(workspace) > 1;
}

bool TabCommands::canReopen(Workspace &workspace)
{
    const DocumentTabs *tabs = tabsOf(workspace);
    return tabs && tabs->canReopen();
}

void TabCommands::close(Workspace &workspace)
{
    DocumentTabs *tabs = tabsOf(workspace);
    tabs->closeAt(tabs->currentIndex());
}

void TabCommands::closeOthers(Workspace &workspace)
{
    DocumentTabs *tabs = tabsOf(workspace);
    tabs->closeOthers(tabs->currentIndex());
}

void TabCommands::reopen(Workspace &workspace)
{
    tabsOf(workspace)->reopenClosed();
}

void TabCommands::next(Workspace &workspace)
{
    tabsOf(workspace)->step(1);
}

void TabCommands::previous(Workspace &workspace)
{
    tabsOf(workspace)->step(-1);
}

} // namespace Editor
