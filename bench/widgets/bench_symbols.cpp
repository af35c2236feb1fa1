// Painting symbols: pixels of a look that are kept, against drawing the vector picture each time.
#include "LabelWindow.h"

#include "widgets/elements/symbols/Symbol.h"
#include "widgets/elements/symbols/SymbolStore.h"
#include "widgets/elements/symbols/qwidgetSymbol.h"

#include "nodes/model/links/ResourceLink.h"
#include "nodes/visual/elements/widgetSymbol.h"

#include <benchmark/benchmark.h>

#include <QApplication>
#include <QFile>
#include <QPainter>

#include <memory>

namespace {

constexpr int elementCount = 300;
constexpr int side = 64; // pixels
const char *const files[] = {":/symbols/pump.svg", ":/symbols/valve-control.svg",
                             ":/symbols/boiler-steam.svg", ":/symbols/tank-vertical.svg"};

struct Elements
{
    Elements() : project(0)
    {
        for (int i = 0; i < elementCount; ++i) {
            Nodes::ConfigNode *node = project.add("symbol", project.window);
            LabelProject::set(*node, "source", files[i % 4]);
            LabelProject::set(*node, "width", std::to_string(side));
            LabelProject::set(*node, "height", std::to_string(side));
            shown.push_back(std::make_unique<Widgets::qwidgetSymbol>(
                static_cast<Nodes::widgetSymbol *>(node), nullptr));
        }
    }
    LabelProject project;
    std::vector<std::unique_ptr<Widgets::qwidgetSymbol>> shown;
};

void paintElements(benchmark::State &state)
{
    const Elements elements;
    QImage screen(side, side, QImage::Format_ARGB32_Premultiplied);
    for (auto _ : state) {
        QPainter painter(&screen);
        for (const auto &element : elements.shown)
            element->paintDirectly(painter);
    }
    state.SetItemsProcessed(state.iterations() * elementCount);
}

/// The same pictures without pixels that are kept.
void drawVectors(benchmark::State &state)
{
    Widgets::SymbolPlace place;
    place.area = QSize(side, side);
    QImage screen(side, side, QImage::Format_ARGB32_Premultiplied);
    std::shared_ptr<Widgets::Symbol> symbols[4];
    for (int i = 0; i < 4; ++i)
        symbols[i] = Widgets::SymbolStore::getInstance().get(Nodes::ResourceLink(files[i]));
    for (auto _ : state) {
        QPainter painter(&screen);
        for (int i = 0; i < elementCount; ++i)
            painter.drawPixmap(0, 0,
                               symbols[i % 4]->draw(Widgets::SymbolStyle(), place, place.area));
    }
    state.SetItemsProcessed(state.iterations() * elementCount);
}

/// Reading all built-in pictures for the first time, in one style each.
void readSymbols(benchmark::State &state)
{
    QList<QByteArray> texts;
    for (const char *file : files) {
        QFile svg(file);
        if (svg.open(QIODevice::ReadOnly))
            texts << svg.readAll();
    }
    for (auto _ : state) {
        for (const QByteArray &text : qAsConst(texts))
            benchmark::DoNotOptimize(Widgets::Symbol(text).size());
    }
    state.SetItemsProcessed(state.iterations() * texts.size());
}

} // namespace

BENCHMARK(paintElements)->Unit(benchmark::kMicrosecond);
BENCHMARK(drawVectors)->Unit(benchmark::kMicrosecond);
BENCHMARK(readSymbols)->Unit(benchmark::kMicrosecond);

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
