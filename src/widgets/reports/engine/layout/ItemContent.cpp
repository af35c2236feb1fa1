#include "widgets/reports/engine/layout/ItemContent.h"

namespace LimeReport {

bool hasExpressions(const QString &content)
{
    return content.contains(QLatin1Char('$'));
}

ContentExpander::Expanded expandItem(const TemplateItem &item, ReportScope &scope,
                                     ContentExpander &expander)
{
    ContentExpander::Expanded expanded;
    const QString content = item.text(QStringLiteral("content"));
    if (!hasExpressions(content)) {
        expanded.text = item.flag(QStringLiteral("trimValue")) ? content.trimmed() : content;
        return expanded;
    }
    ContentFormat format;
    format.valueType = item.integer(QStringLiteral("valueType"));
    format.format = item.text(QStringLiteral("format"));
    format.isHtml = item.flag(QStringLiteral("allowHTML"));
    format.isTrimmed = item.flag(QStringLiteral("trimValue"));
    return expander.expand(content, scope, format);
}

} // namespace LimeReport
