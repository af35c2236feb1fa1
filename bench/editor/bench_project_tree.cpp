// The project tree with 100,000 nodes: shown for the first time, filtered with every key stroke,
// expanded, a node found and revealed, 1,000 nodes added while it is shown; the quick jump over the
// same nodes. Beside it the filter of
// a QSortFilterProxyModel over the same rows.
//
//     QT_QPA_PLATFORM=offscreen bench_project_tree [nodes]
//
// Budget: 100 ms for each key stroke, the view included. Medians of five runs; the first key
// stroke, which reads the texts of all nodes, by itself.
#include "editor/jump/JumpModel.h"
#include "editor/tree/ProjectTreeModel.h"
#include "editor/tree/TreeFilterView.h"

#include "nodes/model/ConfigNode.h"
#include "nodes/model/KindTable.h"
#include "nodes/model/NodesCollection.h"

#include <QApplication>
#include <QSortFilterProxyModel>
#include <QTreeView>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <functional>

using namespace Editor;
using Clock = std::chrono::steady_clock;

namespace {

constexpr int perFolder = 100;

double once(const std::function<void()> &work)
{
    const auto start = Clock::now();
    work();
    QCoreApplication::processEvents(); // layout and painting too
    return std::chrono::duration<double, std::milli>(Clock::now() - start).count();
}

void measure(const char *what, const std::function<void(int)> &work)
{
    std::vector<double> times;
    for (int run = 0; run < 5; ++run)
        times.push_back(once([&] { work(run); }));
    std::sort(times.begin(), times.end());
    std::printf("%-44s %8.2f ms\n", what, times[2]);
}

std::unique_ptr<Nodes::ConfigNode> makeNode(Nodes::NodesCollection &project, const char *key,
                                            const std::string &name)
{
    auto node = project.CreateDetached(*Nodes::KindTable::Instance().FindByKey(key));
    node->SetName(name);
    node->SetDescription("Насос подпиточный, давление на выходе " + name);
    return node;
}

void fill(Nodes::NodesCollection &project, int nodes)
{
    auto root = makeNode(project, "project", "Проект");
    for (int folder = 0; folder < nodes / perFolder; ++folder) {
        auto made = makeNode(project, "folder", "Агрегат " + std::to_string(folder));
        for (int i = 1; i < perFolder; ++i)
            made->Append(
                makeNode(project, "memorySignal", "PT" + std::to_string(folder * 100 + i)));
        root->Append(std::move(made));
    }
    if (!project.SetRoot(std::move(root)))
        std::abort();
    Nodes::NodesCollection::SetCurrent(&project);
}

void measurePeer(ProjectTreeModel &model)
{
    QSortFilterProxyModel peer;
    peer.setRecursiveFilteringEnabled(true);
    peer.setFilterCaseSensitivity(Qt::CaseInsensitive);
    peer.setSourceModel(&model);
    QTreeView view;
    view.setModel(&peer);
    view.show();
    std::printf("%-44s %8.2f ms\n", "QSortFilterProxyModel: a rare text",
                once([&] { peer.setFilterFixedString("PT4711"); }));
}

} // namespace

int main(int argc, char *argv[])
{
    QApplication application(argc, argv);
    Nodes::NodesCollection project;
    fill(project, argc > 1 ? std::atoi(argv[1]) : 100000);
    std::printf("%zu nodes\n", project.GetNodeCount());

    ProjectTreeModel model;
    auto *view = new QTreeView;
    TreeFilterView tree(model, view, nullptr);
    tree.resize(600, 900);
    tree.show();
    QCoreApplication::processEvents();
    measure("open", [&](int) { model.setProject(&project); });
    std::printf("%-44s %8.2f ms\n", "first key stroke", once([&] { tree.setFilter("p"); }));
    measure("a text that all have",
            [&](int run) { tree.setFilter(run % 2 ? "насос" : "давление"); });
    measure("a rare text", [&](int run) { tree.setFilter("pt4711" + QString::number(run)); });
    measure("part of a path",
            [&](int run) { tree.setFilter("агрегат 7" + QString::number(run) + "/"); });
    JumpModel jump(&project, {}, {});
    std::printf("%-44s %8.2f ms\n", "quick jump, the first key stroke",
                once([&] { jump.search("p"); }));
    measure("quick jump: a text that all have",
            [&](int run) { jump.search(run % 2 ? "насос" : "давление"); });
    measure("quick jump: a rare text",
            [&](int run) { jump.search("pt4711" + QString::number(run)); });
    measure("no filter again", [&](int) {
        tree.setFilter("pt47");
        tree.setFilter({});
    });
    measure("expand a folder",
            [&](int run) { view->expand(model.index(run + 5, 0, model.index(0, 0))); });
    measure("reveal a node", [&](int run) {
        tree.reveal(Nodes::NodeLink(project.GetRoot()->GetNodeAt(500 + run)->GetNodeAt(50)));
    });
    measure("1,000 nodes come below an expanded folder", [&](int) {
        Nodes::ConfigNode *folder = project.GetRoot()->GetNodeAt(5);
        for (int i = 0; i < 1000; ++i) {
            auto node = makeNode(project, "memorySignal", "new" + std::to_string(i));
            (void)folder->AdoptNode(node);
        }
    });
    measurePeer(model);
    return 0;
}
