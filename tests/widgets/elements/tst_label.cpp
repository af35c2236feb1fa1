#include "support/RuntimeProject.h"

#include "widgets/elements/ElementTooltip.h"
#include "widgets/elements/qwidgetMultiLabel.h"
#include "widgets/scene/ProxyScene.h"
#include "widgets/scene/ProxyView.h"

#include "nodes/visual/widgetMultiLabel.h"

#include <QGraphicsProxyWidget>
#include <QImage>
#include <QPainter>

#include <atomic>
#include <thread>

using Nodes::Quality;
using Widgets::qwidgetLabel;
using Widgets::qwidgetMultiLabel;

namespace {

constexpr const char *nodes = R"(<folder id="10" name="F">
  <memorySignal id="11" name="T" unit="°C" decimals="1"/></folder>
<window id="20" name="W" width="200" height="100">
  <label id="21" name="L" signal="11" text="T = " x="10" y="20" width="120" height="30"/>
  <label id="22" name="Fixed" text="Котёл" width="80" height="30"/>
  <multiLabel id="23" name="M" signal="11" visibility="matching" width="80" height="30">
    <state id="24" name="S" from="0" to="10" text="Норма" ownColor="true" color="#102030"
           ownBackground="true" background="#a0b0c0"/></multiLabel></window>)";

/// Grey picture of an element: what remains of its looks without colour.
QImage greyLook(qwidgetLabel &label)
{
    QImage image(label.size(), QImage::Format_ARGB32_Premultiplied);
    image.fill(QColor(214, 218, 222));
    QPainter painter(&image);
    label.paintDirectly(painter);
    painter.end();
    return image.convertToFormat(QImage::Format_Grayscale8);
}

int differingPixels(const QImage &a, const QImage &b)
{
    int count = 0;
    for (int y = 0; y < a.height(); ++y)
        for (int x = 0; x < a.width(); ++x)
            count += qAbs(qGray(a.pixel(x, y)) - qGray(b.pixel(x, y))) > 40 ? 1 : 0;
    return count;
}

struct PaintCounter : QObject
{
    bool eventFilter(QObject *, QEvent *event) override
    {
        count += event->type() == QEvent::Paint ? 1 : 0;
        return false;
    }
    int count = 0;
};

} // namespace

class LabelTest : public QObject
{
    Q_OBJECT

private slots:
    void startsAndStopsOnce();
    void closingOneLeavesTheOthersLive();
    void ignoresChangesWhileStopped();
    void qualityIsSeenWithoutColour();
    void badShowsNoNumber();
    void fixedTextHasNoQuality();
    void repaintsOncePerChange();
    void looksOfProperties();
    void stateDecidesColours();
    void unmatchedIsHiddenAtRunTime_data();
    void unmatchedIsHiddenAtRunTime();
    void tooltipTellsQuality_data();
    void tooltipTellsQuality();
    void deletedWhilePublishing();
    void wrongNodeClass();

private:
    static void publish(const RuntimeProject &project, double value, Quality quality)
    {
        Nodes::SignalValue sample(value);
        sample.SetQuality(quality);
        project.node<Nodes::BasicSignal>(11)->GetCell()->Publish(sample);
    }
};

void LabelTest::startsAndStopsOnce()
{
    RuntimeProject project(nodes);
    auto *node = project.node<Nodes::BasicWidget>(21);
    qwidgetLabel label(node, nullptr);
    QSignalSpy spy(&label, &qwidgetLabel::isActiveChanged);
    label.stop();
    label.start();
    label.start();
    QCOMPARE(spy.count(), 1);
    QVERIFY(node->GetState() == Nodes::NodeState::Running);
    label.stop();
    label.stop();
    QCOMPARE(spy.count(), 2);
    QVERIFY(node->GetState() == Nodes::NodeState::Stopped);
}

void LabelTest::closingOneLeavesTheOthersLive()
{
    RuntimeProject project(nodes);
    auto *node = project.node<Nodes::BasicWidget>(21);
    qwidgetLabel kept(node, nullptr);
    kept.start();
    auto closed = std::make_unique<qwidgetLabel>(node, nullptr);
    closed->start();
    closed->stop();
    closed.reset();
    publish(project, 3, Quality::Good);
    QTRY_COMPARE(kept.labelText(), QStringLiteral("T = 3.0 °C"));
    kept.stop();
    QVERIFY(node->GetState() == Nodes::NodeState::Stopped);
}

