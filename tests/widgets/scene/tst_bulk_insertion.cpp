#include "support/EditedProject.h"
#include "support/Rows.h"

#include "widgets/scene/BulkInsertion.h"
#include "widgets/scene/ProxyLayer.h"
#include "widgets/scene/ProxyScene.h"
#include "widgets/scene/ProxyView.h"
#include "widgets/scene/ProxyWidget.h"
#include "widgets/scene/editing/SceneEditor.h"

#include <QGraphicsScene>
#include <QKeyEvent>

using Widgets::BulkInsertion;

namespace {

constexpr const char *source = R"(<window id="30" name="W"><label id="31" name="A"/>
  <label id="32" name="B"/><label id="33" name="C"/></window>)";

QGraphicsWidget *addTo(QGraphicsWidget *parent, const QString &name)
{
    auto *child = new QGraphicsWidget(parent);
    child->setObjectName(name);
    child->setFocusPolicy(Qt::TabFocus);
    return child;
}

/// Names in the order in which Tab visits them.
QStringList tabbed(QGraphicsScene &scene, QGraphicsWidget *first, int count)
{
    QEvent activation(QEvent::WindowActivate);
    QCoreApplication::sendEvent(&scene, &activation);
    scene.setFocusItem(first);
    QStringList names;
    for (int i = 0; i < count; ++i) {
        const QGraphicsItem *focused = scene.focusItem();
        names << (focused ? focused->toGraphicsObject()->objectName() : QString());
        QKeyEvent tab(QEvent::KeyPress, Qt::Key_Tab, Qt::NoModifier);
        QCoreApplication::sendEvent(&scene, &tab);
    }
    return names;
}

/// An edited window with all of its elements selected and on the clipboard.
struct Copied : EditedProject
{
    Copied() : EditedProject(source)
    {
        auto *window = node<Nodes::BasicWindow>(30);
        view = std::make_unique<Widgets::ProxyView>(window, nullptr);
        scene = view->setScene(window);
        QCoreApplication::processEvents();
        scene->sceneEditor()->selection().selectAll();
        scene->onCopyToBuffer();
    }
    /// Hosts of elements, and graphics widgets that are neither these nor layers.
    std::pair<int, int> hostsAndStrays() const
    {
        std::pair<int, int> counts;
        const QList<QGraphicsItem *> items = scene->items();
        for (QGraphicsItem *item : items) {
            counts.first += dynamic_cast<Widgets::ProxyWidget *>(item) ? 1 : 0;
            counts.second += item->isWidget() && !item->parentItem() &&
                                     !dynamic_cast<Widgets::ProxyLayer *>(item)
                                 ? 1
                                 : 0;
        }
        return counts;
    }

    std::unique_ptr<Widgets::ProxyView> view;
    Widgets::ProxyScene *scene = nullptr;
};

} // namespace

class BulkInsertionTest : public QObject
{
    Q_OBJECT

private slots:
    void tabOrderIsThatOfInsertion_data()
    {
        const Rows<int, int> row("present", "inserted");
        row("into none", 0, 3);
        row("behind one", 1, 4);
        row("behind several", 3, 3);
    }

    void tabOrderIsThatOfInsertion()
    {
        QFETCH(int, present);
        QFETCH(int, inserted);
        QGraphicsScene scene;
        auto *parent = new QGraphicsWidget;
        scene.addItem(parent);
        QStringList names;
        QList<QGraphicsWidget *> children;
        const auto add = [&] {
            names << QString::number(names.size());
            children << addTo(parent, names.last());
            return children.last();
        };
        for (int i = 0; i < present; ++i)
            add();
        {
            BulkInsertion insertion(*parent, children.isEmpty() ? nullptr : children.last());
            for (int i = 0; i < inserted; ++i)
                insertion.inserted(add());
        }
        add(); // Qt finds the end by itself again
        QCOMPARE(tabbed(scene, children.first(), names.size()), names);
        QCOMPARE(scene.items().size(), names.size() + 1);
    }

    // Whatever ends a burst, before or after the event loop has run.
    void elementsComeAndGoInBursts_data()
    {
        const Rows<QByteArray, int> row("steps", "hosts"); // p paste, u undo, r redo, l loop
        row("pasted", "pl", 6);
        row("pasted twice at once", "ppl", 9);
        row("pasted and taken back at once", "pul", 3);
        row("again and again at once", "pururpurl", 9);
        row("a loop between", "plulrlpl", 9);
    }

    void elementsComeAndGoInBursts()
    {
        QFETCH(QByteArray, steps);
        QFETCH(int, hosts);
        Copied window;
        for (const char step : steps) {
            switch (step) {
            case 'p':
                window.scene->onPasteFromBuffer({5, 5});
                break;
            case 'u':
                window.stack.undo();
                break;
            case 'r':
                window.stack.redo();
                break;
            default:
                QCoreApplication::processEvents();
            }
        }
        QCOMPARE(window.hostsAndStrays(), std::make_pair(hosts, 0));
        QCOMPARE(window.node(30)->GetNodeCount(), hosts);
    }

    void sceneMayGoInTheMiddle()
    {
        Copied window;
        window.scene->onPasteFromBuffer({5, 5});
        QCOMPARE(window.hostsAndStrays(), std::make_pair(6, 1)); // the burst is not over
        window.view.reset();
        QCoreApplication::processEvents();
        QCOMPARE(window.node(30)->GetNodeCount(), 6);
    }
};

QTEST_MAIN(BulkInsertionTest)
#include "tst_bulk_insertion.moc"
