#include "support/LiveElement.h"
#include "support/Mouse.h"
#include "support/Rows.h"
#include "widgets/elements/PictureFiles.h"

#include "widgets/elements/qwidgetButton.h"
#include "widgets/scene/ProxyScene.h"
#include "widgets/windows/WindowForm.h"

#include <QDialog>
#include <QGraphicsItem>
#include <QMenu>
#include <QTimer>

using namespace Widgets;

namespace {

constexpr const char *lists = R"(
<memorySignal id="20" name="press" writable="true"/>
<memorySignal id="21" name="release" writable="true"/>
<memorySignal id="22" name="blur" writable="true"/>
<memorySignal id="24" name="on" type="bool"/>
<memorySignal id="25" name="level" type="double" decimals="1" unit="°C"/>
<actionWriteValue id="30" name="P" signal="20" value="1"/>
<actionWriteValue id="31" name="R" signal="21" value="1"/>
<actionWriteValue id="32" name="B" signal="22" value="1"/>)";

QByteArray button(const QString &properties)
{
    const QString size = properties.contains("height") ? "" : R"(width="100" height="40" )";
    return QString("<button id=\"11\" name=\"K\" %1%2/>").arg(size, properties).toUtf8();
}

/// A shown window with the button at (20, 30) and another one, which can take the focus.
struct Station : RuntimeProject
{
    explicit Station(const QString &properties)
        : RuntimeProject(
              lists +
              (R"(<window id="10" name="W" width="300" height="200">)" +
               button(R"(x="20" y="30" releaseActions="31" onFocusLoss="32" )" + properties) +
               R"(<button id="12" name="Other" x="180" y="30" width="100" height="40"/>)"
               "</window>")),
          window(node<Nodes::BasicWindow>(10), nullptr)
    {
        window.show();
        window.activateWindow();
        if (!QTest::qWaitForWindowActive(&window))
            qFatal("no window");
        record({20, 21, 22});
    }
    /// Letters: Press, Release, Double, Move, each followed by the place: in, corner, beside, out,
    /// the other button; Hide the window, Invisible, Veto (disable), X (delete) the button, its
    /// Node removed, a pop-Up, an Other modal window, lost Grab, Space, Auto-repeated key, Key of
    /// the shortcut.
    void act(const QString &script)
    {
        static const QMap<QChar, QPoint> places{{'i', {70, 50}},
                                                {'c', {119, 69}},
                                                {'b', {121, 50}},
                                                {'o', {70, 150}},
                                                {'a', {230, 50}}};
        QWidget *view = window.viewport();
        QPoint at;
        const QMap<QChar, std::function<void()>> acts{
            {'P', [&] { QTest::mousePress(view, Qt::LeftButton, {}, at); }},
            {'R', [&] { QTest::mouseRelease(view, Qt::LeftButton, {}, at); }},
            {'D', [&] { QTest::mouseDClick(view, Qt::LeftButton, {}, at); }},
            {'M', [&] { sendMouse(*view, QEvent::MouseMove, at); }},
            {'H', [&] { window.hide(); }},
            {'I', [&] { set(11, "visible", "false"); }},
            {'X', [&] { delete window.scene()->itemAt(70, 50, QTransform()); }},
            {'V', [&] { set(11, "disabled", "true"); }},
            {'N', [&] { (void)node(10)->RemoveNode(Nodes::NodeLink(11)); }},
            {'U', [&] { menu.popup(QPoint()); }},
            {'O',
             [&] {
                 QDialog modal;
                 QTimer::singleShot(0, &modal, &QDialog::reject);
                 modal.exec();
             }},
            {'G', [&] { window.scene()->itemAt(70, 50, QTransform())->ungrabMouse(); }},
            {'A',
             [&] {
                 if (!QTest::qWaitFor([&] { return recorded.contains("release"); }))
                     qFatal("not released");
                 qt_sendShortcutOverrideEvent(view, 0, Qt::Key_F5, Qt::ControlModifier, {}, true);
             }},
            {'S', [&] { QTest::keyClick(view, Qt::Key_Space); }},
            {'K', [&] { QTest::keyClick(view, Qt::Key_F5, Qt::ControlModifier); }}};
        for (int i = 0; i < script.size(); ++i) {
            at = places.value(i + 1 < script.size() ? script[i + 1] : QChar());
            if (acts.contains(script[i]))
                acts[script[i]]();
        }
    }

    WindowForm window;
    QMenu menu;
};

/// A button on its own.
struct Alone : LiveElement<qwidgetButton>
{
    explicit Alone(const QString &properties, Nodes::enWorkMode mode = Nodes::WorkModeRuntime)
        : LiveElement(lists + button(properties), 11, mode)
    {
    }
};

