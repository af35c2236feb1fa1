#include "editor/drivers/DriverView.h"

#include "editor/drivers/DriverSettings.h"
#include "editor/drivers/LocalTrial.h"
#include "editor/drivers/ModbusTrial.h"
#include "editor/signals/SheetPage.h"

#include "nodes/drivers/modbus/modbusDriver.h"
#include "nodes/project/signals/SheetColumns.h"

#include <QTabWidget>

namespace Editor {

DriverView::DriverView(Workspace &workspace, const Nodes::NodeLink &node, QWidget *parent)
    : SignalTable(workspace, node, parent)
{
    tabs().insertTab(0, new DriverSettings(workspace, node, &tabs()), tr("Настройки"));
    const Nodes::ConfigNode *driver = node.GetNode();
    if (driver && !Nodes::FindSheetKinds(*driver, Nodes::NodeType::TypeDriverGroup).empty())
        tabs().insertTab(1,
                         new SheetPage(workspace, node, Nodes::NodeType::TypeDriverGroup, &tabs()),
                         tr("Группы опроса"));
    if (dynamic_cast<Nodes::modbusDriver *>(node.GetNode()))
        tabs().addTab(new ModbusTrial(workspace, node, signalPage(), &tabs()),
                      tr("Проверка связи"));
    else if (const auto *local = dynamic_cast<const Nodes::BasicDriver *>(driver);
             local && !local->ReachesOut())
        tabs().addTab(new LocalTrial(workspace, node, &tabs()), tr("Проба"));
    tabs().setCurrentIndex(0);
}

bool DriverView::shows(const Nodes::ConfigNode &node)
{
    return node.GetNodeType().GetFamily() == Nodes::NodeType::TypeDriver;
}

QString DriverView::title() const
{
    return DocumentView::title();
}

} // namespace Editor
