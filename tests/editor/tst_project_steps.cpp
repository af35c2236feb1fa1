#include "editor/project/NewProject.h"
#include "editor/project/ProjectSession.h"
#include "editor/wizard/NodeRecipe.h"
#include "editor/wizard/ProjectSteps.h"

#include "nodes/model/KindInfo.h"
#include "nodes/model/NodesCollection.h"
#include "nodes/model/properties/BasicProperty.h"
#include "nodes/serial/ProjectWriter.h"
#include "nodes/visual/BasicWidget.h"
#include "nodes/visual/windows/BasicFrame.h"
#include "nodes/visual/windows/BasicWindow.h"
#include "utils/convert/ValueConversions.h"
#include "utils/undo/AddNodeLinkCommand.h"
#include "utils/undo/IUndo.h"

#include <QTemporaryDir>
#include <QtTest>

using Editor::NodeRecipe;
using Editor::ProjectSession;
using Editor::ProjectSteps;

namespace {

struct Fixture
{
    Fixture()
    {
        if (!session.create(directory.filePath("p"), "P"))
            qFatal("no project");
    }
    ProjectSteps steps() const { return ProjectSteps(*session.project()); }
    std::string text() const { return Nodes::ProjectWriter::ToText(*session.project()); }
    Nodes::NodeLink addWindow(const char *name, int display)
    {
        Nodes::NodeLink made;
        (void)Utils::IUndo::execute(steps().addWindow(name, {800, 600}, display, made));
        return made;
    }
    const Nodes::BasicFrame *frame(const char *name) const
    {
        Nodes::NodeLinks found;
        session.project()->FindNodes(Nodes::NodeType::TypeFrame, &found);
        for (const Nodes::NodeLink &link : found) {
            if (link.GetLinkName() == name)
                return dynamic_cast<const Nodes::BasicFrame *>(link.GetNode());
        }
        return nullptr;
    }

    QTemporaryDir directory;
    ProjectSession session;
};

} // namespace

class ProjectStepsTest : public QObject
{
    Q_OBJECT

private slots:
    void leadsToALiveValue()
    {
        Fixture f;
        QVERIFY(!f.steps().hasSignals() && !f.steps().hasWindow() && !f.steps().hasReading());
        const std::string before = f.text();
        QVERIFY(Utils::IUndo::execute(f.steps().addSimulator()));
        QVERIFY(f.steps().hasSignals());
        const Nodes::NodeLink window = f.addWindow("Обзор", 1);
        QVERIFY(window.isValid() && f.steps().hasWindow());
        QVERIFY(Utils::IUndo::execute(f.steps().addReadings(window, f.steps().signalNodes())));
        QVERIFY(f.steps().hasReading());
        QCOMPARE(f.session.undoStack().count(), 3); // a step each
        const std::string after = f.text();

        QVector<QRect> places;
        for (const auto &child : window->Children())
            places << Utils::NRectToQRect(dynamic_cast<Nodes::BasicWidget &>(*child).GetGeometry());
        for (int i = 0; i < places.size(); ++i) {
            for (int k = 0; k < i; ++k)
                QVERIFY(!places[i].intersects(places[k]));
        }
        while (f.session.undoStack().canUndo())
            f.session.undoStack().undo();
        QCOMPARE(QString::fromStdString(f.text()).remove(QRegularExpression("lastId=\"\\d+\"")),
                 QString::fromStdString(before).remove(QRegularExpression("lastId=\"\\d+\"")));
        while (f.session.undoStack().canRedo())
            f.session.undoStack().redo();
        QCOMPARE(f.text(), after);
    }

    void aDisplayHasOneFrame()
    {
        Fixture f;
        const Nodes::NodeLink first = f.addWindow("A", 1);
        const Nodes::NodeLink second = f.addWindow("B", 1);
        const Nodes::NodeLink other = f.addWindow("C", 2);
        QVERIFY(f.frame("Дисплей 1") && f.frame("Дисплей 2"));
        QCOMPARE(f.frame("Дисплей 1")->GetWindows(), (Nodes::NodeLinks{first, second}));
        QCOMPARE(f.frame("Дисплей 2")->GetWindows(), Nodes::NodeLinks{other});
        f.session.undoStack().undo();
        QVERIFY(!f.frame("Дисплей 2"));
    }

    void aCalledWindowIsInNoFrame()
    {
        Fixture f;
        const Nodes::NodeLink called = f.addWindow("Насос", 0);
        QVERIFY(called.isValid() && !f.steps().hasWindow());
        const auto *window = dynamic_cast<const Nodes::BasicWindow *>(called.GetNode());
        QVERIFY(window->HasCloseButton()); // else nobody gets rid of it
        QCOMPARE(window->GetBorderType(), Nodes::BasicWindow::BorderFixed);
    }

