#include "widgets/reports/engine/text/TextStyle.h"

#include "widgets/reports/engine/template/TemplateItem.h"
#include "widgets/reports/engine/text/Reference.h"

#include <cmath>

namespace LimeReport {

namespace {

constexpr double UsualMargin = 4;
constexpr double LargestMargin = 500;

Qt::Alignment alignmentOf(const TemplateItem &item)
{
    static const std::pair<QLatin1String, Qt::AlignmentFlag> words[] = {
        {QLatin1String("AlignLeft"), Qt::AlignLeft},
        {QLatin1String("AlignRight"), Qt::AlignRight},
        {QLatin1String("AlignHCenter"), Qt::AlignHCenter},
        {QLatin1String("AlignJustify"), Qt::AlignJustify},
        {QLatin1String("AlignTop"), Qt::AlignTop},
        {QLatin1String("AlignBottom"), Qt::AlignBottom},
        {QLatin1String("AlignVCenter"), Qt::AlignVCenter},
    };
    const QString key = QStringLiteral("alignment");
    Qt::Alignment alignment(item.integer(key));
    const QString text = item.text(key);
    for (const auto &word : words) {
        if (text.contains(word.first))
            alignment |= word.second;
    }
    if (!(alignment & Qt::AlignHorizontal_Mask))
        alignment |= Qt::AlignLeft;
    if (!(alignment & Qt::AlignVertical_Mask))
        alignment |= Qt::AlignTop;
    return alignment;
}

// The quarter turns are numbered, or told in words ("Angle90"); anything above them is degrees.
double angleOf(const TemplateItem &item)
{
    const QString key = QStringLiteral("angle");
    QString text = item.text(key);
    if (text.startsWith(QLatin1String("Angle")))
        text.remove(0, 5);
    const double told = text.toDouble();
    const double degrees = told == std::floor(told) && told > 0 && told <= 3 ? told * 90 : told;
    return std::isfinite(degrees) ? degrees - std::floor(degrees / 360) * 360 : 0;
}

bool isOpaque(const TemplateItem &item)
{
    const QString mode = item.text(QStringLiteral("backgroundMode"));
    return mode == QLatin1String("1") || mode == QLatin1String("OpaqueMode");
}

} // namespace

TextStyle::TextStyle(const TemplateItem &item)
    : font(Reference::font(item.font())),
      color(item.color(QStringLiteral("fontColor"), Qt::black)),
      alignment(alignmentOf(item)),
      margin(qBound(0.0, item.real(QStringLiteral("margin"), UsualMargin), LargestMargin)),
      angle(angleOf(item)),
      isHtml(item.flag(QStringLiteral("allowHTML"))),
      isAutoHeight(item.flag(QStringLiteral("autoHeight")))
{
    if (isOpaque(item))
        background = item.color(QStringLiteral("backgroundColor"), Qt::white);
}

} // namespace LimeReport
