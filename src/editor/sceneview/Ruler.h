#pragma once

#include <QWidget>

#include <optional>

namespace Editor {

/// Ruler beside a scene: scene pixels, the extent of what is selected and where the pointer is.
class Ruler : public QWidget
{
    Q_OBJECT

public:
    static constexpr int Thickness = 22; ///< pixels

    Ruler(Qt::Orientation orientation, QWidget *parent);

    /// The scene pixel at the ruler's beginning and the ruler's pixels a scene pixel.
    void setScale(double origin, double scale);
    /// Scene pixels.
    void setPointer(double at);
    void clearPointer();
    void setExtent(double begin, double end);
    void clearExtent();

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    bool isHorizontal() const { return m_orientation == Qt::Horizontal; }
    double pixelOf(double at) const { return (at - m_origin) * m_scale; }
    void paintExtent(QPainter &painter) const;
    void paintTicks(QPainter &painter) const;
    void paintValue(QPainter &painter, double at, int value) const;

    struct Extent
    {
        double begin;
        double end;
    };

    Qt::Orientation m_orientation;
    double m_origin = 0;
    double m_scale = 1;
    std::optional<double> m_pointer;
    std::optional<Extent> m_extent;
};

} // namespace Editor
