#pragma once

#include <QRect>
#include <QWidget>

class QLabel;
class QMenu;
class QToolButton;

namespace Nodes {
class BasicWidget;
class ConfigNode;
} // namespace Nodes

namespace Editor {

class Workspace;

/// The line below a scene: pointer, selection, elements that are hidden. GUI thread.
class SceneStatusBar : public QWidget
{
    Q_OBJECT

public:
    SceneStatusBar(Workspace &workspace, QWidget *parent);

    /// Scene pixels.
    void showPointer(const QPointF &at);
    void clearPointer();
    /// `rect` lies around all of them.
    void showSelection(int count, const QRect &rect);
    /// Nothing can be selected.
    void showPreview();
    /// Counts the hidden elements of the document; null: none.
    void showHidden(const Nodes::ConfigNode *document);

private:
    void fillHiddenMenu();

    Workspace &m_workspace;
    QLabel *m_pointer;
    QLabel *m_selection;
    QToolButton *m_hidden;
    QMenu *m_hiddenMenu;
    unsigned long m_document = 0; ///< id
};

} // namespace Editor
