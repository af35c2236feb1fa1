#pragma once

#include "widgets/WidgetsExport.h"

#include <QRect>
#include <QVector>

namespace Widgets {

/// Places and sizes of elements that are brought in line with each other. Whole scene pixels.
namespace Arrangement {

enum class enKind {
    AlignLeft, ///< edges and centres: to those of the key element
    AlignCentre,
    AlignRight,
    AlignTop,
    AlignMiddle,
    AlignBottom,
    GapsAcross, ///< equal gaps from left to right; the outermost stay
    GapsDown,
    CentresAcross, ///< equal distances of the centres; the outermost stay
    CentresDown,
    SameWidth, ///< those of the key element; the upper left corners stay
    SameHeight,
    SameSize
};

/// Rectangles after it, in the order given. `key` is an index; one that is none leaves all as they
/// are.
WIDGETS_EXPORT QVector<QRect> arranged(enKind kind, const QVector<QRect> &rects, int key);

} // namespace Arrangement

} // namespace Widgets
