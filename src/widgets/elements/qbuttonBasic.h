#pragma once

#include "widgets/WidgetsExport.h"
#include "widgets/context/ActionTrigger.h"
#include "widgets/context/OwedActions.h"
#include "widgets/elements/IWidget.h"
#include "widgets/elements/binding/ElementBinding.h"
#include "widgets/elements/binding/ShowsValue.h"
#include "widgets/elements/input/ButtonHold.h"

#include "nodes/model/links/NodeLink.h"
#include "nodes/model/links/ResourcePtr.h"
#include "nodes/values/Quality.h"
#include "nodes/values/SignalValue.h"

#include <QPixmap>
#include <QPushButton>

#include <memory>

class QStyle;

namespace Nodes {
class widgetButton;
}

namespace Widgets {

/// Push button of a Nodes::widgetButton: caption turned by any angle, picture, style, shortcut. At
/// run time pressing and releasing queue the node's lists, and so does losing the focus. Every
/// press is followed by one release with the rights of who pressed, whatever becomes of the button,
/// its node, its window or the user while it is held down: what a press started a release may have
/// to stop. A shortcut that is held is one press. For a node of another class it is
/// a plain button without actions.
class WIDGETS_EXPORT qbuttonBasic : public QPushButton, public IWidget, public ShowsValue
{
    Q_OBJECT

public:
    qbuttonBasic(Nodes::BasicWidget *node, QWidget *parent,
                 const SceneContextPtr &context = SceneContext::process());
    ~qbuttonBasic() override;

    /// The caption; Qt's own text stays empty.
    QString shownText() const override { return m_caption; }
    /// Null while the application's style is used.
    const QStyle *ownStyle() const { return m_ownStyle.get(); }

    const PropertyBindings &bindings() const override;

    ELEMENT_SIGNALS_AND_SLOTS

protected:
    void onActive(bool on) override;
    bool event(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;
    void hideEvent(QHideEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    /// With the button's font about the point (cx, cy), the painter's pen, laid out in the turned
    /// button. The two characters \n break a line.
    void drawRotatedText(QPainter *painter, float angle, int cx, int cy, QString const &text);

private:
    void applyStyle(const Nodes::widgetButton &button);
    void applySheet(const Nodes::widgetButton &button);
    void applyAlignment(const Nodes::widgetButton &button);
    void takeText(const Nodes::widgetButton &button);
    void applyPicture(const Nodes::widgetButton &button);
    void applyFlat(const Nodes::widgetButton &button);
    void fitIcon();
    void onPressed();
    void onReleased();
    void releaseHeld();
    ActionTrigger triggerHere() const;

    QString m_alignmentWords;
    int m_alignmentFlags = Qt::AlignCenter;
    QColor m_textColor = Qt::black;
    QString m_caption;
    std::unique_ptr<QStyle> m_ownStyle;               ///< null while the application's is used
    Utils::WatchedNode<Nodes::widgetButton> m_button; ///< null also for another class
    Nodes::ResourcePtr m_resource;                    ///< bytes of the picture
    bool m_isPictureMissing = false;
    int m_styleCode = 0;
    bool m_isHeld = false;               ///< the press list was queued, the release list not yet
    std::unique_ptr<OwedActions> m_owed; ///< release list of a held button; null without one
    ButtonHold m_hold;
    ElementBinding m_binding;
};

} // namespace Widgets
