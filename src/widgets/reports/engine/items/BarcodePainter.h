#pragma once

#include "widgets/reports/engine/items/ItemPainter.h"

namespace LimeReport {

/// BarcodeItem: `content` (or `datasource` and `field`), `barcodeType`, `hideText`, `hideIfEmpty`,
/// `foregroundColor`, `backgroundColor`, `angle` (0, 90, 180, 270). Drawn as large as fits, modules
/// all alike, with the quiet zone that readers want.
class BarcodePainter : public ItemPainter
{
public:
    QVariantMap resolve(const QVariantMap &properties, ReportScope &scope,
                        ContentExpander &expander) const override;
    void paint(QPainter &painter, const QRectF &rect, double unitsPerMillimetre,
               const QVariantMap &resolved) const override;
};

} // namespace LimeReport
