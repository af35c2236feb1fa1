#pragma once

#include "widgets/WidgetsExport.h"

#include <QFont>
#include <QPoint>
#include <QSize>
#include <QString>

class QPainter;

namespace Widgets {

/// Text of one label with its layout kept between paintings. GUI thread.
class WIDGETS_EXPORT LabelText
{
public:
    /// How the text stands in its element; what a layout depends on beside text and font.
    struct Place
    {
        QSize box;
        QPoint centre;    ///< that the text is turned about
        double angle = 0; ///< degrees, clockwise
        int borderWidth = 0;
        int flags = 0; ///< Qt::Alignment and Qt::TextFlag
        bool operator==(const Place &o) const
        {
            return box == o.box && centre == o.centre && angle == o.angle &&
                   borderWidth == o.borderWidth && flags == o.flags;
        }
    };

    void setFont(const QFont &font);
    /// Draws with the painter's pen.
    void draw(QPainter &painter, const Place &place, const QString &text);

private:
    QFont m_font;
};

} // namespace Widgets
