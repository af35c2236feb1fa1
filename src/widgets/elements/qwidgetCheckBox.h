#pragma once

#include "widgets/WidgetsExport.h"
#include "widgets/elements/IWidget.h"
#include "widgets/elements/binding/ElementBinding.h"
#include "widgets/elements/binding/ShowsValue.h"

#include "nodes/model/links/ResourcePtr.h"
#include "nodes/values/Quality.h"

#include <QCheckBox>
#include <QPixmap>

namespace Nodes {
class widgetCheckBox;
}

namespace Widgets {

/// Mark of a Nodes::widgetCheckBox: checked while the signal is above 0; a click anywhere on it
/// writes the opposite. A value that is not good is marked; a bad one shows no mark and has no
/// opposite to be written. GUI thread.
class WIDGETS_EXPORT qwidgetCheckBox : public QCheckBox, public IWidget, public ShowsValue
{
    Q_OBJECT

public:
    using Node = Nodes::widgetCheckBox;

    qwidgetCheckBox(Nodes::BasicWidget *node, QWidget *parent,
                    const SceneContextPtr &context = SceneContext::process());
    ~qwidgetCheckBox() override;

    QString shownText() const override;

    const PropertyBindings &bindings() const override;

    ELEMENT_SIGNALS_AND_SLOTS

protected:
    void onActive(bool on) override;
    void nextCheckState() override;
    bool hitButton(QPoint const &point) const override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    bool event(QEvent *event) override;

private:
    void onStateChanged(int state);
    bool isKnown() const;
    void show(int state);
    void takeImage(const Nodes::widgetCheckBox &checkBox);
    void drawMark(QPainter &painter, const QRect &inner) const;

    Utils::WatchedNode<Nodes::widgetCheckBox> m_checkBox; ///< null also for another class
    QPixmap m_defaultMark;
    Nodes::ResourcePtr m_resource;   ///< of the node's own mark
    const QImage *m_image = nullptr; ///< from the cache; null for the default mark
    int m_lastState = -1;            ///< last that the node confirmed; -1 before the first
    ElementBinding m_binding;
};

} // namespace Widgets
