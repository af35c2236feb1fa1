#include "editor/tables/PanelTable.h"

#include "editor/properties/PropertyPanel.h"
#include "editor/shell/HistoryPanel.h"
#include "editor/workspace/Workspace.h"

namespace Editor {

namespace {

template <class Panel> QWidget *make(Workspace &workspace, QWidget *parent)
{
    return new Panel(workspace, parent);
}

} // namespace

const QVector<PanelRow> &PanelTable()
{
    static const QVector<PanelRow> rows = {
        {"properties", "Свойства", Qt::RightDockWidgetArea, true, &make<PropertyPanel>},
        {"history", "История изменений", Qt::RightDockWidgetArea, false, &make<HistoryPanel>},
    };
    return rows;
}

} // namespace Editor
