#include "widgets/scene/editing/Locker.h"

#include <QGraphicsPixmapItem>
#include <QGraphicsSceneMouseEvent>
#include <QIcon>

namespace Widgets {

namespace {

constexpr double side = 14; // pixels

} // namespace

Locker::Locker(QGraphicsItem *parent)
    : GraphicsItem(parent), m_picture(new QGraphicsPixmapItem(this))
{
    setSize(side, side);
    setAcceptedMouseButtons(Qt::LeftButton);
    showState();
    updateVisibility();
}

Locker::~Locker() = default;

void Locker::setLock(bool lock)
{
    if (lock == m_isLocked)
        return;
    m_isLocked = lock;
    showState();
    updateVisibility();
    emit lockChanged(lock);
}

void Locker::setOwnerSelected(bool on)
{
    m_isOwnerSelected = on;
    updateVisibility();
}

void Locker::setSuppressed(bool on)
{
    m_isSuppressed = on;
    updateVisibility();
}

void Locker::showState()
{
    const QIcon icon(m_isLocked ? QStringLiteral(":/icons/lock6.png")
                                : QStringLiteral(":/icons/unlock6.png"));
    m_picture->setPixmap(
        icon.pixmap(QSizeF(width(), height()).toSize())); // dense where the screen is
}

void Locker::updateVisibility()
{
    setVisible(!m_isSuppressed && (m_isLocked || m_isOwnerSelected));
}

void Locker::paint(QPainter *, const QStyleOptionGraphicsItem *, QWidget *) {}

void Locker::mousePressEvent(QGraphicsSceneMouseEvent *event)
{
    setLock(!m_isLocked);
    event->accept();
}

} // namespace Widgets
