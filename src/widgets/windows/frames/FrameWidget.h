#pragma once

#include "widgets/WidgetsExport.h"
#include "widgets/windows/frames/FrameContent.h"
#include "widgets/windows/frames/FrameMapping.h"

#include <QList>
#include <QPointer>
#include <QWidget>

namespace Nodes {
class BasicFrame;
}

namespace Widgets {

class OverlayWidget;

/// Container of the windows of one configured frame, as drawn or fitted to its display. Dimmed
/// while a modal window is up, unless it stands inside a decorated frame window, which then dims
/// itself.
class WIDGETS_EXPORT FrameWidget : public QWidget, public FrameContent
{
    Q_OBJECT

public:
    explicit FrameWidget(QWidget *parent = nullptr);

    /// The frame that `window` is, or that stands in it when it is decorated; null when it is
    /// another window.
    static FrameWidget *inside(const QWidget &window);

    /// Not owned; must outlive the widget.
    void setNode(Nodes::BasicFrame *node) { m_node = node; }
    Nodes::BasicFrame *getNode() const { return m_node; }

    /// Becomes the parent of the windows and shows them at the places of their nodes, the leftmost
    /// and topmost in its corner. Takes the size that holds them all, at their bounds' place.
    void setWindows(const QList<QWidget *> &windows);
    /// Fits the frame, with its decoration when it has one, to that part of the screen as its node
    /// asks. What stands in the frame and what was opened over it follow.
    void takeDisplay(const QRect &display);
    /// Of the frame as it is fitted now.
    const FrameMapping &mapping() const { return m_mapping; }
    bool isFitted() const;

    /// Dims or undims to match the overlay windows; called on each of their changes at run time.
    void updateOverlay();
    /// Null while not dimmed.
    OverlayWidget *overlay() const;

    /// False outside of the operator runtime: it may be closed then.
    bool requestEnd() override;

protected:
    bool event(QEvent *event) override;
    void showEvent(QShowEvent *event) override;
    /// An operator who closes it is asked whether to end the station, see EndRequest. Else refused
    /// when the user may not close one of the windows inside.
    void closeEvent(QCloseEvent *event) override;

private:
    void takeMapping(const FrameMapping &mapping, const QPoint &corner);
    void placeOuter(const QRect &area, const QSize &size);

    Nodes::BasicFrame *m_node = nullptr;
    QList<QPointer<QWidget>> m_windows;
    QRect m_drawn; // bounds of the windows, node coordinates
    QRect m_display;
    FrameMapping m_mapping;
    QPointer<OverlayWidget> m_overlay;
};

} // namespace Widgets
