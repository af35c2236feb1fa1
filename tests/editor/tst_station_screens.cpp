#include "editor/project/ProjectSession.h"
#include "editor/review/ReviewRun.h"
#include "editor/review/ScreenClicks.h"
#include "editor/wizard/NodeRecipe.h"
#include "editor/wizard/ProjectSteps.h"
#include "editor/wizard/StationScreens.h"

#include "nodes/model/NodesCollection.h"
#include "nodes/serial/ProjectWriter.h"
#include "nodes/signals/BasicSignal.h"
#include "nodes/visual/elements/widgetButton.h"
#include "nodes/visual/windows/BasicComposition.h"
#include "nodes/visual/windows/BasicFrame.h"
#include "nodes/visual/windows/windowComposed.h"
#include "utils/convert/ValueConversions.h"
#include "utils/undo/AddNodeLinkCommand.h"
#include "utils/undo/ChangePropertyCommand.h"
#include "utils/undo/IUndo.h"

#include <QTemporaryDir>
#include <QtTest>

using Editor::NodeRecipe;
using Editor::StationScreens;
using Nodes::NodeLink;
using Nodes::NodeLinks;

namespace {

const QSize screen(1366, 768);

struct Fixture
{
    Fixture()
    {
        if (!session.create(directory.filePath("p"), "P"))
            qFatal("no project");
    }
    Editor::ProjectSteps steps() const { return Editor::ProjectSteps(*session.project()); }
    StationScreens screens() const { return StationScreens(*session.project()); }
    NodeLink add(const NodeRecipe &recipe, const NodeLink &parent) const
    {
        const NodeLink made = recipe.make(*session.project());
        (void)Utils::IUndo::execute(new Utils::AddNodeLinkCommand(made, parent));
        return made;
    }
    void archive(const QString &name, const QString &unit, int maximum) const
    {
        NodeRecipe signal("memorySignal", name);
        signal.set("unit", unit).set("maximum", maximum).set("type", "double");
        const NodeLink made = add(signal, steps().place("Сигналы"));
        NodeRecipe source("archiverSource", name);
        add(source.set("signal", made), steps().place("Архив"));
    }
    NodeLink build(int display = 1) const
    {
        NodeLink overview;
        (void)Utils::IUndo::execute(screens().build("Насосная", screen, display, overview));
        return overview;
    }
    NodeLinks all(Nodes::NodeType type) const
    {
        NodeLinks found;
        session.project()->FindNodes(type, &found);
        return found;
    }
    int count(const char *element) const
    {
        const QByteArray text =
            QByteArray::fromStdString(Nodes::ProjectWriter::ToText(*session.project()));
        return text.count(QByteArray("<") + element + ' ');
    }
    QVector<const Nodes::widgetButton *> buttons() const
    {
        QVector<const Nodes::widgetButton *> found;
        for (const NodeLink &link : all(Nodes::NodeType::TypeWidget)) {
            if (const auto *button = dynamic_cast<const Nodes::widgetButton *>(link.GetNode()))
                found.append(button);
        }
        return found;
    }

    QTemporaryDir directory;
    Editor::ProjectSession session;
};

} // namespace

class StationScreensTest : public QObject
{
    Q_OBJECT

private slots:
    void windowsOfTheFrameTileItsScreen_data()
    {
        QTest::addColumn<bool>("hasUsers");
        QTest::newRow("without users") << false;
        QTest::newRow("with users") << true;
    }
    void windowsOfTheFrameTileItsScreen()
    {
        QFETCH(bool, hasUsers);
        Fixture f;
        if (hasUsers)
            f.add(NodeRecipe("authentication", "Пользователи"), NodeLink(f.steps().station()));
        const NodeLink overview = f.build();
        const NodeLinks frames = f.all(Nodes::NodeType::TypeFrame);
        QCOMPARE(frames.size(), std::size_t(1));
        QRegion covered;
        for (const NodeLink &link :
             dynamic_cast<const Nodes::BasicFrame *>(frames.front().GetNode())->GetWindows()) {
            const auto *window = dynamic_cast<const Nodes::BasicWindow *>(link.GetNode());
            QVERIFY(window);
            const QRect place = Utils::NRectToQRect(window->GetGeometry());
            QVERIFY(!covered.intersects(place));
            covered += place;
            for (const auto &child : window->Children()) {
                const auto *element = dynamic_cast<const Nodes::BasicWidget *>(child.get());
                const QRect inside = Utils::NRectToQRect(element->GetGeometry());
                QVERIFY2(QRect(QPoint(), place.size()).contains(inside),
                         element->GetName().c_str());
            }
        }
        QCOMPARE(covered, QRegion(QRect(QPoint(), screen)));
        const auto *field =
            dynamic_cast<const Nodes::windowComposed *>(f.screens().field().GetNode());
        QCOMPARE(field->GetComposition()->GetNodeLink(), overview);
        QCOMPARE(f.count("actionAuthUser"), hasUsers ? 2 : 0); // in and out
        QCOMPARE(f.count("currentUser"), hasUsers ? 1 : 0);
    }

    void allIsOneStep()
    {
        Fixture f;
        f.archive("Давление", "бар", 10);
        const int before = f.session.undoStack().count();
        const int nodes = f.count("folder");
        f.build();
        QCOMPARE(f.session.undoStack().count(), before + 1);
        const std::string after = Nodes::ProjectWriter::ToText(*f.session.project());
        f.session.undoStack().undo();
        QVERIFY(f.all(Nodes::NodeType::TypeWindow).empty() && f.screens().field().isEmpty());
        QCOMPARE(f.count("folder"), nodes);
        f.session.undoStack().redo();
        QCOMPARE(Nodes::ProjectWriter::ToText(*f.session.project()), after);
    }

