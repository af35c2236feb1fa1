#include "widgets/reports/engine/template/TemplateItem.h"

namespace LimeReport {

QString TemplateItem::text(const QString &key, const QString &otherwise) const
{
    const auto found = properties.constFind(key);
    return found == properties.constEnd() ? otherwise : found->toString();
}

int TemplateItem::integer(const QString &key, int otherwise) const
{
    const auto found = properties.constFind(key);
    bool isNumber = false;
    const int told = found == properties.constEnd() ? 0 : found->toInt(&isNumber);
    return isNumber ? told : otherwise;
}

double TemplateItem::real(const QString &key, double otherwise) const
{
    const auto found = properties.constFind(key);
    bool isNumber = false;
    const double told = found == properties.constEnd() ? 0 : found->toDouble(&isNumber);
    return isNumber ? told : otherwise;
}

bool TemplateItem::flag(const QString &key, bool otherwise) const
{
    const auto found = properties.constFind(key);
    return found == properties.constEnd() ? otherwise : found->toBool();
}

QColor TemplateItem::color(const QString &key, const QColor &otherwise) const
{
    const auto found = properties.constFind(key);
    return found == properties.constEnd() ? otherwise : found->value<QColor>();
}

QFont TemplateItem::font(const QString &key) const
{
    const QFont told = properties.value(key).value<QFont>();
    QFont own(told.family(), -1, told.weight(), told.italic());
    own.setPointSizeF(told.pointSizeF() > 0 ? told.pointSizeF() : 10);
    own.setUnderline(told.underline());
    return own;
}

} // namespace LimeReport
