// Rules on texts: contrast, size, room for all of it.
#include "editor/review/ReviewColors.h"
#include "editor/review/ReviewRules.h"
#include "editor/review/ReviewScreen.h"
#include "editor/review/ReviewTexts.h"

#include "nodes/templates/widgetInstance.h"
#include "nodes/visual/SharedProperties.h"
#include "utils/convert/ValueConversions.h"

#include <QFontInfo>
#include <QFontMetrics>

#include <algorithm>

namespace Editor {

using Nodes::NodeLink;

namespace {

constexpr int leastText = 12; // pixels

Nodes::NColor readableOn(const QColor &surface)
{
    const Nodes::NColor dark(32, 36, 40);
    const Nodes::NColor light(255, 255, 255);
    const bool isLight = ReviewColors::contrast(QColor(dark.red, dark.green, dark.blue), surface) >=
                         ReviewColors::contrast(Qt::white, surface);
    return isLight ? dark : light;
}

/// Whether all its texts still have room.
bool fits(const ReviewElement &element, const QFont &font)
{
    const QSize room = ReviewTexts::roomIn(*element.node, element.rect.size());
    const QStringList texts = ReviewTexts::of(*element.node);
    return std::all_of(texts.begin(), texts.end(), [&](const QString &text) {
        const QSize needed = ReviewTexts::needed(*element.node, QFontMetrics(font), text, room);
        return needed.width() <= room.width() && needed.height() <= room.height();
    });
}

/// A larger font where the texts have room for it.
void addLarger(const ReviewElement &element, QVector<ReviewChange> &mend)
{
    constexpr int readable = 11; // points
    QFont font = *ReviewTexts::fontOf(*element.node);
    font.setPointSize(readable);
    if (fits(element, font))
        mend.append({NodeLink(element.node), Nodes::TextProp::FontSize, readable});
}

Qt::Alignment alignmentOf(const Nodes::BasicWidget &element)
{
    using Prop = Nodes::TextProp;
    return Utils::NAligmentToQtAligment(
        Nodes::enAlignmentHorizontal(valueOf(element, Prop::Align).value_or(0)),
        Nodes::enAlignmentVertical(valueOf(element, Prop::Valign).value_or(0)));
}

/// With room for all its texts, which stay where they begin.
QRect withRoom(const ReviewElement &element, const QFontMetrics &metrics)
{
    QSize room = ReviewTexts::roomIn(*element.node, element.rect.size());
    QSize more(0, 0);
    for (const QString &text : ReviewTexts::of(*element.node))
        more = more.expandedTo(ReviewTexts::needed(*element.node, metrics, text, room) - room);
    if (ReviewTexts::isUpright(*element.node))
        more.transpose();
    const Qt::Alignment alignment = alignmentOf(*element.node);
    QRect rect(element.rect.topLeft(), element.rect.size() + more);
    if (alignment & Qt::AlignRight)
        rect.moveLeft(rect.left() - more.width());
    else if (alignment & Qt::AlignHCenter)
        rect.moveLeft(rect.left() - more.width() / 2);
    if (alignment & Qt::AlignBottom)
        rect.moveTop(rect.top() - more.height());
    else if (alignment & Qt::AlignVCenter)
        rect.moveTop(rect.top() - more.height() / 2);
    return rect;
}

/// Where nothing else comes to stand in the way.
QVector<ReviewChange> enlarged(const ReviewScreen &screen, const ReviewElement &element,
                               const QFontMetrics &metrics)
{
    const QRect rect = withRoom(element, metrics);
    const auto isInTheWay = [&](const ReviewElement &other) {
        return other.rect.intersects(rect) && !other.rect.intersects(element.rect);
    };
    if (!QRect(QPoint(), screen.size()).contains(rect) ||
        std::any_of(screen.elements().begin(), screen.elements().end(), isInTheWay))
        return {};
    using Prop = Nodes::GeometryProp;
    const NodeLink node(element.node);
    return {{node, Prop::X, rect.x()},
            {node, Prop::Y, rect.y()},
            {node, Prop::Width, rect.width()},
            {node, Prop::Height, rect.height()}};
}

double scaleOf(const Nodes::widgetInstance &instance, const QSize &drawn, const QSize &room)
{
    if (!instance.isFitted() || drawn.isEmpty())
        return 1;
    return qMin(double(room.width()) / drawn.width(), double(room.height()) / drawn.height());
}

/// Height of the smallest text of the template as the instance shows it. `way` leads there.
double smallestText(const Nodes::widgetInstance &instance, const QSize &room,
                    QVector<const Nodes::ConfigNode *> way = {})
{
    double smallest = 1e6;
    const Nodes::ConfigNode *source = instance.GetTemplate();
    if (!source || way.contains(source))
        return smallest;
    way.append(source);
    const ReviewScreen drawn(*source);
    for (const ReviewElement &element : drawn.elements()) {
        const auto font = ReviewTexts::fontOf(*element.node);
        if (const auto *inner = dynamic_cast<const Nodes::widgetInstance *>(element.node))
            smallest = qMin(smallest, smallestText(*inner, element.rect.size(), way));
        else if (font && !ReviewTexts::of(*element.node).isEmpty())
            smallest = qMin(smallest, double(QFontInfo(*font).pixelSize()));
    }
    return smallest * scaleOf(instance, drawn.size(), room);
}

// What is too small as it is drawn is found in the template itself.
void checkInstanceText(const ReviewElement &element, ReviewFindings &findings)
{
    const auto *instance = dynamic_cast<const Nodes::widgetInstance *>(element.node);
    const Nodes::ConfigNode *source = instance ? instance->GetTemplate() : nullptr;
    if (!source || scaleOf(*instance, ReviewScreen(*source).size(), element.rect.size()) >= 1)
        return;
    const double pixels = smallestText(*instance, element.rect.size());
    if (pixels < leastText)
        findings.append({ReviewFinding::Warning, NodeLink(element.node),
                         QStringLiteral("Экземпляр уменьшен: текст в нём высотой %1 пикс., нужно "
                                        "не меньше %2.")
                             .arg(int(pixels))
                             .arg(leastText),
                         QStringLiteral("Увеличьте экземпляр или шрифты шаблона.")});
}

} // namespace

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
            findings.append(
                {contrast < 3 ? ReviewFinding::Fault : ReviewFinding::Warning,
                 NodeLink(&element),
                 QStringLiteral("Контраст текста и фона %1:1, нужно не меньше %2:1.")
                     .arg(contrast, 0, 'f', 1)
                     .arg(ReviewColors::LeastContrast),
                 QStringLiteral("Сделайте текст темнее или фон светлее."),
                 {{NodeLink(&element), Nodes::TextProp::Color, readableOn(screen.surfaceOf(i))}}});
    }
}

