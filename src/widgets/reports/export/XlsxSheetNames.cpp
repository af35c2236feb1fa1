#include "widgets/reports/export/XlsxSheetNames.h"

namespace Widgets {

namespace {

constexpr int longest = 31;

QString allowed(const QString &wanted)
{
    QString name;
    for (const QChar c : wanted)
        name += c.isPrint() && !QStringLiteral("[]:*?/\\'").contains(c) ? c : QChar('_');
    name = name.trimmed();
    return name.isEmpty() ? QStringLiteral("Данные") : name;
}

} // namespace

QString XlsxSheetNames::next(const QString &wanted)
{
    const QString name = allowed(wanted);
    QString free = name.left(longest);
    for (int number = 2; m_taken.contains(free.toCaseFolded()); ++number) {
        const QString mark = QStringLiteral(" (%1)").arg(number);
        free = name.left(longest - mark.size()) + mark;
    }
    m_taken.insert(free.toCaseFolded());
    return free;
}

} // namespace Widgets
