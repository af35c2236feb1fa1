#pragma once

#include "widgets/elements/qwidgetImage.h"

#include <QTimer>

namespace Nodes {
class widgetMovingImage;
}

namespace Widgets {

/// Picture of a Nodes::widgetMovingImage in its own size: once a second, while active, it takes
/// another place in the element. An axis on which it does not fit it starts at 0.
class WIDGETS_EXPORT qwidgetMovingImage : public qwidgetImage
{
    Q_OBJECT

public:
    using Node = Nodes::widgetMovingImage;

    qwidgetMovingImage(Nodes::BasicWidget *node, QWidget *parent,
                       const SceneContextPtr &context = SceneContext::process());
    ~qwidgetMovingImage() override;

    /// Top-left corner of the picture in the element.
    QPoint picturePosition() const { return m_position; }

protected:
    void onActive(bool on) override;
    void mousePressEvent(QMouseEvent *event) override;
    void drawPicture(QPainter &painter) override;

private slots:
    void onMoveImage();

private:
    QTimer m_timer;
    QPoint m_position;
};

} // namespace Widgets
