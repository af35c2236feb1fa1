#pragma once

#include "widgets/WidgetsExport.h"

#include <QRectF>
#include <QString>
#include <QVariantMap>

class QPainter;

namespace LimeReport {

class ContentExpander;
class ReportScope;

/// Draws one class of template items (BarcodeItem, ChartItem, SVGItem). No state: one object serves
/// all items and threads.
class WIDGETS_EXPORT ItemPainter
{
public:
    virtual ~ItemPainter() = default;

    /// What the item shows for the scope's current rows, everything looked up. `properties` are the
    /// template's; a collection is a QVariantList of QVariantMap. The result holds only values that
    /// QDataStream writes. With a text for operators under `itemError` nothing can be drawn: the
    /// caller draws a placeholder with it instead of calling paint(); scope.errors() has it with
    /// its place already. Rendering thread.
    virtual QVariantMap resolve(const QVariantMap &properties, ReportScope &scope,
                                ContentExpander &expander) const = 0;
    /// Draws what resolve gave into `rect`, in any unit. `unitsPerMillimetre` sizes pens and text.
    /// Any thread.
    virtual void paint(QPainter &painter, const QRectF &rect, double unitsPerMillimetre,
                       const QVariantMap &resolved) const = 0;
};

/// Key of a text in what ItemPainter::resolve gives.
constexpr const char *itemError = "error";

/// By the class name of a template, with or without "LimeReport::"; null when it has none.
WIDGETS_EXPORT const ItemPainter *itemPainter(const QString &className);

} // namespace LimeReport
