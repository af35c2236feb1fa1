#include "widgets/reports/export/ExportColumns.h"

#include <cmath>

namespace Widgets {

namespace {

bool isAllGood(const LimeReport::SharedRows &rows, int column)
{
    const int count = rows.rowCount();
    for (int row = 0; row < count; ++row)
        if (rows.quality(row, column) != Nodes::Quality::Good)
            return false;
    return true;
}

} // namespace

ExportColumns::ExportColumns(const LimeReport::SharedRows &rows)
    : m_rows(rows), m_names(rows.columns())
{
    for (int i = 0; i < m_names.size(); ++i) {
        m_columns.append({i, false});
        if (!isAllGood(rows, i))
            m_columns.append({i, true});
    }
}

QString ExportColumns::header(int column) const
{
    const Column &told = m_columns[column];
    const QString name = m_names.at(told.source);
    return told.isQuality ? QStringLiteral("%1 (качество)").arg(name) : name;
}

QVariant ExportColumns::cell(int row, int column) const
{
    const Column &told = m_columns[column];
    if (told.isQuality) {
        const Nodes::Quality quality = m_rows.quality(row, told.source);
        return quality == Nodes::Quality::Good ? QString() : QString(Nodes::QualityName(quality));
    }
    QVariant value = m_rows.value(row, told.source);
    const bool isReal = value.type() == QVariant::Double || int(value.type()) == QMetaType::Float;
    const bool isNothing = isReal ? !std::isfinite(value.toDouble())
                                  : value.isNull() && value.type() != QVariant::String;
    return isNothing ? QVariant() : value;
}

} // namespace Widgets
