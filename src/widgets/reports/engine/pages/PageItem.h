#pragma once

#include "widgets/WidgetsExport.h"

#include <QByteArray>
#include <QColor>
#include <QRectF>
#include <QString>
#include <QVector>

namespace LimeReport {

/// One thing that stands on a printed page, ready to be painted: contents are filled in, places
/// are final. How it looks is told by the template's item of that number.
struct PageItem
{
    enum Kind : quint8 {
        Text,        ///< `text`, plain or rich as its item says
        Shape,       ///< lines, ellipses, rectangles
        Image,       ///< `data`: an encoded picture; of the template when it is empty
        Drawn,       ///< by the ItemPainter of its class; `data`: what it resolved to
        Fill,        ///< a band's background in `color`
        Placeholder, ///< what could not be printed; `text` says why
    };

    /// How good the values in a text are, as Nodes::Quality.
    enum : quint8 { Good = 0 };

    Kind kind = Text;
    quint8 quality = Good;
    int style = 0;
    /// Of the text that is known after the last page only, see PageStore; -1: none.
    int late = -1;
    /// 0.1 mm from the corner of the sheet.
    QRectF rect;
    QColor color;
    QString text;
    QByteArray data;
};

/// A page as it is printed.
struct PrintedPage
{
    /// Index of the template's page.
    int page = 0;
    /// 0.1 mm.
    QSizeF size;
    QVector<PageItem> items;

    bool isNull() const { return size.isEmpty(); }
};

WIDGETS_EXPORT QByteArray toBytes(const PrintedPage &page);
/// A null page when the bytes are none.
WIDGETS_EXPORT PrintedPage pageFromBytes(const QByteArray &bytes);

} // namespace LimeReport
