#include "widgets/charts/axes/ToolBarAxisX.h"

#include "nodes/charts/widgetChartAxis.h"

#include <QAction>
#include <QIcon>

namespace Widgets {

namespace {

QString lengthText(const Nodes::widgetChartAxis &axis)
{
    const QString length = QString::number(qint64(axis.GetRangeLength()));
    switch (axis.GetRangeUnit()) {
    case Nodes::widgetChartAxis::RangeSeconds:
        return length + QStringLiteral("с");
    case Nodes::widgetChartAxis::RangeMinutes:
        return length + QStringLiteral("м");
    case Nodes::widgetChartAxis::RangeHours:
        return length + QStringLiteral("ч");
    case Nodes::widgetChartAxis::RangeDays:
        return length + QStringLiteral("Д");
    }
    return QStringLiteral("?");
}

QIcon trackingIcon(bool on)
{
    return QIcon(on ? QStringLiteral(":/icons/play-20.png")
                    : QStringLiteral(":/icons/pause-20.png"));
}

} // namespace

ToolBarAxisX::ToolBarAxisX(Nodes::widgetChart *chart, QWidget *parent) : ToolBar(chart, parent)
{
    m_tracking = addKey(tr("Следовать"), QStringLiteral(":/icons/play-20.png"),
                        tr("Следовать за текущим временем"));
    m_tracking->setCheckable(true);
    m_length = addKey(QStringLiteral("-"), QString(), tr("Ширина интервала"));
    m_previous = addKey(QStringLiteral("<<"), QString(), tr("Перемотать назад"));
    m_next = addKey(QStringLiteral(">>"), QString(), tr("Перемотать вперед"));
    connect(m_tracking, &QAction::triggered, this, &ToolBarAxisX::setTracking);
    connect(m_length, &QAction::triggered, this, &ToolBarAxisX::actionLengthX);
    connect(m_previous, &QAction::triggered, this, &ToolBarAxisX::actionPeriodPrev);
    connect(m_next, &QAction::triggered, this, &ToolBarAxisX::actionPeriodNext);
    fit();
}

bool ToolBarAxisX::tracking() const
{
    return m_tracking->isChecked();
}

void ToolBarAxisX::setTracking(bool on)
{
    m_tracking->setChecked(on);
    m_tracking->setIcon(trackingIcon(on));
    emit trackingChanged(on);
}

void ToolBarAxisX::updateLenghtXTitle()
{
    const auto governed = axes();
    if (governed.empty())
        return;
    const QString length = lengthText(*governed.front());
    m_length->setText(length);
    m_length->setToolTip(tr("Ширина интервала"));
    m_previous->setText(QStringLiteral("<<"));
    m_previous->setToolTip(tr("Перемотать назад на ") + length);
    m_next->setText(QStringLiteral(">>"));
    m_next->setToolTip(tr("Перемотать вперед на ") + length);
    fit();
}

void ToolBarAxisX::onUpdateProperties()
{
    updateLenghtXTitle();
    ToolBar::onUpdateProperties();
}

} // namespace Widgets
