#include "editor/sceneview/SceneCommands.h"

#include "editor/project/ProjectSession.h"
#include "editor/sceneview/EditedView.h"
#include "editor/sceneview/SceneDocument.h"
#include "editor/workspace/Workspace.h"

#include "widgets/scene/ProxyScene.h"
#include "widgets/scene/editing/SceneEditor.h"
#include "widgets/scene/editing/arrange/SceneEditTable.h"

#include <QApplication>

#include <array>
#include <utility>

namespace Editor {

namespace {

constexpr double zoomStep = 1.25;

/// Null when another document is active, or none.
SceneDocument *documentOf(Workspace &workspace)
{
    auto *document = qobject_cast<SceneDocument *>(workspace.document());
    return document && document->scene() ? document : nullptr;
}

/// Null when the active scene is not edited now.
Widgets::SceneEditor *editorOf(Workspace &workspace)
{
    const SceneDocument *document = documentOf(workspace);
    return document ? document->editor() : nullptr;
}

bool hasScene(Workspace &workspace)
{
    return documentOf(workspace) != nullptr;
}

bool hasEditor(Workspace &workspace)
{
    return editorOf(workspace) != nullptr;
}

bool canEdit(Workspace &workspace)
{
    return hasEditor(workspace) && !workspace.session().isReadOnly();
}

bool hasSelection(Workspace &workspace)
{
    Widgets::SceneEditor *editor = editorOf(workspace);
    return editor && !editor->selection().isEmpty();
}

bool canEditSelection(Workspace &workspace)
{
    return canEdit(workspace) && hasSelection(workspace);
}

// What the keys mean belongs to who has the focus: nobody loses elements of a scene by a key that
// was meant for a table beside it.
Widgets::ProxyScene *focusedScene(Workspace &workspace)
{
    const SceneDocument *document = documentOf(workspace);
    if (document && document->isAncestorOf(QApplication::focusWidget()))
        return document->scene();
    workspace.tell(Workspace::Info, QStringLiteral("Сначала щёлкните по сцене: команда относится к "
                                                   "её элементам"));
    return nullptr;
}

void cut(Workspace &workspace)
{
    if (Widgets::ProxyScene *scene = focusedScene(workspace))
        scene->onCutToBuffer();
}

void copy(Workspace &workspace)
{
    if (Widgets::ProxyScene *scene = focusedScene(workspace))
        scene->onCopyToBuffer();
}

// Below the pointer; beside the scene in the middle of what is seen of it.
void paste(Workspace &workspace)
{
    Widgets::ProxyScene *scene = focusedScene(workspace);
    if (!scene)
        return;
    const EditedView *view = documentOf(workspace)->editedView();
    QPoint at = view->viewport()->mapFromGlobal(QCursor::pos());
    if (!view->viewport()->rect().contains(at))
        at = view->viewport()->rect().center();
    scene->onPasteFromBuffer(view->mapToScene(at));
}

void remove(Workspace &workspace)
{
    if (Widgets::ProxyScene *scene = focusedScene(workspace))
        scene->removeWidget();
}

void selectAll(Workspace &workspace)
{
    if (focusedScene(workspace))
        editorOf(workspace)->selection().selectAll();
}

void fitAll(Workspace &workspace)
{
    documentOf(workspace)->fitAll();
}

void fitSelection(Workspace &workspace)
{
    documentOf(workspace)->fitSelection();
}

int percentOf(Workspace &workspace)
{
    return documentOf(workspace)->editedView()->percent();
}

void showWhole(Workspace &workspace)
{
    documentOf(workspace)->setPercent(100);
}

void zoomIn(Workspace &workspace)
{
    const int percent = percentOf(workspace);
    documentOf(workspace)->setPercent(qMax(percent + 1, qRound(percent * zoomStep)));
}

void zoomOut(Workspace &workspace)
{
    documentOf(workspace)->setPercent(qRound(percentOf(workspace) / zoomStep));
}

void togglePreview(Workspace &workspace)
{
    SceneDocument *document = documentOf(workspace);
    document->setPreview(!document->isPreview());
}

const Widgets::SceneEditRow &editRow(std::size_t index)
{
    return Widgets::SceneEditTable::rows()[index];
}

template <std::size_t index> bool canRun(Workspace &workspace)
{
    Widgets::SceneEditor *editor = canEdit(workspace) ? editorOf(workspace) : nullptr;
    const Widgets::SceneEditRow &row = editRow(index);
    return editor && editor->selection().count() >= row.minimum &&
           (!row.isPossible || row.isPossible(editor->tableEdits().edited()));
}

template <std::size_t index> void run(Workspace &workspace)
{
    if (Widgets::SceneEditor *editor = editorOf(workspace))
        editor->tableEdits().run(editRow(index));
}

/// Rows of a menu hold plain functions: one for each row that the table of edits can have.
struct EditFunctions
{
    bool (*canRun)(Workspace &workspace);
    void (*run)(Workspace &workspace);
};

template <std::size_t... index>
constexpr std::array<EditFunctions, sizeof...(index)> functionsOf(std::index_sequence<index...>)
{
    return {{{&canRun<index>, &run<index>}...}};
}

constexpr std::size_t editsAtMost = 64;
constexpr auto editFunctions = functionsOf(std::make_index_sequence<editsAtMost>());

/// Texts of rows that are made while the program runs, kept to its end.
const char *kept(const QString &text)
{
    static QList<QByteArray> texts;
    texts.append(text.toUtf8());
    return texts.last().constData();
}

QVector<CommandRow> arranging()
{
    const auto &edits = Widgets::SceneEditTable::rows();
    Q_ASSERT(edits.size() <= editsAtMost);
    QVector<CommandRow> rows;
    for (std::size_t i = 0; i < edits.size() && i < editsAtMost; ++i) {
        const Widgets::SceneEditRow &edit = edits[i];
        const QString group = QString::fromUtf8(edit.group);
        rows.append({kept(QStringLiteral("scene.") + edit.id),
                     kept(group.isEmpty() ? QStringLiteral("Размещение")
                                          : QStringLiteral("Размещение/") + group),
                     edit.text, kept(QStringLiteral(":/icons/arrange/%1.svg").arg(edit.id)),
                     edit.shortcut, editFunctions[i].canRun, editFunctions[i].run});
    }
    return rows;
}

} // namespace

QVector<CommandRow> SceneCommands()
{
    QVector<CommandRow> rows = {
        {"scene.cut", "Правка", "Вырезать", ":/editor/icons/cut.svg", "Ctrl+X", &canEditSelection,
         &cut},
        {"scene.copy", "Правка", "Копировать", ":/editor/icons/copy.svg", "Ctrl+C", &hasSelection,
         &copy},
        {"scene.paste", "Правка", "Вставить", ":/editor/icons/paste.svg", "Ctrl+V", &canEdit,
         &paste},
        {"scene.delete", "Правка", "Удалить", ":/editor/icons/delete.svg", "Del", &canEditSelection,
         &remove},
        {"scene.selectAll", "Правка", "Выделить всё", ":/editor/icons/selectAll.svg", "Ctrl+A",
         &hasEditor, &selectAll},
        {"scene.fitAll", "Вид", "Вписать окно", ":/editor/icons/zoomFit.svg", "Ctrl+0", &hasScene,
         &fitAll},
        {"scene.fitSelection", "Вид", "К выделению", ":/editor/icons/zoomSelection.svg",
         "Ctrl+Shift+0", &hasSelection, &fitSelection},
        {"scene.showWhole", "Вид", "Масштаб 100 %", ":/editor/icons/zoom100.svg", "Ctrl+1",
         &hasScene, &showWhole},
        {"scene.zoomIn", "Вид", "Крупнее", ":/editor/icons/zoomIn.svg", "Ctrl++", &hasScene,
         &zoomIn},
        {"scene.zoomOut", "Вид", "Мельче", ":/editor/icons/zoomOut.svg", "Ctrl+-", &hasScene,
         &zoomOut},
        {"scene.preview", "Вид", "Просмотр", ":/editor/icons/preview.svg", "F6", &hasScene,
         &togglePreview},
    };
    return rows + arranging();
}

} // namespace Editor
