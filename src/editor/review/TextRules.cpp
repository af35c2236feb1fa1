// Rules on texts: contrast, size, room for all of it.
#include "editor/review/ReviewColors.h"
#include "editor/review/ReviewRules.h"
#include "editor/review/ReviewScreen.h"
#include "editor/review/ReviewTexts.h"

#include "nodes/visual/SharedProperties.h"

#include <QFontInfo>
#include <QFontMetrics>

namespace Editor {

using Nodes::NodeLink;

void checkContrast(const ReviewScreen &screen, ReviewFindings &findings)
{
    for (int i = 0; i < screen.elements().size(); ++i) {
        const Nodes::BasicWidget &element = *screen.elements()[i].node;
        const auto color = valueOf(element, Nodes::TextProp::Color);
        if (!color || ReviewTexts::of(element).isEmpty())
            continue;
        const double contrast = ReviewColors::contrast(
            QColor(color->red, color->green, color->blue), screen.surfaceOf(i));
        if (contrast < ReviewColors::LeastContrast)
            findings.append({contrast < 3 ? ReviewFinding::Fault : ReviewFinding::Warning,
                             NodeLink(&element),
                             QStringLiteral("Контраст текста и фона %1:1, нужно не меньше %2:1.")
                                 .arg(contrast, 0, 'f', 1)
                                 .arg(ReviewColors::LeastContrast),
                             QStringLiteral("Сделайте текст темнее или фон светлее.")});
    }
}

void checkTextSize(const ReviewScreen &screen, ReviewFindings &findings)
{
    constexpr int least = 12; // pixels
    constexpr int good = 14;
    for (const ReviewElement &element : screen.elements()) {
        const auto font = ReviewTexts::fontOf(*element.node);
        if (!font || ReviewTexts::of(*element.node).isEmpty())
            continue;
        const int pixels = QFontInfo(*font).pixelSize();
        if (pixels < good)
            findings.append({pixels < least ? ReviewFinding::Warning : ReviewFinding::Hint,
                             NodeLink(element.node),
                             QStringLiteral("Текст высотой %1 пикс.; с рабочего места читается "
                                            "%2, не меньше %3.")
                                 .arg(pixels)
                                 .arg(good)
                                 .arg(least),
                             QStringLiteral("Возьмите шрифт не мельче 11 пт.")});
    }
}

void checkClippedText(const ReviewScreen &screen, ReviewFindings &findings)
{
    for (const ReviewElement &element : screen.elements()) {
        const auto font = ReviewTexts::fontOf(*element.node);
        if (!font)
            continue;
        const QFontMetrics metrics(*font);
        const QSize room = ReviewTexts::roomIn(*element.node, element.rect.size());
        for (const QString &text : ReviewTexts::of(*element.node)) {
            const QSize needed = ReviewTexts::needed(*element.node, metrics, text, room);
            if (needed.width() <= room.width() && needed.height() <= room.height())
                continue;
            findings.append({ReviewFinding::Warning, NodeLink(element.node),
                             QStringLiteral("Текст «%1» не помещается: нужно %2×%3 пикс., есть "
                                            "%4×%5.")
                                 .arg(text.left(40).replace('\n', ' '))
                                 .arg(needed.width())
                                 .arg(needed.height())
                                 .arg(room.width())
                                 .arg(room.height()),
                             QStringLiteral("Увеличьте элемент, сократите текст или включите "
                                            "перенос.")});
            break;
        }
    }
}

} // namespace Editor
