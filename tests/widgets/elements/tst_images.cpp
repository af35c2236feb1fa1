#include "support/LiveElement.h"
#include "support/Rows.h"
#include "widgets/elements/PictureFiles.h"

#include "widgets/elements/pictures/ImageCachingManager.h"
#include "widgets/elements/qwidgetMovingImage.h"
#include "widgets/elements/qwidgetMultiImage.h"

#include <QMovie>

using namespace Widgets;

namespace {

/// One image element of 40 by 20, where nothing else is said; signal 20 is an integer.
QByteArray image(const char *kind, const QString &properties, const char *states = "")
{
    const QString size = properties.contains("height") ? QString() : R"( width="40" height="20" )";
    return QString(R"(<memorySignal id="20" name="S" type="int"/>)"
                   R"(<%1 id="10" name="I" %2%3>%4</%1>)")
        .arg(kind, size, properties, states)
        .toUtf8();
}

QByteArray multiImage(const QString &properties)
{
    return image("multiImage", properties, R"(
<state id="11" name="on" from="1" to="1" image="halves.png"/>
<state id="12" name="off" from="2" to="2" image="square.svg"/>
<state id="13" name="bare" from="3" to="3"/>
<state id="14" name="broken" from="4" to="4" image="cut.png"/>)");
}

using Image = LiveElement<qwidgetImage>;
using MultiImage = LiveElement<qwidgetMultiImage>;

} // namespace

class TestImages : public QObject
{
    Q_OBJECT

private slots:
    void decodes_data();
    void decodes();
    void sharesWhatItDecoded();
    void vectorsStaySharp();
    void drawsForThePixelsCovered_data();
    void drawsForThePixelsCovered();
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

private:
    const PictureFiles m_files;
};

void TestImages::decodes_data()
{
    const Rows<QString, QSize> row("file", "size");
    row("bitmap", "halves.png", QSize(20, 10));
    row("vector", "square.svg", QSize(16, 16));
    row("cut off", "cut.png", QSize(0, 0));
    row("claims to be large", "large.png", QSize(0, 0));
    row("large vector", "huge.svg", QSize(0, 0));
}

void TestImages::decodes()
{
    QFETCH(QString, file);
    const QImage *image =
        ImageCachingManager::getInstance().getImage(m_files.load(qPrintable(file)));
    QVERIFY(image);
    QTEST(image->size(), "size");
}

void TestImages::sharesWhatItDecoded()
{
    auto &cache = ImageCachingManager::getInstance();
    const Nodes::ResourcePtr none;
    QVERIFY(!cache.getImage(none) && cache.getRendition(none, {5, 5}).isNull());
    QVERIFY(!cache.getImage(m_files.load("empty.png")));
    QFile::copy(m_files.path("halves.png"), m_files.path("shared.png"));
    const int before = cache.getCount();
    const qint64 bytes = cache.getMemory().images;
    const Image first(image("image", R"(image="shared.png")"), 10);
    const Image second(image("image", R"(image="shared.png" angle="45")"), 10);
    QVERIFY(first.element.stillImage());
    QCOMPARE(first.element.stillImage(), second.element.stillImage());
    QCOMPARE(cache.getCount(), before + 1);
    QCOMPARE(cache.getMemory().images, bytes + 20 * 10 * 4);
}

void TestImages::vectorsStaySharp()
{
    const QImage made =
        ImageCachingManager::getInstance().getRendition(m_files.load("square.svg"), {160, 320});
    // An enlarged bitmap would have a soft edge here.
    QCOMPARE(made.pixelColor(80, 158), QColor(0, 255, 0));
    QCOMPARE(made.pixelColor(80, 161).alpha(), 0);
}

void TestImages::drawsForThePixelsCovered_data()
{
    const Rows<double, double> row("scale", "ratio");
    row("view scaled", 2.5, 1);
    row("fine display", 1, 2.5);
    row("both", 2, 1.5);
}

