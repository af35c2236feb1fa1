#pragma once

#include <QStyledItemDelegate>

namespace Widgets {

/// Shows moments as the station does everywhere, to the second.
class TimeColumnDelegate : public QStyledItemDelegate
{
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    QString displayText(const QVariant &value, const QLocale &locale) const override;
};

} // namespace Widgets
