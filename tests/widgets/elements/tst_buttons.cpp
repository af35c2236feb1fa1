#include "support/RuntimeProject.h"
#include "widgets/elements/PictureFiles.h"

#include "widgets/elements/qwidgetButton.h"
#include "widgets/scene/ProxyScene.h"
#include "widgets/scene/ProxyWidget.h"
#include "widgets/windows/WindowForm.h"

#include "nodes/visual/BasicWidget.h"

using namespace Widgets;
using Nodes::BasicWidget;

namespace {

constexpr const char *lists = R"(
<memorySignal id="20" name="press" writable="true"/>
<memorySignal id="21" name="release" writable="true"/>
<memorySignal id="22" name="blur" writable="true"/>
<memorySignal id="23" name="end" writable="true"/>
<memorySignal id="24" name="on" type="bool"/>
<memorySignal id="25" name="level" type="double" decimals="1" unit="°C"/>
<actionWriteValue id="30" name="P" signal="20" value="1"/>
<actionWriteValue id="31" name="R" signal="21" value="1"/>
<actionWriteValue id="32" name="B" signal="22" value="1"/>
<actionWriteValue id="33" name="E" signal="23" value="1"/>)";

std::string button(const QString &properties)
{
    const QString size = properties.contains("height") ? "" : R"(width="100" height="40" )";
    return QString("<button id=\"11\" name=\"K\" %1%2/>").arg(size, properties).toStdString();
}

struct ButtonProject
{
    ButtonProject(const std::string &nodes, Nodes::enWorkMode mode)
        : project((lists + nodes).c_str(), mode)
    {
    }
    void set(const char *key, const char *value) const
    {
        if (!project.node(11)->SetPropertyText(key, value))
            qFatal("%s", key);
    }
    RuntimeProject project;
};

/// A shown window with the button at (20, 30) and another one, which can take the focus.
struct Station : ButtonProject
{
    explicit Station(const QString &properties)
        : ButtonProject(
              R"(<window id="10" name="W" width="300" height="200">)" +
                  button(
                      R"(x="20" y="30" pressActions="30" releaseActions="31" onFocusLoss="32" )" +
                      properties) +
                  R"(<button id="12" name="Other" x="180" y="30" width="100" height="40"/></window>)",
              Nodes::WorkModeRuntime),
          window(project.node<Nodes::BasicWindow>(10), nullptr)
    {
        window.show();
        window.activateWindow();
        if (!QTest::qWaitForWindowActive(&window))
            qFatal("no window");
        project.record({20, 21, 22, 23});
    }
    void mouse(void (*act)(QWidget *, Qt::MouseButton, Qt::KeyboardModifiers, QPoint, int),
               const QPoint &place, Qt::MouseButton pressed = Qt::LeftButton)
    {
        act(window.viewport(), pressed, Qt::KeyboardModifiers(), place, -1);
    }
    void move(const QPoint &place, Qt::MouseButtons held)
    {
        QMouseEvent event(QEvent::MouseMove, place, window.viewport()->mapToGlobal(place),
                          Qt::NoButton, held, Qt::NoModifier);
        QCoreApplication::sendEvent(window.viewport(), &event);
    }
    /// What ran, once everything queued so far has.
    QString ran()
    {
        project.push(33);
        if (!QTest::qWaitFor([this] { return project.recorded.endsWith("end"); }))
            return "nothing ran";
        return project.recorded.mid(0, project.recorded.size() - 1).join(' ');
    }

    WindowForm window;
};

/// A button on its own.
struct Alone : ButtonProject
{
    explicit Alone(const QString &properties, Nodes::enWorkMode mode = Nodes::WorkModeRuntime)
        : ButtonProject(button(properties), mode),
          element((files().use(), project.node<BasicWidget>(11)), nullptr)
    {
        element.start();
    }
    ~Alone() { element.stop(); }
    static const PictureFiles &files()
    {
        static const PictureFiles made;
        return made;
    }
    QImage drawn()
    {
        QCoreApplication::processEvents();
        return element.grab().toImage();
    }

    qwidgetButton element;
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

const QPoint inside(70, 50), outside(70, 150), other(230, 50);
const QString red = R"(color="#a00000" background="#ffffff" )";

using Gesture = void (*)(Station &);

} // namespace

Q_DECLARE_METATYPE(Gesture)

class TestButtons : public QObject
{
    Q_OBJECT

private slots:
    void gesturesRunTheLists_data();
    void gesturesRunTheLists();
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
    void otherNodesGiveAPlainButton();
};

