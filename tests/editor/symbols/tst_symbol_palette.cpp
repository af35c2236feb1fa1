#include "support/RuntimeProject.h"
#include "widgets/elements/PictureFiles.h"

#include "editor/project/ProjectSession.h"
#include "editor/symbols/SymbolCatalogue.h"
#include "editor/symbols/SymbolCommands.h"
#include "editor/symbols/SymbolModel.h"
#include "editor/workspace/DocumentView.h"
#include "editor/workspace/Workspace.h"

#include "nodes/model/KindTable.h"
#include "nodes/visual/elements/widgetState.h"
#include "nodes/visual/elements/widgetSymbol.h"
#include "utils/undo/AddNodeLinkCommand.h"
#include "widgets/scene/ProxyScene.h"
#include "widgets/scene/ProxyView.h"

#include <QAbstractItemModelTester>
#include <QDir>
#include <QMimeData>

using namespace Editor;

namespace {

constexpr const char *window = R"(<window id="2" name="W" width="640" height="480"/>)";

/// A tab with the scene of a window.
class SceneTab : public DocumentView
{
public:
    SceneTab(Workspace &workspace, Nodes::ConfigNode *node)
        : DocumentView(workspace, Nodes::NodeLink(node), nullptr), m_view(node, this)
    {
        m_view.setScene(node);
    }
    Widgets::ProxyScene *scene() const override { return m_view.proxyScene(); }
    Widgets::ProxyView *view() const override { return const_cast<Widgets::ProxyView *>(&m_view); }

private:
    Widgets::ProxyView m_view;
};

} // namespace

class TestSymbolPalette : public QObject
{
    Q_OBJECT

private slots:
    void offersEveryBuiltInSymbol();
    void offersTheProjectsOwn();
    void aDragTellsWhatToMake();
    void insertsIntoTheActiveScene();
    void statesFollowTheSignal_data();
    void statesFollowTheSignal();
};

void TestSymbolPalette::offersEveryBuiltInSymbol()
{
    QStringList offered;
    for (const SymbolRow &row : SymbolCatalogue::builtIn()) {
        QVERIFY(!row.title.isEmpty() && !row.group.isEmpty());
        offered << row.source.section('/', -1);
    }
    offered.sort();
    QCOMPARE(offered, QDir(":/symbols").entryList({}, QDir::Files, QDir::Name));
    QVERIFY(offered.size() >= 28);
}

void TestSymbolPalette::offersTheProjectsOwn()
{
    const PictureFiles files; // square.svg, and a huge one that has no size of use
    SymbolModel model;
    const QAbstractItemModelTester tester(&model);
    const int builtIn = model.rowCount();
    model.setDirectory(QDir::currentPath());
    QVERIFY(model.rowCount() > builtIn);
    const SymbolRow &own = model.row(model.rowCount() - 1);
    QCOMPARE(own.source, QString("square.svg"));
    QCOMPARE(own.size, QSize(16, 16));
    model.setDirectory(QString());
    QCOMPARE(model.rowCount(), builtIn);
}

void TestSymbolPalette::aDragTellsWhatToMake()
{
    const RuntimeProject project(window, Nodes::WorkModeEditing);
    const SymbolModel model;
    const std::unique_ptr<QMimeData> data(model.mimeData({model.index(0)}));
    const auto node = project.core.GetNodesCollection()->CreateDetached(
        *Nodes::KindTable::Instance().FindByKey("symbol"));
    Widgets::DroppedProperties::apply(Widgets::DroppedProperties::of(*data), *node);
    const auto &symbol = dynamic_cast<const Nodes::widgetSymbol &>(*node);
    QCOMPARE(symbol.GetSource(Nodes::SignalValue()).GetFilePath(),
             model.row(0).source.toStdString());
    QCOMPARE(symbol.GetGeometry().width, model.row(0).size.width());
    QCOMPARE(QString::fromStdString(symbol.GetName()), model.row(0).title);
    QMimeData damaged;
    damaged.setData(Widgets::DroppedProperties::Format, "{ \"source\": 5, \"nothing\": \"x\"");
    QVERIFY(Widgets::DroppedProperties::of(damaged).isEmpty());
    Widgets::DroppedProperties::apply({{"width", "wide"}, {"name", "a/b"}}, *node); // left out
    QCOMPARE(symbol.GetGeometry().width, model.row(0).size.width());
}

