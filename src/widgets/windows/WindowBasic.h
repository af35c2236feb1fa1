#pragma once

#include "widgets/WidgetsExport.h"
#include "widgets/scene/ProxyView.h"
#include "widgets/windows/frames/FrameMapping.h"

#include "nodes/visual/windows/BasicWindow.h"
#include "utils/relay/NodeRelay.h"
#include "utils/relay/WatchedNode.h"

#include <QString>

namespace Widgets {

/// Scene view of a window node at run time: title and geometry from the node, open and close
/// action lists, the right to close, gestures. The node is not owned; a window whose node was
/// deleted goes on as one without a node.
class WIDGETS_EXPORT WindowBasic : public ProxyView
{
    Q_OBJECT

public:
    /// `node` may be null: the window then keeps an empty title and runs no lists.
    WindowBasic(Nodes::BasicWindow *node, QWidget *parent);
    ~WindowBasic() override;

    /// Null without a node, or when it was deleted.
    Nodes::BasicWindow *getNode() const { return m_node.get(); }
    /// Frameless without a node.
    Nodes::BasicWindow::enBorderType getBorderType() const;
    bool getTitleVisible() const { return m_isTitleVisible; }
    bool getCloseBtnVisible() const { return m_isCloseButtonVisible; }
    /// The node's frame flag: the window keeps its own size inside a decorated frame.
    bool getFrameFlag() const { return m_hasFrame; }
    /// Pixels; 0 without a close button.
    int getTitleHeight() const { return m_titleHeight; }
    int getFrameMargin() const { return m_frameMargin; }
    Qt::WindowModality getModality() const { return m_modality; }
    QString getStrTitle() const { return m_title; }
    void SetTitle(QString title);

    /// Shows what is in the window to those only who may view it.
    void judgeAccess();
    /// Whether the current user may close the window; true outside the operator runtime, and while
    /// it is closed for somebody else who may.
    bool mayClose() const;
    void setCloseAllowed(bool isAllowed) { m_isCloseAllowed = isAllowed; }
    /// The same for every window that stands inside `frame`.
    static bool mayCloseAll(const QWidget &frame);

    /// How the window's node is mapped to the screen: that of the frame it stands in or over.
    const FrameMapping &mapping() const { return m_mapping; }
    /// Scales what is shown, not the window itself: see WindowPlacement.
    void setMapping(const FrameMapping &mapping);
    /// Geometry last taken from the node at run time; null before.
    QRect nodeGeometry() const { return m_nodeGeometry; }

    /// At run time the node's size as mapped, but never more than all displays can show.
    QSize sizeHint() const override;

signals:
    /// A property of the node changed.
    void updateProperty();
    /// The window was closed, alone or with its frame, and goes as soon as nothing runs in it.
    void closed();

public slots:
    void onUpdateProperties();

protected:
    void updateGeometryWindow();

    /// Starts or stops the scene shown; does nothing outside the operator runtime.
    void startScene();
    void stopScene();

    void showEvent(QShowEvent *event) override;
    void hideEvent(QHideEvent *event) override;
    void closeEvent(QCloseEvent *event) override;
    void drawBackground(QPainter *painter, const QRectF &rect) override;

private:
    bool isRuntime() const;
    void takeRuntimeProperties();
    void takeEditingGeometry();
    void follow(const QRect &from, const QRect &to);

    Utils::WatchedNode<Nodes::BasicWindow> m_node;
    bool m_isTitleVisible = false;
    bool m_isCloseAllowed = false;
    bool m_isCloseButtonVisible = false;
    bool m_hasFrame = false;
    int m_frameMargin = 0;
    int m_titleHeight = 0;
    QString m_title;
    Qt::WindowModality m_modality = Qt::NonModal;
    QRect m_nodeGeometry; // as last taken from the node
    FrameMapping m_mapping;
    Utils::NodeRelay m_relay;
};

} // namespace Widgets