void TestButtons::gesturesRunTheLists_data()
{
    QTest::addColumn<QString>("properties");
    QTest::addColumn<Gesture>("gesture");
    QTest::addColumn<QString>("expected");
    const auto row = [](const char *name, const char *properties, const char *expected,
                        Gesture gesture) {
        QTest::newRow(name) << QString(properties) << gesture << QString(expected);
    };
    row("click", "", "press release", [](Station &s) { s.mouse(QTest::mouseClick, inside); });
    row("outermost corner", R"(style="fusion")", "press release", [](Station &s) {
        s.mouse(QTest::mouseClick, {119, 69});
    });
    row("just outside", "", "", [](Station &s) { s.mouse(QTest::mouseClick, {121, 50}); });
    row("right button", "", "",
        [](Station &s) { s.mouse(QTest::mouseClick, inside, Qt::RightButton); });
    row("drag off", "", "press release", [](Station &s) {
        s.mouse(QTest::mousePress, inside);
        s.move(outside, Qt::LeftButton);
        s.mouse(QTest::mouseRelease, outside);
    });
    row("drag off and back", "", "press release press release", [](Station &s) {
        s.mouse(QTest::mousePress, inside);
        s.move(outside, Qt::LeftButton);
        s.move(inside, Qt::LeftButton);
        s.mouse(QTest::mouseRelease, inside);
    });
    row("drag onto", "", "", [](Station &s) {
        s.mouse(QTest::mousePress, outside);
        s.move(inside, Qt::LeftButton);
        s.mouse(QTest::mouseRelease, inside);
    });
    row("double click", "", "press release press release", [](Station &s) {
        s.mouse(QTest::mouseClick, inside);
        s.mouse(QTest::mouseDClick, inside);
        s.mouse(QTest::mouseRelease, inside);
    });
    row("focus goes to another", "", "press release blur", [](Station &s) {
        s.mouse(QTest::mouseClick, inside);
        s.mouse(QTest::mouseClick, other);
    });
    row("disabled", R"(disabled="true")", "",
        [](Station &s) { s.mouse(QTest::mouseClick, inside); });
    row("disabled while held", "", "press release", [](Station &s) {
        s.mouse(QTest::mousePress, inside);
        s.set("disabled", "true");
        s.mouse(QTest::mouseRelease, inside);
    });
    row("window hidden while held", "", "press blur release", [](Station &s) {
        s.mouse(QTest::mousePress, inside);
        s.window.hide();
    });
    row("lists of now, in their order", "", "release press release", [](Station &s) {
        s.set("pressActions", "31 30");
        s.mouse(QTest::mouseClick, inside);
    });
    row("space", "", "press release", [](Station &s) {
        s.window.viewport()->setFocus();
        s.window.scene()->setFocusItem(s.window.scene()->itemAt(inside, QTransform()));
        QTest::keyClick(s.window.viewport(), Qt::Key_Space);
    });
    row("shortcut", R"(hotKey="Ctrl+F5")", "press release", [](Station &s) {
        QTest::keyClick(&s.window, Qt::Key_F5, Qt::ControlModifier);
        const auto *host =
            dynamic_cast<ProxyWidget *>(s.window.scene()->itemAt(inside, QTransform()));
        const auto *pressed = qobject_cast<QAbstractButton *>(host->widget());
        QTRY_VERIFY(!pressed->isDown());
    });
    row("shortcut of a disabled one", R"(hotKey="Ctrl+F5" disabled="true")", "",
        [](Station &s) { QTest::keyClick(&s.window, Qt::Key_F5, Qt::ControlModifier); });
}

void TestButtons::gesturesRunTheLists()
{
    QFETCH(QString, properties);
    QFETCH(Gesture, gesture);
    QFETCH(QString, expected);
    Station station(properties);
    gesture(station);
    QCOMPARE(station.ran(), expected);
}

void TestButtons::theEditorKeepsTheGestures()
{
    Alone alone(R"(hotKey="Ctrl+F5" pressActions="30" releaseActions="31" onFocusLoss="32")",
                Nodes::WorkModeEditing);
    alone.project.record({20, 21, 22});
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
    QFocusEvent blur(QEvent::FocusOut);
    QCoreApplication::sendEvent(&alone.element, &blur);
    alone.project.core.SetWorkMode(Nodes::WorkModeRuntime);
    alone.project.record({23});
    alone.project.push(33);
    QTRY_COMPARE(alone.project.recorded.join(' '), QStringLiteral("end"));
}

void TestButtons::captions_data()
{
    QTest::addColumn<QString>("properties");
    QTest::addColumn<Nodes::SignalValue>("value");
    QTest::addColumn<QString>("caption");
    const auto row = [](const char *name, const char *properties, const Nodes::SignalValue &value,
                        const char *caption) {
        QTest::newRow(name) << QString(properties) << value << QString(caption);
    };
    const Nodes::SignalValue lost((Nodes::Result(Nodes::Result::Timeout)));
    const char *onOff = R"(signal="24" text="Насос" onText="Стоп" offText="Пуск")";
    row("text", R"(text="Пуск")", {}, "Пуск");
    row("yes", onOff, true, "Стоп");
    row("no", onOff, false, "Пуск");
    row("unknown", onOff, lost, "Насос");
    row("number", R"(signal="25")", 95.04, "95.0 °C");
    row("unknown number", R"(signal="25")", lost, "----");
    row("own text over a number", R"(signal="25" text="Уставка")", 95.04, "Уставка");
}

