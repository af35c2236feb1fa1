#include "widgets/charts/axes/ScaleDraw.h"

#include <qwt_text.h>

namespace Widgets {

void ScaleDraw::setColor(const QColor &color)
{
    m_color = color;
    invalidateCache();
}

QwtText ScaleDraw::colored(const QString &text) const
{
    // Never markup, whatever a project's format says.
    QwtText label(text, QwtText::PlainText);
    label.setColor(m_color);
    return label;
}

} // namespace Widgets
