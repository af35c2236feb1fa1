#pragma once

#include "widgets/WidgetsExport.h"
#include "widgets/elements/IWidget.h"
#include "widgets/elements/binding/ElementBinding.h"

#include "nodes/alarms/engine/AlarmOccurrence.h"
#include "nodes/events/BasicEvent.h"

#include <QFrame>
#include <QTimer>

#include <vector>

class QHBoxLayout;
class QLabel;
class QPushButton;

namespace Nodes {
class systemAlarming;
class widgetAlarmList;
} // namespace Nodes

namespace Widgets {

class AlarmList;
class ModelAlarms;
class TableAlarms;

/// Element of a Nodes::widgetAlarmList: the rows of the alarm window that its node chooses, with
/// buttons to acknowledge them and to go to where their signals are shown. Only what was seen is
/// acknowledged, as in the window. GUI thread.
class WIDGETS_EXPORT qwidgetAlarmList : public QFrame, public IWidget
{
    Q_OBJECT

public:
    using Node = Nodes::widgetAlarmList;

    qwidgetAlarmList(Nodes::widgetAlarmList *node, QWidget *parent,
                     const SceneContextPtr &context = SceneContext::process());
    ~qwidgetAlarmList() override;

    TableAlarms &table() const { return *m_table; }
    AlarmList &list() const { return *m_list; }

    const PropertyBindings &bindings() const override;

    ELEMENT_SIGNALS_AND_SLOTS

protected:
    void onActive(bool on) override;
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    bool event(QEvent *event) override;

private:
    QPushButton *addButton(QHBoxLayout &row, const QString &text);
    void buildButtons();
    void takeLook(const Nodes::widgetAlarmList &node);
    void takeFilter(const Nodes::widgetAlarmList &node);
    void takeButtons(const Nodes::widgetAlarmList &node);
    void layOut();

    Nodes::systemAlarming *alarming() const;
    bool isMeant(const Nodes::BasicEvent &alarm) const;
    void take(const std::vector<Nodes::BasicEvent> &alarms);
    void takePending();
    void takeAll();
    void follow();

    Nodes::AlarmOccurrences waiting(unsigned revision) const;
    Nodes::AlarmOccurrences selected(unsigned revision) const;
    void acknowledge(const Nodes::AlarmOccurrences &seen);
    void goToSource();

    ModelAlarms *m_model;
    AlarmList *m_list;
    TableAlarms *m_table;
    QWidget *m_controls;
    QLabel *m_count = nullptr;
    QPushButton *m_all = nullptr;
    QPushButton *m_one = nullptr;
    QPushButton *m_source = nullptr;
    std::vector<Nodes::BasicEvent> m_pending; ///< came since the list was sorted
    QTimer m_pause;                           ///< until it is sorted again
    QTimer m_check;                           ///< whether alarms are watched at all
    Nodes::AlarmOccurrences m_chosen;         ///< while a button is down
    Nodes::NodeLink m_below;                  ///< alarms at or below that node only
    Utils::WatchedNode<Nodes::widgetAlarmList> m_listNode;
    ElementBinding m_binding;
};

} // namespace Widgets