void TestImages::drawsForThePixelsCovered()
{
    QFETCH(double, scale);
    QFETCH(double, ratio);
    const int half = int(10 * scale * ratio);
    QImage canvas(80, 2 * half, QImage::Format_ARGB32_Premultiplied);
    canvas.fill(Qt::transparent);
    canvas.setDevicePixelRatio(ratio);
    QPainter painter(&canvas);
    painter.scale(scale, scale);
    ImageCachingManager::getInstance().draw(painter, {0, 0, 40, 20}, m_files.load("square.svg"));
    painter.end();
    QCOMPARE(canvas.pixelColor(40, half - 1), QColor(0, 255, 0));
    QCOMPARE(canvas.pixelColor(40, half).alpha(), 0);
    const QImage largest =
        ImageCachingManager::getInstance().getRendition(m_files.load("square.svg"), {30000, 20000});
    const qint64 pixels = qint64(largest.width()) * largest.height();
    QVERIFY(pixels > 0 && pixels <= ImageCachingManager::MaximumRendition);
}

void TestImages::drawsTurnedInsideTheBorder_data()
{
    const Rows<QString, QPoint, QColor> row("properties", "point", "color");
    const QPoint left(8, 10);
    row("half a turn", R"(angle="180")", left, Qt::blue);
    row("clockwise", R"(angle="90")", {20, 5}, Qt::red);
    row("border", "", {38, 17}, Qt::green);
    row("background", R"(angle="45" background="#ffffff")", {4, 4}, Qt::white);
    row("disabled", R"(disabled="true")", left, QColor(191, 64, 64));
}

void TestImages::drawsTurnedInsideTheBorder()
{
    QFETCH(QString, properties);
    QFETCH(QPoint, point);
    QFETCH(QColor, color);
    const QString bordered = R"(image="halves.png" borderWidth="3" borderColor="#00ff00" )";
    Image shown(image("image", bordered + properties), 10);
    const QColor drawn = shown.drawn().pixelColor(point);
    QVERIFY2(qAbs(drawn.red() - color.red()) <= 2 && qAbs(drawn.green() - color.green()) <= 2 &&
                 qAbs(drawn.blue() - color.blue()) <= 2,
             qPrintable(drawn.name()));
}

void TestImages::anAnimationRunsWhileActive()
{
    Image shown(image("image", R"(image="blinks.gif" animated="true" signal="20")"), 10);
    QVERIFY(shown.element.animation());
    QTRY_COMPARE(shown.drawn().pixelColor(20, 10), QColor(Qt::blue));
    const QMovie *running = shown.element.animation();
    shown.publish(20, 5);
    shown.drawn();
    QCOMPARE(shown.element.animation(), running); // a value does not start it anew
    shown.element.stop();
    QVERIFY(!shown.element.animation());
    shown.element.start();
    QVERIFY(shown.element.animation() && shown.element.animation()->state() == QMovie::Running);
}

void TestImages::aStateSelectsThePicture_data()
{
    const Rows<QString, int, bool, QString, bool> row("noPicture", "value", "isEditor", "file",
                                                      "isVisible");
    row("first", "cross", 1, false, "halves.png", true);
    row("second", "cross", 2, false, "square.svg", true);
    // Nobody may take a state that cannot be shown for the one before, or for none.
    for (const char *noPicture : {"cross", "keep", "hide"})
        row("broken", noPicture, 4, false, "broken", true);
    for (const auto &[name, value] : {std::pair("bare", 3), {"no state", 99}}) {
        row(name, "cross", value, false, "", true);
        row(name, "keep", value, false, "halves.png", true);
        row(name, "hide", value, false, "", false);
    }
    row("editor keeps", "cross", 3, true, "halves.png", true);
    row("editor shows", "hide", 3, true, "", true);
}

void TestImages::aStateSelectsThePicture()
{
    QFETCH(QString, noPicture);
    QFETCH(int, value);
    QFETCH(bool, isEditor);
    QFETCH(QString, file);
    QFETCH(bool, isVisible);
    MultiImage shown(multiImage("signal=\"20\" noPicture=\"" + noPicture + '"'), 10,
                     isEditor ? Nodes::WorkModeEditing : Nodes::WorkModeRuntime);
    shown.publish(20, 1);
    QTRY_COMPARE(shown.element.shownText(), QStringLiteral("halves.png"));
    shown.publish(20, value);
    QTRY_COMPARE(shown.element.shownText(), file);
    if (!isVisible)
        shown.element.show(); // as the host does, which does not know of states
    QTRY_COMPARE(!shown.element.isHidden(), isVisible);
    const bool isCross = noPicture == "cross" && value > 2 && value != 4 && !isEditor;
    const QImage *still = shown.element.stillImage();
    QImage nothing = shown.drawn();
    nothing.fill(nothing.pixel(1, 10));
    QVERIFY(!isVisible || isEditor || shown.drawn() != nothing);
    QCOMPARE(still && *still == QImage(":/icons/close_red.png"), isCross);
    shown.publish(20, 1);
    QTRY_VERIFY(shown.element.shownText() == "halves.png" && !shown.element.isHidden());
}

void TestImages::theSameStateAgainDoesNothing()
{
    QFile::copy(m_files.path("halves.png"), m_files.path("gone.png"));
    MultiImage shown(multiImage(R"(signal="20")"), 10);
    shown.set(11, "image", "gone.png");
    shown.publish(20, 1);
    QTRY_COMPARE(shown.element.shownText(), QStringLiteral("gone.png"));
    QVERIFY(QFile::remove(m_files.path("gone.png")));
    QSignalSpy values(&shown.element, &qwidgetMultiImage::valueUpdated);
    shown.publish(20, 1);
    QTRY_COMPARE(values.count(), 1);
    QCOMPARE(shown.element.shownText(), QStringLiteral("gone.png"));
}

void TestImages::aBadValueNeverLooksGood()
{
    MultiImage plain(multiImage(R"(signal="20" noPicture="hide")"), 10);
    plain.publish(20, 1);
    QTRY_COMPARE(plain.element.shownText(), QStringLiteral("halves.png"));
    QVector<QImage> looks{plain.drawn()};
    for (const Nodes::Quality quality : {Nodes::Quality::Stale, Nodes::Quality::Bad}) {
        plain.publish(20, 1, quality);
        QTRY_COMPARE(plain.element.shownQuality(), quality);
        const QImage now = plain.drawn();
        QVERIFY(!looks.contains(now) && !plain.element.isHidden());
        looks << now;
    }
    plain.publish(20, 99); // no state: hidden
    QTRY_VERIFY(plain.element.isHidden());
    plain.publish(20, 99, Nodes::Quality::Bad);
    QTRY_VERIFY(!plain.element.isHidden());
    MultiImage fresh(multiImage(R"(signal="20" noPicture="keep")"), 10);
    QTRY_COMPARE(fresh.element.shownText(), QStringLiteral("?")); // there is none to keep
    MultiImage own(multiImage(R"(signal="20" badImage="square.svg")"), 10);
    own.publish(20, Nodes::SignalValue(Nodes::Result(Nodes::Result::Timeout)));
    QTRY_COMPARE(own.element.shownText(), QStringLiteral("square.svg"));
}

void TestImages::wandersInsideItsArea()
{
    // 16 by 16 pixels: there is room on one axis only.
    LiveElement<qwidgetMovingImage> shown(
        image("movingImage", R"(image="square.svg" width="40" height="9")"), 10);
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
        return Image(image("image", R"(image="cut.png")"), 10, mode).drawn();
    };
    QVERIFY(look(Nodes::WorkModeEditing) != look(Nodes::WorkModeRuntime));
}

void TestImages::aMissingPictureIsToldOnce_data()
{
    const Rows<QString, QString, QString> row("file", "properties", "reason");
    row("absent", "absent.png", "", "нет такого файла");
    row("no picture", "text.png", "", "повреждён");
    row("too large", "large.png", R"(animated="true")", "слишком велик");
    row("outside", "../a.png", "", "вне каталога");
}

void TestImages::aMissingPictureIsToldOnce()
{
    QFETCH(QString, file);
    QFETCH(QString, properties);
    QFETCH(QString, reason);
    Image shown(image("image", "image=\"" + file + "\" signal=\"20\" " + properties), 10);
    QVERIFY(shown.core.GetJournal().Open(m_files.path(reason + ".db").toStdString()));
    qwidgetImage second(shown.node<Nodes::BasicWidget>(10), nullptr);
    second.start();
    shown.publish(20, 1);
    shown.drawn();
    second.grab();
    second.stop();
    for (const QString &told : {file, reason, QString()})
        QCOMPARE(shown.journalled(told), 1);
}

QTEST_MAIN(TestImages)
#include "tst_images.moc"
