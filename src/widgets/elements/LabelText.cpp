#include "widgets/elements/LabelText.h"

#include "widgets/elements/ElementPainting.h"

#include <QPainter>

namespace Widgets {

void LabelText::setFont(const QFont &font)
{
    m_font = font;
}

void LabelText::draw(QPainter &painter, const Place &place, const QString &text)
{
    painter.setFont(m_font);
    ElementPainting::drawRotatedText(painter, place.box, place.centre, place.angle,
                                     place.borderWidth, place.flags, text);
}

} // namespace Widgets
