#pragma once

#include "widgets/reports/engine/items/ItemPainter.h"

namespace LimeReport {

/// SVGItem: the drawing of `datasource` and `field`, of `variable`, of the file `resourcePath`
/// below the report's directory, or `image` itself. Keeps its proportions.
class SvgPainter : public ItemPainter
{
public:
    QVariantMap resolve(const QVariantMap &properties, ReportScope &scope,
                        ContentExpander &expander) const override;
    void paint(QPainter &painter, const QRectF &rect, double unitsPerMillimetre,
               const QVariantMap &resolved) const override;
};

} // namespace LimeReport
