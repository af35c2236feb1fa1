#include "widgets/charts/elements/GroupTabs.h"

#include "nodes/charts/widgetChart.h"
#include "nodes/model/BasicNode.h"
#include "utils/convert/PlainTip.h"

#include <QSignalBlocker>

namespace Widgets {

namespace {

constexpr int tabHeight = 32; // pixels; a finger hits it
constexpr int leastWidth = 96;

} // namespace

GroupTabs::GroupTabs(QWidget *parent) : QTabBar(parent)
{
    setShape(RoundedSouth);
    setDrawBase(false);
    setExpanding(false);
    setUsesScrollButtons(true);
    setElideMode(Qt::ElideRight);
    setFocusPolicy(Qt::NoFocus);
    QFont legible = font();
    legible.setPixelSize(14);
    setFont(legible);
    hide();
    connect(this, &QTabBar::tabBarClicked, this, &GroupTabs::chosen);
}

void GroupTabs::setGroups(const Nodes::widgetChart &chart, const Nodes::BasicNode *current)
{
    const QSignalBlocker blocker(this);
    const Nodes::NodeLinks groups = chart.GetGroups();
    while (count() > int(groups.size()))
        removeTab(count() - 1);
    for (int i = 0; i < int(groups.size()); ++i) {
        const Nodes::BasicNode *group = groups[std::size_t(i)].GetNode();
        const QString name = group ? QString::fromStdString(group->GetName()) : QString();
        if (i >= count())
            addTab(QString());
        setTabText(i, Utils::PlainCaption(name));
        setTabToolTip(i, Utils::PlainTip(name));
        if (group && group == current)
            setCurrentIndex(i);
    }
    setVisible(count() > 1);
}

QSize GroupTabs::tabSizeHint(int index) const
{
    const QSize hint = QTabBar::tabSizeHint(index);
    return {qMax(hint.width(), leastWidth), tabHeight};
}

} // namespace Widgets
