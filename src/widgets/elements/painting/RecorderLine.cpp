#include "widgets/elements/painting/RecorderLine.h"

#include "widgets/elements/binding/EditedValue.h"
#include "widgets/elements/painting/ElementPainting.h"
#include "widgets/elements/painting/TabularText.h"
#include "widgets/elements/painting/ZoneSigns.h"

#include "nodes/values/NumberText.h"
#include "nodes/visual/elements/recorderChannel.h"
#include "utils/convert/TimeConversions.h"

#include <QFontMetricsF>
#include <QPainter>

#include <cmath>

namespace Widgets {

namespace {

constexpr int margin = 8; // pixels
constexpr int resetWidth = 72;
constexpr int touchHeight = 36;
constexpr double valueShare = 0.78; // of the line's height, for figures read from afar
constexpr double textShare = 0.30;
constexpr double extremesShare = 0.64; // of the name's size
constexpr double namesShare = 0.40;    // of the width, for name and extremes
const QColor dividerColor(196, 202, 208);
const QColor buttonColor(226, 229, 232);
const QColor pressedColor(196, 202, 208);
const QColor buttonFrame(120, 126, 132);

QFont sized(const QFont &font, double pixels)
{
    QFont changed(font);
    changed.setPixelSize(qMax(1, int(pixels)));
    return changed;
}

QFont textFont(const QFont &font, const QRect &line)
{
    const double smallest = QFontInfo(font).pixelSize();
    return sized(font, qMin(qMax(smallest, line.height() * textShare), line.height() * 0.42));
}

QRect namesPlace(const QRect &line)
{
    return QRect(line.left() + margin + 6, line.top() + 2, int(line.width() * namesShare),
                 line.height() - 4);
}

QString extremesOf(const Nodes::recorderChannel &channel)
{
    const Nodes::ValueExtremes::State state = channel.GetExtremes();
    const auto number = [&channel](const std::optional<double> &extreme) {
        return extreme ? QString::fromStdString(channel.FormatNumber(*extreme))
                       : QStringLiteral("–");
    };
    return QStringLiteral("мин %1  макс %2  с %3")
        .arg(number(state.minimum), number(state.maximum),
             Utils::timeText(state.since, "dd.MM hh:mm"));
}

} // namespace

RecorderLine RecorderLine::of(const Nodes::recorderChannel &channel, bool hasExtremes,
                              bool isEdited)
{
    RecorderLine line;
    const Nodes::SignalValue value = channel.GetValue();
    line.name = QString::fromStdString(channel.GetText());
    line.unit = QString::fromStdString(channel.GetUnit());
    line.quality = value.GetQuality();
    line.mark = channel.GetAlarmMark(value);
    line.value = QLatin1String(Nodes::NoValueText);
    if (value.IsError() && value.GetError() == Nodes::Result::AccessDenied) {
        line.value = QStringLiteral("Нет прав");
        line.unit.clear();
    }
    if (hasExtremes)
        line.extremes = extremesOf(channel);
    const double number = value.ToDouble();
    if (isEdited && !value.IsGood()) {
        line.quality = Nodes::Quality::Good;
        line.value = QString::fromStdString(EditedValue::formOf(channel.FormatNumber(0)));
        return line;
    }
    if (line.quality == Nodes::Quality::Bad || std::isnan(number))
        return line;
    line.value = QString::fromStdString(channel.FormatNumber(number));
    return line;
}

QRect RecorderLine::resetButton(const QRect &line)
{
    QRect button(0, 0, resetWidth, qMin(line.height() - 4, qMax(touchHeight, line.height() / 2)));
    button.moveCenter(line.center());
    button.moveRight(line.right() - margin);
    return button;
}

void RecorderLine::draw(QPainter &painter, const QRect &line, const QFont &font,
                        const QColor &color, bool isPressed) const
{
    painter.setPen(dividerColor);
    painter.drawLine(line.bottomLeft(), line.bottomRight());
    drawState(painter, line);
    painter.setPen(color);
    drawTexts(painter, line, font);
    drawValue(painter, line, font);
    if (!extremes.isEmpty())
        drawReset(painter, line, font, isPressed);
}

void RecorderLine::drawState(QPainter &painter, const QRect &line) const
{
    if (mark.state == Nodes::AlarmState::Normal)
        return;
    painter.fillRect(QRect(line.left(), line.top() + 1, 8, line.height() - 2),
                     ZoneSigns::color(mark, Qt::transparent));
    const double height = line.height() * 0.42;
    QRectF badge(0, 0, height * ZoneSigns::BadgeAspect, height);
    badge.moveCenter(QRectF(line).center());
    badge.moveLeft(namesPlace(line).right() + margin);
    ZoneSigns::drawBadge(painter, badge, mark);
}

void RecorderLine::drawTexts(QPainter &painter, const QRect &line, const QFont &font) const
{
    const QRect place = namesPlace(line);
    const QFont own = textFont(font, line);
    const QFontMetricsF metrics(own);
    painter.setFont(own);
    const Qt::Alignment vertical = extremes.isEmpty() ? Qt::AlignVCenter : Qt::AlignTop;
    painter.drawText(place, int(Qt::AlignLeft | vertical),
                     metrics.elidedText(name, Qt::ElideRight, place.width()));
    if (extremes.isEmpty())
        return;
    const QFont small = sized(own, own.pixelSize() * extremesShare);
    painter.setFont(small);
    TabularText::draw(painter,
                      QRectF(place.left(), place.top() + metrics.height(), place.width(),
                             place.height() - metrics.height()),
                      Qt::AlignLeft,
                      QFontMetricsF(small).elidedText(extremes, Qt::ElideRight, place.width()));
}

void RecorderLine::drawValue(QPainter &painter, const QRect &line, const QFont &font) const
{
    const double badgeWidth = line.height() * 0.42 * ZoneSigns::BadgeAspect;
    const int left = namesPlace(line).right() + 2 * margin + int(badgeWidth);
    const int right =
        extremes.isEmpty() ? line.right() - margin : resetButton(line).left() - margin;
    const QFont own = textFont(font, line);
    const int unitWidth =
        qMax(int(line.height() * 0.9), int(QFontMetricsF(own).horizontalAdvance(unit)));
    const QRect number(left, line.top(), right - unitWidth - margin - left, line.height());
    QFont large = sized(font, line.height() * valueShare);
    large.setItalic(large.italic() || quality == Nodes::Quality::Stale);
    const double wanted = TabularText::width(large, value);
    if (wanted > number.width()) // smaller rather than cut
        large.setPixelSize(qMax(1, int(large.pixelSize() * number.width() / wanted)));
    painter.setFont(large);
    TabularText::draw(painter, number, Qt::AlignRight, value);
    painter.setFont(own);
    painter.drawText(QRect(number.right() + margin, line.top(), unitWidth, line.height()),
                     int(Qt::AlignLeft | Qt::AlignVCenter), unit);
    ElementPainting::drawQualityMark(painter, number.adjusted(0, 2, 0, -3), quality,
                                     Qt::AlignRight);
}

void RecorderLine::drawReset(QPainter &painter, const QRect &line, const QFont &font,
                             bool isPressed)
{
    const QRect button = resetButton(line);
    painter.fillRect(button, isPressed ? pressedColor : buttonColor);
    const QPen pen = painter.pen();
    painter.setPen(buttonFrame);
    painter.drawRect(button.adjusted(0, 0, -1, -1));
    painter.setPen(pen);
    painter.setFont(sized(font, 15));
    painter.drawText(button, Qt::AlignCenter, QStringLiteral("Сброс"));
}

} // namespace Widgets
