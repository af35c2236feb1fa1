#pragma once

#include "widgets/elements/binding/ShowsValue.h"
#include "widgets/elements/painting/DirectPainting.h"
#include "widgets/elements/qlabelBasic.h"

#include "nodes/model/links/ResourceLink.h"
#include "nodes/values/Quality.h"

#include <QImage>

#include <memory>

class QBuffer;
class QMovie;

namespace Nodes {
class widgetImage;
}

namespace Widgets {

/// Picture of a Nodes::widgetImage, still or animated, turned by any angle, stretched over the
/// element inside its border. Still pictures come from the ImageCachingManager; each element runs
/// an animation of its own, only while it is active. Where the node has a signal, its quality is
/// marked. For a node of another class nothing is drawn.
class WIDGETS_EXPORT qwidgetImage : public qlabelBasic, public DirectPainting, public ShowsValue
{
    Q_OBJECT

public:
    using Node = Nodes::widgetImage;

    qwidgetImage(Nodes::BasicWidget *node, QWidget *parent,
                 const SceneContextPtr &context = SceneContext::process());
    ~qwidgetImage() override;

    /// Path of the file shown, or what stands in its place; "" for none and for a picture that is
    /// no file of the project.
    QString shownText() const override;
    /// Shown now; null without a still picture. Owned by the cache.
    const QImage *stillImage() const { return m_still; }
    /// Bytes of what is shown; null for a picture that is built in.
    const Nodes::ResourcePtr &shownResource() const { return m_resource; }
    /// Null unless an animation is shown.
    const QMovie *animation() const { return m_animation.get(); }

    const PropertyBindings &bindings() const override;
    void paintDirectly(QPainter &painter) override;

public slots:
    void onValueUpdated(Nodes::SignalValue value) override;
    void onUpdateProperties(Nodes::BasicProperty *property) override;

protected:
    void onActive(bool on) override;
    void paintEvent(QPaintEvent *event) override;

    /// Shows the file. False when there is none or it cannot be shown, which is reported: then
    /// what was shown stays.
    bool showPicture(const Nodes::ResourceLink &link);
    /// Shows a picture that is no file of the project; it has to outlive the element.
    void showBuiltIn(const QImage &image);
    /// Shows a crossed frame with that caption.
    void showPlaceholder(const QString &caption);
    void clearPicture();
    /// True when there is something to draw.
    bool hasPicture() const;
    /// Current frame or picture in its own size.
    QImage currentImage() const;
    virtual void drawPicture(QPainter &painter);

private:
    void takeSurface(const Nodes::widgetImage &image);
    void takeAngle(const Nodes::widgetImage &image);
    void takeAnimated(const Nodes::widgetImage &image);
    void draw(QPainter &painter);
    bool isShown(const Nodes::ResourcePtr &resource) const;
    void runAnimation();
    void stopAnimation();

    int m_angle = 0; ///< degrees
    bool m_isAnimated = false;
    const QImage *m_still = nullptr;
    Nodes::ResourceLink m_wanted;      ///< asked for last, whether or not it can be shown
    Nodes::ResourceLink m_shownLink;   ///< that of m_resource
    Nodes::ResourcePtr m_resource;     ///< bytes of what is shown
    std::unique_ptr<QBuffer> m_buffer; ///< over m_resource; the animation reads it
    std::unique_ptr<QMovie> m_animation;
    QString m_placeholder;                          ///< caption, while one is shown
    Utils::WatchedNode<Nodes::widgetImage> m_image; ///< null also for another class
};

} // namespace Widgets
