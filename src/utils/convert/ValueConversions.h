#pragma once

#include "utils/UtilsExport.h"

#include "nodes/values/Alignment.h"
#include "nodes/values/NColor.h"
#include "nodes/values/NFont.h"
#include "nodes/values/NPen.h"
#include "nodes/values/NPoint.h"
#include "nodes/values/NRect.h"

#include <QColor>
#include <QFont>
#include <QPen>
#include <QPoint>
#include <QRect>

namespace Utils {

/// The only place where geometry and style values of nodes become those of Qt. Any thread, except
/// fonts, which need the application object.
UTILS_EXPORT QColor NColorToQColor(const Nodes::NColor &color);
/// Point sizes below 1 become 1: Qt refuses them.
UTILS_EXPORT QFont NFontToQFont(const Nodes::NFont &font);
/// Square caps, so that width and length are exact on whole pixels. Style 0 draws nothing.
UTILS_EXPORT QPen NPenToQPen(const Nodes::NPen &pen);
UTILS_EXPORT QPoint NPointToQPoint(const Nodes::NPoint &point);
UTILS_EXPORT Nodes::NPoint QPointToNPoint(const QPoint &point);
UTILS_EXPORT QRect NRectToQRect(const Nodes::NRect &rect);
/// Codes other than 1 and 3 mean centre.
UTILS_EXPORT Qt::Alignment NAligmentToQtAligment(Nodes::enAlignmentHorizontal horizontal,
                                                 Nodes::enAlignmentVertical vertical);

} // namespace Utils
