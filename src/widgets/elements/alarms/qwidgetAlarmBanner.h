#pragma once

#include "widgets/WidgetsExport.h"
#include "widgets/elements/IWidget.h"
#include "widgets/elements/alarms/BannerFacts.h"
#include "widgets/elements/alarms/BannerPainter.h"
#include "widgets/elements/binding/ElementBinding.h"

#include <QTimer>
#include <QWidget>

namespace Nodes {
class widgetAlarmBanner;
}

namespace Widgets {

/// Element of a Nodes::widgetAlarmBanner. A press on the alarm leads to where its signal is shown,
/// one elsewhere to the alarm window; the button acknowledges the occurrence that was shown when it
/// went down. Tells when alarming does not run, or what it knows is not how alarms stand. GUI
/// thread.
class WIDGETS_EXPORT qwidgetAlarmBanner : public QWidget, public IWidget
{
    Q_OBJECT

public:
    using Node = Nodes::widgetAlarmBanner;

    qwidgetAlarmBanner(Nodes::widgetAlarmBanner *node, QWidget *parent,
                       const SceneContextPtr &context = SceneContext::process());
    ~qwidgetAlarmBanner() override;

    /// As painted last or about to be.
    const BannerFacts &facts() const { return m_facts; }
    BannerPainter painter() const;
    /// Asks how alarms stand and compares; happens by itself every few seconds.
    void check();

    const PropertyBindings &bindings() const override;

    ELEMENT_SIGNALS_AND_SLOTS

protected:
    void onActive(bool on) override;
    void paintEvent(QPaintEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    bool event(QEvent *event) override;

private:
    void takeLook(const Nodes::widgetAlarmBanner &banner);
    void refreshSoon();
    void refresh();
    BannerFacts present() const;
    bool mayAcknowledge(const BannerFacts &facts) const;
    void blink();
    void acknowledge(const Nodes::AlarmOccurrence &alarm);

    Utils::WatchedNode<Nodes::widgetAlarmBanner> m_banner;
    ElementBinding m_binding;
    BannerFacts m_facts;
    BannerFacts m_pressed; ///< shown when the button of the mouse went down
    BannerPainter::Part m_pressedPart = BannerPainter::None;
    bool m_isLate = false;
    QTimer m_refresh; ///< a flood is a few changes a second
    QTimer m_check;
};

} // namespace Widgets
