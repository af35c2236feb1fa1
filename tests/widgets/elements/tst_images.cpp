#include "support/RuntimeProject.h"
#include "widgets/elements/PictureFiles.h"

#include "widgets/elements/ImageCachingManager.h"
#include "widgets/elements/qwidgetMovingImage.h"
#include "widgets/elements/qwidgetMultiImage.h"

#include "nodes/journal/EventJournal.h"
#include "nodes/visual/BasicWidget.h"

#include <QMovie>

using namespace Widgets;
using Nodes::BasicWidget;

namespace {

const Nodes::ResourcePtr none;

const PictureFiles &files()
{
    static const PictureFiles made;
    return made;
}

/// One image element of 40 by 20, where nothing else is said; signal 20 is an integer.
std::string image(const char *kind, const QString &properties, const char *states = "")
{
    const QString size = properties.contains("height") ? QString() : R"( width="40" height="20" )";
    return QString(R"(<memorySignal id="20" name="S" type="int"/>)"
                   R"(<%1 id="10" name="I" %2%3>%4</%1>)")
        .arg(kind, size, properties, states)
        .toStdString();
}

std::string multiImage(const QString &properties)
{
    return image("multiImage", properties, R"(
<state id="11" name="on" from="1" to="1" image="halves.png"/>
<state id="12" name="off" from="2" to="2" image="square.svg"/>
<state id="13" name="bare" from="3" to="3"/>
<state id="14" name="broken" from="4" to="4" image="cut.png"/>)");
}

template <class Element> struct Shown
{
    explicit Shown(const std::string &nodes, Nodes::enWorkMode mode = Nodes::WorkModeRuntime)
        : project(nodes.c_str(), mode),
          element((files().use(), project.node<BasicWidget>(10)), nullptr)
    {
        element.start();
    }
    ~Shown() { element.stop(); }
    void publish(const Nodes::SignalValue &value)
    {
        project.node<Nodes::BasicSignal>(20)->GetCell()->Publish(value);
        QCoreApplication::processEvents();
    }
    QColor at(int x, int y) { return element.grab().toImage().pixelColor(x, y); }

    RuntimeProject project;
    Element element;
};

using Image = Shown<qwidgetImage>;
using MultiImage = Shown<qwidgetMultiImage>;

QStringList warnings(const Nodes::systemCore &core)
{
    std::vector<Nodes::BasicEvent> events;
    if (!core.GetJournal().Flush() || !core.GetJournal().Query({}, events))
        return {"the journal failed"};
    QStringList texts;
    for (const Nodes::BasicEvent &event : events)
        texts << QString::fromStdString(event.text);
    return texts;
}

} // namespace

class TestImages : public QObject
{
    Q_OBJECT

private slots:
    void decodes_data();
    void decodes();
    void sharesWhatItDecoded();
    void vectorsStaySharp();
    void drawsTurnedInsideTheBorder_data();
    void drawsTurnedInsideTheBorder();
    void anAnimationRunsWhileActive();
    void aStateSelectsThePicture_data();
    void aStateSelectsThePicture();
    void theSameStateAgainDoesNothing();
    void aBadValueNeverLooksGood();
    void wandersInsideItsArea();
    void aMissingPictureIsSeenInTheEditor();
    void aMissingPictureIsToldOnce_data();
    void aMissingPictureIsToldOnce();
};

void TestImages::decodes_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<QSize>("size");
    QTest::newRow("bitmap") << "halves.png" << QSize(20, 10);
    QTest::newRow("vector") << "square.svg" << QSize(16, 16);
    QTest::newRow("cut off") << "cut.png" << QSize();
    QTest::newRow("claims to be large") << "large.png" << QSize();
    QTest::newRow("large vector") << "huge.svg" << QSize();
}

void TestImages::decodes()
{
    QFETCH(QString, file);
    QFETCH(QSize, size);
    const QImage *image =
        ImageCachingManager::getInstance().getImage(files().load(qPrintable(file)));
    QVERIFY(image);
    QCOMPARE(image->isNull(), !size.isValid());
    if (size.isValid())
        QCOMPARE(image->size(), size);
}

