#include "widgets/charts/plots/PlotCorridor.h"

#include "widgets/charts/pickers/PickerCanvasCorridor.h"
#include "widgets/charts/plots/PlotCanvas.h"
#include "widgets/charts/series/qwidgetChartCorridorSerie.h"

#include "nodes/archive/SignalHistoryResponse.h"
#include "nodes/charts/widgetChartCorridor.h"

#include <algorithm>
#include <cmath>

namespace Widgets {

namespace {

constexpr double sketchedPart = 0.06; // of the scale, on either side of the line

} // namespace

PlotCorridor::PlotCorridor(Nodes::widgetChartCorridor *chart, int number, QWidget *parent)
    : PlotHistory(chart, number, parent)
{
}

PlotCorridor::~PlotCorridor()
{
    setFollowing(false);
}

QString PlotCorridor::sliceText(double milliseconds)
{
    struct Unit
    {
        double length;
        const char *letter;
    };
    constexpr Unit units[] = {{86400000, "Д"}, {3600000, "ч"}, {60000, "м"}};
    if (!(milliseconds > 0) || !std::isfinite(milliseconds))
        return QStringLiteral("-");
    for (const Unit &unit : units) {
        const double count = milliseconds / unit.length;
        if (count >= 1 && std::abs(count - std::round(count)) < 1e-9)
            return QString::number(count, 'f', 0) + QString::fromUtf8(unit.letter);
    }
    return QString::number(milliseconds / 1000, 'g', 4) + QStringLiteral("с");
}

QList<qwidgetChartCorridorSerie *> PlotCorridor::tubes() const
{
    QList<qwidgetChartCorridorSerie *> found;
    for (ISerie *serie : series()) {
        if (auto *tube = dynamic_cast<qwidgetChartCorridorSerie *>(serie))
            found << tube;
    }
    return found;
}

void PlotCorridor::setFollowing(bool on)
{
    for (qwidgetChartCorridorSerie *tube : tubes())
        tube->setFollowing(on && isAtWork());
}

void PlotCorridor::showSlice()
{
    double longest = 0;
    for (const qwidgetChartCorridorSerie *tube : tubes())
        longest = std::max(longest, tube->sliceLength());
    plotCanvas()->setTextSlice(sliceText(longest));
}

void PlotCorridor::onUpdateProperties()
{
    PlotHistory::onUpdateProperties();
    showSlice();
    if (isAtWork())
        return;
    for (qwidgetChartCorridorSerie *tube : tubes())
        tube->sketch(axisInterval(tube->yAxis()).width() * sketchedPart);
    replot();
}

void PlotCorridor::updateGroup()
{
    PlotHistory::updateGroup();
    for (qwidgetChartCorridorSerie *tube : tubes())
        connect(tube, &ISerie::informationChaged, this, &Plot::scheduleReplot,
                Qt::UniqueConnection);
    setFollowing(true);
    showSlice();
}

void PlotCorridor::onUserChanged()
{
    setFollowing(false);
    PlotHistory::onUserChanged();
    setFollowing(true);
}

void PlotCorridor::onGetHistoryCompleted(std::vector<Nodes::SignalHistoryResponse> answer)
{
    const QPointer<PlotCorridor> alive(this);
    PlotHistory::onGetHistoryCompleted(std::move(answer));
    if (alive)
        showSlice();
}

void PlotCorridor::forgetSeries()
{
    setFollowing(false);
    PlotHistory::forgetSeries();
}

IPickerCanvas *PlotCorridor::makePicker()
{
    return new PickerCanvasCorridor(this);
}

} // namespace Widgets
