// Rules on colours and pictures.
#include "editor/review/ReviewColors.h"
#include "editor/review/ReviewRules.h"
#include "editor/review/ReviewScreen.h"
#include "widgets/elements/pictures/ImageCachingManager.h"
#include "widgets/elements/symbols/SymbolStore.h"

#include "nodes/visual/elements/widgetMultiImage.h"
#include "nodes/visual/elements/widgetMultiLabel.h"
#include "nodes/visual/elements/widgetState.h"
#include "nodes/visual/elements/widgetSymbol.h"
#include "utils/convert/ValueConversions.h"

#include <QFileInfo>

namespace Editor {

using Nodes::NodeLink;
using Nodes::widgetState;

namespace {

std::vector<const widgetState *> statesOf(const Nodes::ConfigNode &node)
{
    std::vector<const widgetState *> states;
    for (const auto &child : node.Children()) {
        if (const auto *state = dynamic_cast<const widgetState *>(child.get()))
            states.push_back(state);
    }
    return states;
}

QImage pictureOf(const widgetState &state)
{
    const QImage *image = ImageCachingManager::getInstance().getImage(state.GetImage().Load());
    return image ? *image : QImage();
}

/// A state that stands for two ranges is two states of one look.
bool areColoredAlike(const widgetState &one, const widgetState &other)
{
    const auto looks = [](const widgetState &state) {
        return std::make_pair(state.HasTextColor() ? state.GetTextColor().ToHex() : std::string(),
                              state.HasBackgroundColor() ? state.GetBackgroundColor().ToHex()
                                                         : std::string());
    };
    return looks(one) == looks(other);
}

bool differByColorOnly(const Nodes::BasicWidget &element, const widgetState &one,
                       const widgetState &other)
{
    if (dynamic_cast<const Nodes::widgetMultiImage *>(&element)) {
        const QImage a = pictureOf(one);
        const QImage b = pictureOf(other);
        return one.GetImage() != other.GetImage() && !a.isNull() && !b.isNull() &&
               ReviewColors::differByHueOnly(a, b);
    }
    if (one.GetText() != other.GetText() || areColoredAlike(one, other))
        return false;
    if (dynamic_cast<const Nodes::widgetSymbol *>(&element))
        return one.GetLook() == other.GetLook() && one.GetImage() == other.GetImage();
    // A label whose states have no text shows the value itself.
    return dynamic_cast<const Nodes::widgetMultiLabel *>(&element) && !one.GetText().empty();
}

void tellAlike(const Nodes::BasicWidget &element, const widgetState &one, const widgetState &other,
               ReviewFindings &findings)
{
    findings.append(
        {ReviewFinding::Warning, NodeLink(&element),
         QStringLiteral("Состояния «%1» и «%2» отличаются только цветом.")
             .arg(QString::fromStdString(one.GetName()), QString::fromStdString(other.GetName())),
         QStringLiteral("Дайте им разный текст, рисунок или вид: цвет видят не все и "
                        "не всегда.")});
}

struct ColorOf
{
    const char *name;
    const Nodes::PropertyId<Nodes::NColor> &id;
};

} // namespace

void checkStatesByColor(const ReviewScreen &screen, ReviewFindings &findings)
{
    for (const ReviewElement &element : screen.elements()) {
        const auto states = statesOf(*element.node);
        for (std::size_t i = 0; i < states.size(); ++i) {
            for (std::size_t k = i + 1; k < states.size(); ++k) {
                if (differByColorOnly(*element.node, *states[i], *states[k]))
                    tellAlike(*element.node, *states[i], *states[k], findings);
            }
        }
    }
}

void checkAlarmColors(const ReviewScreen &screen, ReviewFindings &findings)
{
    static const ColorOf colors[] = {{"фона", Nodes::BackgroundProp::Background},
                                     {"текста", Nodes::TextProp::Color},
                                     {"поверхности", Nodes::widgetSymbol::Prop::Body},
                                     {"контура", Nodes::widgetSymbol::Prop::Line},
                                     {"уровня", Nodes::widgetSymbol::Prop::LevelColor}};
    const auto check = [&findings](const Nodes::ConfigNode &node) {
        for (const ColorOf &color : colors) {
            const auto value = valueOf(node, color.id);
            if (value && ReviewColors::isAlarm(Utils::NColorToQColor(*value)))
                findings.append({ReviewFinding::Warning, NodeLink(&node),
                                 QStringLiteral("Цвет %1 %2 как у тревоги, хотя показан всегда.")
                                     .arg(QString::fromUtf8(color.name),
                                          QString::fromStdString(value->ToHex())),
                                 QStringLiteral("Возьмите приглушённый цвет; насыщенные красный и "
                                                "жёлтый оставьте тревогам.")});
        }
    };
    check(screen.node());
    for (const ReviewElement &element : screen.elements())
        check(*element.node);
}

void checkSymbols(const ReviewScreen &screen, ReviewFindings &findings)
{
    for (const ReviewElement &element : screen.elements()) {
        const auto *symbol = dynamic_cast<const Nodes::widgetSymbol *>(element.node);
        if (!symbol)
            continue;
        std::vector<Nodes::ResourceLink> sources{symbol->GetSource()};
        for (const widgetState *state : statesOf(*symbol))
            sources.push_back(state->GetImage());
        for (const Nodes::ResourceLink &source : sources) {
            const auto read = Widgets::SymbolStore::getInstance().get(source);
            if (read && !read->refusal().isEmpty())
                findings.append(
                    {ReviewFinding::Fault, NodeLink(symbol),
                     QStringLiteral("«%1»: %2")
                         .arg(QString::fromStdString(source.GetFilePath()), read->refusal()),
                     QStringLiteral("Или выберите другой мнемосимвол.")});
        }
    }
}

void checkPictures(const ReviewScreen &screen, ReviewFindings &findings)
{
    constexpr double large = 1e6; // pixels that are decoded in no time
    constexpr int wasted = 4;     // times what is shown
    for (const ReviewElement &element : screen.elements()) {
        const auto picture = valueOf(*element.node, Nodes::PictureProp::Image);
        const QImage *image =
            picture ? ImageCachingManager::getInstance().getImage(picture->Load()) : nullptr;
        if (!image || image->isNull())
            continue;
        const double pixels = double(image->width()) * image->height();
        const double shown = double(element.rect.width()) * element.rect.height();
        if (pixels > large && pixels > wasted * shown)
            findings.append(
                {ReviewFinding::Warning, NodeLink(element.node),
                 QStringLiteral("Рисунок «%1» размером %2×%3 показан как %4×%5.")
                     .arg(QFileInfo(QString::fromStdString(picture->GetFilePath())).fileName())
                     .arg(image->width())
                     .arg(image->height())
                     .arg(element.rect.width())
                     .arg(element.rect.height()),
                 QStringLiteral("Уменьшите файл до размера элемента или возьмите SVG: окно "
                                "откроется быстрее.")});
    }
}

} // namespace Editor