void TestImages::sharesWhatItDecoded()
{
    auto &cache = ImageCachingManager::getInstance();
    QVERIFY(!cache.getImage(none) && cache.getRendition(none, {5, 5}).isNull());
    QVERIFY(!cache.getImage(files().load("empty.png")));
    QFile::copy(files().path("halves.png"), files().path("shared.png"));
    const int before = cache.getCount();
    const qint64 bytes = cache.getMemory().images;
    const Image first(image("image", R"(image="shared.png")"));
    const Image second(image("image", R"(image="shared.png" angle="45")"));
    QVERIFY(first.element.stillImage());
    QCOMPARE(first.element.stillImage(), second.element.stillImage());
    QCOMPARE(cache.getCount(), before + 1);
    QCOMPARE(cache.getMemory().images, bytes + 20 * 10 * 4);
}

void TestImages::vectorsStaySharp()
{
    const QImage made =
        ImageCachingManager::getInstance().getRendition(files().load("square.svg"), {160, 320});
    // An enlarged bitmap would have a soft edge here.
    QCOMPARE(made.pixelColor(80, 158), QColor(0, 255, 0));
    QCOMPARE(made.pixelColor(80, 161).alpha(), 0);
}

void TestImages::drawsTurnedInsideTheBorder_data()
{
    QTest::addColumn<QString>("properties");
    QTest::addColumn<QPoint>("point");
    QTest::addColumn<QColor>("color");
    const QString still = R"(image="halves.png" borderWidth="3" borderColor="#00ff00" )";
    const QPoint left(8, 10);
    QTest::newRow("half a turn") << still + R"(angle="180")" << left << QColor(Qt::blue);
    QTest::newRow("clockwise") << still + R"(angle="90")" << QPoint(20, 5) << QColor(Qt::red);
    QTest::newRow("border") << still << QPoint(38, 17) << QColor(Qt::green);
    QTest::newRow("background") << still + R"(angle="45" background="#ffffff")" << QPoint(4, 4)
                                << QColor(Qt::white);
    QTest::newRow("disabled") << still + R"(disabled="true")" << left << QColor(191, 64, 64);
}

void TestImages::drawsTurnedInsideTheBorder()
{
    QFETCH(QString, properties);
    QFETCH(QPoint, point);
    QFETCH(QColor, color);
    Image shown(image("image", properties));
    const QColor drawn = shown.at(point.x(), point.y());
    QVERIFY2(qAbs(drawn.red() - color.red()) <= 2 && qAbs(drawn.green() - color.green()) <= 2 &&
                 qAbs(drawn.blue() - color.blue()) <= 2,
             qPrintable(drawn.name()));
}

void TestImages::anAnimationRunsWhileActive()
{
    Image shown(image("image", R"(image="blinks.gif" animated="true" signal="20")"));
    QVERIFY(shown.element.animation());
    QTRY_COMPARE(shown.at(20, 10), QColor(Qt::blue));
    const QMovie *running = shown.element.animation();
    shown.publish(5);
    QCOMPARE(shown.element.animation(), running); // a value does not start it anew
    shown.element.stop();
    QVERIFY(!shown.element.animation());
    shown.element.start();
    QVERIFY(shown.element.animation() && shown.element.animation()->state() == QMovie::Running);
}

void TestImages::aStateSelectsThePicture_data()
{
    QTest::addColumn<QString>("noPicture");
    QTest::addColumn<int>("value");
    QTest::addColumn<bool>("isEditor");
    QTest::addColumn<QString>("file");
    QTest::addColumn<bool>("isVisible");
    const auto row = [](const char *noPicture, int value, bool isEditor, const char *file,
                        bool isVisible) {
        QTest::addRow("%s %d%s", noPicture, value, isEditor ? ", editor" : "")
            << QString(noPicture) << value << isEditor << QString(file) << isVisible;
    };
    row("cross", 1, false, "halves.png", true);
    row("cross", 2, false, "square.svg", true);
    for (const int bare : {3, 4 /* broken */, 99 /* no state */}) {
        row("cross", bare, false, "", true);
        row("keep", bare, false, "halves.png", true);
        row("hide", bare, false, "", false);
    }
    row("cross", 3, true, "halves.png", true);
    row("hide", 3, true, "", true);
}

void TestImages::aStateSelectsThePicture()
{
    QFETCH(QString, noPicture);
    QFETCH(int, value);
    QFETCH(bool, isEditor);
    QFETCH(QString, file);
    QFETCH(bool, isVisible);
    const std::string nodes = multiImage("signal=\"20\" noPicture=\"" + noPicture + '"');
    MultiImage shown(nodes, isEditor ? Nodes::WorkModeEditing : Nodes::WorkModeRuntime);
    shown.publish(1);
    QTRY_COMPARE(shown.element.shownText(), QStringLiteral("halves.png"));
    shown.publish(value);
    QTRY_COMPARE(shown.element.shownText(), file);
    if (!isVisible)
        shown.element.show(); // as the host does, which does not know of states
    QTRY_COMPARE(!shown.element.isHidden(), isVisible);
    const bool isCross = noPicture == "cross" && value > 2 && !isEditor;
    const QImage *still = shown.element.stillImage();
    QCOMPARE(still && *still == QImage(":/icons/close_red.png"), isCross);
    shown.publish(1);
    QTRY_VERIFY(shown.element.shownText() == "halves.png" && !shown.element.isHidden());
}

