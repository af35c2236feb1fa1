#include "widgets/eventlist/WidgetEventToolBar.h"

#include "widgets/context/ActionSink.h"
#include "widgets/dialogs/Dialogs.h"
#include "widgets/eventlist/DateIntervalWidget.h"
#include "widgets/eventlist/EventListLook.h"
#include "widgets/eventlist/IntervalAction.h"
#include "widgets/eventlist/filter/EventFilterDialog.h"

#include "nodes/visual/events/widgetEventList.h"

#include <QToolButton>

namespace Widgets {

using Nodes::widgetEventList;

WidgetEventToolBar::WidgetEventToolBar(widgetEventList *node, QWidget *parent,
                                       const SceneContextPtr &context)
    : QToolBar(parent), m_node(node), m_context(context), m_interval(new IntervalAction(this))
{
    setMovable(false);
    setFloatable(false);
    setContextMenuPolicy(Qt::PreventContextMenu);
    setToolButtonStyle(Qt::ToolButtonTextOnly);
    setStyleSheet(EventListLook::toolBarStyle());
    addKey(tr("Назад"), tr("Интервал раньше"), &WidgetEventToolBar::onPrevious);
    addAction(m_interval);
    m_interval->setToolTip(tr("Выбрать интервал"));
    connect(m_interval, &QAction::triggered, this, &WidgetEventToolBar::onIntervalAction);
    addKey(tr("Вперед"), tr("Интервал позже"), &WidgetEventToolBar::onNext);
    addKey(tr("Фильтр"), tr("Выбрать источники событий"), &WidgetEventToolBar::onFilterAction);
    addKey(tr("Тревоги"), tr("Открыть окно тревог"), &WidgetEventToolBar::showAlarms);
    m_tracking = addAction(tr("Следовать"));
    m_tracking->setToolTip(tr("Показывать сегодня и прокручивать к новым событиям"));
    m_tracking->setCheckable(true);
    connect(m_tracking, &QAction::toggled, this, &WidgetEventToolBar::trackingChanged);
}

QAction *WidgetEventToolBar::addKey(const QString &text, const QString &tip,
                                    void (WidgetEventToolBar::*slot)())
{
    QAction *key = addAction(text);
    key->setToolTip(tip);
    connect(key, &QAction::triggered, this, slot);
    return key;
}

QDateTime WidgetEventToolBar::getFromDt() const
{
    return m_interval->from();
}

QDateTime WidgetEventToolBar::getToDt() const
{
    return m_interval->to();
}

void WidgetEventToolBar::setInterval(const QDateTime &from, const QDateTime &to)
{
    m_interval->setInterval(from, to);
}

void WidgetEventToolBar::setTraking(bool isTracking)
{
    m_tracking->setChecked(isTracking);
}

void WidgetEventToolBar::choose(const DayInterval &interval)
{
    setInterval(interval.from, interval.to);
    if (m_node)
        m_node->SetLength(m_interval->getIntervalDays(), widgetEventList::UnitDays);
    emit intervalChanged(interval.from, interval.to);
}

void WidgetEventToolBar::updateProperties()
{
    if (!m_node)
        return;
    setTraking(m_node->TrackingEnabled());
    choose(DayInterval::ofSeconds(m_node->GetLengthSeconds(), QDateTime::currentDateTime()));
    setIconSize(QSize(m_node->GetIconSize(), m_node->GetIconSize()));
    fitButtons();
    adjustSize();
}

void WidgetEventToolBar::fitButtons()
{
    const QList<QAction *> keys = actions();
    for (QAction *key : keys) {
        if (auto *button = qobject_cast<QToolButton *>(widgetForAction(key))) {
            button->setFixedHeight(iconSize().height());
            button->setMinimumWidth(iconSize().width());
        }
    }
}

void WidgetEventToolBar::onPrevious()
{
    choose(m_interval->interval().shifted(-m_interval->getIntervalDays()));
}

void WidgetEventToolBar::onNext()
{
    choose(m_interval->interval().shifted(m_interval->getIntervalDays()));
}

void WidgetEventToolBar::onCurrent()
{
    choose(DayInterval::upToToday(m_interval->getIntervalDays(), QDateTime::currentDateTime()));
}

void WidgetEventToolBar::onIntervalAction()
{
    DialogRequest request;
    request.parent = EventListLook::desktopWindowOf(this);
    request.element = widgetForAction(m_interval);
    const OwnedDialog<DateIntervalWidget> dialog(request);
    dialog->setInterval(getFromDt(), getToDt());
    const QPointer<WidgetEventToolBar> self = this;
    if (dialog->exec() == QDialog::Accepted && dialog && self)
        choose({dialog->from(), dialog->to()});
}

void WidgetEventToolBar::onFilterAction()
{
    if (!m_node)
        return;
    DialogRequest request;
    request.parent = EventListLook::desktopWindowOf(this);
    request.element = this;
    request.node = m_node.get();
    const OwnedDialog<EventFilterDialog> dialog(request);
    const QPointer<WidgetEventToolBar> self = this;
    if (dialog->exec() != QDialog::Accepted || !dialog || !self || !m_node)
        return;
    m_node->SetSources(dialog->sources());
    emit filterChanged();
}

void WidgetEventToolBar::showAlarms()
{
    m_context->actions().showAlarms();
}

} // namespace Widgets
