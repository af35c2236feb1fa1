#pragma once

#include "widgets/windows/frames/FrameGeometry.h"
#include "widgets/windows/frames/FrameWindow.h"

#include <QRect>

class QAction;
class QLabel;
class QToolButton;

namespace Widgets {

/// The decoration itself: title, close button and the area behind them that takes the pointer.
/// Edges resize the window it stands in, the title bar moves it, a double click there maximises
/// it. Works for any frameless top-level widget that it fills. The window never leaves all screens.
class WIDGETS_EXPORT FrameWindow::Frame : public QWidget
{
    Q_OBJECT

public:
    /// Pixels on either side of an edge that belong to it; also the width kept free around the
    /// contents.
    static constexpr int EdgeWidth = 2;

    explicit Frame(QWidget *parent);
    ~Frame() override;

    /// Also decides whether a double click on the title maximises.
    void setResizeable(bool isResizeable);
    bool isResizeable() const { return m_isResizeable; }
    int titleHeight() const { return m_titleHeight; }
    /// As configured in the visualisation subsystem, else 25 pixels.
    static int configuredTitleHeight();
    /// Elided on screen when it is too long.
    void setTitle(const QString &title);
    QString title() const { return m_title; }
    void setVisibleButtonClose(bool isVisible);
    /// Area left for contents.
    QRect clientRect() const;
    /// Size around contents of that size.
    QSize outerSize(const QSize &client) const;

    /// Edge flags of FrameGeometry at a point of this widget; points outside count as long as they
    /// are near.
    int edgesAt(const QPoint &point) const;
    /// Edges under the pointer as last seen.
    int edges() const { return m_edges; }
    static Qt::CursorShape cursorFor(int edges);

    /// Takes the override cursor back: the pointer is on something else.
    void restoreCursor();

signals:
    void closeRequested();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
    void changeEvent(QEvent *event) override;
    void showEvent(QShowEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void leaveEvent(QEvent *event) override;
    void hideEvent(QHideEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    enum class Grab { None, Move, Resize };

    void buildCloseButton();
    void placeTitle();
    void keepReachable();
    bool isTitle(const QPoint &point) const;
    void hover(const QPoint &point);
    void showCursor(int edges);
    void drag(const QPoint &globalPoint);
    QSize smallest() const;

    bool m_isResizeable = true;
    int m_titleHeight;
    QString m_title;
    QLabel *m_titleLabel;
    QAction *m_actionClose;
    QToolButton *m_closeButton;
    int m_edges = FrameGeometry::NoEdge;
    int m_overrideCursors = 0;
    Grab m_grab = Grab::None;
    QPoint m_pressPoint; // global
    QRect m_startGeometry;
};

} // namespace Widgets
