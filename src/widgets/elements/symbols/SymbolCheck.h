#pragma once

#include "widgets/WidgetsExport.h"

#include <QString>

class QByteArray;

namespace Widgets {

/// Decides which vector pictures may become symbols: what is drawn on a station must neither reach
/// out of its file nor grow without bound while it is read. Any thread.
class WIDGETS_EXPORT SymbolCheck
{
public:
    static constexpr qint64 MaximumBytes = 8 << 20;
    static constexpr int MaximumDepth = 100;
    /// Shapes, those that <use> repeats counted as often as they are drawn.
    static constexpr qint64 MaximumShapes = 20'000;

    /// Russian reason and what to do; empty for a picture that may be shown.
    static QString refusal(const QByteArray &svg);
};

} // namespace Widgets
