#include "widgets/reports/engine/text/Reference.h"

#include <QImage>

namespace LimeReport {

namespace {

QImage dot()
{
    QImage image(1, 1, QImage::Format_RGB32);
    image.setDotsPerMeterX(10000);
    image.setDotsPerMeterY(10000);
    return image;
}

} // namespace

QPaintDevice *Reference::device()
{
    thread_local QImage image = dot();
    return &image;
}

QFont Reference::font(const QFont &told)
{
    QFont font(told, device());
    font.setHintingPreference(QFont::PreferNoHinting);
    font.setKerning(true);
    return font;
}

} // namespace LimeReport
