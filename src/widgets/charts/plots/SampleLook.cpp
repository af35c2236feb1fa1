#include "widgets/charts/plots/SampleLook.h"

#include "widgets/charts/series/ISerie.h"

#include "nodes/charts/widgetChartAxis.h"
#include "nodes/charts/widgetChartBasicSerie.h"
#include "nodes/charts/widgetChartDiscretSerie.h"
#include "nodes/signals/BasicSignal.h"

#include <qwt_interval.h>

#include <QGuiApplication>
#include <QPalette>
#include <QProxyStyle>
#include <QStyleOption>
#include <QToolButton>

#include <cmath>

namespace Widgets::SampleLook {

namespace {

constexpr int steps = 120;
constexpr double pi = 3.14159265358979;

/// Tool buttons as if they were enabled.
class SteadyStyle : public QProxyStyle
{
public:
    void drawComplexControl(ComplexControl control, const QStyleOptionComplex *option,
                            QPainter *painter, const QWidget *widget) const override
    {
        const auto *button = qstyleoption_cast<const QStyleOptionToolButton *>(option);
        if (control != CC_ToolButton || !button)
            return QProxyStyle::drawComplexControl(control, option, painter, widget);
        QStyleOptionToolButton enabled(*button);
        enabled.state |= State_Enabled;
        enabled.palette.setCurrentColorGroup(QPalette::Active);
        QProxyStyle::drawComplexControl(control, &enabled, painter, widget);
    }
};

/// Where the values of a series lie: on its axis, else within the range of its signal.
std::pair<double, double> rangeOf(const Nodes::widgetChartBasicSerie &node)
{
    const Nodes::widgetChartAxis *axis = node.GetAxisY();
    if (axis && axis->GetMinimum() < axis->GetMaximum())
        return {axis->GetMinimum(), axis->GetMaximum()};
    const Nodes::BasicSignal *signal = node.GetSignal();
    if (signal && signal->GetMinimum() < signal->GetMaximum())
        return {signal->GetMinimum(), signal->GetMaximum()};
    return {0, 100};
}

void draw(ISerie &serie, const QwtInterval &window)
{
    const Nodes::widgetChartBasicSerie *node = serie.getNode();
    if (!node)
        return;
    const auto [lower, upper] = rangeOf(*node);
    const bool isState = dynamic_cast<const Nodes::widgetChartDiscretSerie *>(node) != nullptr;
    const double phase = serie.getNumber() * pi / 4;
    for (int i = 0; i <= steps; ++i) {
        const double wave = std::sin(3 * pi * i / steps + phase);
        const double part = 0.5 + 0.3 * wave / (1 + 0.4 * serie.getNumber());
        Nodes::SignalValue value(isState ? double(wave > 0) : lower + part * (upper - lower));
        serie.appendPoint(window.minValue() + window.width() * i / steps, value);
    }
}

} // namespace

void draw(const QList<ISerie *> &series, const QwtInterval &window)
{
    for (ISerie *serie : series) {
        serie->clearPoints();
        draw(*serie, window);
    }
}

void keepLooksWhileDisabled(QWidget &plot)
{
    static SteadyStyle *style = [] {
        auto *made = new SteadyStyle;
        made->setParent(qGuiApp);
        return made;
    }();
    QPalette colors = plot.palette();
    for (int role = 0; role < QPalette::NColorRoles; ++role) {
        const auto one = QPalette::ColorRole(role);
        colors.setBrush(QPalette::Disabled, one, colors.brush(QPalette::Active, one));
    }
    plot.setPalette(colors);
    const QList<QToolButton *> buttons = plot.findChildren<QToolButton *>();
    for (QToolButton *button : buttons)
        button->setStyle(style);
}

} // namespace Widgets::SampleLook
