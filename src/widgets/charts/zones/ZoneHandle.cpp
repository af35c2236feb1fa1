#include "widgets/charts/zones/ZoneHandle.h"

#include "widgets/dialogs/DialogLook.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>

namespace Widgets {

namespace {

const QColor ink(0x20, 0x26, 0x2c);

} // namespace

ZoneHandle::ZoneHandle(bool isUpper, QWidget *canvas) : QWidget(canvas), m_isUpper(isUpper)
{
    setCursor(Qt::SizeVerCursor);
    setFocusPolicy(Qt::ClickFocus);
    setToolTip(isUpper ? QStringLiteral("Потяните, чтобы изменить верхний предел")
                       : QStringLiteral("Потяните, чтобы изменить нижний предел"));
    MakeLegible(*this);
    hide();
}

void ZoneHandle::place(double y)
{
    m_y = y;
    fit();
    setVisible(y >= 0 && y <= parentWidget()->height());
}

void ZoneHandle::setNumber(const QString &text)
{
    m_number = text;
    fit();
    update();
}

void ZoneHandle::fit()
{
    const int text = m_number.isEmpty() ? 0 : fontMetrics().horizontalAdvance(m_number) + 16;
    const int right = parentWidget()->width() - 4;
    const int width = Size.width() + text;
    // Half beyond the edge would be half a finger: it stays on the canvas as a whole.
    const int top = qBound(0, qRound(m_y) - Size.height() / 2,
                           qMax(0, parentWidget()->height() - Size.height()));
    setGeometry(right - width, top, width, Size.height());
}

void ZoneHandle::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF grip =
        QRectF(width() - Size.width(), 0, Size.width(), height()).adjusted(1, 5, -1, -5);
    painter.setPen(QPen(ink, m_isDragged ? 2 : 1));
    painter.setBrush(QColor(255, 255, 255, 230));
    painter.drawRoundedRect(grip, 4, 4);
    // An arrow to the side that the zone lies on, and what a thumb holds.
    const QPointF centre = grip.center();
    const double direction = m_isUpper ? 1 : -1;
    const QPointF arrow[] = {centre + QPointF(-14, -3 * direction),
                             centre + QPointF(-4, -3 * direction),
                             centre + QPointF(-9, 4 * direction)};
    painter.setBrush(ink);
    painter.drawPolygon(arrow, 3);
    for (const int offset : {-3, 0, 3})
        painter.drawLine(centre + QPointF(3, offset), centre + QPointF(14, offset));
    if (m_number.isEmpty())
        return;
    const QRectF text(1, 1, width() - Size.width() - 3, height() - 2);
    painter.setBrush(Qt::white);
    painter.drawRoundedRect(text, 3, 3);
    painter.drawText(text, Qt::AlignCenter, m_number);
}

void ZoneHandle::mousePressEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton)
        return;
    m_isDragged = true;
    m_grip = event->localPos().y() + y() - m_y;
    setFocus(Qt::MouseFocusReason);
    emit dragged(m_y);
}

void ZoneHandle::mouseMoveEvent(QMouseEvent *event)
{
    if (m_isDragged)
        emit dragged(event->localPos().y() + y() - m_grip);
}

void ZoneHandle::mouseReleaseEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton || !m_isDragged)
        return;
    m_isDragged = false;
    setNumber({});
    emit dropped();
}

void ZoneHandle::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Escape && m_isDragged)
        cancel();
    else
        QWidget::keyPressEvent(event);
}

// A box that comes up takes the limit out of the hand: nothing is written that nobody let go.
void ZoneHandle::focusOutEvent(QFocusEvent *event)
{
    QWidget::focusOutEvent(event);
    if (m_isDragged)
        cancel();
}

void ZoneHandle::cancel()
{
    m_isDragged = false;
    setNumber({});
    emit cancelled();
}

} // namespace Widgets
