#pragma once

#include "support/Mouse.h"
#include "support/RuntimeProject.h"

#include "widgets/scene/ProxyLayer.h"
#include "widgets/scene/ProxyScene.h"
#include "widgets/scene/ProxyView.h"
#include "widgets/scene/ProxyWidget.h"
#include "widgets/scene/editing/SceneEditor.h"

#include "nodes/visual/BasicWidget.h"

#include <QApplication>
#include <QDataStream>
#include <QMimeData>
#include <QUndoStack>
#include <QtTest>

/// What is dragged: texts in a format of the editor.
inline std::unique_ptr<QMimeData> draggedTexts(const QString &format, const QStringList &texts)
{
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    for (const QString &text : texts)
        stream << text;
    auto data = std::make_unique<QMimeData>();
    data->setData(format, bytes);
    return data;
}

/// The composition 30 of a project, shown and edited, with an undo stack.
struct ShownEditor
{
    explicit ShownEditor(const char *nodes)
        : project(nodes, Nodes::WorkModeEditing),
          view(project.node(30), nullptr),
          scene(view.setScene(project.node(30)))
    {
        Utils::IUndo::setUndoStack(&stack);
        view.resize(800, 600);
        view.show();
    }
    ~ShownEditor() { Utils::IUndo::setUndoStack(nullptr); }

    QList<Widgets::ProxyWidget *> hosts() const { return scene->getLayers().first()->getWidgets(); }
    Widgets::ProxyWidget *host(unsigned long id) const
    {
        for (const Widgets::ProxyLayer *layer : scene->getLayers()) {
            for (Widgets::ProxyWidget *host : layer->getWidgets()) {
                if (host->getNodeLink().GetNodeId() == id)
                    return host;
            }
        }
        return nullptr;
    }
    Widgets::SceneEditor &editor() const { return *scene->sceneEditor(); }
    /// One after the other, and shows what follows of that a moment later.
    void select(std::initializer_list<unsigned long> ids) const
    {
        scene->clearSelection();
        for (const unsigned long id : ids)
            host(id)->setSelected(true);
        editor().settleSelection();
    }
    /// Ids in the order of selection.
    QString selected() const
    {
        QStringList ids;
        for (const Nodes::NodeLink &link : editor().selection().links())
            ids << QString::number(link.GetNodeId());
        return ids.join(' ');
    }
    void key(int key, Qt::KeyboardModifiers modifiers = {}, int times = 1) const
    {
        QKeyEvent press(QEvent::KeyPress, key, modifiers);
        for (int i = 0; i < times; ++i)
            QApplication::sendEvent(scene, &press);
        QKeyEvent release(QEvent::KeyRelease, key, modifiers);
        QApplication::sendEvent(scene, &release);
    }
    /// The left button at a place of the scene; of a move, held down.
    void mouse(QEvent::Type type, QPointF at, Qt::KeyboardModifiers modifiers = {})
    {
        sendMouse(*view.viewport(), type, view.mapFromScene(at), Qt::LeftButton, modifiers);
    }
    void press(QPointF at, Qt::KeyboardModifiers modifiers = {})
    {
        mouse(QEvent::MouseButtonPress, at, modifiers);
    }
    void move(QPointF at, Qt::KeyboardModifiers modifiers = {})
    {
        mouse(QEvent::MouseMove, at, modifiers);
    }
    void release(QPointF at, Qt::KeyboardModifiers modifiers = {})
    {
        mouse(QEvent::MouseButtonRelease, at, modifiers);
    }
    /// From one place to another in two motions.
    void drag(QPointF from, QPointF to, Qt::KeyboardModifiers modifiers = {})
    {
        press(from, modifiers);
        move((from + to) / 2, modifiers);
        move(to, modifiers);
        release(to, modifiers);
    }
    QRect place(unsigned long id) const
    {
        const Nodes::NRect r = project.node<Nodes::BasicWidget>(id)->GetGeometry();
        return {r.x, r.y, r.width, r.height};
    }

    QUndoStack stack;
    RuntimeProject project;
    Widgets::ProxyView view;
    Widgets::ProxyScene *scene;
};
