// Whether the configurator grows over a long day: a project opened and closed with all its panels,
// its documents opened and closed, one property edited and taken back, elements added and taken
// back. After a warm-up, bytes on the heap, handles, threads, objects and widgets have to be what
// they were.
//
//     QT_QPA_PLATFORM=offscreen bench_configurator_endurance PROJECT [times]
//
// `times`: 500 unless given; twenty times as many edits. PROJECT is copied first. Exit code 1 when
// something grew.
#include "editor/project/ProjectSession.h"
#include "editor/shell/DocumentTabs.h"
#include "editor/shell/MainWindow.h"
#include "editor/shell/ProjectFiles.h"
#include "editor/tables/DocumentTable.h"
#include "editor/wizard/NodeRecipe.h"

#include "nodes/model/ConfigNode.h"
#include "nodes/model/KindTable.h"
#include "nodes/model/NodesCollection.h"
#include "utils/undo/AddNodeLinkCommand.h"
#include "utils/undo/ChangeTextCommand.h"

#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QPixmapCache>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QUndoStack>

#include <cstdio>
#include <filesystem>
#include <functional>

#include <malloc.h>

namespace {

constexpr double mostGrowth = 4; // KiB a time: what was told is listed, once each

struct Use
{
    double heap = 0; // KiB
    int handles = 0;
    int threads = 0;
    int objects = 0;
    int widgets = 0;
};

int entriesOf(const char *directory)
{
    return int(QDir(QString::fromLatin1(directory)).entryList(QDir::AllEntries).size());
}

/// As the loop of events does: all that was let go is gone then.
void settle()
{
    QCoreApplication::processEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCoreApplication::processEvents();
}

Use useOf(const Editor::MainWindow &window)
{
    settle();
    const struct mallinfo2 heap = mallinfo2();
    Use use;
    use.heap = double(heap.uordblks + heap.hblkhd) / 1024;
    use.handles = entriesOf("/proc/self/fd");
    use.threads = entriesOf("/proc/self/task");
    use.objects = window.findChildren<QObject *>().size() + qApp->findChildren<QObject *>().size();
    use.widgets = QApplication::allWidgets().size();
    return use;
}

/// False when it grows with every time.
bool isFlat(const char *what, const Editor::MainWindow &window, int times,
            const std::function<void(int)> &work)
{
    const int warmUp = std::max(3, times / 5);
    for (int i = 0; i < warmUp; ++i)
        work(i);
    const Use before = useOf(window);
    QElapsedTimer timer;
    timer.start();
    for (int i = 0; i < times; ++i)
        work(warmUp + i);
    const double each = double(timer.nsecsElapsed()) / 1e6 / times;
    const Use after = useOf(window);
    const double growth = (after.heap - before.heap) / times;
    const bool isSame = growth <= mostGrowth && after.handles <= before.handles + 2 &&
                        after.threads <= before.threads + 2 &&
                        after.objects <= before.objects + 20 && after.widgets <= before.widgets + 5;
    std::printf("%-34s %6d times, %8.2f ms each: heap %.0f -> %.0f KiB (%.2f each), handles %d -> "
                "%d, threads %d -> %d, objects %d -> %d, widgets %d -> %d  %s\n",
                what, times, each, before.heap, after.heap, growth, before.handles, after.handles,
                before.threads, after.threads, before.objects, after.objects, before.widgets,
                after.widgets, isSame ? "flat" : "GROWS");
    std::fflush(stdout);
    return isSame;
}

void collect(const Nodes::ConfigNode &node, Nodes::NodeLinks &documents)
{
    if (Editor::FindDocument(node))
        documents.emplace_back(const_cast<Nodes::ConfigNode *>(&node));
    for (const auto &child : node.Children())
        collect(*child, documents);
}

/// Null without one.
Nodes::ConfigNode *firstOf(Nodes::ConfigNode &node, Nodes::NodeType type)
{
    if (node.GetNodeType() == type)
        return &node;
    Nodes::ConfigNode *found = nullptr;
    for (const auto &child : node.Children())
        found = found ? found : firstOf(*child, type);
    return found;
}

bool editsAreFlat(Editor::MainWindow &window, int times)
{
    Editor::ProjectSession &session = window.workspace().session();
    const Nodes::NodeType type = Nodes::KindTable::Instance().FindByKey("label")->type;
    Nodes::ConfigNode *drawn = firstOf(*session.root(), type);
    const Nodes::NodeLink label(drawn);
    const Nodes::NodeLink layer(drawn->GetParent());
    window.workspace().open(layer);
    bool isSame = isFlat("a name edited, undone, redone", window, times, [&](int i) {
        const auto name = Utils::ChangeTextCommand::Name;
        window.workspace().push(
            new Utils::ChangeTextCommand(label, name, "Название " + std::to_string(i % 7)));
        session.undoStack().undo();
        session.undoStack().redo();
        session.undoStack().undo();
        settle();
    });
    const Editor::NodeRecipe recipe("label", "Надпись");
    return isFlat("an element added, undone", window, times / 4,
                  [&](int) {
                      const Nodes::NodeLink made = recipe.make(*session.project());
                      window.workspace().push(new Utils::AddNodeLinkCommand(made, layer));
                      settle();
                      session.undoStack().undo();
                      settle();
                  }) &&
           isSame;
}

} // namespace

int main(int argc, char *argv[])
{
    QStandardPaths::setTestModeEnabled(true);
    QApplication application(argc, argv);
    // It fills with painted buttons and icons of every project, up to its limit: no growth.
    QPixmapCache::setCacheLimit(0);
    QApplication::setApplicationName(QStringLiteral("bench_configurator_endurance"));
    if (argc < 2) {
        std::fprintf(stderr, "which project?\n");
        return 2;
    }
    const int times = argc > 2 ? std::atoi(argv[2]) : 500;
    const QTemporaryDir copy;
    std::filesystem::copy(argv[1], copy.path().toStdString(),
                          std::filesystem::copy_options::recursive);
    Editor::MainWindow window({});
    window.resize(1366, 768);
    window.show();
    bool isSame = isFlat("the project opened and closed", window, times, [&](int) {
        if (!window.files().open(copy.path()))
            std::abort();
        settle();
        window.files().close();
        settle();
    });
    window.files().open(copy.path());
    Nodes::NodeLinks documents;
    collect(*window.workspace().session().root(), documents);
    std::printf("%zu documents\n", documents.size());
    const auto openAndClose = [&](int i) {
        window.workspace().open(documents[std::size_t(i) % documents.size()]);
        settle();
        window.tabs().closeAll();
        settle();
    };
    for (int i = 0; i < int(documents.size()); ++i)
        openAndClose(i); // the first of a kind makes what all share
    isSame = isFlat("a document opened and closed", window, times, openAndClose) && isSame;
    isSame = editsAreFlat(window, times * 20) && isSame;
    window.workspace().session().abandon();
    window.workspace().session().close();
    return isSame ? 0 : 1;
}
