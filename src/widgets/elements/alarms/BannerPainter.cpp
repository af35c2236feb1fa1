#include "widgets/elements/alarms/BannerPainter.h"

#include "widgets/elements/painting/AlarmShapes.h"

#include <QFontMetrics>
#include <QPainter>

namespace Widgets {

using Nodes::AlarmState;

namespace {

const QColor dark(0x20, 0x26, 0x2c);
const QColor muted(0x4a, 0x53, 0x5b);
const QColor light(0xf4, 0xf6, 0xf7);
const QColor trouble(0xc6, 0x28, 0x28);
const QColor disabledInk(0x8a, 0x92, 0x99);

constexpr int gap = 8;
constexpr int twoLines = 40; // height from which there is room for both
constexpr int badge = 20;
constexpr int wideBanner = 560; // from which the button has its word

QFont font(int pixels, bool isBold)
{
    QFont font(QStringLiteral("DejaVu Sans"));
    font.setPixelSize(pixels);
    font.setBold(isBold);
    return font;
}

const QFont &headlineFont()
{
    static const QFont bold = font(16, true);
    return bold;
}

const QFont &smallFont()
{
    static const QFont plain = font(14, false);
    return plain;
}

const QFont &countFont()
{
    static const QFont bold = font(14, true);
    return bold;
}

int widthOf(const QFont &font, const QString &text)
{
    return QFontMetrics(font).horizontalAdvance(text);
}

QString countText(const BannerFacts::Count &count)
{
    return QStringLiteral("%1/%2").arg(count.waiting).arg(count.active);
}

bool isShown(const BannerFacts::Count &count)
{
    return count.waiting > 0 || count.active > 0;
}

} // namespace

BannerPainter::BannerPainter(const BannerFacts &facts, const QSize &size, bool hasButton)
    : m_facts(facts), m_area(QPoint(), size)
{
    const int height = size.height();
    int right = size.width() - gap / 2;
    if (hasButton && !facts.isTrouble()) {
        const int width = size.width() < wideBanner ? height : 128;
        m_button = QRect(right - width, 4, width, height - 8);
        right -= width + gap;
    }
    const int middle = qMax(countsWidth(), notesWidth());
    m_counts = QRect(right - middle, 0, middle, height);
    right -= middle > 0 ? middle + gap : 0;
    const bool hasSign = facts.state == BannerFacts::Waiting;
    m_sign = hasSign ? QRect(0, 0, height, height) : QRect(0, 0, gap, height);
    m_text = QRect(m_sign.width(), 0, qMax(0, right - m_sign.width()), height);
}

BannerPainter::Part BannerPainter::partAt(const QPoint &place) const
{
    if (!m_area.contains(place))
        return None;
    if (m_button.contains(place))
        return Button;
    const bool isAlarm = m_facts.state == BannerFacts::Waiting;
    return isAlarm && (m_text | m_sign).contains(place) ? Text : Counts;
}

int BannerPainter::countsWidth() const
{
    int width = 0;
    for (const BannerFacts::Count &count : m_facts.counts) {
        if (isShown(count))
            width += badge + gap / 2 + widthOf(countFont(), countText(count)) + gap;
    }
    return width;
}

int BannerPainter::notesWidth() const
{
    int width = 0;
    for (const QString &note : m_facts.notes())
        width += widthOf(smallFont(), note) + gap + gap / 2;
    return width;
}

void BannerPainter::draw(QPainter &painter, bool isLit, bool isButtonDown) const
{
    painter.setRenderHint(QPainter::Antialiasing);
    if (m_facts.isTrouble())
        painter.fillRect(m_area, trouble);
    if (m_facts.state == BannerFacts::Waiting)
        drawSign(painter, isLit);
    const bool isQuiet = m_facts.state < BannerFacts::Acknowledged;
    drawTexts(painter, m_facts.isTrouble() ? QColor(Qt::white) : isQuiet ? muted : dark);
    drawCounts(painter);
    drawNotes(painter);
    if (!m_button.isNull())
        drawButton(painter, isButtonDown);
}

void BannerPainter::drawSign(QPainter &painter, bool isLit) const
{
    const bool isGone = m_facts.top.alarmState == AlarmState::ReturnedUnacked;
    const bool isFilled = isLit && !isGone;
    const int priority = m_facts.top.priority;
    const QRectF shape = QRectF(m_sign).adjusted(8, 8, -8, -8);
    painter.setBrush(isFilled ? AlarmShapes::color(priority) : light);
    painter.setPen(QPen(dark, 2, isGone ? Qt::DashLine : Qt::SolidLine));
    AlarmShapes::drawNumbered(painter, priority, shape,
                              isFilled ? AlarmShapes::ink(priority) : dark);
}

void BannerPainter::drawTexts(QPainter &painter, const QColor &ink) const
{
    const QString details = m_facts.details();
    const bool hasBoth = !details.isEmpty() && m_area.height() >= twoLines;
    const QRect upper = hasBoth ? m_text.adjusted(0, 3, 0, -m_text.height() / 2 + 1) : m_text;
    const auto draw = [&](const QRect &room, const QFont &used, const QString &text) {
        painter.setFont(used);
        painter.drawText(room, int(Qt::AlignLeft) | Qt::AlignVCenter | Qt::TextSingleLine,
                         QFontMetrics(used).elidedText(text, Qt::ElideRight, room.width()));
    };
    painter.setPen(ink);
    draw(upper, headlineFont(), m_facts.headline());
    if (hasBoth)
        draw(m_text.adjusted(0, m_text.height() / 2, 0, -3), smallFont(), details);
}

void BannerPainter::drawCounts(QPainter &painter) const
{
    const bool hasNotes = !m_facts.notes().isEmpty() && m_area.height() >= twoLines;
    const int middle = hasNotes ? m_area.height() / 4 + 1 : m_area.height() / 2;
    int left = m_counts.left();
    for (std::size_t i = 0; i < m_facts.counts.size(); ++i) {
        const BannerFacts::Count &count = m_facts.counts[i];
        if (!isShown(count))
            continue;
        const int priority = int(i) + 1;
        const QRectF place(left + 1, middle - badge / 2 + 1, badge - 2, badge - 2);
        painter.setPen(QPen(dark, 1.5));
        painter.setBrush(count.waiting > 0 ? AlarmShapes::color(priority) : light);
        AlarmShapes::drawNumbered(painter, priority, place,
                                  count.waiting > 0 ? AlarmShapes::ink(priority) : dark);
        left += badge + gap / 2;
        const QString text = countText(count);
        const int width = widthOf(countFont(), text);
        painter.setFont(countFont());
        painter.setPen(dark);
        painter.drawText(QRect(left, middle - badge / 2, width + 1, badge), Qt::AlignCenter, text);
        left += width + gap;
    }
}

void BannerPainter::drawNotes(QPainter &painter) const
{
    const bool isBelow = m_area.height() >= twoLines;
    if (!isBelow && countsWidth() > 0)
        return;
    const int top = countsWidth() > 0 ? m_area.height() / 2 + 1 : (m_area.height() - badge) / 2;
    int left = m_counts.left();
    painter.setFont(smallFont());
    for (const QString &note : m_facts.notes()) {
        const QRect box(left, top, widthOf(smallFont(), note) + gap, badge);
        painter.setPen(QPen(muted, 1));
        painter.setBrush(light);
        painter.drawRect(QRectF(box).adjusted(0.5, 0.5, -0.5, -0.5));
        painter.setPen(dark);
        painter.drawText(box, Qt::AlignCenter, note);
        left += box.width() + gap / 2;
    }
}

void BannerPainter::drawButton(QPainter &painter, bool isDown) const
{
    const bool isUsable = m_facts.state == BannerFacts::Waiting && m_facts.mayAcknowledge;
    painter.setPen(QPen(isUsable ? muted : disabledInk, isUsable ? 2 : 1));
    painter.setBrush(isDown     ? QColor(0xa9, 0xb0, 0xb6)
                     : isUsable ? light
                                : QColor(Qt::transparent));
    painter.drawRect(QRectF(m_button).adjusted(1, 1, -1, -1));
    painter.setFont(countFont());
    painter.setPen(isUsable ? dark : disabledInk);
    const bool hasWord = m_button.width() > m_button.height() + gap;
    painter.drawText(m_button, Qt::AlignCenter,
                     hasWord ? QStringLiteral("Квитировать") : QStringLiteral("✓"));
}

} // namespace Widgets
