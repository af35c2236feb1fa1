#include "editor/review/CallUpMeter.h"

#include "editor/review/ReviewScreen.h"
#include "widgets/context/SceneContext.h"
#include "widgets/elements/IWidget.h"
#include "widgets/scene/ElementFactory.h"
#include "widgets/scene/ProxyScene.h"

#include "nodes/visual/windows/BasicComposition.h"
#include "nodes/visual/windows/BasicWindow.h"

#include <QElapsedTimer>
#include <QImage>
#include <QPainter>
#include <QWidget>

#include <algorithm>
#include <map>
#include <memory>

namespace Editor {

namespace {

constexpr int largestPicture = 4096; // pixels a side

Widgets::SceneContext previewContext()
{
    Widgets::SceneContext context = *Widgets::SceneContext::process();
    context.setPreview(true);
    return context;
}

std::unique_ptr<Widgets::ProxyScene> sceneOf(Nodes::ConfigNode &screen)
{
    const Widgets::SceneContext context = previewContext();
    if (auto *window = dynamic_cast<Nodes::BasicWindow *>(&screen))
        return std::make_unique<Widgets::ProxyScene>(window, nullptr, context);
    if (auto *composition = dynamic_cast<Nodes::BasicComposition *>(&screen))
        return std::make_unique<Widgets::ProxyScene>(composition, nullptr, context);
    return nullptr;
}

QImage pictureFor(QSize size)
{
    return {size.boundedTo({largestPicture, largestPicture}).expandedTo({1, 1}),
            QImage::Format_ARGB32_Premultiplied};
}

void paint(Widgets::ProxyScene &scene, QImage &picture)
{
    QPainter painter(&picture);
    scene.render(&painter, picture.rect(), picture.rect());
}

double milliseconds(const QElapsedTimer &timer)
{
    return double(timer.nsecsElapsed()) / 1e6;
}

double timeOf(Nodes::BasicWidget &node, const Widgets::SceneContextPtr &context)
{
    QElapsedTimer timer;
    timer.start();
    const std::unique_ptr<QWidget> widget(Widgets::ElementFactory::create(&node, nullptr, context));
    auto *element = dynamic_cast<IWidget *>(widget.get());
    if (!element)
        return 0;
    element->start();
    QImage picture = pictureFor(widget->size());
    widget->render(&picture);
    const double taken = milliseconds(timer);
    element->stop();
    return taken;
}

QString inWords(double time)
{
    return QString::number(time, 'f', time < 10 ? 1 : 0);
}

} // namespace

double CallUpMeter::budget(int elements)
{
    constexpr double thousand = 30; // ms
    return thousand * qMax(1.0, elements / 1000.0);
}

CallUpMeter::Times CallUpMeter::measure(Nodes::ConfigNode &screen)
{
    const ReviewScreen facts(screen);
    QImage picture = pictureFor(facts.size());
    Times times;
    times.elements = facts.elements().size();
    QElapsedTimer timer;
    timer.start();
    const std::unique_ptr<Widgets::ProxyScene> scene = sceneOf(screen);
    if (!scene)
        return times;
    paint(*scene, picture);
    times.firstPaint = milliseconds(timer);
    scene->start();
    paint(*scene, picture);
    times.live = milliseconds(timer);
    scene->stop();
    return times;
}

QVector<CallUpMeter::Share> CallUpMeter::shares(const Nodes::ConfigNode &screen)
{
    const auto context = std::make_shared<const Widgets::SceneContext>(previewContext());
    std::map<std::string, Share> byKind;
    const ReviewScreen facts(screen);
    for (const ReviewElement &element : facts.elements()) {
        const Nodes::NodeLink link(element.node);
        auto *node = dynamic_cast<Nodes::BasicWidget *>(link.GetNode());
        if (!node)
            continue;
        const double time = timeOf(*node, context);
        Share &share = byKind[node->GetKind()->nameRu];
        share.kind = QString::fromStdString(node->GetKind()->nameRu);
        ++share.count;
        share.time += time;
        if (time > share.slowestTime) {
            share.slowestTime = time;
            share.slowest = link;
        }
    }
    QVector<Share> shares;
    for (const auto &[kind, share] : byKind)
        shares.append(share);
    std::sort(shares.begin(), shares.end(),
              [](const Share &a, const Share &b) { return a.time > b.time; });
    return shares;
}

ReviewFindings CallUpMeter::tell(const Nodes::ConfigNode &screen, const Times &times)
{
    const double most = budget(times.elements);
    const bool isSlow = times.live > most;
    ReviewFindings findings;
    findings.append(
        {isSlow ? ReviewFinding::Warning : ReviewFinding::Measure, Nodes::NodeLink(&screen),
         QStringLiteral("Вызов: первый кадр за %1 мс, все элементы (%2) за %3 мс при норме %4 мс.")
             .arg(inWords(times.firstPaint))
             .arg(times.elements)
             .arg(inWords(times.live), inWords(most)),
         isSlow ? QStringLiteral("Уберите или упростите то, что названо ниже.") : QString()});
    if (!isSlow)
        return findings;
    constexpr int told = 3; // kinds
    for (const Share &share : shares(screen).mid(0, told))
        findings.append(
            {ReviewFinding::Hint, share.slowest,
             QStringLiteral("%1: %2 шт. занимают %3 мс, самый медленный — этот, %4 мс.")
                 .arg(share.kind)
                 .arg(share.count)
                 .arg(inWords(share.time), inWords(share.slowestTime)),
             QStringLiteral("Уменьшите их число, размер рисунков или вынесите часть в другое "
                            "окно.")});
    return findings;
}

} // namespace Editor
