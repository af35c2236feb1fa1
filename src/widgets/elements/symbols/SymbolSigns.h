#pragma once

#include "widgets/WidgetsExport.h"

#include "nodes/visual/elements/SymbolLook.h"

class QPainter;
class QRectF;

namespace Widgets {

/// Signs over a symbol that tell its state without colour. The painter stays as it was.
class WIDGETS_EXPORT SymbolSigns
{
public:
    /// A diamond with an exclamation mark at the lower right for a fault, a question mark in the
    /// middle for what is not known; nothing for other looks.
    static void draw(QPainter &painter, const QRectF &area, Nodes::SymbolLook look);
};

} // namespace Widgets
