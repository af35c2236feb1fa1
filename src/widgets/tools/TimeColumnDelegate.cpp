#include "widgets/tools/TimeColumnDelegate.h"

#include <QDateTime>

namespace Widgets {

QString TimeColumnDelegate::displayText(const QVariant &value, const QLocale &locale) const
{
    const QDateTime time = value.toDateTime();
    return time.isValid() ? time.toString(QStringLiteral("dd.MM.yyyy HH:mm:ss"))
                          : QStyledItemDelegate::displayText(value, locale);
}

} // namespace Widgets
