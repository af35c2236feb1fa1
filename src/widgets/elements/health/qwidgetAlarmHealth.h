#pragma once

#include "widgets/WidgetsExport.h"
#include "widgets/elements/IWidget.h"
#include "widgets/elements/binding/ElementBinding.h"

#include "widgets/elements/health/HealthPage.h"

#include <QFrame>

#include <optional>

namespace Nodes {
class widgetAlarmHealth;
}

namespace Widgets {

/// Element of a Nodes::widgetAlarmHealth: the page of alarm health in a frame. GUI thread.
class WIDGETS_EXPORT qwidgetAlarmHealth : public QFrame, public IWidget
{
    Q_OBJECT

public:
    using Node = Nodes::widgetAlarmHealth;

    qwidgetAlarmHealth(Nodes::widgetAlarmHealth *node, QWidget *parent,
                       const SceneContextPtr &context = SceneContext::process());
    ~qwidgetAlarmHealth() override;

    HealthPage *page() const { return m_page; }
    const PropertyBindings &bindings() const override;

    ELEMENT_SIGNALS_AND_SLOTS

protected:
    void onActive(bool on) override;
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    bool event(QEvent *event) override;

private:
    void takeLook(const Nodes::widgetAlarmHealth &health);
    void takeSettings(const Nodes::widgetAlarmHealth &health);
    void placePage();

    HealthPage *m_page;
    std::optional<HealthPage::Settings> m_settings; // taken over last
    Utils::WatchedNode<Nodes::widgetAlarmHealth> m_health;
    ElementBinding m_binding;
};

} // namespace Widgets
