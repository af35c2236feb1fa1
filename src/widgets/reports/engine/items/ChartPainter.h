#pragma once

#include "widgets/reports/engine/items/ItemPainter.h"

namespace LimeReport {

/// ChartItem: lines, bars or a pie of the columns of a data source, see docs/report-expressions.md.
/// A missing or bad value is a gap, one that is not good is drawn dotted.
class ChartPainter : public ItemPainter
{
public:
    QVariantMap resolve(const QVariantMap &properties, ReportScope &scope,
                        ContentExpander &expander) const override;
    void paint(QPainter &painter, const QRectF &rect, double unitsPerMillimetre,
               const QVariantMap &resolved) const override;
};

} // namespace LimeReport
