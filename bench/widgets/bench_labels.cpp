// Labels: refresh, call-up and publishing, beside the plain thing one would write instead.
#include "LabelWindow.h"

#include <benchmark/benchmark.h>

#include <QApplication>
#include <QGraphicsProxyWidget>
#include <QPainter>

#include <atomic>
#include <thread>

namespace {

constexpr int labelCount = 1000;

/// Peer: a widget that paints a number, in a plain proxy.
class PlainNumber : public QWidget
{
public:
    void setNumber(double number)
    {
        m_text = QString::number(number, 'f', 1);
        update();
    }

protected:
    void paintEvent(QPaintEvent *) override
    {
        QPainter painter(this);
        painter.drawText(rect(), Qt::AlignRight | Qt::AlignVCenter, m_text);
    }

private:
    QString m_text;
};

struct PlainWindow
{
    PlainWindow()
    {
        scene.setItemIndexMethod(QGraphicsScene::NoIndex);
        scene.setSceneRect(0, 0, 1600, 1000);
        for (int i = 0; i < labelCount; ++i) {
            auto *number = new PlainNumber;
            number->setGeometry(i % 25 * 64, i / 25 * 25, 62, 23);
            number->setNumber(0);
            scene.addWidget(number);
            numbers.push_back(number);
        }
        view.setFixedSize(1602, 1002);
        view.setScene(&scene);
    }
    QGraphicsScene scene;
    QGraphicsView view;
    std::vector<PlainNumber *> numbers;
};

std::unique_ptr<Widgets::ProxyView> openWindow(LabelProject &project)
{
    auto view = std::make_unique<Widgets::ProxyView>(project.window, nullptr);
    view->setFixedSize(1602, 1002);
    view->setScene(project.window);
    return view;
}

void refresh(benchmark::State &state)
{
    LabelProject project(labelCount);
    const auto view = openWindow(project);
    PaintCounter counter(view->viewport());
    view->show();
    counter.await();
    for (auto _ : state) {
        state.PauseTiming();
        settle();
        state.ResumeTiming();
        project.publish(int(state.range(0)));
        counter.await();
    }
    state.counters["paintings"] =
        benchmark::Counter(counter.paints, benchmark::Counter::kAvgIterations);
}

void refreshPlain(benchmark::State &state)
{
    PlainWindow window;
    PaintCounter counter(window.view.viewport());
    window.view.show();
    counter.await();
    int round = 0;
    for (auto _ : state) {
        state.PauseTiming();
        settle();
        state.ResumeTiming();
        ++round;
        for (int i = 0; i < int(state.range(0)); ++i)
            window.numbers[std::size_t(i)]->setNumber((i * 7 + round * 13) % 10000 / 10.0);
        counter.await();
    }
}

void callUp(benchmark::State &state)
{
    LabelProject project(labelCount);
    for (auto _ : state) {
        auto view = openWindow(project);
        PaintCounter counter(view->viewport());
        view->show();
        counter.await();
        state.PauseTiming();
        settle();
        view.reset();
        state.ResumeTiming();
    }
}

void callUpPlain(benchmark::State &state)
{
    for (auto _ : state) {
        auto window = std::make_unique<PlainWindow>();
        PaintCounter counter(window->view.viewport());
        window->view.show();
        counter.await();
        state.PauseTiming();
        settle();
        window.reset();
        state.ResumeTiming();
    }
}

/// Four threads publish as fast as they can while the GUI thread shows what it can.
void publish(benchmark::State &state)
{
    LabelProject project(int(state.range(0)));
    const auto view = openWindow(project);
    view->show();
    settle();
    constexpr int threadCount = 4;
    for (auto _ : state) {
        std::atomic<int> running{threadCount};
        std::vector<std::thread> threads;
        for (int t = 0; t < threadCount; ++t)
            threads.emplace_back([&project, &running, t] {
                for (int i = 0; i < 250000; ++i)
                    project.cells[std::size_t(i * threadCount + t) % project.cells.size()]->Publish(
                        double(i));
                --running;
            });
        while (running > 0)
            QCoreApplication::processEvents(QEventLoop::AllEvents, 5);
        for (std::thread &thread : threads)
            thread.join();
    }
    state.SetItemsProcessed(state.iterations() * threadCount * 250000);
}

BENCHMARK(refresh)->Arg(1000)->Arg(100)->Unit(benchmark::kMillisecond)->Iterations(50);
BENCHMARK(refreshPlain)->Arg(1000)->Arg(100)->Unit(benchmark::kMillisecond)->Iterations(50);
BENCHMARK(callUp)->Unit(benchmark::kMillisecond)->Iterations(20);
BENCHMARK(callUpPlain)->Unit(benchmark::kMillisecond)->Iterations(20);
BENCHMARK(publish)
    ->Arg(1000)
    ->Arg(10000)
    ->Unit(benchmark::kMillisecond)
    ->Iterations(3)
    ->UseRealTime();

} // namespace

int main(int argc, char **argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
