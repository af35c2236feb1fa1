#include "widgets/elements/qwidgetImage.h"

#include "widgets/elements/binding/PropertyBindings.h"
#include "widgets/elements/painting/ElementPainting.h"
#include "widgets/elements/pictures/ImageCachingManager.h"
#include "widgets/elements/pictures/MissingPicture.h"
#include "widgets/elements/pictures/PictureDecoder.h"

#include "nodes/visual/elements/widgetImage.h"

#include <QBuffer>
#include <QMovie>
#include <QPainter>

namespace Widgets {

qwidgetImage::qwidgetImage(Nodes::BasicWidget *node, QWidget *parent,
                           const SceneContextPtr &context)
    : qlabelBasic(node, parent, context), m_image(dynamic_cast<Nodes::widgetImage *>(node))
{
    // The element fills its own background: a widget's would be drawn twice.
    setAttribute(Qt::WA_NoSystemBackground);
    setScaledContents(true);
    qwidgetImage::onUpdateProperties(nullptr);
}

qwidgetImage::~qwidgetImage()
{
    stopAnimation();
}

const PropertyBindings &qwidgetImage::bindings() const
{
    using Prop = Node::Prop;
    static constexpr PropertyRow rows[] = {
        PropertyRow::geometry<qwidgetImage>(Then::Repaint),
        PropertyRow::takes<&qwidgetImage::takeBorder>(Then::Repaint, Prop::BorderColor,
                                                      Prop::BorderWidth),
        PropertyRow::takes<&qwidgetImage::takeSurface>(Then::Repaint, Prop::Background),
        PropertyRow::takes<&qwidgetImage::takeAngle>(Then::Repaint, Prop::Angle),
        PropertyRow::takes<&qwidgetImage::takeAnimated>(Then::Value, Prop::Animated),
        PropertyRow::only(Then::Repaint, Prop::Disabled),
        PropertyRow::only(Then::Value, Prop::Signal, Prop::Image),
    };
    static constexpr PropertyBindings all(rows);
    return all;
}

void qwidgetImage::onUpdateProperties(Nodes::BasicProperty *property)
{
    const Nodes::widgetImage *image = m_image.get();
    if (image && takeOver(*image, property))
        DirectPainting::repaint(*this);
}

void qwidgetImage::takeSurface(const Nodes::widgetImage &image)
{
    takeBackground(image);
    QPalette changed = palette();
    changed.setColor(backgroundRole(), m_backgroundColor);
    setPalette(changed);
}

void qwidgetImage::takeAngle(const Nodes::widgetImage &image)
{
    m_angle = int(image.GetAngle());
}

void qwidgetImage::takeAnimated(const Nodes::widgetImage &image)
{
    m_isAnimated = image.isAnimated();
}

void qwidgetImage::onValueUpdated(Nodes::SignalValue handed)
{
    if (!m_image)
        return;
    const Nodes::ResourcePtr before = m_resource;
    const Nodes::Quality marked = m_quality;
    (void)take(*m_image, handed, isEditor());
    if (!showPicture(m_image->GetCurrentImage()))
        clearPicture();
    if (marked != m_quality || before != m_resource)
        DirectPainting::repaint(*this);
}

void qwidgetImage::onActive(bool on)
{
    if (!on)
        stopAnimation();
    qlabelBasic::onActive(on);
}

QString qwidgetImage::shownText() const
{
    return m_resource ? QString::fromStdString(m_shownLink.GetFilePath()) : m_placeholder;
}

bool qwidgetImage::hasPicture() const
{
    return m_animation || m_still;
}

bool qwidgetImage::isShown(const Nodes::ResourcePtr &resource) const
{
    return resource && resource == m_resource &&
           (m_isAnimated ? m_animation != nullptr : m_still != nullptr);
}

bool qwidgetImage::showPicture(const Nodes::ResourceLink &link)
{
    m_wanted = link;
    if (link.GetFilePath().empty())
        return false;
    const Nodes::ResourcePtr resource = link.Load();
    if (isShown(resource))
        return true;
    const QImage *still =
        resource && !m_isAnimated ? ImageCachingManager::getInstance().getImage(resource) : nullptr;
    const bool isUsable = m_isAnimated ? PictureDecoder::isUsable(PictureDecoder::bytes(resource))
                                       : still && !still->isNull();
    if (!isUsable) {
        MissingPicture::report(context(), *m_image, link);
        return false;
    }
    clearPicture();
    m_resource = resource;
    m_shownLink = link;
    m_still = still;
    if (m_isAnimated && isActive())
        runAnimation();
    return true;
}

void qwidgetImage::showBuiltIn(const QImage &image)
{
    clearPicture();
    m_still = &image;
}

void qwidgetImage::showPlaceholder(const QString &caption)
{
    clearPicture();
    m_placeholder = caption;
}

void qwidgetImage::clearPicture()
{
    stopAnimation();
    m_placeholder.clear();
    m_still = nullptr;
    m_resource = Nodes::ResourcePtr();
}

void qwidgetImage::runAnimation()
{
    m_buffer = std::make_unique<QBuffer>();
    m_buffer->setData(PictureDecoder::bytes(m_resource));
    m_buffer->open(QIODevice::ReadOnly);
    m_animation = std::make_unique<QMovie>(m_buffer.get(), QByteArray());
    setMovie(m_animation.get());
    m_animation->setCacheMode(QMovie::CacheAll);
    m_animation->start();
}

void qwidgetImage::stopAnimation()
{
    if (!m_animation)
        return;
    m_animation->stop();
    setMovie(nullptr);
    m_animation.reset();
    m_buffer.reset();
}

QImage qwidgetImage::currentImage() const
{
    if (m_animation)
        return m_animation->currentImage();
    return m_still ? *m_still : QImage();
}

void qwidgetImage::drawPicture(QPainter &painter)
{
    const QRect target =
        rect().adjusted(m_borderWidth, m_borderWidth, -m_borderWidth, -m_borderWidth);
    if (m_still && m_resource) {
        ImageCachingManager::getInstance().draw(painter, target, m_resource, m_angle);
        return;
    }
    QImage image = currentImage();
    if (m_angle != 0)
        image = image.transformed(QTransform().rotate(m_angle));
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawImage(target, image);
}

void qwidgetImage::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    draw(painter);
}

void qwidgetImage::paintDirectly(QPainter &painter)
{
    draw(painter);
}

void qwidgetImage::draw(QPainter &painter)
{
    if (!m_image)
        return;
    if (m_backgroundColor.alpha() > 0)
        painter.fillRect(rect(), m_backgroundColor);
    if (hasPicture())
        drawPicture(painter);
    else if (!m_placeholder.isEmpty())
        MissingPicture::drawPlaceholder(painter, rect(), m_placeholder);
    else
        MissingPicture::draw(context(), painter, rect(), m_wanted);
    ElementPainting::drawBorder(painter, size(), m_borderWidth, m_borderColor);
    if (m_image->isDisabled())
        ElementPainting::drawDisabledCover(painter, rect());
    drawQualityMark(painter, rect(), Qt::AlignLeft);
}

} // namespace Widgets