void LabelTest::ignoresChangesWhileStopped()
{
    RuntimeProject project(nodes);
    auto *node = project.node<Nodes::BasicWidget>(21);
    qwidgetLabel label(node, nullptr);
    label.start();
    publish(project, 1, Quality::Good);
    QTRY_COMPARE(label.labelText(), QStringLiteral("T = 1.0 °C"));
    label.stop();
    publish(project, 2, Quality::Good);
    QVERIFY(node->SetPropertyText("x", "77"));
    QTest::qWait(10);
    QCOMPARE(label.labelText(), QStringLiteral("T = 1.0 °C"));
    QCOMPARE(label.x(), 10);
    label.start();
    QCOMPARE(label.labelText(), QStringLiteral("T = 2.0 °C"));
    QCOMPARE(label.x(), 77);
}

void LabelTest::qualityIsSeenWithoutColour()
{
    RuntimeProject project(nodes);
    qwidgetLabel label(project.node<Nodes::BasicWidget>(21), nullptr);
    label.start();
    QVector<QImage> looks;
    for (const Quality quality :
         {Quality::Good, Quality::Uncertain, Quality::Bad, Quality::Stale}) {
        publish(project, 3, quality);
        QTRY_COMPARE(label.shownQuality(), quality);
        looks << greyLook(label);
    }
    for (int i = 0; i < looks.size(); ++i)
        for (int j = i + 1; j < looks.size(); ++j)
            QVERIFY2(differingPixels(looks[i], looks[j]) >= 20,
                     qPrintable(QStringLiteral("%1 and %2").arg(i).arg(j)));
    publish(project, 3, Quality::Good);
    QTRY_COMPARE(label.shownQuality(), Quality::Good);
    QCOMPARE(greyLook(label), looks[0]);
}

void LabelTest::badShowsNoNumber()
{
    RuntimeProject project(nodes);
    qwidgetLabel label(project.node<Nodes::BasicWidget>(21), nullptr);
    label.start();
    QCOMPARE(label.labelText(), QStringLiteral("T = ----")); // nothing received yet
    QCOMPARE(label.shownQuality(), Quality::Bad);
    publish(project, 42, Quality::Good);
    QTRY_COMPARE(label.labelText(), QStringLiteral("T = 42.0 °C"));
    project.node<Nodes::BasicSignal>(11)->GetCell()->Degrade(
        Quality::Bad, Nodes::Result(Nodes::Result::NotConnected));
    QTRY_COMPARE(label.labelText(), QStringLiteral("T = ----"));
    QCOMPARE(label.shownQuality(), Quality::Bad);
}

void LabelTest::fixedTextHasNoQuality()
{
    RuntimeProject project(nodes);
    qwidgetLabel label(project.node<Nodes::BasicWidget>(22), nullptr);
    label.start();
    QCOMPARE(label.labelText(), QStringLiteral("Котёл"));
    QCOMPARE(label.shownQuality(), Quality::Good);
    QVERIFY(Widgets::ElementTooltip::text(*project.node<Nodes::BasicWidget>(22)).isEmpty());
}

void LabelTest::repaintsOncePerChange()
{
    RuntimeProject project(nodes);
    auto *window = project.node(20);
    Widgets::ProxyView view(window, nullptr);
    view.setScene(window);
    view.show();
    QVERIFY(QTest::qWaitForWindowExposed(&view));
    publish(project, 1, Quality::Good);
    QTest::qWait(150);
    PaintCounter counter;
    view.viewport()->installEventFilter(&counter);
    for (int i = 2; i < 100; ++i)
        publish(project, i, Quality::Good);
    QTRY_COMPARE(counter.count, 1);
    publish(project, 99, Quality::Good); // looks the same
    QTest::qWait(30);
    QCOMPARE(counter.count, 1);
}

void LabelTest::looksOfProperties()
{
    RuntimeProject project(nodes);
    auto *node = project.node<Nodes::BasicWidget>(22);
    qwidgetLabel label(node, nullptr);
    label.start();
    const auto changed = [&](const char *key, const char *text) {
        const QImage before = greyLook(label);
        return node->SetPropertyText(key, text) && greyLook(label) != before;
    };
    QVERIFY(changed("borderWidth", "3"));
    QVERIFY(changed("angle", "90"));
    QVERIFY(changed("fontSize", "14"));
    QVERIFY(changed("disabled", "true"));
    QVERIFY(changed("background", "#ffffff"));
    QCOMPARE(label.palette().color(label.backgroundRole()), QColor(Qt::white));
    QCOMPARE(qGray(greyLook(label).pixel(40, 5)), 255); // disabled, yet without a grey cover
    QVERIFY(node->SetPropertyText("background", "#ffffff00"));
    QCOMPARE(label.palette().color(label.backgroundRole()).alpha(), 0);
}

