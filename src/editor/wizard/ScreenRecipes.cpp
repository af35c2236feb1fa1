#include "editor/wizard/ScreenRecipes.h"

#include "nodes/model/ConfigNode.h"
#include "nodes/model/FreeName.h"

#include <QFontMetrics>

#include <algorithm>

namespace Editor::ScreenRecipes {

namespace {

constexpr int buttonWidth = 144;  // at most
constexpr int headingWidth = 240; // at least
constexpr int headingSize = 12;   // points

} // namespace

QString ground()
{
    return QStringLiteral("#d3d7da");
}

QString bar()
{
    return QStringLiteral("#3b444c");
}

QString ink()
{
    return QStringLiteral("#20262c");
}

QString paper()
{
    return QStringLiteral("#f2f4f5");
}

NodeRecipe placed(const char *kind, const QString &name, const QRect &place)
{
    NodeRecipe recipe(QLatin1String(kind), name);
    recipe.set(QStringLiteral("x"), place.x()).set(QStringLiteral("y"), place.y());
    recipe.set(QStringLiteral("width"), place.width());
    recipe.set(QStringLiteral("height"), place.height());
    return recipe;
}

NodeRecipe caption(const QString &text, const QRect &place, int size, const QString &color)
{
    NodeRecipe recipe = placed("label", text, place);
    recipe.set(QStringLiteral("text"), text).set(QStringLiteral("fontSize"), size);
    recipe.set(QStringLiteral("bold"), QStringLiteral("true"));
    recipe.set(QStringLiteral("color"), color);
    return recipe;
}

int widthOf(const QString &text, int size)
{
    QFont font(QStringLiteral("DejaVu Sans"), size);
    font.setBold(true);
    const int width = QFontMetrics(font).horizontalAdvance(text) + grid;
    return (width + grid - 1) / grid * grid;
}

QRect headingPlace(const QString &text, int most)
{
    const int wanted = std::max(widthOf(text, headingSize), headingWidth);
    return {margin, grid, std::min(wanted, most / grid * grid), barHeight - 2 * grid};
}

NodeRecipe heading(const QString &text, const QRect &place)
{
    const bool isLong = widthOf(text, headingSize) > place.width();
    NodeRecipe recipe = caption(text, place, isLong ? headingSize - 1 : headingSize, paper());
    if (isLong)
        recipe.set(QStringLiteral("wrap"), QStringLiteral("true"));
    return recipe;
}

QString freeName(const Nodes::NodeLink &parent, const QString &name)
{
    std::vector<std::string_view> taken;
    for (const auto &child : parent->Children())
        taken.emplace_back(child->GetName());
    return QString::fromStdString(Nodes::FreeName(taken, name.toStdString(), 2));
}

NodeRecipe button(const QString &text, const QRect &place, const Nodes::NodeLink &action)
{
    NodeRecipe recipe = placed("button", text, place);
    recipe.set(QStringLiteral("text"), text).set(QStringLiteral("fontSize"), 11);
    recipe.set(QStringLiteral("bold"), QStringLiteral("true"));
    recipe.set(QStringLiteral("color"), ink()).set(QStringLiteral("background"), ground());
    recipe.set(QStringLiteral("style"), QStringLiteral("fusion"));
    recipe.set(QStringLiteral("align"), QStringLiteral("center"));
    recipe.set(QStringLiteral("valign"), QStringLiteral("center"));
    recipe.set(QStringLiteral("releaseActions"), action);
    return recipe;
}

NodeRecipe showPage(const QString &name, const Nodes::NodeLink &field, const Nodes::NodeLink &page)
{
    NodeRecipe recipe(QStringLiteral("actionChangeComposition"),
                      QStringLiteral("Показать: %1").arg(name));
    recipe.set(QStringLiteral("window"), field).set(QStringLiteral("composition"), page);
    return recipe;
}

QRect buttonPlace(int number, int count, int rowWidth)
{
    const int width = std::min(buttonWidth, (rowWidth - 2 * margin + grid) / count - grid);
    return {margin + number * (width + grid), grid, width, barHeight - 2 * grid};
}

} // namespace Editor::ScreenRecipes
