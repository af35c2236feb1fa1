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
        for (const Nodes::NodeLink &signal : f.steps().signalNodes())
            QVERIFY(Utils::IUndo::execute(f.steps().addReading(window, signal)));
        QVERIFY(f.steps().hasReading());
        QCOMPARE(f.session.undoStack().count(), 5); // a step each
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
        for (const Nodes::NodeLink &signal : f.steps().signalNodes())
            QVERIFY(Utils::IUndo::execute(f.steps().addReading(screen, signal)));
        QCOMPARE(screen->Children().front()->Children().size(), std::size_t(0));
        QCOMPARE(screen->Children().back()->Children().size(), std::size_t(6));
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
