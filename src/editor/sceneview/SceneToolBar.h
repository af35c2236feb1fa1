#pragma once

#include <QToolBar>

class QComboBox;
class QSpinBox;

namespace Editor {

class EditedView;

/// Above a scene: zoom, grid and snapping, backdrop, preview. What does not fit is behind the bar's
/// own arrow. GUI thread.
class SceneToolBar : public QToolBar
{
    Q_OBJECT

public:
    SceneToolBar(EditedView &view, QWidget *parent);

    QAction *previewAction() const { return m_preview; }

signals:
    void fitAsked();
    void fitSelectionAsked();

private:
    void addZoom();
    void addSnapping();
    void addBackdrop();
    void showZoom();
    void takeZoom();
    void showSettings();

    EditedView &m_view;
    QComboBox *m_zoom = nullptr;
    QAction *m_toGrid = nullptr;
    QAction *m_toElements = nullptr;
    QSpinBox *m_step = nullptr;
    QComboBox *m_backdrop = nullptr;
    QAction *m_preview = nullptr;
};

} // namespace Editor