void LabelTest::stateDecidesColours()
{
    RuntimeProject project(nodes);
    qwidgetMultiLabel label(project.node<Nodes::BasicWidget>(23), nullptr);
    label.start();
    publish(project, 5, Quality::Good);
    QTRY_COMPARE(label.labelText(), QStringLiteral("Норма"));
    QCOMPARE(label.textColor(), QColor(0x10, 0x20, 0x30));
    QCOMPARE(label.backgroundColor(), QColor(0xa0, 0xb0, 0xc0));
    publish(project, 50, Quality::Good);
    QTRY_COMPARE(label.textColor(), QColor(Qt::black));
    QCOMPARE(label.backgroundColor(), QColor(0xa0, 0xb0, 0xc0)); // stays without an own one
    QVERIFY(project.node(23)->SetPropertyText("stateColors", "false"));
    QCOMPARE(label.backgroundColor().alpha(), 0);
}

void LabelTest::unmatchedIsHiddenAtRunTime_data()
{
    QTest::addColumn<int>("mode");
    QTest::addColumn<bool>("isHidden");
    QTest::newRow("runtime") << int(Nodes::WorkModeRuntime) << true;
    QTest::newRow("editing") << int(Nodes::WorkModeEditing) << false;
}

void LabelTest::unmatchedIsHiddenAtRunTime()
{
    QFETCH(int, mode);
    QFETCH(bool, isHidden);
    RuntimeProject project(nodes, Nodes::enWorkMode(mode));
    qwidgetMultiLabel label(project.node<Nodes::BasicWidget>(23), nullptr);
    label.show();
    label.start();
    publish(project, 5, Quality::Good);
    QTRY_COMPARE(label.labelText(), QStringLiteral("Норма"));
    QVERIFY(label.isVisible());
    publish(project, 50, Quality::Good);
    QTRY_COMPARE(label.labelText(), QStringLiteral("50.0 °C"));
    QCOMPARE(label.isHidden(), isHidden);
    publish(project, 5, Quality::Good);
    QTRY_VERIFY(label.isVisible());
}

void LabelTest::tooltipTellsQuality_data()
{
    QTest::addColumn<int>("quality");
    QTest::addColumn<QStringList>("parts");
    const QString path = QStringLiteral("Сигнал: F/T");
    QTest::newRow("good") << int(Quality::Good)
                          << QStringList{path, "Качество: Достоверно", "\nЗначение: 7.0 °C"};
    QTest::newRow("stale") << int(Quality::Stale)
                           << QStringList{path, "Качество: Устарело", "Последнее значение: 7.0 °C",
                                          "Причина: нет обновлений"};
    QTest::newRow("bad") << int(Quality::Bad)
                         << QStringList{path, "Качество: Недостоверно",
                                        "Последнее значение: 7.0 °C", "Причина: "};
}

void LabelTest::tooltipTellsQuality()
{
    QFETCH(int, quality);
    QFETCH(QStringList, parts);
    RuntimeProject project(nodes);
    publish(project, 7, Quality(quality));
    const QString text = Widgets::ElementTooltip::text(*project.node<Nodes::BasicWidget>(21));
    for (const QString &part : parts)
        QVERIFY2(text.contains(part), qPrintable(text));
}

void LabelTest::deletedWhilePublishing()
{
    RuntimeProject project(nodes);
    std::atomic<bool> isDone{false};
    std::thread publisher([&] {
        while (!isDone)
            publish(project, 1, Quality::Good);
    });
    for (int i = 0; i < 50; ++i) {
        qwidgetLabel label(project.node<Nodes::BasicWidget>(21), nullptr);
        label.start();
        QCoreApplication::processEvents();
    }
    isDone = true;
    publisher.join();
    QCoreApplication::processEvents();
    QVERIFY(project.node(21)->SetPropertyText("x", "5")); // reaches none of the deleted
}

void LabelTest::wrongNodeClass()
{
    Nodes::BasicWidget node;
    qwidgetLabel label(&node, nullptr);
    label.start();
    label.onValueUpdated(1.0);
    label.resize(20, 10);
    QCOMPARE(greyLook(label).pixel(5, 5), QColor(Qt::white).rgb());
    QVERIFY(label.labelText().isEmpty());
}

QTEST_MAIN(LabelTest)
#include "tst_label.moc"
