// How the box looks, at rest and while editing.
#include "widgets/elements/binding/ElementTooltip.h"
#include "widgets/elements/painting/ElementPainting.h"
#include "widgets/elements/qwidgetEditBox.h"

#include "nodes/visual/elements/widgetEditBox.h"

#include <QKeyEvent>
#include <QPainter>
#include <QPushButton>
#include <QtMath>

namespace Widgets {

namespace {

const QColor problemColor(198, 40, 40);

} // namespace

void qwidgetEditBox::resizeButtons()
{
    const int b = qMax(0, m_borderWidth);
    const QRect inner = rect().adjusted(b, b, -b, -b);
    const int side = qCeil(inner.height() * 0.5) + 2;
    QRect key(0, 0, inner.height() + 2, inner.height() + 2);
    key.moveTopRight(QPoint(inner.right() + 1, inner.top() - 1));
    QRect up(0, 0, side, side);
    up.moveTopRight(QPoint(m_hasKeyboardButton ? key.left() + 1 : key.right(), key.top()));
    QRect down(0, 0, side, inner.height() / 2 + 2);
    down.moveBottomRight(QPoint(up.right(), inner.bottom() + 1));
    m_keyboard->setGeometry(key);
    m_up->setGeometry(up);
    m_down->setGeometry(down);
    const QFont signs(QStringLiteral("Arial"), qMax(1, int(height() * 0.4)));
    m_up->setFont(signs);
    m_down->setFont(signs);
}

void qwidgetEditBox::updateButtons()
{
    const bool isShown = m_isEditing || isEditor();
    m_up->setVisible(isShown && m_hasStepButtons);
    m_down->setVisible(isShown && m_hasStepButtons);
    m_keyboard->setVisible(isShown && m_hasKeyboardButton);
    layOutTyping();
}

void qwidgetEditBox::layOutTyping()
{
    const bool isShown = m_isEditing || isEditor();
    const QPushButton *leftmost = m_hasStepButtons ? m_up : m_keyboard;
    const bool isCovered = isShown && (m_hasStepButtons || m_hasKeyboardButton);
    const int buttons = isCovered ? width() - leftmost->x() : 0;
    if (!m_isEditing) {
        setTextMargins(0, 0, buttons, 0);
        if (m_editBox)
            setFont(getCurrentFont());
        return;
    }
    const int b = qMax(0, m_borderWidth);
    const QString live = shownText();
    LiveValueStrip::Room room{rect().adjusted(b, b, -qMax(b, buttons), -b), getCurrentFont(),
                              m_alignment, live};
    for (const QString &text : {m_startText, m_pending, QStringLiteral("00000")}) {
        if (text.size() > room.widest.size())
            room.widest = text;
    }
    m_strip = LiveValueStrip::of(room, live);
    const QMargins keepClear = m_strip.margins + QMargins(0, 0, qMax(0, buttons - b), 0);
    if (textMargins() != keepClear)
        setTextMargins(keepClear);
    QFont typing = room.font;
    typing.setPixelSize(m_strip.typingSize);
    if (font() != typing)
        setFont(typing);
}

void qwidgetEditBox::resizeEvent(QResizeEvent *event)
{
    QLineEdit::resizeEvent(event);
    resizeButtons();
    layOutTyping();
}

void qwidgetEditBox::drawRotatedText(QPainter *painter)
{
    QFont font = getCurrentFont();
    font.setItalic(font.italic() || m_quality == Nodes::Quality::Stale);
    m_layout.setFont(font);
    m_layout.draw(*painter,
                  {m_geometry.size(), QPoint(m_geometry.width() / 2, m_geometry.height() / 2),
                   m_editBox->GetAngle(), m_borderWidth, int(m_alignment)},
                  shownText());
}

void qwidgetEditBox::drawValue(QPainter &painter)
{
    sepCountCalc();
    painter.setPen(m_editBox->isDisabled()
                       ? palette().color(QPalette::Disabled, QPalette::ButtonText)
                       : m_textColor);
    drawRotatedText(&painter);
    drawQualityMark(painter, rect(), m_alignment);
}

void qwidgetEditBox::drawTyping(QPainter &painter) const
{
    painter.save();
    m_strip.draw(painter, shownText(), m_quality);
    painter.restore();
    if (!inputProblem().isEmpty())
        drawProblem(painter);
}

// In the corner of the typing that its alignment leaves free.
void qwidgetEditBox::drawProblem(QPainter &painter) const
{
    ElementPainting::drawBorder(painter, size(), qMax(2, m_borderWidth), problemColor);
    const QRect typing = rect().adjusted(2, 2, -2, -2).marginsRemoved(textMargins());
    QRect sign(0, 0, 14, 14);
    if (m_alignment & Qt::AlignRight)
        sign.moveTopLeft(typing.topLeft());
    else
        sign.moveTopRight(typing.topRight());
    painter.fillRect(sign, problemColor);
    QFont font(QStringLiteral("DejaVu Sans"));
    font.setPixelSize(12);
    font.setBold(true);
    painter.setFont(font);
    painter.setPen(Qt::white);
    painter.drawText(sign, Qt::AlignCenter, QStringLiteral("!"));
}

void qwidgetEditBox::paintEvent(QPaintEvent *event)
{
    QPainter(this).fillRect(rect(), m_backgroundColor);
    QLineEdit::paintEvent(event);
    if (!m_editBox)
        return;
    QPainter painter(this);
    if (!m_isEditing)
        drawValue(painter);
    ElementPainting::drawBorder(painter, m_geometry.size(), m_borderWidth, m_borderColor);
    if (m_isEditing)
        drawTyping(painter);
    if (m_editBox->isDisabled())
        ElementPainting::drawDisabledCover(painter, rect());
}

// What hides a box in the middle of an edit, and the focus that Qt then moves on, writes nothing.
void qwidgetEditBox::hideEvent(QHideEvent *event)
{
    abandon(QStringLiteral("Поле скрыто."));
    QLineEdit::hideEvent(event);
}

void qwidgetEditBox::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::EnabledChange && !isEnabled())
        abandon(QStringLiteral("Поле отключено."));
    QLineEdit::changeEvent(event);
}

bool qwidgetEditBox::event(QEvent *event)
{
    if (event->type() == QEvent::ToolTip && m_isEditing && !inputProblem().isEmpty())
        return ElementTooltip::show(event, inputProblem());
    const QPointer<qwidgetEditBox> alive(this);
    if (event->type() == QEvent::KeyPress && m_isUnfinished)
        moveOn(*static_cast<QKeyEvent *>(event));
    if (!alive)
        return true;
    return ElementTooltip::show(event, m_node.get()) || QLineEdit::event(event);
}

} // namespace Widgets