void TestImages::theSameStateAgainDoesNothing()
{
    QFile::copy(files().path("halves.png"), files().path("gone.png"));
    MultiImage shown(multiImage(R"(signal="20")"));
    QVERIFY(shown.project.node(11)->SetPropertyText("image", "gone.png").IsSuccess());
    shown.publish(1);
    QTRY_COMPARE(shown.element.shownText(), QStringLiteral("gone.png"));
    QVERIFY(QFile::remove(files().path("gone.png")));
    QSignalSpy values(&shown.element, &qwidgetMultiImage::valueUpdated);
    shown.publish(1);
    QTRY_COMPARE(values.count(), 1);
    QCOMPARE(shown.element.shownText(), QStringLiteral("gone.png"));
}

void TestImages::aBadValueNeverLooksGood()
{
    MultiImage plain(multiImage(R"(signal="20" noPicture="hide")"));
    plain.publish(1);
    QTRY_COMPARE(plain.element.shownText(), QStringLiteral("halves.png"));
    const QImage good = plain.element.grab().toImage();
    const auto cell = plain.project.node<Nodes::BasicSignal>(20)->GetCell();
    QImage earlier = good;
    for (const Nodes::Quality quality : {Nodes::Quality::Stale, Nodes::Quality::Bad}) {
        cell->Degrade(quality, Nodes::Result());
        QTRY_COMPARE(plain.element.shownQuality(), quality);
        const QImage now = plain.element.grab().toImage();
        QVERIFY(now != good && now != earlier && !plain.element.isHidden());
        earlier = now;
    }
    MultiImage own(multiImage(R"(signal="20" badImage="square.svg")"));
    own.publish(Nodes::SignalValue(Nodes::Result(Nodes::Result::Timeout)));
    QTRY_COMPARE(own.element.shownText(), QStringLiteral("square.svg"));
}

void TestImages::wandersInsideItsArea()
{
    // 16 by 16 pixels: there is room on one axis only.
    Shown<qwidgetMovingImage> shown(
        image("movingImage", R"(image="square.svg" width="40" height="9")"));
    QSet<int> columns;
    for (int i = 0; i < 300; ++i) {
        QVERIFY(QMetaObject::invokeMethod(&shown.element, "onMoveImage"));
        const QPoint place = shown.element.picturePosition();
        QVERIFY(place.x() >= 0 && place.x() < 40 - 16 && place.y() == 0);
        columns << place.x();
    }
    QVERIFY(columns.size() > 1);
}

void TestImages::aMissingPictureIsSeenInTheEditor()
{
    const auto look = [](Nodes::enWorkMode mode) {
        return Image(image("image", R"(image="cut.png")"), mode).element.grab().toImage();
    };
    QVERIFY(look(Nodes::WorkModeEditing) != look(Nodes::WorkModeRuntime));
}

void TestImages::aMissingPictureIsToldOnce_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<QString>("reason");
    const auto row = [](const char *file, const char *reason) {
        QTest::newRow(file) << QString(file) << QString(reason);
    };
    row("absent.png", "нет такого файла");
    row("text.png", "повреждён");
    row(R"(large.png" animated="true)", "слишком велик");
    row("../a.png", "вне каталога");
}

void TestImages::aMissingPictureIsToldOnce()
{
    QFETCH(QString, file);
    QFETCH(QString, reason);
    Image shown(image("image", QString(R"(image="%1" signal="20")").arg(file)));
    QVERIFY(shown.project.core.GetJournal().Open(files().path(reason + ".db").toStdString()));
    qwidgetImage second(shown.project.node<BasicWidget>(10), nullptr);
    second.start();
    shown.publish(1);
    second.grab();
    second.stop();
    const QStringList told = warnings(shown.project.core);
    QCOMPARE(told.size(), 1);
    QVERIFY2(told[0].contains(file.section('"', 0, 0)) && told[0].contains(reason),
             qPrintable(told[0]));
}

QTEST_MAIN(TestImages)
#include "tst_images.moc"
