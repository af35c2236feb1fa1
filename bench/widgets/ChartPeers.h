#pragma once

#include <QImage>
#include <QString>

#include <memory>
#include <vector>

/// One chart library as the benchmarks see it: curves over the same x, axes and grid, 1600 x 800.
class ChartPeer
{
public:
    static constexpr QSize size{1600, 800};

    virtual ~ChartPeer() = default;
    virtual void addCurves(int count, double penWidth) = 0;
    /// Every curve gets the points i = 0..count-1 at x = i.
    virtual void fill(int count) = 0;
    virtual void append(int curve, double x, double y) = 0;
    virtual void setRange(double from, double to) = 0;
    /// One whole frame: scales, grid, curves.
    virtual void paint() = 0;

    [[nodiscard]] const QImage &image() const { return m_image; }

    /// A noisy sine, the same for everybody.
    static double valueAt(int curve, int i);
    static std::vector<double> values(int curve, int count);

    /// "ours", "stock", "custom" (null when it is not installed) or "limit".
    static std::unique_ptr<ChartPeer> make(const QString &name);

protected:
    QImage m_image{size, QImage::Format_RGB32};
};
