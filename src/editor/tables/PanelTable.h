#pragma once

#include <QVector>
#include <Qt>

class QWidget;

namespace Editor {

class Workspace;

/// One dock of the main window.
struct PanelRow
{
    const char *key;   ///< steady: the layout is kept by it
    const char *title; ///< Russian
    Qt::DockWidgetArea area;
    bool isShown; ///< before the user has chosen
    QWidget *(*make)(Workspace &workspace, QWidget *parent);
};

/// All panels, in the order of the menu.
const QVector<PanelRow> &PanelTable();

} // namespace Editor
