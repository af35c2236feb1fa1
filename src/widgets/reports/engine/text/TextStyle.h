#pragma once

#include "widgets/WidgetsExport.h"

#include <QColor>
#include <QFont>
#include <Qt>

namespace LimeReport {

struct TemplateItem;

/// How a text item writes. Fonts are not to be shared by threads, so every thread makes its own.
struct WIDGETS_EXPORT TextStyle
{
    explicit TextStyle(const TemplateItem &item);

    QFont font;
    QColor color;
    /// Invalid: nothing is filled.
    QColor background;
    Qt::Alignment alignment;
    /// 0.1 mm on each side.
    double margin;
    /// Degrees, clockwise, 0 up to below 360.
    double angle;
    bool isHtml;
    bool isAutoHeight;

    /// Whether lines run down or up, so that the box's height is what they are broken at.
    bool isUpright() const { return angle == 90 || angle == 270; }
};

} // namespace LimeReport
