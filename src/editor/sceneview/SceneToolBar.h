#pragma once

#include <QHash>
#include <QToolBar>

class QActionGroup;
class QComboBox;
class QMenu;
class QSpinBox;

namespace Widgets {
struct EditedElements;
struct SceneEditRow;
} // namespace Widgets

namespace Editor {

class EditedView;

/// Above a scene: zoom, grid and snapping, backdrop, preview, edits of the whole selection. What
/// does not fit is behind the bar's own arrow. GUI thread.
class SceneToolBar : public QToolBar
{
    Q_OBJECT

public:
    SceneToolBar(EditedView &view, QWidget *parent);

    QAction *previewAction() const { return m_preview; }
    /// Enables the edits that enough is selected for.
    void showPossible(const Widgets::EditedElements &edited);

signals:
    void percentAsked(int percent);
    void fitAsked();
    void fitSelectionAsked();
    void editAsked(const Widgets::SceneEditRow &edit);

private:
    void addZoom();
    void addSnapping();
    void addBackdrop();
    void addEdits();
    /// Of a button of its own.
    QMenu *addMenu(const QString &title, const QIcon &icon);
    void showZoom();
    void takeZoom();
    void showSettings();

    EditedView &m_view;
    QComboBox *m_zoom = nullptr;
    QAction *m_toGrid = nullptr;
    QAction *m_toElements = nullptr;
    QSpinBox *m_step = nullptr;
    QActionGroup *m_backdrop = nullptr;
    QAction *m_preview = nullptr;
    QHash<const Widgets::SceneEditRow *, QAction *> m_edits;
};

} // namespace Editor
