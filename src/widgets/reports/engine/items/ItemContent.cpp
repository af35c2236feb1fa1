#include "widgets/reports/engine/items/ItemContent.h"

#include "widgets/reports/engine/expressions/ContentExpander.h"
#include "widgets/reports/engine/expressions/ReportScope.h"
#include "widgets/reports/engine/items/ItemFault.h"
#include "widgets/reports/engine/items/ItemPainter.h"

namespace LimeReport::ItemContent {

QVariant valueOf(const QVariantMap &properties, const char *content, ReportScope &scope,
                 ContentExpander &expander)
{
    const QString source = properties.value(QStringLiteral("datasource")).toString();
    const QString field = properties.value(QStringLiteral("field")).toString();
    if (!source.isEmpty() && !field.isEmpty())
        return expander.value(QStringLiteral("$D{%1.%2}").arg(source, field), scope);
    return expander.value(properties.value(QLatin1String(content)).toString(), scope);
}

QVariantMap refused(ReportScope &scope, const ItemFault &fault)
{
    scope.addError(fault.error);
    return {{QLatin1String(itemError), fault.shown}};
}

} // namespace LimeReport::ItemContent