    void trendsShowWhatIsArchived_data()
    {
        QTest::addColumn<QStringList>("units");
        QTest::addColumn<int>("axes");
        QTest::addColumn<int>("series");
        QTest::newRow("nothing archived") << QStringList() << 1 << 0;
        QTest::newRow("one axis a unit") << QStringList{"бар", "м", "бар"} << 2 << 3;
        QTest::newRow("units without room stay out")
            << QStringList{"a", "b", "c", "d", "e", "a"} << 4 << 5;
        QTest::newRow("no more than can be told apart")
            << QStringList{"a", "a", "a", "a", "a", "a", "a", "a", "a"} << 1 << 8;
    }
    void trendsShowWhatIsArchived()
    {
        QFETCH(QStringList, units);
        QFETCH(int, axes);
        QFETCH(int, series);
        Fixture f;
        for (int i = 0; i < units.size(); ++i)
            f.archive(QString("S%1").arg(i), units[i], 10 + i);
        f.build();
        QCOMPARE(f.count("chartAxis"), axes);
        QCOMPARE(f.count("chartSerie"), series);
    }

    void everyPageHasAButtonInTheRow()
    {
        Fixture f;
        NodeLink made;
        QVERIFY(!f.screens().addPage("Рано", made));
        f.build();
        const int first = f.buttons().size();
        constexpr int more = 9; // beyond what has room at full width
        for (int i = 0; i < more; ++i)
            QVERIFY(Utils::IUndo::execute(f.screens().addPage(QString("П%1").arg(i), made)));
        QCOMPARE(f.buttons().size(), first + more);
        QRegion row;
        for (const Nodes::widgetButton *button : f.buttons()) {
            const QRect place = Utils::NRectToQRect(button->GetGeometry());
            QVERIFY(place.left() >= 0 && place.right() < screen.width());
            QVERIFY(!row.intersects(place));
            row += place;
            QCOMPARE(button->GetReleaseActions().size(), std::size_t(1));
        }
        f.session.undoStack().undo();
        QCOMPARE(f.buttons().size(), first + more - 1);
    }

    void aPageIsAddedPastADeletedAction()
    {
        Fixture f;
        f.build();
        const Nodes::widgetButton *first = f.buttons().first();
        NodeLinks actions = first->GetReleaseActions();
        actions.insert(actions.begin(), NodeLink(99999, f.session.project()));
        QVERIFY(Utils::IUndo::execute(new Utils::ChangePropertyCommand(
            NodeLink(first), Nodes::widgetButton::Prop::ReleaseActions, actions)));
        const int before = f.buttons().size();
        NodeLink made;
        QVERIFY(Utils::IUndo::execute(f.screens().addPage("Насосы", made)));
        QCOMPARE(f.buttons().size(), before + 1);
    }

    void textsOfBarsHaveRoom_data()
    {
        QTest::addColumn<QString>("title");
        QTest::newRow("short") << "Насосная";
        QTest::newRow("long") << "Насосная станция второго подъёма";
        QTest::newRow("two lines")
            << "Центральный тепловой пункт № 12 микрорайона Солнечный, вторая очередь";
    }
    void textsOfBarsHaveRoom()
    {
        QFETCH(QString, title);
        Fixture f;
        f.add(NodeRecipe("authentication", "Пользователи"), NodeLink(f.steps().station()));
        NodeLink made;
        QVERIFY(Utils::IUndo::execute(f.screens().build(title, screen, 1, made)));
        QVERIFY(Utils::IUndo::execute(f.screens().addPage("Резервуары чистой воды", made)));
        for (const NodeLink &window : f.all(Nodes::NodeType::TypeWindow)) {
            const Editor::ReviewFindings found = Editor::ReviewRun::check(
                *window.GetNode(), Editor::ScreenClicks(*window.GetNode()));
            for (const Editor::ReviewFinding &finding : found)
                QVERIFY2(finding.severity < Editor::ReviewFinding::Warning,
                         qPrintable(finding.what));
        }
    }

    void namesAreTold()
    {
        Fixture f;
        f.add(NodeRecipe("authentication", "Пользователи"), NodeLink(f.steps().station()));
        f.build(1);
        f.build(2);
        QCOMPARE(f.count("currentUser"), 1);
        NodeLink made;
        QVERIFY(Utils::IUndo::execute(f.screens().addPage("Обзор", made)));
        QCOMPARE(made.GetLinkName(), std::string("Обзор 2"));
    }

    void onlyLongNamesWidenButtons()
    {
        Fixture f;
        f.build();
        const int usual = f.buttons().first()->GetGeometry().width;
        QVector<int> widths;
        for (const char *name : {"Резервуары чистой воды", "Насосы"}) {
            NodeLink made;
            QVERIFY(Utils::IUndo::execute(f.screens().addPage(name, made)));
            widths << f.buttons().last()->GetGeometry().width;
        }
        QVERIFY(widths.first() > usual);
        QCOMPARE(widths.last(), usual);
    }

    void displaysHaveScreensOfTheirOwn()
    {
        Fixture f;
        f.build(1);
        QVERIFY(f.screens().hasFrame(1) && !f.screens().hasFrame(2));
        QVERIFY(f.build(2).isValid());
        QVERIFY(f.screens().hasFrame(2));
        QCOMPARE(f.count("composition"), 10);
    }
};

QTEST_MAIN(StationScreensTest)
#include "tst_station_screens.moc"
