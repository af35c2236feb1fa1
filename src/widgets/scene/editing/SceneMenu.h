#pragma once

#include "nodes/model/links/NodeLink.h"

#include <QList>
#include <QObject>

#include <memory>

class QAction;
class QMenu;
class QPoint;

namespace Widgets {

class ProxyWidget;

/// Context menu of a scene that is edited, filled anew each time it is asked for. GUI thread.
class SceneMenu : public QObject
{
    Q_OBJECT

public:
    /// Actions of the editor; those it has not are null.
    struct Actions
    {
        QAction *remove = nullptr;
        QAction *copy = nullptr;
        QAction *paste = nullptr;
    };

    explicit SceneMenu(const Actions &actions);
    ~SceneMenu() override;

    /// Begins anew, for the canvas: `added` may be null, whether the clipboard has elements.
    void fillForCanvas(QMenu *added, bool canPaste);
    /// Begins anew, for that many selected elements; `focused` is the one under the pointer, or
    /// null.
    void fillForSelection(int count, const ProxyWidget *focused);
    /// Submenu for edits of the whole selection, before the lines of the elements.
    QMenu &addArranging();
    /// A line for each, by which it is selected or not.
    void addItems(const QList<ProxyWidget *> &hosts);
    /// Shows it unless it is empty, on the desktop.
    void show(const QPoint &place);

signals:
    /// Up, or down, by that many places.
    void orderMoved(int step);
    void currentWidgetChange(const Nodes::NodeLink &link);
    void openWizardWindow(const Nodes::NodeLink &link);

private:
    Actions m_actions;
    std::unique_ptr<QMenu> m_menu;
};

} // namespace Widgets
