#include "widgets/reports/engine/items/BarcodePainter.h"
#include "widgets/reports/engine/items/ChartPainter.h"
#include "widgets/reports/engine/items/ItemPainter.h"
#include "widgets/reports/engine/items/SvgPainter.h"

namespace LimeReport {

namespace {

struct Row
{
    const char *className;
    const ItemPainter *(*painter)();
};

template <class Painter> const ItemPainter *painterOf()
{
    static const Painter painter;
    return &painter;
}

constexpr Row rows[] = {{"BarcodeItem", &painterOf<BarcodePainter>},
                        {"ChartItem", &painterOf<ChartPainter>},
                        {"SVGItem", &painterOf<SvgPainter>}};

} // namespace

const ItemPainter *itemPainter(const QString &className)
{
    const QString plain = className.section(QStringLiteral("::"), -1);
    for (const Row &row : rows)
        if (plain == QLatin1String(row.className))
            return row.painter();
    return nullptr;
}

} // namespace LimeReport
