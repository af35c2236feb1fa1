#pragma once

#include "widgets/WidgetsExport.h"

#include "widgets/reports/engine/items/ItemFault.h"

#include <QBitArray>
#include <QString>
#include <QVector>

namespace LimeReport {

/// A bar code as modules: rows of dark and light cells. Any thread.
struct WIDGETS_EXPORT BarcodeSymbol
{
    /// `type`: a number of the encoder or a name such as "CODE128", "EAN13", "QRCODE",
    /// "DATAMATRIX"; case, blanks and hyphens do not matter. Of a type or content that can't be
    /// encoded `error` tells why.
    static BarcodeSymbol encode(const QString &type, const QString &content);
    /// Number of the encoder; 0 for an unknown one.
    static int typeOf(const QString &type);

    int columns = 0;
    int rows = 0;
    QBitArray dark;             ///< row by row
    QVector<double> rowHeights; ///< in modules; 0: whatever there is room for
    bool isSquare = false;      ///< modules are as high as they are wide
    int quietColumns = 0;       ///< light modules wanted on the left and on the right
    int quietRows = 0;          ///< and above and below
    QString text;               ///< for people, with the check digit; "" for codes without
    ItemFault fault;
};

} // namespace LimeReport
