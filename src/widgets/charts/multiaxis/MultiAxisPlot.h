#pragma once

#include "widgets/WidgetsExport.h"
#include "widgets/charts/multiaxis/MultiAxisScales.h"

#include <qwt_plot.h>

namespace Widgets {

class MultiAxisLayout;

/// A Qwt plot with any number of axes on each side, addressed by QwtAxisId.
///
/// Axis 0 of a side is Qwt's own, nearest to the canvas; further ones stand outwards in order. Each
/// has its scale, engine, scale draw, font, title, visibility and auto-scale. Items find their axis
/// when they are made of MultiAxisItem; any other item is drawn on axis 0 of its sides. Curves,
/// pickers (with packedAxis()), panner, direct painter and closestPoint() work with all axes;
/// QwtPlotZoomer does not (it indexes Qwt's four). Print and export with MultiAxisRenderer.
///
/// An axis that does not exist: setters do nothing, getters answer null or a default value.
/// Scales are taken over by replot() or updateAxes(). GUI thread only.
class WIDGETS_EXPORT MultiAxisPlot : public QwtPlot, public MultiAxisScales
{
    Q_OBJECT
public:
    explicit MultiAxisPlot(QWidget *parent = nullptr);
    ~MultiAxisPlot() override;

    /// Number of axes on a side, at least 1. Fewer than before deletes the outermost ones; items
    /// that stood there are drawn on axis 0 until they are given another. New ones are hidden.
    void setAxesCount(int position, int count);
    [[nodiscard]] int axesCount(int position, bool onlyVisible = false) const;
    [[nodiscard]] bool isAxisValid(QwtAxisId axis) const;
    void setAxisVisible(QwtAxisId axis, bool on = true);
    [[nodiscard]] bool isAxisVisible(QwtAxisId axis) const;

    /// Also takes packedAxis() numbers.
    [[nodiscard]] QwtScaleMap canvasMap(int packed) const override;
    [[nodiscard]] QwtScaleMap canvasMap(QwtAxisId axis) const;
    [[nodiscard]] double transform(QwtAxisId axis, double value) const;
    [[nodiscard]] double invTransform(QwtAxisId axis, double position) const;

    [[nodiscard]] QwtScaleEngine *axisScaleEngine(QwtAxisId axis) const;
    /// Takes the engine over.
    void setAxisScaleEngine(QwtAxisId axis, QwtScaleEngine *engine);
    void setAxisAutoScale(QwtAxisId axis, bool on = true);
    [[nodiscard]] bool axisAutoScale(QwtAxisId axis) const;
    void setAxisScale(QwtAxisId axis, double from, double to, double stepSize = 0);
    void setAxisScaleDiv(QwtAxisId axis, const QwtScaleDiv &division);
    [[nodiscard]] const QwtScaleDiv &axisScaleDiv(QwtAxisId axis) const;
    [[nodiscard]] QwtInterval axisInterval(QwtAxisId axis) const;
    [[nodiscard]] double axisStepSize(QwtAxisId axis) const;
    /// Takes the scale draw over.
    void setAxisScaleDraw(QwtAxisId axis, QwtScaleDraw *draw);
    [[nodiscard]] QwtScaleDraw *axisScaleDraw(QwtAxisId axis) const;
    [[nodiscard]] QwtScaleWidget *axisWidget(QwtAxisId axis) const;
    void setAxisFont(QwtAxisId axis, const QFont &font);
    [[nodiscard]] QFont axisFont(QwtAxisId axis) const;
    void setAxisTitle(QwtAxisId axis, const QString &title);
    void setAxisTitle(QwtAxisId axis, const QwtText &title);
    [[nodiscard]] QwtText axisTitle(QwtAxisId axis) const;
    void setAxisMaxMajor(QwtAxisId axis, int steps);
    [[nodiscard]] int axisMaxMajor(QwtAxisId axis) const;
    void setAxisMaxMinor(QwtAxisId axis, int steps);
    [[nodiscard]] int axisMaxMinor(QwtAxisId axis) const;
    void setAxisLabelAlignment(QwtAxisId axis, Qt::Alignment alignment);
    void setAxisLabelRotation(QwtAxisId axis, double degrees);

    /// All axes of the plot, left, right, bottom, top, each side outwards.
    [[nodiscard]] std::vector<QwtAxisId> axes(bool onlyVisible = false) const;
    /// The axis that a scale widget of this plot belongs to; no axis for any other widget.
    [[nodiscard]] QwtAxisId axisOf(const QWidget *scale) const;

    /// Scales every axis that scales itself and hands the divisions to the scales and the items.
    void updateAxes();
    void updateLayout() override;
    void replot() override;

    [[nodiscard]] bool isScalingFirstAxes() const override { return m_scalingFirstAxes; }
    [[nodiscard]] const std::vector<std::unique_ptr<ExtraAxis>> &
    extraAxes(int position) const override;

private:
    [[nodiscard]] bool isFirst(QwtAxisId axis) const;
    void updateExtraAxes();
    void tellItems();
    void keepBorders();
    void forgetBorders(QwtAxisId axis);
    /// What a layout settles: the place of the canvas and the borders of the first axes.
    std::vector<int> laidOut() const;
    void placeExtraAxes();
    void placeExtraAxis(const ExtraAxis &axis);

    std::vector<std::unique_ptr<ExtraAxis>> m_extra[QwtAxis::PosCount];
    MultiAxisLayout *m_layout; // owned by QwtPlot
    bool m_scalingFirstAxes = false;
};

} // namespace Widgets
