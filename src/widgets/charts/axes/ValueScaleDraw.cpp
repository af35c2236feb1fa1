#include "widgets/charts/axes/ValueScaleDraw.h"

#include <qwt_text.h>

namespace Widgets {

namespace {

Nodes::NumberFormat formatOf(const std::string &text)
{
    const auto format = Nodes::NumberFormat::Parse(text);
    return format ? *format : *Nodes::NumberFormat::Parse(ValueScaleDraw::DefaultFormat);
}

} // namespace

ValueScaleDraw::ValueScaleDraw(const QColor &color, const std::string &format)
    : ScaleDraw(color), m_format(formatOf(format))
{
}

void ValueScaleDraw::setFormat(const std::string &format)
{
    m_format = formatOf(format);
    invalidateCache();
}

QwtText ValueScaleDraw::label(double value) const
{
    return colored(QLatin1Char(' ') + QString::fromStdString(m_format.Text(value)));
}

} // namespace Widgets