void TestSymbolPalette::insertsIntoTheActiveScene()
{
    const QTemporaryDir directory;
    ProjectSession session;
    QVERIFY(session.create(directory.filePath("p"), "P"));
    QWidget host;
    Workspace workspace(session, host);
    const QSignalSpy told(&workspace, &Workspace::told);
    const SymbolRow row = SymbolCatalogue::builtIn().front();
    SymbolCommands::insert(workspace, row); // nowhere to
    QCOMPARE(told.size(), 1);

    const Nodes::NodeLink screen(
        session.project()->CreateNode(Nodes::NodeType(Nodes::NodeType::SubtypeWindow), nullptr));
    QVERIFY(workspace.push(new Utils::AddNodeLinkCommand(screen, Nodes::NodeLink(session.root()))));
    SceneTab tab(workspace, screen.GetNode());
    workspace.setDocument(&tab);
    for (int count : {1, 2}) {
        SymbolCommands::insert(workspace, row);
        QCOMPARE(int(screen.GetNode()->Children().size()), count);
    }
    const auto &children = screen.GetNode()->Children();
    QVERIFY(children[0]->GetName() != children[1]->GetName());
    QCOMPARE(QString::fromStdString(children[0]->GetName()), row.title);
    QCOMPARE(workspace.selection().nodes().front().GetNode(), children[1].get());
    session.undoStack().undo();
    QCOMPARE(int(screen.GetNode()->Children().size()), 1);
}

void TestSymbolPalette::statesFollowTheSignal_data()
{
    QTest::addColumn<QString>("type");
    QTest::addColumn<int>("count"); // of states
    QTest::addColumn<int>("fault"); // value of a fault; -1 without one
    QTest::newRow("yes or no") << "bool" << 2 << -1;
    QTest::newRow("number of a state") << "int" << 4 << 3;
    QTest::newRow("measured") << "double" << 0 << -1;
    QTest::newRow("text") << "string" << 0 << -1;
}

void TestSymbolPalette::statesFollowTheSignal()
{
    QFETCH(QString, type);
    QFETCH(int, count);
    QFETCH(int, fault);
    const QByteArray text = QString(R"(<project format="1" id="1" name="P">
<memorySignal id="10" name="S" type="%1"/>
<window id="2" name="W"><symbol id="20" name="Y" signal="10"/></window></project>)")
                                .arg(type)
                                .toUtf8();
    std::unique_ptr<Nodes::NodesCollection> project;
    QVERIFY(Nodes::ProjectReader().ReadBuffer(text.toStdString(), "test", project));
    ProjectSession session;
    session.adopt(std::move(project), QString(), Nodes::LoadReport());
    QWidget host;
    Workspace workspace(session, host);
    auto *symbol = dynamic_cast<Nodes::widgetSymbol *>(session.project()->FindNode(20));
    workspace.selection().select({Nodes::NodeLink(symbol)}, nullptr);
    QVERIFY(SymbolCommands::canFillStates(workspace));
    SymbolCommands::fillStates(workspace);
    QCOMPARE(int(symbol->Children().size()), count);
    QCOMPARE(SymbolCommands::canFillStates(workspace), count == 0); // not twice
    QCOMPARE(symbol->GetLook(Nodes::SignalValue(fault)) == Nodes::SymbolLook::Fault, fault >= 0);
    session.undoStack().undo();
    QVERIFY(symbol->Children().empty());
}

QTEST_MAIN(TestSymbolPalette)
#include "tst_symbol_palette.moc"
