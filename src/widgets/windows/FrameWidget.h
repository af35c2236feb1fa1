#pragma once

#include "widgets/WidgetsExport.h"

#include <QPointer>
#include <QWidget>

namespace Nodes {
class BasicFrame;
}

namespace Widgets {

class OverlayWidget;

/// Container of the windows of one configured frame. Dimmed while a modal window is up, unless it
/// stands inside a decorated frame window, which then dims itself.
class WIDGETS_EXPORT FrameWidget : public QWidget
{
    Q_OBJECT

public:
    explicit FrameWidget(QWidget *parent = nullptr);

    /// Not owned; must outlive the widget.
    void setNode(Nodes::BasicFrame *node) { m_node = node; }
    Nodes::BasicFrame *getNode() const { return m_node; }

    /// Dims or undims to match the overlay windows; called on each of their changes at run time.
    void updateOverlay();
    /// Null while not dimmed.
    OverlayWidget *overlay() const;

protected:
    bool event(QEvent *event) override;
    void showEvent(QShowEvent *event) override;
    /// Refused when the user may not close one of the windows inside.
    void closeEvent(QCloseEvent *event) override;

private:
    Nodes::BasicFrame *m_node = nullptr;
    QPointer<OverlayWidget> m_overlay;
};

} // namespace Widgets