/// Smallest rectangle that holds every dark red pixel: the captions of these tests.
QRect inkOf(const QImage &image)
{
    QRect found;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const QColor c = image.pixelColor(x, y);
            if (c.red() > 120 && c.green() < 70 && c.blue() < 70)
                found |= QRect(x, y, 1, 1);
        }
    }
    return found;
}

const QString red = R"(color="#a00000" background="#ffffff" )";

} // namespace

class TestButtons : public QObject
{
    Q_OBJECT

private slots:
    void gesturesRunTheLists_data();
    void gesturesRunTheLists();
    void aNewPressIsNotEndedByTheLastRelease();
    void theEditorKeepsTheGestures();
    void captions_data();
    void captions();
    void captionIsPlacedAndTurned_data();
    void captionIsPlacedAndTurned();
    void stylesAndBackground_data();
    void stylesAndBackground();
    void geometryChangesNothingElse();
    void disabledIsFlatAndCovered();
    void aPictureFillsTheButton();
};

void TestButtons::gesturesRunTheLists_data()
{
    const Rows<QString, QString, QString> row("properties", "gesture", "expected");
    const QString press = R"(pressActions="30" )";
    const QString key = press + R"(hotKey="Ctrl+F5" )", off = R"(disabled="true")";
    row("click", press, "PiRi", "press release");
    row("outermost corner", press + R"(style="fusion")", "PcRc", "press release");
    row("just outside", press, "PbRb", "");
    row("drag off", press, "PiMoRo", "press release");
    row("drag off and back", press, "PiMoMiRi", "press release press release");
    row("drag onto", press, "PoMiRi", "");
    row("double click", press, "PiRiDiRi", "press release press release");
    row("focus goes to another", press, "PiRiPaRa", "press release blur");
    row("disabled", press + off, "PiRi", "");
    row("disabled while held", press, "PiVRi", "press release");
    row("hidden while held", press, "PiH", "press blur release");
    row("hidden by itself while held", press, "PiI", "press release blur");
    row("pop-up while held", press, "PiU", "press release blur");
    row("modal window while held", press, "PiO", "press release blur");
    row("lost grab while held", press, "PiG", "press release");
    row("node removed while held", press, "PiN", "press release");
    row("shortcut held", key, "KAA", "press release");
    row("deleted while held by its key", key, "KX", "press release");
    row("space", press, "PiRiS", "press release press release");
    row("shortcut", key, "K", "press release");
    row("shortcut of a disabled one", key + off, "K", "");
    row("in their order", R"(pressActions="31 30")", "PiRi", "release press release");
}

void TestButtons::gesturesRunTheLists()
{
    QFETCH(QString, properties);
    QFETCH(QString, gesture);
    QFETCH(QString, expected);
    Station station(properties);
    station.act(gesture);
    // A shortcut lets go by itself, after a moment.
    QTRY_COMPARE(station.recorded.join(' '), expected);
    QCOMPARE(station.ran(), expected);
}

// After a stall all that happened meanwhile comes at once.
void TestButtons::aNewPressIsNotEndedByTheLastRelease()
{
    Station station(R"(pressActions="30")");
    station.act("PiRiPi");
    QTRY_COMPARE(station.recorded.join(' '), QString("press release press"));
    station.act("Ri");
    QCOMPARE(station.ran(), QString("press release press release"));
}

