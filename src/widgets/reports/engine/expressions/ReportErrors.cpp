#include "widgets/reports/engine/expressions/ReportErrors.h"

namespace LimeReport {

namespace {

constexpr int keptTexts = 100;

} // namespace

void ReportErrors::add(const QString &text)
{
    const auto known = m_counts.find(text);
    if (known != m_counts.end()) {
        ++known.value();
        return;
    }
    if (m_order.size() >= keptTexts) {
        ++m_leftOut;
        return;
    }
    m_order.append(text);
    m_counts.insert(text, 1);
}

QStringList ReportErrors::texts() const
{
    QStringList lines;
    for (const QString &text : m_order) {
        const int count = m_counts.value(text);
        lines.append(count > 1 ? QStringLiteral("%1 (раз: %2)").arg(text).arg(count) : text);
    }
    if (m_leftOut > 0)
        lines.append(QStringLiteral("и ещё: %1").arg(m_leftOut));
    return lines;
}

} // namespace LimeReport
