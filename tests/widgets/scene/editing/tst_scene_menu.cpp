// The context menu of an edited scene: what it selects, how its lines are called and what they do.
#include "support/Rows.h"
#include "support/ShownEditor.h"

#include <QClipboard>
#include <QGraphicsSceneContextMenuEvent>
#include <QMenu>

using Widgets::ProxyScene;
using Widgets::ProxyWidget;

namespace {

// K lies over A and cannot be selected.
constexpr const char *nodes = R"(
<composition id="30" name="C" width="640" height="480"><layer id="31" name="L">
  <label id="32" name="A" x="10" y="10" width="80" height="60"/>
  <label id="33" name="B" x="110" y="10" width="80" height="60"/>
  <chartHistory id="34" name="H" x="210" y="10" width="80" height="60"/>
  <chartXY id="35" name="X" x="310" y="10" width="80" height="60"/>
  <chartCorridor id="36" name="R" x="410" y="10" width="80" height="60"/>
  <label id="37" name="K" x="10" y="10" width="20" height="20" selectable="false" zOrder="5"/>
</layer></composition>)";

const QPointF a(60, 50), b(150, 50), both(20, 20), canvas(500, 400);

struct Editor : ShownEditor
{
    Editor() : ShownEditor(nodes) {}

    /// What was added appears selected.
    const ProxyWidget *newest() const { return editor().selection().hosts().last(); }
    QMenu *menu(QPointF at, Qt::KeyboardModifiers modifiers = {}) const
    {
        QGraphicsSceneContextMenuEvent event(QEvent::GraphicsSceneContextMenu);
        event.setScenePos(at);
        event.setModifiers(modifiers);
        event.setWidget(view.viewport());
        QApplication::sendEvent(scene, &event);
        return qobject_cast<QMenu *>(QApplication::activePopupWidget());
    }
};

QAction *line(const QMenu *menu, const QString &text)
{
    for (QAction *action : menu ? menu->actions() : QList<QAction *>()) {
        if (action->text() == text)
            return action;
    }
    return nullptr;
}

} // namespace

class SceneMenuTest : public QObject
{
    Q_OBJECT

private slots:
    void cleanup()
    {
        if (QWidget *menu = QApplication::activePopupWidget())
            menu->close();
    }

    void selects_data()
    {
        const Rows<QPointF, Qt::KeyboardModifiers, QString, QString> row("at", "modifiers", "after",
                                                                         "suffix");
        row("another one", b, {}, "33", "");
        row("another one with Ctrl", b, Qt::ControlModifier, "32 33", " виджеты");
        row("with more than Ctrl", b, Qt::ControlModifier | Qt::ShiftModifier, "33", "");
        row("the selected one", a, {}, "32", "");
        row("below what cannot be selected", both, {}, "32", "");
        row("canvas", canvas, {}, "32", "");
    }

    void selects()
    {
        QFETCH(QPointF, at);
        QFETCH(Qt::KeyboardModifiers, modifiers);
        QFETCH(QString, suffix);
        const Editor editor;
        editor.select({32});
        const QMenu *menu = editor.menu(at, modifiers);
        QTEST(editor.selected(), "after");
        const QAction *copy = line(menu, QStringLiteral("Копировать") + suffix);
        const QAction *remove = line(menu, QStringLiteral("Удалить") + suffix);
        QVERIFY(copy && remove);
        QVERIFY(menu->actions().indexOf(const_cast<QAction *>(copy)) <
                menu->actions().indexOf(const_cast<QAction *>(remove)));
    }

    void offersSettingsOfCharts_data()
    {
        const Rows<int, bool> row("id", "isOffered");
        row("label", 33, false);
        row("trend", 34, true);
        row("signal over signal", 35, true);
        row("corridor", 36, true);
    }

    void offersSettingsOfCharts()
    {
        QFETCH(int, id);
        QFETCH(bool, isOffered);
        const Editor editor;
        const auto wanted = static_cast<unsigned long>(id);
        const QMenu *menu = editor.menu(editor.host(wanted)->geometry().center());
        QAction *settings = line(menu, QStringLiteral("Настройки"));
        QVERIFY(settings && !settings->icon().isNull());
        QCOMPARE(settings->isEnabled(), isOffered);
        if (!isOffered)
            return;
        unsigned long asked = 0;
        connect(editor.scene, &ProxyScene::openWizardWindow, this,
                [&](const Nodes::NodeLink &link) { asked = link.GetNodeId(); });
        settings->trigger();
        QCOMPARE(asked, wanted);
    }

    // What cannot be selected is shown in the tree in place of that.
    void linesSelectElements()
    {
        const Editor editor;
        unsigned long shown = 0;
        connect(editor.scene, &ProxyScene::currentWidgetChange, this,
                [&](const Nodes::NodeLink &link) { shown = link.GetNodeId(); });
        const QMenu *menu = editor.menu(both);
        QAction *selectable = line(menu, QStringLiteral("C/L/A"));
        QAction *other = line(menu, QStringLiteral("C/L/K"));
        QVERIFY(selectable && other && selectable->isChecked() && !other->isChecked());
        QVERIFY(menu->actions().indexOf(other) < menu->actions().indexOf(selectable));
        other->trigger();
        QCOMPARE(shown, 37ul);
        QCOMPARE(editor.selected(), QString("32"));
        selectable->trigger();
        QCOMPARE(editor.selected(), QString());
        line(menu, QStringLiteral("Выделить узел в дереве проекта"))->trigger();
        QCOMPARE(shown, 32ul);
    }

    void canvasPastesAndAdds()
    {
        Editor editor;
        QApplication::clipboard()->setText(QStringLiteral("Насос 1"));
        QMenu *menu = editor.menu(canvas);
        QVERIFY(line(menu, QStringLiteral("Вставить")));
        QVERIFY(!line(menu, QStringLiteral("Вставить"))->isEnabled());
        menu->close();
        editor.select({32});
        editor.key(Qt::Key_C, Qt::ControlModifier);
        editor.scene->clearSelection();
        menu = editor.menu({300, 200});
        QVERIFY(line(menu, QStringLiteral("Вставить"))->isEnabled());
        line(menu, QStringLiteral("Вставить"))->trigger();
        QCOMPARE(editor.stack.text(0), QStringLiteral("Копирование виджета A"));
        QCOMPARE(editor.newest()->pos(), QPointF(300, 200));
        menu->close();
        editor.scene->clearSelection();
        menu = editor.menu(canvas);
        QMenu *added = line(menu, QStringLiteral("Добавить виджет"))->menu();
        QAction *kind = added->actions().value(0);
        QVERIFY(kind);
        (kind->menu() ? kind->menu()->actions().value(0) : kind)->trigger();
        const ProxyWidget *host = editor.newest();
        QCOMPARE(host->pos(), canvas);
        QCOMPARE(editor.stack.text(1),
                 QStringLiteral("Добавление виджета %1").arg(host->getNode()->GetName().c_str()));
    }
};

QTEST_MAIN(SceneMenuTest)
#include "tst_scene_menu.moc"
