#include "widgets/eventlist/IntervalAction.h"

namespace Widgets {

IntervalAction::IntervalAction(QObject *parent) : QAction(parent) {}

void IntervalAction::setInterval(const QDateTime &from, const QDateTime &to)
{
    m_interval = {from, to};
    const QString format = QStringLiteral("dd.MM.yyyy");
    setText(QStringLiteral("%1 - %2 %3Д")
                .arg(from.toString(format), to.toString(format))
                .arg(getIntervalDays()));
}

} // namespace Widgets