void checkTextSize(const ReviewScreen &screen, ReviewFindings &findings)
{
    constexpr int good = 14;
    const QString advice = QStringLiteral("Возьмите шрифт не мельче 11 пт.");
    QVector<ReviewElement> rather;
    for (const ReviewElement &element : screen.elements()) {
        checkInstanceText(element, findings);
        const auto font = ReviewTexts::fontOf(*element.node);
        const int pixels = font ? QFontInfo(*font).pixelSize() : good;
        if (pixels >= good || ReviewTexts::of(*element.node).isEmpty())
            continue;
        if (pixels >= leastText) {
            rather.append(element);
            continue;
        }
        findings.append({ReviewFinding::Warning, NodeLink(element.node),
                         QStringLiteral("Текст высотой %1 пикс. с рабочего места не прочесть, "
                                        "нужно не меньше %2.")
                             .arg(pixels)
                             .arg(leastText),
                         advice});
        addLarger(element, findings.last().mend);
    }
    if (rather.isEmpty())
        return;
    findings.append({ReviewFinding::Hint, NodeLink(rather.first().node),
                     QStringLiteral("Текст мельче %1 пикс., элементов: %2; этот первый.")
                         .arg(good)
                         .arg(rather.size()),
                     advice});
    for (const ReviewElement &element : qAsConst(rather))
        addLarger(element, findings.last().mend);
}

void checkClippedText(const ReviewScreen &screen, ReviewFindings &findings)
{
    constexpr int spare = 2; // pixels that no sign reaches
    for (const ReviewElement &element : screen.elements()) {
        const auto font = ReviewTexts::fontOf(*element.node);
        if (!font)
            continue;
        const QFontMetrics metrics(*font);
        const QSize room = ReviewTexts::roomIn(*element.node, element.rect.size());
        for (const QString &text : ReviewTexts::of(*element.node)) {
            const QSize needed = ReviewTexts::needed(*element.node, metrics, text, room);
            if (needed.width() <= room.width() + spare && needed.height() <= room.height() + spare)
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
                                            "перенос."),
                             enlarged(screen, element, metrics)});
            break;
        }
    }
}

} // namespace Editor
