// 500 picture elements that share 20 files: what the cache of decoded pictures saves.
#include "LabelWindow.h"

#include "widgets/elements/pictures/ImageCachingManager.h"
#include "widgets/elements/qwidgetImage.h"

#include "nodes/model/links/ResourceLink.h"
#include "nodes/visual/BasicWidget.h"

#include <benchmark/benchmark.h>

#include <QApplication>
#include <QPainter>
#include <QTemporaryDir>

namespace {

constexpr int elementCount = 500;
constexpr int fileCount = 20;
constexpr int side = 256; // pixels

/// A directory of pictures that no cache knows yet.
class FreshPictures
{
public:
    FreshPictures()
    {
        for (int i = 0; i < fileCount; ++i) {
            QImage image(side, side, QImage::Format_ARGB32);
            image.fill(Qt::transparent);
            QPainter painter(&image);
            for (int line = 0; line < side; line += 3)
                painter.drawLine(line, 0, (line * (i + 3)) % side, side);
            painter.end();
            image.save(m_directory.filePath(name(i)));
        }
        Nodes::ResourceLink::SetBaseDirectory(m_directory.path().toStdString());
    }
    static QString name(int i) { return QStringLiteral("%1.png").arg(i % fileCount); }

private:
    QTemporaryDir m_directory;
};

struct Elements
{
    Elements() : project(0)
    {
        for (int i = 0; i < elementCount; ++i) {
            Nodes::ConfigNode *node = project.add("image", project.window);
            LabelProject::set(*node, "image", FreshPictures::name(i).toStdString());
            LabelProject::set(*node, "width", "48");
            LabelProject::set(*node, "height", "48");
            nodes.push_back(static_cast<Nodes::BasicWidget *>(node));
        }
    }
    LabelProject project;
    std::vector<Nodes::BasicWidget *> nodes;
};

/// Makes and paints every element once.
void firstPicture(benchmark::State &state)
{
    const Elements elements;
    ImageCachingManager &cache = ImageCachingManager::getInstance();
    QImage screen(48, 48, QImage::Format_ARGB32_Premultiplied);
    int decoded = 0;
    qint64 bytes = 0;
    for (auto _ : state) {
        state.PauseTiming();
        const FreshPictures pictures;
        const int countBefore = cache.getCount();
        const qint64 bytesBefore = cache.getMemory().images;
        state.ResumeTiming();
        for (Nodes::BasicWidget *node : elements.nodes) {
            Widgets::qwidgetImage element(node, nullptr);
            QPainter painter(&screen);
            element.paintDirectly(painter);
        }
        decoded = cache.getCount() - countBefore;
        bytes = cache.getMemory().images - bytesBefore;
    }
    state.counters["decoded"] = decoded;
    state.counters["KiB"] = double(bytes) / 1024;
    state.counters["renditions KiB"] = double(cache.getMemory().renditions) / 1024;
}

/// The same, each element decoding for itself.
void withoutSharing(benchmark::State &state)
{
    const FreshPictures pictures;
    QImage screen(48, 48, QImage::Format_ARGB32_Premultiplied);
    for (auto _ : state) {
        for (int i = 0; i < elementCount; ++i) {
            const Nodes::ResourcePtr file =
                Nodes::ResourceLink(FreshPictures::name(i).toStdString()).Load();
            const QImage own = QImage::fromData(reinterpret_cast<const uchar *>(file.GetData()),
                                                int(file.GetSize()));
            QPainter painter(&screen);
            painter.setRenderHint(QPainter::SmoothPixmapTransform);
            painter.drawImage(screen.rect(), own);
        }
    }
    state.counters["decoded"] = elementCount;
    state.counters["KiB"] = elementCount * side * side * 4 / 1024.0;
}

/// Paints every element again, as a full repaint of the window does.
void repaint(benchmark::State &state)
{
    const FreshPictures pictures;
    const Elements elements;
    std::vector<std::unique_ptr<Widgets::qwidgetImage>> shown;
    for (Nodes::BasicWidget *node : elements.nodes)
        shown.push_back(std::make_unique<Widgets::qwidgetImage>(node, nullptr));
    QImage screen(48, 48, QImage::Format_ARGB32_Premultiplied);
    QPainter painter(&screen);
    for (auto _ : state) {
        for (const auto &element : shown)
            element->paintDirectly(painter);
    }
}

} // namespace

BENCHMARK(firstPicture)->Iterations(20)->Unit(benchmark::kMillisecond);
BENCHMARK(withoutSharing)->Iterations(20)->Unit(benchmark::kMillisecond);
BENCHMARK(repaint)->Unit(benchmark::kMicrosecond);

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
}
