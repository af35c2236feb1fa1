#include "support/LiveElement.h"
#include "support/Rows.h"

#include "widgets/elements/binding/ElementTooltip.h"
#include "widgets/elements/qwidgetMultiLabel.h"
#include "widgets/scene/ElementFactory.h"
#include "widgets/scene/ProxyScene.h"
#include "widgets/scene/ProxyView.h"

#include <QHelpEvent>
#include <QPainter>
#include <QScreen>
#include <QTextDocument>
#include <QTextDocumentFragment>
#include <QToolTip>

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
           ownBackground="true" background="#a0b0c0"/>
    <state id="25" name="Hot" from="20" to="30" ownColor="true" color="#800000"/></multiLabel>
  <label id="26" name="Turned" signal="11" angle="45" x="60" y="60" width="100" height="30"/>
</window>)";

using Label = LiveElement<qwidgetLabel>;

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
    void theLastToStopStopsTheNode()
    {
        Label kept(nodes, 21);
        auto *node = kept.node<Nodes::BasicWidget>(21);
        QSignalSpy changes(&kept.element, &qwidgetLabel::isActiveChanged);
        kept.element.start(); // already is
        auto closed = std::make_unique<qwidgetLabel>(node, nullptr);
        closed->start();
        closed->stop();
        closed->stop();
        closed.reset();
        kept.publish(11, 3.0);
        QTRY_COMPARE(kept.element.labelText(), QStringLiteral("T = 3.0 °C"));
        kept.element.stop();
        QCOMPARE(changes.count(), 1);
        QVERIFY(node->GetState() == Nodes::NodeState::Stopped);
    }

    void ignoresChangesWhileStopped()
    {
        Label shown(nodes, 21);
        shown.element.stop();
        shown.publish(11, 2.0);
        shown.set(21, "x", "77");
        QCoreApplication::processEvents();
        QCOMPARE(shown.element.labelText(), QStringLiteral("T = ----"));
        QCOMPARE(shown.element.x(), 10);
        shown.element.start();
        QCOMPARE(shown.element.labelText(), QStringLiteral("T = 2.0 °C"));
        QCOMPARE(shown.element.x(), 77);
    }

    void qualityIsSeenWithoutColour()
    {
        Label shown(nodes, 21);
        QCOMPARE(shown.element.labelText(), QStringLiteral("T = ----")); // nothing received yet
        QCOMPARE(shown.element.shownQuality(), Quality::Bad);
        QVector<QImage> looks;
        for (const Quality quality :
             {Quality::Good, Quality::Uncertain, Quality::Bad, Quality::Stale, Quality::Good}) {
            shown.publish(11, 3.0, quality);
            QTRY_COMPARE(shown.element.shownQuality(), quality);
            QCOMPARE(shown.element.labelText(),
                     quality == Quality::Bad ? "T = ----" : "T = 3.0 °C");
            looks << greyLook(shown.element);
        }
        QCOMPARE(looks.takeLast(), looks.first());
        for (int i = 0; i < looks.size(); ++i)
            for (int j = i + 1; j < looks.size(); ++j)
                QVERIFY2(differingPixels(looks[i], looks[j]) >= 20,
                         qPrintable(QStringLiteral("%1 and %2").arg(i).arg(j)));
    }

    void repaintsOncePerChange()
    {
        const RuntimeProject project(nodes);
        Widgets::ProxyView view(project.node(20), nullptr);
        view.setScene(project.node(20));
        view.show();
        QVERIFY(QTest::qWaitForWindowExposed(&view));
        project.publish(11, 1.0);
        QTest::qWait(150);
        PaintCounter counter;
        view.viewport()->installEventFilter(&counter);
        for (int i = 2; i < 100; ++i)
            project.publish(11, i);
        QTRY_COMPARE(counter.count, 1);
        project.publish(11, 99); // looks the same
        QTest::qWait(30);
        QCOMPARE(counter.count, 1);
    }

    void looksOfProperties()
    {
        Label shown(nodes, 22);
        QCOMPARE(shown.element.labelText(), QStringLiteral("Котёл"));
        QCOMPARE(shown.element.shownQuality(), Quality::Good); // fixed text has none
        QVERIFY(Widgets::ElementTooltip::text(*shown.node<Nodes::BasicWidget>(22)).isEmpty());
        QImage before = greyLook(shown.element);
        for (const auto &[key, text] :
             {std::pair("borderWidth", "3"), std::pair("angle", "90"), std::pair("fontSize", "14"),
              std::pair("disabled", "true"), std::pair("background", "#ffffff")}) {
            shown.set(22, key, text);
            const QImage now = greyLook(shown.element);
            QVERIFY2(now != before, key);
            before = now;
        }
        QCOMPARE(qGray(before.pixel(40, 5)), 255); // disabled, yet without a grey cover
        shown.set(22, "background", "#ffffff00");
        QCOMPARE(shown.element.palette().color(shown.element.backgroundRole()).alpha(), 0);
    }

    void theStateDecides()
    {
        for (const Nodes::enWorkMode mode : {Nodes::WorkModeRuntime, Nodes::WorkModeEditing}) {
            LiveElement<qwidgetMultiLabel> shown(nodes, 23, mode);
            qwidgetMultiLabel &label = shown.element;
            label.show();
            shown.publish(11, 5.0);
            QTRY_COMPARE(label.labelText(), QStringLiteral("Норма"));
            QCOMPARE(label.textColor(), QColor(0x10, 0x20, 0x30));
            QCOMPARE(label.backgroundColor(), QColor(0xa0, 0xb0, 0xc0));
            QVERIFY(label.isVisible());
            shown.publish(11, 25.0);
            QTRY_COMPARE(label.textColor(), QColor(0x80, 0, 0));
            QCOMPARE(label.labelText(),
                     QStringLiteral("25.0 °C")); // a state of colours hides no number
            shown.publish(11, 50.0);             // no state
            QTRY_COMPARE(label.labelText(), QStringLiteral("50.0 °C"));
            QCOMPARE(label.textColor(), QColor(Qt::black));
            QCOMPARE(label.backgroundColor(), QColor(0xa0, 0xb0, 0xc0)); // stays without an own one
            QCOMPARE(label.isHidden(), mode == Nodes::WorkModeRuntime);
            shown.set(23, "visibility", "always");
            QVERIFY(label.isVisible());
            shown.set(23, "visibility", "matching");
            QCOMPARE(label.isHidden(), mode == Nodes::WorkModeRuntime);
            shown.publish(11, 5.0);
            QTRY_VERIFY(label.isVisible());
            shown.set(23, "stateColors", "false");
            QCOMPARE(label.backgroundColor().alpha(), 0);
        }
    }

    void lostDeviceStaysInSight()
    {
        LiveElement<qwidgetMultiLabel> shown(nodes, 23);
        const qwidgetMultiLabel &label = shown.element;
        shown.element.show();
        QVERIFY(label.isVisible()); // nothing received yet
        for (const double before : {5.0, 50.0}) {
            shown.publish(11, before);
            QTRY_COMPARE(label.isVisible(), before < 10);
            shown.publish(11, before, Quality::Bad);
            QTRY_COMPARE(label.shownQuality(), Quality::Bad);
            QVERIFY(label.isVisible());
            QCOMPARE(label.labelText(), QStringLiteral("----"));
        }
    }

    void turnedTextLeavesNothingBehind()
    {
        const RuntimeProject project(nodes);
        Widgets::ProxyView view(project.node(20), nullptr);
        view.setScene(project.node(20));
        view.show();
        QVERIFY(QTest::qWaitForWindowExposed(&view));
        const auto onScreen = [&] { return view.screen()->grabWindow(view.winId()).toImage(); };
        for (const double value : {12345678.0, 1.0}) {
            const QImage before = onScreen();
            project.publish(11, value);
            QTRY_VERIFY(onScreen() != before);
        }
        QCOMPARE(onScreen(), view.grab().toImage().convertToFormat(onScreen().format()));
    }

    void tooltipTellsQuality_data()
    {
        const Rows<Quality, QString> row("quality", "lines");
        row("good", Quality::Good, "Качество: Достоверно\nЗначение: 7.0 °C");
        row("stale", Quality::Stale,
            "Качество: Устарело\nПоследнее значение: 7.0 °C\nПричина: нет обновлений");
        row("bad", Quality::Bad, "Качество: Недостоверно\nПоследнее значение: 7.0 °C\nПричина: ");
    }

    void tooltipTellsQuality()
    {
        QFETCH(Quality, quality);
        QFETCH(QString, lines);
        const RuntimeProject project(nodes);
        project.publish(11, 7.0, quality);
        const QString text = Widgets::ElementTooltip::text(*project.node<Nodes::BasicWidget>(21));
        for (const QString &line : ("Сигнал: F/T\n" + lines).split('\n'))
            QVERIFY2(('\n' + text).contains('\n' + line), qPrintable(text));
    }

    void tooltipsAreNoMarkup()
    {
        constexpr const char *elements[] = {
            "label",   "multiLabel", "image",    "multiImage",  "button",         "bargraph",
            "editBox", "comboBox",   "checkBox", "movingImage", "recorderDisplay"};
        QByteArray xml = "<memorySignal id='10' name='&lt;img src=\"file:///tmp/x.png\"&gt;'/>";
        for (const char *element : elements)
            xml += QByteArray("<") + element + " name='E' signal='10' tooltip='&lt;b&gt;" +
                   element + "'/>";
        for (int i = 0, from = 0; i < int(std::size(elements)); ++i) {
            from = xml.indexOf(" name='E'", from);
            xml.insert(from, " id='" + QByteArray::number(20 + i) + "'");
            from += 20;
        }
        const RuntimeProject project(xml);
        for (unsigned long id = 20; id < 20 + std::size(elements); ++id) {
            const std::unique_ptr<QWidget> element(
                Widgets::ElementFactory::create(project.node<Nodes::BasicWidget>(id), nullptr));
            QHelpEvent asked(QEvent::ToolTip, {}, {});
            QApplication::sendEvent(element.get(), &asked);
            // What a reader sees of it, whichever way the label takes it.
            const QString shown = QToolTip::text();
            const QString read = Qt::mightBeRichText(shown)
                                     ? QTextDocumentFragment::fromHtml(shown).toPlainText()
                                     : shown;
            const char *kind = elements[id - 20];
            QVERIFY2(read.contains(QString("<b>") + kind), kind);
            QVERIFY2(read.contains("<img src=\"file:"), kind);
        }
    }

    void deletedWhilePublishing()
    {
        const RuntimeProject project(nodes);
        std::atomic<bool> isDone{false};
        std::thread publisher([&] {
            while (!isDone)
                project.publish(11, 1.0);
        });
        for (int i = 0; i < 50; ++i) {
            qwidgetLabel label(project.node<Nodes::BasicWidget>(21), nullptr);
            label.start();
            QCoreApplication::processEvents();
        }
        isDone = true;
        publisher.join();
        QCoreApplication::processEvents();
        project.set(21, "x", "5"); // reaches none of the deleted
    }

    void wrongNodeClass()
    {
        Nodes::BasicWidget node;
        qwidgetLabel label(&node, nullptr);
        label.start();
        label.onValueUpdated(1.0);
        label.resize(20, 10);
        QCOMPARE(greyLook(label).pixel(5, 5), QColor(Qt::white).rgb());
        QVERIFY(label.labelText().isEmpty());
    }
};

QTEST_MAIN(LabelTest)
#include "tst_label.moc"
