#pragma once

#include "widgets/WidgetsExport.h"
#include "widgets/elements/IWidget.h"
#include "widgets/elements/binding/AlarmWatch.h"
#include "widgets/elements/binding/ElementBinding.h"
#include "widgets/elements/binding/ShowsValue.h"
#include "widgets/elements/painting/DirectPainting.h"

#include "nodes/values/Quality.h"

#include <QWidget>

namespace Nodes {
class widgetBargraph;
}

namespace Widgets {

struct BargraphLook;

/// Bar of a Nodes::widgetBargraph on its scale: zones, set-point, the number. A bad value has no
/// bar, one beyond the scale an arrow at its end. GUI thread.
class WIDGETS_EXPORT qwidgetBargraph : public QWidget,
                                       public IWidget,
                                       public DirectPainting,
                                       public ShowsValue
{
    Q_OBJECT

public:
    using Node = Nodes::widgetBargraph;

    qwidgetBargraph(Nodes::widgetBargraph *node, QWidget *parent,
                    const SceneContextPtr &context = SceneContext::process());
    ~qwidgetBargraph() override;

    QString shownText() const override;
    void paintDirectly(QPainter &painter) override;

    const PropertyBindings &bindings() const override;

    ELEMENT_SIGNALS_AND_SLOTS

protected:
    void onActive(bool on) override;
    void paintEvent(QPaintEvent *event) override;
    bool event(QEvent *event) override;

private:
    void takeText(const Nodes::widgetBargraph &bargraph);
    void onAlarmsChanged();
    void takeScale(const Nodes::widgetBargraph &bargraph);
    QString formOfText() const;
    void takeValue(const Nodes::SignalValue &handed);

    Utils::WatchedNode<Nodes::widgetBargraph> m_bargraph; ///< null also for another class
    std::unique_ptr<BargraphLook> m_look;
    QString m_text;
    AlarmWatch m_alarms;
    ElementBinding m_binding;
};

} // namespace Widgets
