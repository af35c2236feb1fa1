#include "support/Mouse.h"
#include "support/Rows.h"

#include "editor/project/ProjectSession.h"
#include "editor/sceneview/EditedView.h"
#include "editor/sceneview/RulerTicks.h"
#include "editor/sceneview/SceneDocument.h"
#include "editor/sceneview/SceneViewMemory.h"
#include "editor/tables/CommandTable.h"
#include "editor/tables/DocumentTable.h"
#include "editor/workspace/Workspace.h"

#include "widgets/scene/ProxyScene.h"
#include "widgets/scene/ProxyWidget.h"
#include "widgets/scene/editing/SceneEditor.h"

#include "nodes/model/NodesCollection.h"
#include "nodes/serial/ProjectReader.h"
#include "nodes/visual/BasicWidget.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QDialog>
#include <QGuiApplication>
#include <QMouseEvent>
#include <QScrollBar>
#include <QSignalSpy>
#include <QtTest>

using Editor::SceneDocument;
using Editor::Workspace;

namespace {

constexpr const char *text = R"(<project format="1" id="1" name="P">
 <window id="30" name="W" width="800" height="600">
  <label id="31" name="A" x="10" y="20" width="50" height="20"/>
  <label id="32" name="B" x="200" y="81" width="50" height="20"/></window>
 <windowComposed id="40" name="Empty"/><folder id="50" name="F"/></project>)";

/// A configurator without its main window: one document of the project.
struct Desk
{
    explicit Desk(unsigned long node = 30)
    {
        std::unique_ptr<Nodes::NodesCollection> project;
        Nodes::ProjectReader reader;
        if (!reader.ReadBuffer(text, "test", project))
            qFatal("the test's project does not read");
        session.adopt(std::move(project), QString(), reader.GetReport());
        const Nodes::ConfigNode *shown = session.project()->FindNode(node);
        document.reset(qobject_cast<SceneDocument *>(
            Editor::FindDocument(*shown)->make(workspace, Nodes::NodeLink(shown), &window)));
        window.resize(900, 700);
        document->resize(900, 700);
        window.show();
        workspace.setDocument(document.get());
        document->setFocus();
    }
    ~Desk() { document.reset(); }

    Widgets::SceneSelection &selection() const { return document->editor()->selection(); }
    void select(int count) const // by their ids
    {
        QList<Widgets::ProxyWidget *> hosts = selection().selectable();
        std::sort(hosts.begin(), hosts.end(), [](const auto *a, const auto *b) {
            return a->getNodeLink().GetNodeId() < b->getNodeLink().GetNodeId();
        });
        selection().select(hosts.mid(0, count));
    }
    const Editor::CommandRow &command(const char *id) const
    {
        const auto &rows = Editor::CommandTable();
        const auto found = std::find_if(rows.begin(), rows.end(),
                                        [id](const auto &row) { return qstrcmp(row.id, id) == 0; });
        if (found == rows.end())
            qFatal("no command %s", id);
        return *found;
    }
    const QAction *tool(const char *tip) const
    {
        for (const QAction *action : document->findChildren<QAction *>()) {
            if (action->toolTip() == QString::fromUtf8(tip))
                return action;
        }
        qFatal("no tool %s", tip);
    }
    void run(const char *id) { command(id).run(workspace); }
    Nodes::NPoint place(unsigned long id) const
    {
        return dynamic_cast<Nodes::BasicWidget *>(session.project()->FindNode(id))->GetPosition();
    }

    Editor::ProjectSession session;
    QWidget window;
    Workspace workspace{session, window};
    std::unique_ptr<SceneDocument> document;
};

} // namespace

class SceneDocumentTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { qRegisterMetaType<Workspace::Level>("Editor::Workspace::Level"); }

    void rulerTicks_data()
    {
        const Rows<double, double, int, int, int, double> row("origin", "scale", "length", "major",
                                                              "ticks", "first");
        row("as it is", 0, 1, 200, 4, 40, 0);
        row("zoomed in", 0, 8, 200, 3, 25, 0);
        row("zoomed out", 0, 0.1, 200, 4, 40, 0); // shows 2000 scene pixels
        row("scrolled", 97, 1, 200, 4, 40, 3);
        row("before the scene", -50, 1, 200, 4, 40, 0);
        row("no scale", 0, 0, 200, 0, 0, 0);
    }

    void rulerTicks()
    {
        QFETCH(double, origin);
        QFETCH(double, scale);
        QFETCH(int, length);
        const QVector<Editor::RulerTick> ticks = Editor::RulerTicks(origin, scale, length);
        const auto major = std::count_if(ticks.begin(), ticks.end(),
                                         [](const Editor::RulerTick &t) { return t.isMajor; });
        QTEST(int(major), "major");
        QTEST(int(ticks.size()), "ticks");
        for (const Editor::RulerTick &tick : ticks)
            QCOMPARE(tick.at, (tick.value - origin) * scale);
        if (!ticks.isEmpty())
            QTEST(ticks.first().at, "first");
    }

    void opensWhatHasAScene()
    {
        const Desk desk;
        QVERIFY(desk.document->scene() && desk.document->view());
        QCOMPARE(Editor::FindDocument(*desk.session.project()->FindNode(50)), nullptr);
        const Desk empty(40); // without a composition there is nothing to edit
        QVERIFY(!empty.document->scene() && !empty.document->editedView());
        QVERIFY(!empty.command("scene.fitAll").isEnabled(const_cast<Workspace &>(empty.workspace)));
    }

    void zooms()
    {
        Desk desk;
        Editor::EditedView *view = desk.document->editedView();
        QTRY_COMPARE(view->percent(), 100); // fits without being blown up
        desk.run("scene.zoomIn");
        QCOMPARE(view->percent(), 125);
        desk.run("scene.zoomOut");
        QCOMPARE(view->percent(), 100);
        view->setPercent(1);
        QCOMPARE(view->percent(), int(Editor::EditedView::LeastPercent));
        desk.run("scene.fitAll");
        const QRectF shown = view->mapToScene(view->viewport()->rect()).boundingRect();
        QVERIFY(shown.contains(QRectF(0, 0, 800, 600)));
        desk.select(1);
        desk.run("scene.fitSelection");
        QCOMPARE(view->percent(), 400);
        QVERIFY((view->mapToScene(view->viewport()->rect().center()) - QPointF(400, 300))
                    .manhattanLength() > 100);
    }

    void showsWhatLiesOffThePage()
    {
        const Desk desk;
        Editor::EditedView *view = desk.document->editedView();
        QTRY_VERIFY(view->sceneRect().contains(-300, -300));
        view->setPercent(200);
        view->centerOn(-300, -300);
        QVERIFY(view->viewport()->rect().contains(view->mapFromScene(-300, -300)));
        QCOMPARE(view->page(), QRectF(0, 0, 800, 600));
    }

    void remembersZoomAndPlace()
    {
        {
            Desk desk;
            QTRY_COMPARE(desk.document->editedView()->percent(), 100);
            desk.document->editedView()->setPercent(250);
            desk.document->editedView()->centerOn(300, 200);
        }
        const Desk again;
        Editor::EditedView *view = again.document->editedView();
        QTRY_COMPARE(view->percent(), 250);
        const QPointF centre = view->mapToScene(view->viewport()->rect().center());
        QVERIFY((centre - QPointF(300, 200)).manhattanLength() < 4);
        Editor::SceneViewMemory().keep(*again.session.project()->FindNode(50), {}); // as new
        QVERIFY(!Editor::SceneViewMemory().recall(*again.session.project()->FindNode(40)));
    }

    void arrangesBySharedTable()
    {
        Desk desk;
        QVERIFY(!desk.command("scene.alignLeft").isEnabled(desk.workspace));
        desk.select(2); // the last one is the key
        QVERIFY(desk.command("scene.alignLeft").isEnabled(desk.workspace));
        QVERIFY(!desk.command("scene.gapsAcross").isEnabled(desk.workspace));
        QTRY_VERIFY(desk.tool("Выровнять: По левому краю (Ctrl+Shift+Left)")->isEnabled());
        QVERIFY(!desk.tool("Распределить: Центры по ширине")->isEnabled());
        desk.run("scene.alignLeft");
        QCOMPARE(desk.place(31).x, 200);
        desk.session.undoStack().undo();
        QCOMPARE(desk.place(31).x, 10);
        desk.run("scene.duplicate");
        QCOMPARE(desk.selection().count(), 2);
        QVERIFY(desk.selection().links()[0].GetNodeId() > 50);
        desk.session.setReadOnly("занят");
        QVERIFY(!desk.command("scene.duplicate").isEnabled(desk.workspace));
    }

    void keysBelongToWhoHasTheFocus()
    {
        Desk desk;
        QTRY_VERIFY(desk.document->isAncestorOf(QApplication::focusWidget()));
        desk.select(1);
        QWidget beside(&desk.window);
        beside.setFocusPolicy(Qt::StrongFocus);
        beside.show();
        beside.setFocus();
        QTRY_VERIFY(beside.hasFocus());
        const QSignalSpy told(&desk.workspace, &Workspace::told);
        desk.run("scene.delete");
        QVERIFY(desk.session.project()->FindNode(31));
        QCOMPARE(told.size(), 1);
        desk.document->setFocus();
        desk.run("scene.cut");
        QVERIFY(!desk.session.project()->FindNode(31));
        desk.run("scene.paste");
        QCOMPARE(desk.selection().count(), 1);
    }

    void foreignClipboardIsTold()
    {
        Desk desk;
        QTRY_VERIFY(desk.document->isAncestorOf(QApplication::focusWidget()));
        QGuiApplication::clipboard()->setText("Насос 1");
        const QSignalSpy told(&desk.workspace, &Workspace::told);
        desk.run("scene.paste");
        QCOMPARE(told.size(), 1);
        QCOMPARE(desk.session.undoStack().count(), 0);
    }

    void missingLinksAreListed()
    {
        Desk desk;
        QTRY_VERIFY(desk.document->isAncestorOf(QApplication::focusWidget()));
        QVERIFY(desk.session.project()->FindNode(31)->SetPropertyText("signal", "4711"));
        desk.select(1);
        desk.run("scene.copy");
        desk.run("scene.paste");
        const QDialog *listed = desk.window.findChild<QDialog *>();
        QVERIFY(listed && listed->isVisible() && !listed->isModal());
    }

    void selectionGoesBothWays()
    {
        const Desk desk;
        QObject tree;
        auto &shared = const_cast<Workspace &>(desk.workspace).selection();
        shared.select({Nodes::NodeLink(32ul)}, &tree);
        QCOMPARE(desk.selection().links(), Nodes::NodeLinks{Nodes::NodeLink(32ul)});
        desk.select(1);
        QTRY_COMPARE(shared.nodes(), Nodes::NodeLinks{Nodes::NodeLink(31ul)});
        QVERIFY(desk.document->reveal(Nodes::NodeLink(32ul)));
        QVERIFY(!desk.document->reveal(Nodes::NodeLink(50ul)));
    }

    void aFittedPageFollowsTheSizeOfItsView()
    {
        const auto percentAt = [](const QSize &size) {
            Desk desk;
            Editor::EditedView *view = desk.document->editedView();
            QCoreApplication::processEvents(); // its first place
            desk.run("scene.fitAll");
            desk.document->resize(size);
            QCoreApplication::processEvents();
            const QRectF shown = view->mapToScene(view->viewport()->rect()).boundingRect();
            return shown.contains(view->page()) ? view->percent() : 0;
        };
        const int small = percentAt({500, 400});
        QVERIFY(small > 0 && small < 60);
        {
            Desk again; // as it was left, whatever the size of the window now
            QTRY_COMPARE(again.document->editedView()->percent(), 100);
            again.document->editedView()->setPercent(90);
            again.document->resize(500, 400);
            QCOMPARE(again.document->editedView()->percent(), 90);
        }
        Editor::SceneViewMemory().keep(*Desk().session.project()->FindNode(30), {0, {}});
    }

    // But for as much as a notice takes: what is about to be pressed stays below the pointer.
    void aFittedPageStaysWhereItIsBesideANotice()
    {
        Desk desk;
        Editor::EditedView *view = desk.document->editedView();
        QCoreApplication::processEvents();
        desk.run("scene.fitAll");
        const QSize size = desk.document->size();
        const QTransform before = view->viewportTransform();
        const auto transformAt = [&](int height) {
            desk.document->resize(size.width(), height);
            QCoreApplication::processEvents();
            return view->viewportTransform();
        };
        QCOMPARE(transformAt(size.height() - 34), before);
        QCOMPARE(transformAt(size.height()), before);
        QVERIFY(transformAt(size.height() - 34 - 40) != before); // not by small steps either
        QCOMPARE(transformAt(size.height()), before);
    }

    void whatIsDraggedBeyondTheEdgeScrollsTheView()
    {
        Desk desk;
        Editor::EditedView *view = desk.document->editedView();
        QCoreApplication::processEvents();
        view->setPercent(300);
        desk.select(1);
        const Widgets::ProxyWidget *host = desk.selection().key();
        const double from = host->x();
        const QPoint at = view->mapFromScene(host->geometry().center());
        const QPoint beyond(view->viewport()->width() + 40, at.y());
        const auto send = [&](QEvent::Type type, const QPoint &to) {
            sendMouse(*view->viewport(), type, to);
        };
        send(QEvent::MouseButtonPress, at);
        send(QEvent::MouseMove, at + QPoint(30, 0));
        send(QEvent::MouseMove, beyond);
        const double moved = host->x();
        QVERIFY(moved > from);
        const int place = view->horizontalScrollBar()->value();
        QTRY_VERIFY(view->horizontalScrollBar()->value() > place + 60);
        QVERIFY(host->x() > moved + 15); // it stays below the pointer
        send(QEvent::MouseButtonRelease, beyond);
        QCOMPARE(desk.session.undoStack().count(), 1);
        desk.session.undoStack().undo();
        QCOMPARE(host->x(), from);
    }

    void aPreviewIsScrolled()
    {
        Desk desk;
        Editor::EditedView *view = desk.document->editedView();
        QCoreApplication::processEvents();
        desk.run("scene.preview");
        view->setPercent(300);
        view->centerOn(100, 100);
        QCoreApplication::processEvents();
        QVERIFY(view->verticalScrollBar()->isVisibleTo(view->window()));
        const QPointF before = view->centre();
        QTest::mousePress(view->viewport(), Qt::MiddleButton, {}, {200, 200});
        QMouseEvent move(QEvent::MouseMove, QPointF(120, 140), Qt::NoButton, Qt::MiddleButton, {});
        QCoreApplication::sendEvent(view->viewport(), &move);
        QTest::mouseRelease(view->viewport(), Qt::MiddleButton, {}, {120, 140});
        QVERIFY(view->centre().x() > before.x() + 20 && view->centre().y() > before.y() + 10);
        QVERIFY(!QGuiApplication::overrideCursor());
        const double top = view->centre().y();
        QWheelEvent wheel({100, 100}, view->viewport()->mapToGlobal(QPoint(100, 100)), {},
                          {0, -120}, Qt::NoButton, {}, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(view->viewport(), &wheel);
        QVERIFY(view->centre().y() > top);
        desk.run("scene.preview"); // edited, it has its rulers
        QCoreApplication::processEvents();
        QVERIFY(!view->verticalScrollBar()->isVisibleTo(view->window()));
    }

    void previewEditsNothing()
    {
        Desk desk;
        desk.select(1);
        Editor::EditedView *view = desk.document->editedView();
        QCoreApplication::processEvents(); // its first place
        QTRY_COMPARE(desk.workspace.selection().nodes(), desk.selection().links());
        view->setPercent(300);
        view->centerOn(600, 500);
        desk.run("scene.preview");
        const QRectF all = view->mapToScene(view->viewport()->rect()).boundingRect();
        QVERIFY(all.contains(view->page()));
        QVERIFY(desk.document->isPreview() && !desk.document->editor());
        QVERIFY(!desk.command("scene.lock").isEnabled(desk.workspace));
        QCoreApplication::processEvents();
        desk.run("scene.preview");
        QVERIFY(desk.document->editor());
        QCOMPARE(desk.selection().links(), desk.workspace.selection().nodes());
        QCOMPARE(view->percent(), 300);
        QVERIFY((view->centre() - QPointF(600, 500)).manhattanLength() < 4);
    }
};

QTEST_MAIN(SceneDocumentTest)
#include "tst_scene_document.moc"
