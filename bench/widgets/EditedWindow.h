#pragma once

#include "LabelWindow.h"

#include "widgets/scene/ProxyLayer.h"
#include "widgets/scene/ProxyWidget.h"
#include "widgets/scene/editing/SceneEditor.h"

#include <QUndoStack>

#include <memory>

constexpr int editedColumns = 100;

inline QPoint placeOf(int i)
{
    return {i % editedColumns * 16, i / editedColumns % editedColumns * 10};
}

/// A window of so many labels, edited with an undo stack of its own.
struct EditedWindow
{
    explicit EditedWindow(int count) : project(0)
    {
        project.core.SetWorkMode(Nodes::WorkModeEditing);
        Utils::IUndo::setUndoStack(&stack);
        for (int i = 0; i < count; ++i) {
            Nodes::ConfigNode *label = project.add("label", project.window);
            const QPoint place = placeOf(i);
            LabelProject::set(*label, "x", std::to_string(place.x()));
            LabelProject::set(*label, "y", std::to_string(place.y()));
            LabelProject::set(*label, "width", "14");
            LabelProject::set(*label, "height", "8");
        }
    }
    ~EditedWindow() { Utils::IUndo::setUndoStack(nullptr); }
    void open()
    {
        view = std::make_unique<Widgets::ProxyView>(project.window, nullptr);
        view->setFixedSize(1602, 1002);
        scene = view->setScene(project.window);
        PaintCounter counter(view->viewport());
        view->show();
        counter.await();
    }
    /// With grabbers and frames, which come a moment later.
    void selectAll() const
    {
        scene->sceneEditor()->selection().selectAll();
        scene->sceneEditor()->settleSelection();
    }

    LabelProject project;
    QUndoStack stack;
    std::unique_ptr<Widgets::ProxyView> view;
    Widgets::ProxyScene *scene = nullptr;
};