void TestButtons::captions()
{
    QFETCH(QString, properties);
    QFETCH(Nodes::SignalValue, value);
    QFETCH(QString, caption);
    Alone alone(properties);
    for (const unsigned long signal : {24, 25}) {
        if (!value.IsEmpty())
            alone.project.node<Nodes::BasicSignal>(signal)->GetCell()->Publish(value);
    }
    QTRY_COMPARE(alone.element.shownQuality(),
                 value.IsError() ? Nodes::Quality::Bad : Nodes::Quality::Good);
    QCOMPARE(alone.element.shownText() + alone.element.text(), caption);
}

void TestButtons::captionIsPlacedAndTurned_data()
{
    QTest::addColumn<QString>("properties");
    QTest::addColumn<QRect>("box"); // holds the caption; the button is 120 by 60
    const auto row = [](const char *name, const char *properties, const QRect &box) {
        QTest::newRow(name) << red + R"(width="120" height="60" text="Пуск" )" + properties << box;
    };
    row("centre", "", {35, 15, 50, 30});
    row("right bottom", R"(align="right" valign="bottom")", {70, 38, 50, 22});
    row("left top", R"(align="left" valign="top")", {0, 0, 50, 22});
    row("half a turn", R"(align="left" valign="top" angle="180")", {70, 38, 50, 22});
    row("quarter turn", R"(angle="90" align="left")", {45, 0, 30, 45});
    row("three quarters", R"(angle="270" valign="top")", {0, 5, 22, 50});
}

void TestButtons::captionIsPlacedAndTurned()
{
    QFETCH(QString, properties);
    QFETCH(QRect, box);
    Alone alone(properties);
    const QRect ink = inkOf(alone.drawn());
    QVERIFY(ink.width() > 5 && ink.height() > 5);
    QCOMPARE(box | ink, box);
}

void TestButtons::stylesAndBackground_data()
{
    QTest::addColumn<QByteArray>("style");
    QTest::addColumn<QString>("styleClass"); // of the style below the sheet's; "" for the program's
    QTest::addColumn<QColor>("centre");      // over blue
    const QColor green(0, 200, 0);
    const auto row = [](const char *style, const char *styleClass, const QColor &centre) {
        QTest::newRow(style) << QByteArray(style) << QString(styleClass) << centre;
    };
    row("application", "", green);
    row("fusion", "QFusionStyle", green);
    row("windowsVista", "", green); // not on this platform
    row("transparent", "", Qt::blue);
}

void TestButtons::stylesAndBackground()
{
    QFETCH(QByteArray, style);
    QFETCH(QString, styleClass);
    QFETCH(QColor, centre);
    Alone alone(R"(background="#00c800" text="")");
    alone.set("style", "windows");
    alone.set("style", style);
    const QStyle *own = alone.element.ownStyle();
    QCOMPARE(QString(own ? own->metaObject()->className() : ""), styleClass);
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
    alone.set("x", "70");
    alone.set("width", "150");
    QCOMPARE(told.count(), 2);
    QCOMPARE(alone.element.geometry(), QRect(70, 0, 150, 40));
    QCOMPARE(alone.element.font().family(), QStringLiteral("DejaVu Serif"));
    alone.set("bold", "true");
    QVERIFY(alone.element.font().bold() && alone.element.font().family() == "DejaVu Sans");
    alone.element.stop();
    alone.set("width", "30");
    QCOMPARE(alone.element.width(), 150);
}

void TestButtons::disabledIsFlatAndCovered()
{
    Alone alone(red + R"(text="Пуск")");
    QVERIFY(!alone.element.isFlat() && !inkOf(alone.drawn()).isEmpty());
    alone.set("disabled", "true");
    alone.element.setDisabled(true); // as its host does
    QVERIFY(alone.element.isFlat() && inkOf(alone.drawn()).isEmpty());
    QCOMPARE(alone.drawn().pixelColor(3, 3), QColor(191, 191, 191)); // white below half grey
}

void TestButtons::aPictureFillsTheButton()
{
    Alone alone(R"(image="square.svg" width="80" height="60" background="#ffffff")");
    QTRY_COMPARE(alone.element.iconSize(), QSize(80, 60));
    QCOMPARE(alone.drawn().pixelColor(40, 10), QColor(0, 255, 0));
    const qint64 shown = alone.element.icon().cacheKey();
    alone.set("image", "cut.png");
    QCOMPARE(alone.element.icon().cacheKey(), shown); // what cannot be loaded changes nothing
    alone.set("image", "");
    QVERIFY(alone.element.icon().isNull());
    alone.set("image", "halves.png");
    QVERIFY(!alone.element.icon().isNull());
    alone.set("width", "100");
    QTRY_COMPARE(alone.element.iconSize(), QSize(100, 60));
}

void TestButtons::otherNodesGiveAPlainButton()
{
    const RuntimeProject project(R"(<label id="11" name="L" width="50" height="20" text="t"/>)");
    for (BasicWidget *node : {project.node<BasicWidget>(11), static_cast<BasicWidget *>(nullptr)}) {
        qwidgetButton element(node, nullptr);
        element.start();
        QTest::mouseClick(&element, Qt::LeftButton);
        QVERIFY(!element.grab().isNull() && element.shownText().isEmpty());
        QVERIFY(element.styleSheet().isEmpty());
        element.stop();
    }
}

QTEST_MAIN(TestButtons)
#include "tst_buttons.moc"
