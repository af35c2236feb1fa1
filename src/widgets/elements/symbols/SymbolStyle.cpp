#include "widgets/elements/symbols/SymbolStyle.h"

#include "widgets/elements/symbols/SymbolRewriter.h"

namespace Widgets {

using Nodes::SymbolLook;

const QColor SymbolStyle::FaultColor(198, 40, 40);

namespace {

const QColor darkColor(74, 83, 91);
const QColor lightColor(244, 245, 246);

QColor orElse(const QColor &wanted, const QColor &usual)
{
    return wanted.isValid() ? wanted : usual;
}

/// Told from that surface.
QColor inkOn(const QColor &surface)
{
    return qGray(surface.rgb()) < 128 ? Qt::white : darkColor;
}

} // namespace

SymbolStyle SymbolStyle::of(SymbolLook look, const QColor &body, const QColor &line)
{
    SymbolStyle style;
    style.look = look;
    style.body = body;
    style.line = line;
    switch (look) {
    case SymbolLook::Plain:
        if (body.isValid())
            style.sign = inkOn(body);
        return style;
    case SymbolLook::Off:
        style.body = orElse(body, lightColor);
        break;
    case SymbolLook::On:
        style.body = orElse(body, darkColor);
        break;
    case SymbolLook::Moving:
        style.body = lightColor;
        style.half = orElse(body, darkColor);
        style.sign = QColor(126, 147, 164); // on both halves
        break;
    case SymbolLook::Fault:
        style.body = lightColor;
        style.line = style.sign = FaultColor;
        return style;
    case SymbolLook::Unknown:
        style.body = lightColor;
        style.line = style.sign = darkColor;
        style.isDashed = true;
        return style;
    }
    style.line = orElse(line, darkColor);
    if (!style.sign.isValid())
        style.sign = inkOn(style.body);
    return style;
}

QByteArray SymbolStyle::apply(const QByteArray &svg) const
{
    return SymbolRewriter(svg, *this).rewritten();
}

QString SymbolStyle::key() const
{
    QString text = QString::number(int(look));
    for (const QColor &color : {body, half, line, sign, level})
        text += ' ' + (color.isValid() ? color.name(QColor::HexArgb) : QString());
    return text;
}

} // namespace Widgets
