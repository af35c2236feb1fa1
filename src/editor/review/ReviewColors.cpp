#include "editor/review/ReviewColors.h"

#include "widgets/elements/painting/AlarmShapes.h"

#include <QImage>

#include <cmath>

namespace Editor {

namespace {

double luminance(const QColor &color)
{
    const auto linear = [](double channel) {
        return channel <= 0.03928 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) +
           0.0722 * linear(color.blueF());
}

} // namespace

double ReviewColors::contrast(const QColor &one, const QColor &other)
{
    const double a = luminance(one);
    const double b = luminance(other);
    return (qMax(a, b) + 0.05) / (qMin(a, b) + 0.05);
}

bool ReviewColors::isAlarm(const QColor &color)
{
    constexpr int nearHue = 14; // degrees
    if (color.alpha() < 128 || color.hsvSaturationF() < 0.6 || color.valueF() < 0.5)
        return false;
    for (const int priority : {1, 2, 3}) {
        const int apart = qAbs(Widgets::AlarmShapes::color(priority).hsvHue() - color.hsvHue());
        if (qMin(apart, 360 - apart) <= nearHue)
            return true;
    }
    return false;
}

bool ReviewColors::differByHueOnly(const QImage &one, const QImage &other)
{
    constexpr int side = 32;    // pixels
    constexpr int visible = 40; // of 255
    constexpr int few = side * side / 100;
    const auto small = [](const QImage &image) {
        return image.scaled(side, side, Qt::IgnoreAspectRatio, Qt::SmoothTransformation)
            .convertToFormat(QImage::Format_ARGB32);
    };
    const QImage a = small(one);
    const QImage b = small(other);
    int different = 0;
    for (int y = 0; y < side; ++y) {
        for (int x = 0; x < side; ++x) {
            const QRgb left = a.pixel(x, y);
            const QRgb right = b.pixel(x, y);
            const bool isOutline = qAbs(qAlpha(left) - qAlpha(right)) > visible;
            const bool isShade =
                qAlpha(left) > visible && qAbs(qGray(left) - qGray(right)) > visible;
            different += isOutline || isShade;
        }
    }
    return different <= few;
}

} // namespace Editor
