#include "widgets/elements/qwidgetMovingImage.h"

#include "widgets/elements/pictures/ImageCachingManager.h"

#include <QMouseEvent>
#include <QPainter>
#include <QRandomGenerator>

namespace Widgets {

namespace {

constexpr int movePeriod = 1000; // ms

int anywhere(int room)
{
    return int(QRandomGenerator::global()->bounded(qMax(room, 1)));
}

} // namespace

qwidgetMovingImage::qwidgetMovingImage(Nodes::BasicWidget *node, QWidget *parent,
                                       const SceneContextPtr &context)
    : qwidgetImage(node, parent, context)
{
    m_timer.setInterval(movePeriod);
    connect(&m_timer, &QTimer::timeout, this, &qwidgetMovingImage::onMoveImage);
}

qwidgetMovingImage::~qwidgetMovingImage() = default;

void qwidgetMovingImage::onActive(bool on)
{
    qwidgetImage::onActive(on);
    if (on)
        m_timer.start();
    else
        m_timer.stop();
}

void qwidgetMovingImage::onMoveImage()
{
    const QSize picture = currentImage().size();
    m_position = {anywhere(width() - picture.width()), anywhere(height() - picture.height())};
    DirectPainting::repaint(*this);
}

void qwidgetMovingImage::drawPicture(QPainter &painter)
{
    painter.save();
    painter.setClipRect(rect(), Qt::IntersectClip);
    if (stillImage() && shownResource())
        ImageCachingManager::getInstance().draw(painter, {m_position, stillImage()->size()},
                                                shownResource());
    else
        painter.drawImage(m_position, currentImage());
    painter.restore();
}

void qwidgetMovingImage::mousePressEvent(QMouseEvent *event)
{
    if (isRuntime())
        qwidgetImage::mousePressEvent(event);
    else
        event->ignore();
}

} // namespace Widgets
