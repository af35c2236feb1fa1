#include "editor/tables/PanelTable.h"

#include "editor/panel/ElementPanel.h"
#include "editor/problems/ProblemsPanel.h"
#include "editor/properties/PropertyPanel.h"
#include "editor/review/ReviewPanel.h"
#include "editor/shell/HistoryPanel.h"
#include "editor/shell/NoticePanel.h"
#include "editor/symbols/SymbolPanel.h"
#include "editor/templates/InstancePanel.h"
#include "editor/tree/ProjectTreePanel.h"
#include "editor/usages/UsagesPanel.h"
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
        {"tree", "Проект", Qt::LeftDockWidgetArea, true, &make<ProjectTreePanel>},
        {"elements", "Элементы", Qt::LeftDockWidgetArea, true, &make<ElementPanel>},
        {"usages", "Использование", Qt::BottomDockWidgetArea, false, &make<UsagesPanel>},
        {"history", "История изменений", Qt::RightDockWidgetArea, false, &make<HistoryPanel>},
        {"symbols", "Мнемосимволы", Qt::LeftDockWidgetArea, true, &make<SymbolPanel>},
        {"review", "Проверка экрана", Qt::BottomDockWidgetArea, false, &make<ReviewPanel>},
        {"instances", "Экземпляры шаблона", Qt::BottomDockWidgetArea, false, &make<InstancePanel>},
        {"problems", "Проблемы", Qt::BottomDockWidgetArea, false, &make<ProblemsPanel>},
        {"notices", "Сообщения", Qt::BottomDockWidgetArea, false, &make<NoticePanel>},
    };
    return rows;
}

} // namespace Editor