    void readingsGoToTheTopmostLayer()
    {
        Fixture f;
        NodeRecipe recipe("composition", "Обзор");
        recipe.add(NodeRecipe("layer", "Фон")).add(NodeRecipe("layer", "Данные"));
        const Nodes::NodeLink screen = recipe.make(*f.session.project());
        QVERIFY(Utils::IUndo::execute(
            new Utils::AddNodeLinkCommand(screen, f.steps().place("Экраны"))));
        QVERIFY(Utils::IUndo::execute(f.steps().addSimulator()));
        QVERIFY(Utils::IUndo::execute(f.steps().addReadings(screen, f.steps().signalNodes())));
        QCOMPARE(screen->Children().front()->Children().size(), std::size_t(0));
        QCOMPARE(screen->Children().back()->Children().size(), std::size_t(6));
    }

    void readingsStayWithinTheScreenBesideWhatIsThere()
    {
        Fixture f;
        QVERIFY(Utils::IUndo::execute(f.steps().addSimulator()));
        const QRect screen(0, 0, 1000, 600); // two columns
        Nodes::NodeLink window;
        QVERIFY(Utils::IUndo::execute(f.steps().addWindow("Обзор", screen.size(), 1, window)));
        const auto add = [&](const char *name, const QRect &place) {
            NodeRecipe recipe("label", name);
            recipe.set("x", place.x()).set("y", place.y());
            recipe.set("width", place.width()).set("height", place.height());
            QVERIFY(Utils::IUndo::execute(
                new Utils::AddNodeLinkCommand(recipe.make(*f.session.project()), window)));
        };
        add("Фон", screen);
        const QRect drawn(0, 560, 60, 40); // low: readings do not go below it
        add("Насос", drawn);
        Nodes::NodeLinks many;
        while (many.size() < 20)
            many.push_back(f.steps().signalNodes().front());
        QVERIFY(Utils::IUndo::execute(f.steps().addReadings(window, many)));
        QRegion taken(drawn);
        for (std::size_t i = 2; i < window->Children().size(); ++i) {
            const auto &element = dynamic_cast<Nodes::BasicWidget &>(*window->Children()[i]);
            const QRect place = Utils::NRectToQRect(element.GetGeometry());
            QVERIFY(screen.contains(place) && !taken.intersects(place));
            taken += place;
        }
        QCOMPARE(window->Children().size(), std::size_t(2 + 2 * 20));
    }

    void readingsAreToldApart()
    {
        Fixture f;
        const auto add = [&f](const NodeRecipe &recipe) {
            return Utils::IUndo::execute(new Utils::AddNodeLinkCommand(
                recipe.make(*f.session.project()), f.steps().place("Сигналы")));
        };
        for (const char *folder : {"Насос 1", "Насос 2"})
            QVERIFY(add(NodeRecipe("folder", folder).add(NodeRecipe("memorySignal", "Ток"))));
        QVERIFY(add(NodeRecipe("memorySignal", "Уровень")));
        const Nodes::NodeLinks shown = f.steps().signalNodes();
        shown[1]->SetDescription("Насос 2: ток двигателя");
        const Nodes::NodeLink window = f.addWindow("Обзор", 1);
        QVERIFY(Utils::IUndo::execute(f.steps().addReadings(window, shown)));
        const auto &words = dynamic_cast<Nodes::BasicWidget &>(*window->Children().front());
        QFont font;
        font.setPointSize(14);
        const int needed = QFontMetrics(font).horizontalAdvance("Насос 2: ток двигателя");
        QVERIFY(words.GetGeometry().width >= needed); // the others stand in line with it
        QStringList texts;
        for (std::size_t i = 1; i < window->Children().size(); i += 2)
            texts << QString::fromStdString(window->Children()[i]->GetName());
        QCOMPARE(texts, (QStringList{"Насос 1: Ток", "Насос 2: ток двигателя", "Уровень"}));
    }

    void recipesKeepWhatTheyAreGiven()
    {
        Fixture f;
        NodeRecipe recipe("label", "a<b & \"c\"");
        recipe.set("text", "x > y & 'z'\n2");
        const Nodes::NodeLink made = recipe.make(*f.session.project());
        QVERIFY(made.isValid());
        QCOMPARE(made->GetName(), std::string("a<b & \"c\""));
        const unsigned text = made->GetKind()->FindProperty("text")->valueId;
        QCOMPARE(made->GetPropertyByValueId(text)->ToString(), std::string("x > y & 'z'\n2"));
        QVERIFY(!NodeRecipe("noSuchKind", "x").make(*f.session.project()).isValid());
    }
};

QTEST_MAIN(ProjectStepsTest)
#include "tst_project_steps.moc"
