#include "widgets/elements/symbols/SymbolStyle.h"

#include "widgets/elements/symbols/SymbolRewriter.h"

namespace Widgets {

using Nodes::SymbolLook;

const QColor SymbolStyle::FaultColor(198, 40, 40);

namespace {

struct Inks
{
    QColor hollow;
    QColor filled;
    QColor line;
    QColor fault;
};

const QColor darkColor(74, 83, 91);
const QColor lightColor(244, 245, 246);
const Inks onLight{lightColor, darkColor, darkColor, SymbolStyle::FaultColor};
const Inks onDark{{52, 58, 64}, {208, 213, 218}, {208, 213, 218}, {240, 110, 110}};

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

SymbolStyle SymbolStyle::of(SymbolLook look, const QColor &body, const QColor &line,
                            Surface surface)
{
    const bool isOnDark = surface == Surface::Dark;
    const Inks &inks = isOnDark ? onDark : onLight;
    SymbolStyle style;
    style.look = look;
    style.body = body;
    style.line = line;
    switch (look) {
    case SymbolLook::Plain:
        if (!isOnDark) { // drawn for a light one
            if (body.isValid())
                style.sign = inkOn(body);
            return style;
        }
        style.body = orElse(body, inks.hollow);
        break;
    case SymbolLook::Off:
        style.body = orElse(body, inks.hollow);
        break;
    case SymbolLook::On:
        style.body = orElse(body, inks.filled);
        break;
    case SymbolLook::Moving:
        style.body = inks.hollow;
        style.half = orElse(body, inks.filled);
        style.sign = QColor(126, 147, 164); // on both halves
        break;
    case SymbolLook::Fault:
        style.body = inks.hollow;
        style.line = style.sign = inks.fault;
        return style;
    case SymbolLook::Unknown:
        style.body = inks.hollow;
        style.line = style.sign = inks.line;
        style.isDashed = true;
        return style;
    }
    style.line = orElse(line, inks.line);
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
