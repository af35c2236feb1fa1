// The table of signals with 100,000 rows: opened, searched, drawn, 5,000 rows pasted as one step of
// the history and taken back, the whole of it exported.
//
//     QT_QPA_PLATFORM=offscreen bench_signal_table [signals]
//
// Each once: nobody does it twice in a row.
#include "editor/project/ProjectSession.h"
#include "editor/signals/SheetEdits.h"
#include "editor/signals/SheetModel.h"
#include "editor/signals/SheetPage.h"
#include "editor/signals/SheetView.h"
#include "editor/workspace/Workspace.h"

#include "nodes/drivers/modbus/modbusDriver.h"
#include "nodes/drivers/modbus/modbusGroup.h"
#include "nodes/drivers/modbus/modbusSignal.h"
#include "nodes/model/NodesCollection.h"

#include <QApplication>
#include <QTableView>
#include <QTemporaryDir>

#include <chrono>
#include <cstdio>
#include <functional>

using namespace Editor;
using Clock = std::chrono::steady_clock;
using Nodes::NodeType;

namespace {

constexpr int perGroup = 100;
constexpr int pasted = 5000;

void measure(const char *what, const std::function<void()> &work)
{
    const auto start = Clock::now();
    work();
    QCoreApplication::processEvents(); // layout and painting too
    std::printf("%-44s %10.1f ms\n", what,
                std::chrono::duration<double, std::milli>(Clock::now() - start).count());
}

Nodes::ConfigNode *fill(Nodes::NodesCollection &project, int count)
{
    Nodes::ConfigNode *station = project.GetRoot()->GetNodeAt(0);
    Nodes::ConfigNode *device = project.CreateNode(NodeType(Nodes::modbusDriver::Code), station);
    Nodes::ConfigNode *group = nullptr;
    for (int i = 0; i < count; ++i) {
        if (i % perGroup == 0)
            group = project.CreateNode(NodeType(Nodes::modbusGroup::Code), device);
        project.CreateNode(NodeType(Nodes::modbusSignal::Code), group)
            ->SetName("T" + std::to_string(i));
    }
    return device;
}

QString sheet()
{
    QString text = "Имя\tСмещение в группе\tЕдиница измерения\tМножитель\n";
    for (int i = 0; i < pasted; ++i)
        text += QString("Новые/П%1\t%2\t°C\t0,1\n").arg(i).arg(i % perGroup);
    return text;
}

} // namespace

int main(int argc, char **argv)
{
    QApplication application(argc, argv);
    const QTemporaryDir directory;
    QWidget window;
    ProjectSession session;
    Workspace workspace(session, window);
    if (!session.create(directory.filePath("p"), "P"))
        return 1;
    const Nodes::ConfigNode *device =
        fill(*session.project(), argc > 1 ? std::atoi(argv[1]) : 100000);
    std::unique_ptr<SheetPage> page;
    measure("opened and drawn", [&] {
        page = std::make_unique<SheetPage>(workspace, device->GetNodeLink(), NodeType::TypeSignal,
                                           nullptr);
        page->resize(1000, 600);
        page->show();
    });
    SheetModel &model = page->model();
    measure("searched, one found", [&] { model.setFilter("T99998"); });
    measure("search taken back", [&] { model.setFilter({}); });
    measure("scrolled to the end", [&] { page->table().scrollToBottom(); });
    const std::string text = sheet().toStdString();
    measure("5,000 rows pasted",
            [&] { (void)SheetEdits::paste(workspace, model, text, 0, 0, {}); });
    measure("taken back", [&] { session.undoStack().undo(); });
    measure("done again", [&] { session.undoStack().redo(); });
    measure("exported", [&] { (void)SheetEdits::exportTable(model); });
    return 0;
}