void TestButtons::theEditorKeepsTheGestures()
{
    Alone alone(R"(hotKey="Ctrl+F5" pressActions="30" releaseActions="31" onFocusLoss="32")",
                Nodes::WorkModeEditing);
    alone.record({20, 21, 22});
    alone.element.show();
    for (const QEvent::Type type :
         {QEvent::MouseButtonPress, QEvent::MouseButtonDblClick, QEvent::MouseButtonRelease}) {
        QMouseEvent event(type, QPointF(50, 20), Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
        event.accept();
        QCoreApplication::sendEvent(&alone.element, &event);
        QVERIFY(!event.isAccepted());
    }
    QTest::keyClick(&alone.element, Qt::Key_F5, Qt::ControlModifier);
    QTest::keyClick(&alone.element, Qt::Key_Space);
    alone.core.SetWorkMode(Nodes::WorkModeRuntime);
    QCOMPARE(alone.ran(), QString());
}

void TestButtons::captions_data()
{
    const Rows<QString, Nodes::SignalValue, QString> row("properties", "value", "caption");
    const Nodes::SignalValue lost((Nodes::Result(Nodes::Result::Timeout)));
    const QString onOff = R"(signal="24" text="Насос" onText="Стоп" offText="Пуск")";
    row("yes", onOff, true, "Стоп");
    row("no", onOff, false, "Пуск");
    row("unknown", onOff, lost, "Насос");
    row("number", R"(signal="25")", 95.04, "95.0 °C");
    row("unknown number", R"(signal="25")", lost, "----");
}

void TestButtons::captions()
{
    QFETCH(QString, properties);
    QFETCH(Nodes::SignalValue, value);
    Alone alone(properties);
    alone.publish(24, value);
    alone.publish(25, value);
    QTRY_COMPARE(alone.element.shownQuality(),
                 value.IsError() ? Nodes::Quality::Bad : Nodes::Quality::Good);
    QTEST(alone.element.shownText() + alone.element.text(), "caption");
}

void TestButtons::captionIsPlacedAndTurned_data()
{
    const Rows<QString, QRect> row("properties", "box"); // that holds the caption, of 120 by 60
    row("centre", "", {35, 15, 50, 30});
    row("corner", R"(align="right" valign="bottom")", {70, 38, 50, 22});
    row("half a turn", R"(align="left" valign="top" angle="180")", {70, 38, 50, 22});
    row("quarter turn", R"(angle="90" align="left")", {45, 0, 30, 45});
}

void TestButtons::captionIsPlacedAndTurned()
{
    QFETCH(QString, properties);
    QFETCH(QRect, box);
    Alone alone(red + R"(width="120" height="60" text="Пуск" )" + properties);
    const QRect ink = inkOf(alone.drawn());
    QVERIFY(ink.width() > 5 && ink.height() > 5);
    QCOMPARE(box | ink, box);
}

void TestButtons::stylesAndBackground_data()
{
    // The style below the sheet's, "" for the program's; the colour over blue.
    const Rows<QString, QString, QColor> row("style", "styleClass", "centre");
    const QColor green(0, 200, 0);
    row("application", "application", "", green);
    row("fusion", "fusion", "QFusionStyle", green);
    row("not of this platform", "windowsVista", "", green);
    row("transparent", "transparent", "", Qt::blue);
}

void TestButtons::stylesAndBackground()
{
    QFETCH(QString, style);
    QFETCH(QColor, centre);
    Alone alone(R"(background="#00c800" text="")");
    alone.set(11, "style", "windows");
    alone.set(11, "style", style);
    const QStyle *own = alone.element.ownStyle();
    QTEST(QString(own ? own->metaObject()->className() : ""), "styleClass");
    QImage under(100, 40, QImage::Format_RGB32);
    under.fill(Qt::blue);
    alone.element.render(&under, QPoint(), QRegion(), QWidget::DrawChildren);
    const QColor drawn = under.pixelColor(50, 20);
    // A style may shade the background, but not mix it with what is below.
    QVERIFY2(qAbs(drawn.hue() - centre.hue()) < 2, qPrintable(drawn.name()));
}

void TestButtons::geometryChangesNothingElse()
{
    Alone alone(R"(text="Пуск")");
    QSignalSpy told(&alone.element, &qwidgetButton::updateProperty);
    alone.element.setFont(QFont("DejaVu Serif", 20));
    alone.set(11, "x", "70");
    alone.set(11, "width", "150");
    QCOMPARE(told.count(), 2);
    QCOMPARE(alone.element.geometry(), QRect(70, 0, 150, 40));
    QCOMPARE(alone.element.font().family(), QStringLiteral("DejaVu Serif"));
    alone.element.stop();
    alone.set(11, "width", "30");
    QCOMPARE(alone.element.width(), 150);
}

void TestButtons::disabledIsFlatAndCovered()
{
    Alone alone(red + R"(text="Пуск")");
    QVERIFY(!alone.element.isFlat() && !inkOf(alone.drawn()).isEmpty());
    alone.set(11, "disabled", "true");
    alone.element.setDisabled(true); // as its host does
    QVERIFY(alone.element.isFlat() && inkOf(alone.drawn()).isEmpty());
    QCOMPARE(alone.drawn().pixelColor(3, 3), QColor(191, 191, 191)); // white below half grey
}

void TestButtons::aPictureFillsTheButton()
{
    const PictureFiles files;
    Alone alone(R"(image="square.svg" width="80" height="60" background="#ffffff")");
    QTRY_COMPARE(alone.element.iconSize(), QSize(80, 60));
    QCOMPARE(alone.drawn().pixelColor(40, 10), QColor(0, 255, 0));
    // As a display of twice the pixels asks for: an enlarged bitmap would have a soft edge.
    const QImage fine = alone.element.icon().pixmap(QSize(160, 120)).toImage();
    QCOMPARE(fine.size(), QSize(120, 120));
    QCOMPARE(fine.pixelColor(60, 59), QColor(0, 255, 0));
    QCOMPARE(fine.pixelColor(60, 60).alpha(), 0);
    const qint64 shown = alone.element.icon().cacheKey();
    alone.set(11, "image", "cut.png");
    QCOMPARE(alone.element.icon().cacheKey(), shown); // what cannot be loaded changes nothing
    alone.set(11, "image", "");
    QCOMPARE(alone.element.icon().cacheKey(), shown);
    alone.set(11, "image", "halves.png");
    QVERIFY(alone.element.icon().cacheKey() != shown);
}

QTEST_MAIN(TestButtons)
#include "tst_buttons.moc"
