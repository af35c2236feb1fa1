#include "widgets/scene/editing/paste/PasteReport.h"

#include <algorithm>

namespace Widgets {

QString PasteReport::summary() const
{
    if (isFailure())
        return failure;
    QStringList parts;
    if (!templates.isEmpty())
        parts << QStringLiteral("вместе с шаблонами: ") + templates.join(QStringLiteral(", "));
    const auto missing = std::count_if(rows.begin(), rows.end(),
                                       [](const Row &row) { return row.state == Row::Missing; });
    if (missing > 0)
        parts << QStringLiteral("ссылок без цели: %1").arg(missing);
    if (missing < rows.size())
        parts << QStringLiteral("ссылок под вопросом: %1").arg(rows.size() - missing);
    if (!skipped.isEmpty())
        parts << QStringLiteral("пропущено неизвестное");
    return parts.isEmpty() ? QString()
                           : QStringLiteral("Вставлено; ") + parts.join(QStringLiteral(", "));
}

} // namespace Widgets
