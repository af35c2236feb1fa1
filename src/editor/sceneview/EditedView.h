#pragma once

#include "editor/sceneview/EdgeScroll.h"
#include "editor/sceneview/SceneBackdrop.h"

#include "widgets/scene/ProxyView.h"

namespace Editor {

/// View of a scene that is edited: backdrop, zoom, and signals for what stands around it. Wheel and
/// middle button are those of ProxyView. GUI thread.
class EditedView : public Widgets::ProxyView
{
    Q_OBJECT

public:
    static constexpr int LeastPercent = 5;
    static constexpr int GreatestPercent = 3200;

    EditedView(Nodes::ConfigNode *node, QWidget *parent);

    /// The window or composition itself; around it the view shows what lies beyond.
    QRectF page() const;
    /// Takes over how large it is now, and whether it is edited.
    void showPage();
    SceneBackdrop backdrop() const { return m_backdrop; }
    void setBackdrop(const SceneBackdrop &backdrop);

    int percent() const;
    /// Scene pixel in the middle.
    QPointF centre() const;
    /// About the middle of the view; brought into the range.
    void setPercent(int percent);
    /// The rectangle fills the view, with a margin; no more than 400 %.
    void fit(const QRectF &rect);
    /// All of the page, and so again whenever the view gets another size, until somebody zooms.
    void fitPage(bool isEnlarged);
    bool isPageFitted() const { return m_fitted > 0 && m_fitted == percent(); }

signals:
    /// Another part of the scene is shown, or at another zoom.
    void viewChanged();
    /// Something of it was painted anew.
    void painted();
    /// Scene pixels.
    void pointerMoved(const QPointF &at);
    void pointerLeft();

protected:
    bool canScroll() const override { return true; } // a preview, too
    void resizeEvent(QResizeEvent *event) override;
    void drawBackground(QPainter *painter, const QRectF &rect) override;
    void paintEvent(QPaintEvent *event) override;
    bool viewportEvent(QEvent *event) override;

private:
    bool isJustNotice(const QSize &size) const;

    /// Elements, a grabber or the rubber band.
    bool isDragging() const;

    SceneBackdrop m_backdrop;
    EdgeScroll m_edgeScroll{*this, [this] { return isDragging(); }};
    QTransform m_shown;
    QSize m_fittedSize; ///< of the view, when the page was fitted
    int m_fitted = 0;   ///< percent at which the page was fitted; 0: it was not
};

} // namespace Editor
