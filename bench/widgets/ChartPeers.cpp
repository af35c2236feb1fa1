// Where chart libraries are told apart. QCustomPlot is measured when libqcustomplot-dev is there.
#include "ChartPeers.h"

#include "widgets/charts/multiaxis/MultiAxisPlot.h"
#include "widgets/charts/painting/PlotCurve.h"

#include <qwt_plot_canvas.h>
#include <qwt_plot_curve.h>
#include <qwt_plot_grid.h>
#include <qwt_scale_map.h>

#ifdef BENCH_QCUSTOMPLOT
#include <qcustomplot.h>
#endif

#include <QPainter>

#include <algorithm>
#include <cmath>
#include <random>

namespace {

QColor colorOf(int curve)
{
    return QColor::fromHsv(curve * 17 % 360, 200, 160);
}

template <class Plot, class Curve> class QwtPeer : public ChartPeer
{
public:
    QwtPeer()
    {
        plot.resize(size);
        auto *canvas = static_cast<QwtPlotCanvas *>(plot.canvas());
        canvas->setPaintAttribute(QwtPlotCanvas::BackingStore, false);
        canvas->setPaintAttribute(QwtPlotCanvas::Opaque, false);
        canvas->setAttribute(Qt::WA_OpaquePaintEvent, false);
        canvas->setFrameStyle(QFrame::NoFrame);
        canvas->setPalette(QPalette(Qt::white));
        grid->setPen(Qt::lightGray);
        grid->attach(&plot);
        plot.setAxisScale(QwtPlot::yLeft, -1.6, 1.6);
        plot.show();
    }
    void addCurves(int count, double penWidth) override
    {
        for (int i = 0; i < count; ++i) {
            curves.push_back(new Curve);
            curves.back()->setPen(QPen(colorOf(i), penWidth));
            curves.back()->attach(&plot);
        }
    }
    void setRange(double from, double to) override
    {
        plot.setAxisScale(QwtPlot::xBottom, from, to);
    }
    void paint() override
    {
        plot.replot();
        plot.render(&m_image);
    }

    Plot plot;
    QwtPlotGrid *grid = new QwtPlotGrid;
    std::vector<Curve *> curves;
};

class StockPeer : public QwtPeer<QwtPlot, QwtPlotCurve>
{
public:
    void fill(int count) override
    {
        points.resize(curves.size());
        for (std::size_t c = 0; c < curves.size(); ++c) {
            for (int i = 0; i < count; ++i)
                points[c].append({double(i), valueAt(int(c), i)});
            curves[c]->setSamples(points[c]);
        }
    }
    void append(int curve, double x, double y) override
    {
        if (!growing)
            grow();
        stores[std::size_t(curve)]->points.append({x, y});
    }

private:
    struct Growing : QwtSeriesData<QPointF>
    {
        QVector<QPointF> points;
        size_t size() const override { return size_t(points.size()); }
        QPointF sample(size_t i) const override { return points.at(int(i)); }
        QRectF boundingRect() const override { return {0, -2, 1, 4}; }
    };
    void grow()
    {
        growing = true;
        for (std::size_t c = 0; c < curves.size(); ++c) {
            stores.push_back(new Growing);
            stores.back()->points = points[c];
            curves[c]->setData(stores.back());
        }
    }
    std::vector<QVector<QPointF>> points;
    std::vector<Growing *> stores;
    bool growing = false;
};

class OwnPeer : public QwtPeer<Widgets::MultiAxisPlot, Widgets::PlotCurve>
{
public:
    void fill(int count) override
    {
        for (std::size_t c = 0; c < curves.size(); ++c) {
            for (int i = 0; i < count; ++i)
                curves[c]->points()->append({double(i), valueAt(int(c), i)});
        }
    }
    void append(int curve, double x, double y) override
    {
        curves[std::size_t(curve)]->points()->append({x, y});
    }
};

#ifdef BENCH_QCUSTOMPLOT
class CustomPeer : public ChartPeer
{
public:
    CustomPeer()
    {
        plot.resize(size);
        plot.setNotAntialiasedElements(QCP::aeAll);
        plot.yAxis->setRange(-1.6, 1.6);
        plot.show();
    }
    void addCurves(int count, double penWidth) override
    {
        for (int i = 0; i < count; ++i)
            plot.addGraph()->setPen(QPen(colorOf(i), penWidth));
    }
    void fill(int count) override
    {
        for (int c = 0; c < plot.graphCount(); ++c) {
            QVector<double> x(count);
            QVector<double> y(count);
            for (int i = 0; i < count; ++i) {
                x[i] = i;
                y[i] = valueAt(c, i);
            }
            plot.graph(c)->setData(x, y, true);
        }
    }
    void append(int curve, double x, double y) override { plot.graph(curve)->addData(x, y); }
    void setRange(double from, double to) override { plot.xAxis->setRange(from, to); }
    void paint() override
    {
        plot.replot(QCustomPlot::rpQueuedRefresh);
        plot.render(&m_image);
    }

private:
    QCustomPlot plot;
};
#endif

/// What nobody can do without: a filled background and one span per curve and pixel column, from
/// extremes that are known already.
class LimitPeer : public ChartPeer
{
public:
    void addCurves(int count, double penWidth) override
    {
        curves.resize(std::size_t(count));
        width = int(penWidth);
    }
    void fill(int count) override
    {
        const double step = double(count) / size.width();
        for (std::size_t c = 0; c < curves.size(); ++c) {
            for (int column = 0; column < size.width(); ++column) {
                double low = 2;
                double high = -2;
                for (int i = int(column * step); i < int((column + 1) * step); ++i) {
                    low = std::min(low, valueAt(int(c), i));
                    high = std::max(high, valueAt(int(c), i));
                }
                const int top = int(size.height() * (0.5 - high / 3.2));
                const int bottom = int(size.height() * (0.5 - low / 3.2));
                curves[c].append(QRect(column, top, width, bottom - top + 1));
            }
        }
    }
    void append(int, double, double) override {}
    void setRange(double, double) override {}
    void paint() override
    {
        m_image.fill(Qt::white);
        QPainter painter(&m_image);
        painter.setPen(Qt::NoPen);
        for (std::size_t c = 0; c < curves.size(); ++c) {
            painter.setBrush(colorOf(int(c)));
            painter.drawRects(curves[c]);
        }
    }

private:
    std::vector<QVector<QRect>> curves;
    int width = 1;
};

} // namespace

double ChartPeer::valueAt(int curve, int i)
{
    static const std::vector<double> noise = [] {
        std::mt19937 random(3);
        std::uniform_real_distribution<double> spread(-0.1, 0.1);
        std::vector<double> made(65536);
        std::generate(made.begin(), made.end(), [&] { return spread(random); });
        return made;
    }();
    return std::sin(i * 2e-4 + curve) + noise[std::size_t(i * 7 + curve * 1000) & 65535];
}

std::unique_ptr<ChartPeer> ChartPeer::make(const QString &name)
{
    if (name == "ours")
        return std::make_unique<OwnPeer>();
    if (name == "stock")
        return std::make_unique<StockPeer>();
#ifdef BENCH_QCUSTOMPLOT
    if (name == "custom")
        return std::make_unique<CustomPeer>();
#endif
    return name == "limit" ? std::make_unique<LimitPeer>() : nullptr;
}
