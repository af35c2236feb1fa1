#include "widgets/charts/series/DiscretBands.h"

#include "widgets/charts/painting/BarFreePlace.h"
#include "widgets/charts/painting/CurveData.h"
#include "widgets/charts/series/qwidgetChartDiscretSerie.h"

#include <QFontMetricsF>
#include <QPainter>
#include <QWidget>
#include <qwt_plot.h>
#include <qwt_scale_map.h>

#include <algorithm>
#include <cmath>

namespace Widgets {

namespace {

constexpr int fillAlpha = 110;
constexpr int captionPixels = 13;
constexpr double captionGap = 4;
const QColor captionInk(0x20, 0x26, 0x2c);
const QColor captionGround(255, 255, 255, 200);
const QColor bandLine(0x8a, 0x94, 0x9b);
const QColor hatchInk(0x59, 0x63, 0x6b);

/// Rectangles of one kind, those that share a column of pixels as one: what is drawn is bounded by
/// the width of the canvas, however many changes there were.
class Stripes
{
public:
    Stripes(QPainter &painter, const QBrush &brush, double top, double bottom)
        : m_painter(painter), m_brush(brush), m_top(top), m_bottom(bottom)
    {
    }
    ~Stripes() { flush(); }
    Stripes(const Stripes &) = delete;
    Stripes &operator=(const Stripes &) = delete;

    void add(double left, double right)
    {
        left = std::floor(left);
        right = std::max(std::ceil(right), left + 1); // a pulse of any length is seen
        if (m_right >= left && m_right > m_left) {
            m_right = std::max(m_right, right);
            return;
        }
        flush();
        m_left = left;
        m_right = right;
    }

private:
    void flush()
    {
        if (m_right > m_left)
            m_painter.fillRect(QRectF(m_left, m_top, m_right - m_left, m_bottom - m_top), m_brush);
        m_left = m_right = 0;
    }

    QPainter &m_painter;
    const QBrush m_brush;
    const double m_top;
    const double m_bottom;
    double m_left = 0;
    double m_right = 0;
};

} // namespace

DiscretFill::DiscretFill(const qwidgetChartDiscretSerie &serie) : m_serie(serie)
{
    setItemAttribute(QwtPlotItem::AutoScale, true);
}

QRectF DiscretFill::boundingRect() const
{
    const CurveData &points = *m_serie.points();
    const double left = points.size() == 0 ? 0 : points.sample(0).x();
    const double right = points.size() == 0 ? 0 : points.last().x();
    return forScaling(QRectF(left, double(m_serie.getOffsetY()), std::max(right - left, 0.0), 1),
                      plot());
}

void DiscretFill::draw(QPainter *painter, const QwtScaleMap &sideX, const QwtScaleMap &sideY,
                       const QRectF &canvas) const
{
    const CurveData &points = *m_serie.points();
    if (points.size() == 0 || !points.isSorted())
        return;
    const QwtScaleMap xMap = adapted(xAxis(), sideX);
    const QwtScaleMap yMap = adapted(yAxis(), sideY);
    const double off = yMap.transform(double(m_serie.getOffsetY()));
    const double on = yMap.transform(double(m_serie.getOffsetY()) + 1);
    QColor fill = m_serie.getColor();
    fill.setAlpha(fillAlpha);
    painter->save();
    {
        Stripes filled(*painter, fill, on, off);
        Stripes unknown(*painter, QBrush(hatchInk, Qt::BDiagPattern), on, off);
        const double leftEdge = xMap.invTransform(canvas.left());
        std::size_t i = points.indexAt(leftEdge);
        for (i = i > 0 ? i - 1 : 0; i < points.size(); ++i) {
            const double left = std::max(xMap.transform(points.sample(i).x()), canvas.left());
            if (left > canvas.right())
                break;
            const bool isLast = i + 1 == points.size();
            const double until = isLast ? m_serie.heldUntil() : points.sample(i + 1).x();
            const double right = std::min(xMap.transform(until), canvas.right());
            if (right < canvas.left())
                continue;
            if (!points.isDrawn(i))
                unknown.add(left, right);
            else if (points.sample(i).y() > double(m_serie.getOffsetY()) + 0.5)
                filled.add(left, right);
        }
    }
    painter->restore();
}

void DiscretBaseLine::draw(QPainter *painter, const QwtScaleMap &, const QwtScaleMap &sideY,
                           const QRectF &canvas) const
{
    const double off = adapted(yAxis(), sideY).transform(double(m_serie.getOffsetY()));
    painter->save();
    painter->setPen(QPen(bandLine, 1, Qt::DotLine));
    painter->drawLine(QPointF(canvas.left(), off), QPointF(canvas.right(), off));
    painter->restore();
}

void DiscretCaption::draw(QPainter *painter, const QwtScaleMap &, const QwtScaleMap &sideY,
                          const QRectF &canvas) const
{
    const QwtScaleMap yMap = adapted(yAxis(), sideY);
    const double off = yMap.transform(double(m_serie.getOffsetY()));
    const double on = yMap.transform(double(m_serie.getOffsetY()) + 1);
    painter->save();
    QFont font;
    const double height = std::abs(off - on) - 2; // bands may be narrow, or of no size at all
    font.setPixelSize(height > 9 && height < captionPixels ? int(height)
                      : height > 9                         ? captionPixels
                                                           : 9);
    painter->setFont(font);
    const QString text = m_serie.caption();
    const QFontMetricsF metrics(font);
    const QSizeF size(metrics.horizontalAdvance(text) + 2 * captionGap, metrics.height());
    const QPointF corner(canvas.left() + captionGap, (on + off - size.height()) / 2);
    const QRectF place = BarFreePlace(*plot()->canvas(), QRectF(corner, size));
    if (place.bottom() > canvas.top() && place.top() < canvas.bottom()) {
        painter->fillRect(place, captionGround);
        painter->setPen(captionInk);
        painter->drawText(place, Qt::AlignCenter, text);
    }
    painter->restore();
}

} // namespace Widgets
