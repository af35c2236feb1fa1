#include "support/LiveElement.h"
#include "widgets/elements/PictureFiles.h"

#include "widgets/elements/pictures/MissingPicture.h"
#include "widgets/elements/symbols/Symbol.h"
#include "widgets/elements/symbols/SymbolCheck.h"
#include "widgets/elements/symbols/SymbolStore.h"
#include "widgets/elements/symbols/qwidgetSymbol.h"

#include "nodes/model/links/ResourceLink.h"
#include "nodes/model/validation/ValidationResults.h"
#include "nodes/visual/elements/widgetSymbol.h"

#include <QDirIterator>

#include <cmath>

using namespace Widgets;
using Nodes::Quality;
using Nodes::SymbolLook;

Q_DECLARE_METATYPE(Nodes::SymbolLook)

namespace {

constexpr const char *screen = R"(
<memorySignal id="10" name="T" minimum="0" maximum="200"/>
<memorySignal id="11" name="On" type="bool"/>
<layer id="2" name="L">
  <symbol id="20" name="Pump" width="64" height="64" signal="10" source=":/symbols/pump.svg">
    <state id="21" name="s" from="0" to="0" look="off"/>
    <state id="22" name="r" from="1" to="1" look="on"/>
    <state id="23" name="m" from="2" to="2" look="moving"/>
    <state id="24" name="f" from="3" to="3" look="fault"/>
    <state id="25" name="i" from="4" to="4" look="on" image=":/symbols/fan.svg"/>
    <state id="26" name="p" from="5" to="5"/>
  </symbol>
  <symbol id="30" name="Tank" width="64" height="96" signal="10" source=":/symbols/tank-vertical.svg"/>
  <symbol id="31" name="Motor" width="64" height="64" signal="11" source=":/symbols/motor.svg"/>
  <symbol id="32" name="Own" width="64" height="64" signal="10" source="own.svg" text="" showValue="true"/>
</layer>)";

constexpr const char *surfaces = R"(
<memorySignal id="10" name="T" minimum="0" maximum="200"/>
<window id="2" name="W">
  <symbol id="20" name="Motor" width="64" height="64" signal="10" source=":/symbols/motor.svg">
    <state id="21" name="s" from="0" to="0" look="off"/>
    <state id="22" name="r" from="1" to="1" look="on"/>
    <state id="23" name="m" from="2" to="2" look="moving"/>
    <state id="24" name="f" from="3" to="3" look="fault"/>
    <state id="26" name="p" from="5" to="5"/>
  </symbol>
</window>)";

QByteArray svg(const QByteArray &inside, const QByteArray &before = "")
{
    return before + R"(<svg xmlns="http://www.w3.org/2000/svg" width="8" height="8">)" + inside +
           "</svg>";
}

QByteArray nested(int depth)
{
    return svg(QByteArray("<g>").repeated(depth) + QByteArray("</g>").repeated(depth));
}

/// Ten times ten times ... as many shapes as are written.
QByteArray laughs(int rounds)
{
    QByteArray text = R"(<g id="a0"><path d="M0 0h1"/></g>)";
    for (int i = 1; i <= rounds; ++i) {
        const QByteArray use = "<use href=\"#a" + QByteArray::number(i - 1) + "\"/>";
        text += "<g id=\"a" + QByteArray::number(i) + "\">" + use.repeated(10) + "</g>";
    }
    return svg(text);
}

int colored(const QImage &image, const QColor &color)
{
    int count = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            count += image.pixelColor(x, y) == color;
    }
    return count;
}

} // namespace

class TestSymbols : public QObject
{
    Q_OBJECT

private slots:
    void whatMayNotBeShownIsRefused_data();
    void whatMayNotBeShownIsRefused();
    void theLookFollowsTheValue_data();
    void theLookFollowsTheValue();
    void looksDifferWithoutColor_data();
    void looksDifferWithoutColor();
    void everyLookStandsOutFromItsSurface_data();
    void everyLookStandsOutFromItsSurface();
    void thePictureFollowsTheWindowsColor();
    void theLevelFillsFromBelow_data();
    void theLevelFillsFromBelow();
    void aYesNoSignalNeedsNoStates();
    void aRefusedPictureIsToldAndReplaced();
    void aReasonIsReadToItsEnd_data();
    void aReasonIsReadToItsEnd();
    void partsOfAPictureTakeTheStyle_data();
    void partsOfAPictureTakeTheStyle();
    void thePictureFitsItsArea_data();
    void thePictureFitsItsArea();
    void everyBuiltInSymbolShowsItsStates_data();
    void everyBuiltInSymbolShowsItsStates();
    void symbolsAreShared();
    void aSymbolWithoutAPictureIsReported();
};

void TestSymbols::whatMayNotBeShownIsRefused_data()
{
    QTest::addColumn<QByteArray>("data");
    QTest::addColumn<QString>("reason"); // part of it; empty for none
    QTest::newRow("nothing") << QByteArray() << "пуст";
    QTest::newRow("no XML") << QByteArray("this is no picture") << "не SVG";
    QTest::newRow("cut off") << svg("<g>").chopped(8) << "повреждён";
    QTest::newRow("another XML") << QByteArray("<html/>") << "не SVG";
    QTest::newRow("too large") << svg(QByteArray(SymbolCheck::MaximumBytes, ' ')) << "МБ";
    QTest::newRow("compressed") << QByteArray::fromHex("1f8b0800") << "не SVG";
    QTest::newRow("entities") << svg("<text>&a;</text>", R"(<!DOCTYPE svg [<!ENTITY a "b">]>)")
                              << "сущности";
    QTest::newRow("plain doctype")
        << svg("<g/>", R"(<!DOCTYPE svg PUBLIC "-//W3C//DTD SVG 1.1//EN" "svg11.dtd">)") << "";
    QTest::newRow("file") << svg(R"(<use href="/etc/passwd#a"/>)") << "другой файл";
    QTest::newRow("address") << svg(R"(<g xmlns:xlink="x" xlink:href="http://a/b"/>)")
                             << "другой файл";
    QTest::newRow("style of a file") << svg("<style>@import 'a.css';</style>") << "другой файл";
    QTest::newRow("fill of a file") << svg("<g style='fill: url( b.svg#a)'/>") << "другой файл";
    QTest::newRow("fill of its own") << svg("<g id='a'/><g fill='url(#a)'/>") << "";
    QTest::newRow("link of a text") << svg(R"(<a href="http://a/b"><g/></a>)") << "";
    QTest::newRow("picture") << svg(R"(<image href="#a"/>)") << "картинку";
    QTest::newRow("deepest") << nested(SymbolCheck::MaximumDepth - 1) << "";
    QTest::newRow("too deep") << nested(SymbolCheck::MaximumDepth) << "вложены";
    QTest::newRow("many") << laughs(3) << "";
    QTest::newRow("too many") << laughs(9) << "повторяет";
    QTest::newRow("itself") << svg(R"(<g id="a"><use href="#a"/></g>)") << "сам себя";
}

void TestSymbols::whatMayNotBeShownIsRefused()
{
    QFETCH(QByteArray, data);
    QFETCH(QString, reason);
    const QString told = SymbolCheck::refusal(data);
    QCOMPARE(told.isEmpty(), reason.isEmpty());
    QVERIFY2(told.contains(reason), qPrintable(told));
}

void TestSymbols::theLookFollowsTheValue_data()
{
    QTest::addColumn<double>("value");
    QTest::addColumn<Quality>("quality");
    QTest::addColumn<SymbolLook>("look");
    QTest::newRow("off") << 0.0 << Quality::Good << SymbolLook::Off;
    QTest::newRow("on") << 1.0 << Quality::Good << SymbolLook::On;
    QTest::newRow("moving") << 2.0 << Quality::Good << SymbolLook::Moving;
    QTest::newRow("fault") << 3.0 << Quality::Good << SymbolLook::Fault;
    QTest::newRow("plain") << 5.0 << Quality::Good << SymbolLook::Plain;
    QTest::newRow("no state") << 77.0 << Quality::Good << SymbolLook::Unknown;
    QTest::newRow("bad") << 1.0 << Quality::Bad << SymbolLook::Unknown;
    QTest::newRow("stale") << 1.0 << Quality::Stale << SymbolLook::On;
    QTest::newRow("uncertain") << 3.0 << Quality::Uncertain << SymbolLook::Fault;
}

void TestSymbols::theLookFollowsTheValue()
{
    QFETCH(double, value);
    QFETCH(Quality, quality);
    QFETCH(SymbolLook, look);
    LiveElement<qwidgetSymbol> pump(screen, 20);
    pump.publish(10, value);
    QTRY_COMPARE(pump.element.shownQuality(), Quality::Good);
    const QImage good = pump.drawn();
    pump.publish(10, value, quality);
    QTRY_COMPARE(pump.element.shownQuality(), quality);
    const QImage drawn = pump.drawn();
    QCOMPARE(pump.element.shownLook(), look);
    QCOMPARE(drawn == good, quality == Quality::Good); // what is not good is marked
}

void TestSymbols::looksDifferWithoutColor_data()
{
    QTest::addColumn<QString>("body");
    QTest::newRow("usual surface") << "#00000000";
    QTest::newRow("surface of the project") << "#303840";
}

void TestSymbols::looksDifferWithoutColor()
{
    QFETCH(QString, body);
    LiveElement<qwidgetSymbol> pump(screen, 20);
    pump.set(20, "body", body);
    QVector<QImage> shapes;
    const std::pair<double, SymbolLook> looks[] = {
        {0, SymbolLook::Off},   {1, SymbolLook::On}, {2, SymbolLook::Moving},
        {3, SymbolLook::Fault}, {4, SymbolLook::On}, {77, SymbolLook::Unknown}};
    for (const auto &[value, look] : looks) {
        pump.publish(10, value);
        QTRY_COMPARE(pump.element.shownLook(), look);
        const QImage grey = pump.drawn().convertToFormat(QImage::Format_Grayscale8);
        for (const QImage &other : qAsConst(shapes)) {
            int different = 0;
            for (int y = 0; y < grey.height(); ++y) {
                for (int x = 0; x < grey.width(); ++x)
                    different += qAbs(qGray(grey.pixel(x, y)) - qGray(other.pixel(x, y))) > 100;
            }
            QVERIFY2(different > 40, qPrintable(QString("value %1: %2").arg(value).arg(different)));
        }
        shapes << grey;
    }
}

void TestSymbols::everyLookStandsOutFromItsSurface_data()
{
    QTest::addColumn<QString>("window");
    QTest::addColumn<QString>("own"); // background of the symbol
    QTest::addColumn<QColor>("seen");
    QTest::newRow("light") << "#d6dade"
                           << "#00000000" << QColor(0xd6, 0xda, 0xde);
    QTest::newRow("dark") << "#202428"
                          << "#00000000" << QColor(0x20, 0x24, 0x28);
    QTest::newRow("light on dark") << "#202428"
                                   << "#ffffff" << QColor(Qt::white);
    QTest::newRow("dark on light") << "#d6dade"
                                   << "#000000" << QColor(Qt::black);
}

void TestSymbols::everyLookStandsOutFromItsSurface()
{
    QFETCH(QString, window);
    QFETCH(QString, own);
    QFETCH(QColor, seen);
    LiveElement<qwidgetSymbol> motor(surfaces, 20);
    motor.set(2, "background", window);
    motor.set(20, "background", own);
    const std::pair<double, SymbolLook> looks[] = {
        {0, SymbolLook::Off},   {1, SymbolLook::On},    {2, SymbolLook::Moving},
        {3, SymbolLook::Fault}, {5, SymbolLook::Plain}, {77, SymbolLook::Unknown}};
    for (const auto &[value, look] : looks) {
        motor.publish(10, value);
        QTRY_COMPARE(motor.element.shownLook(), look);
        QImage image(64, 64, QImage::Format_RGB32);
        image.fill(seen);
        motor.element.render(&image, QPoint(), QRegion(), QWidget::DrawChildren);
        const auto contrast = [&](int x, int y) {
            return qAbs(qGray(image.pixel(x, y)) - qGray(seen.rgb()));
        };
        int foot = 0; // a bare line, dashed where the state is not known
        for (int x = 18; x < 46; ++x)
            foot = qMax(foot, contrast(x, 54));
        QVERIFY2(foot > 80, qPrintable(QString("value %1: %2").arg(value).arg(foot)));
        if (look == SymbolLook::On)
            QVERIFY2(contrast(32, 14) > 100, qPrintable(QString::number(contrast(32, 14))));
        if (look == SymbolLook::Off)
            QVERIFY2(contrast(32, 14) < 60, qPrintable(QString::number(contrast(32, 14))));
    }
}

void TestSymbols::thePictureFollowsTheWindowsColor()
{
    LiveElement<qwidgetSymbol> motor(surfaces, 20);
    motor.publish(10, 1.0);
    QTRY_COMPARE(motor.element.shownLook(), SymbolLook::On);
    const QImage onLight = motor.drawn();
    motor.set(2, "background", "#101214");
    const QImage onDark = motor.drawn();
    QVERIFY(onDark != onLight);
    motor.set(2, "background", "#d6dade");
    QCOMPARE(motor.drawn(), onLight);
}

void TestSymbols::theLevelFillsFromBelow_data()
{
    QTest::addColumn<double>("value");
    QTest::addColumn<Quality>("quality");
    QTest::addColumn<QString>("maximum"); // of the symbol; 0 takes the signal's
    QTest::addColumn<double>("level");    // NaN: none
    QTest::newRow("empty") << 0.0 << Quality::Good << "0" << 0.0;
    QTest::newRow("half") << 100.0 << Quality::Good << "0" << 0.5;
    QTest::newRow("own ends") << 40.0 << Quality::Good << "50" << 0.8;
    QTest::newRow("above") << 900.0 << Quality::Good << "0" << 1.0;
    QTest::newRow("below") << -900.0 << Quality::Good << "0" << 0.0;
    QTest::newRow("stale") << 100.0 << Quality::Stale << "0" << 0.5;
    QTest::newRow("bad") << 100.0 << Quality::Bad << "0" << std::nan("");
}

void TestSymbols::theLevelFillsFromBelow()
{
    QFETCH(double, value);
    QFETCH(Quality, quality);
    QFETCH(QString, maximum);
    QFETCH(double, level);
    LiveElement<qwidgetSymbol> tank(screen, 30);
    tank.set(30, "maximum", maximum);
    tank.set(30, "levelColor", "#0000ff");
    tank.publish(10, value, quality);
    QTRY_COMPARE(tank.element.shownQuality(), quality);
    const QImage image = tank.drawn();
    int filled = 0;
    int highest = image.height();
    for (int y = image.height() - 1; y >= 0; --y) {
        if (image.pixelColor(40, y) == QColor(Qt::blue)) {
            ++filled;
            highest = y;
        }
    }
    const double wanted = std::isnan(level) ? 0 : level * 79; // of the tank, its ends curved
    QVERIFY2(qAbs(filled - wanted) <= 5, qPrintable(QString("%1 rows").arg(filled)));
    QVERIFY(filled == 0 || highest >= 88 - filled - 4); // none left out
    QCOMPARE(std::isnan(tank.element.shownLevel()), std::isnan(level));
}

void TestSymbols::aYesNoSignalNeedsNoStates()
{
    LiveElement<qwidgetSymbol> motor(screen, 31);
    QCOMPARE(motor.element.shownLook(), SymbolLook::Unknown); // nothing received
    for (const bool on : {true, false}) {
        motor.publish(11, on);
        QTRY_COMPARE(motor.element.shownLook(), on ? SymbolLook::On : SymbolLook::Off);
    }
    motor.set(31, "signal", "");
    QCOMPARE(motor.element.shownLook(), SymbolLook::Plain);
}

void TestSymbols::aRefusedPictureIsToldAndReplaced()
{
    const PictureFiles files;
    files.write("own.svg", svg(R"(<image href="a.png"/>)"));
    LiveElement<qwidgetSymbol> own(screen, 32);
    own.publish(10, 55.5);
    const QImage refused = own.drawn();
    QVERIFY(colored(refused, QColor(236, 238, 240)) > 500); // placeholder
    QVERIFY(own.element.shownText().startsWith("55"));      // the value is told nevertheless
    files.write("better.svg", svg(R"(<rect class="body" width="8" height="8"/>)"));
    own.set(32, "source", "better.svg");
    QCOMPARE(colored(own.drawn(), QColor(236, 238, 240)), 0);
    own.set(32, "source", ":/symbols/absent.svg");
    QVERIFY(colored(own.drawn(), QColor(236, 238, 240)) > 500);
}

void TestSymbols::aReasonIsReadToItsEnd_data()
{
    QTest::addColumn<QSize>("size");
    QTest::addColumn<int>("lines");
    QTest::newRow("room for all") << QSize(96, 96) << 3;
    QTest::newRow("room for some") << QSize(96, 32) << 2;
    QTest::newRow("one line") << QSize(400, 20) << 1;
    QTest::newRow("less than one line") << QSize(96, 20) << 1;
}

void TestSymbols::aReasonIsReadToItsEnd()
{
    QFETCH(QSize, size);
    QImage image(size, QImage::Format_RGB32);
    QPainter painter(&image);
    MissingPicture::drawPlaceholder(painter, image.rect(), "нет файла выше или ниже этого места");
    painter.end();
    QVector<bool> dark(size.height());
    for (int y = 0; y < size.height(); ++y) {
        for (int x = 0; x < size.width(); ++x)
            dark[y] = dark[y] || qGray(image.pixel(x, y)) < 70;
    }
    int lines = 0;
    for (int y = 1; y < size.height(); ++y)
        lines += dark[y] && !dark[y - 1];
    QTEST(lines, "lines");
}

void TestSymbols::partsOfAPictureTakeTheStyle_data()
{
    QTest::addColumn<QByteArray>("inside");
    QTest::addColumn<QColor>("seen"); // in the middle, running, its body being red
    const QColor drawn(0, 255, 0);
    const QColor body(255, 0, 0);
    const QByteArray box = R"(d="M0 0h8v8H0z" )";
    QTest::newRow("body") << "<path class=\"body\" " + box + R"(fill="#00ff00"/>)" << body;
    QTest::newRow("numbered id") << "<path id=\"body-12\" " + box + R"(fill="#00ff00"/>)" << body;
    QTest::newRow("in a group") << "<g class=\"a fill\"><path " + box + R"(fill="#00ff00"/></g>)"
                                << body;
    QTest::newRow("in a style") << "<path class=\"body\" " + box + R"(style="fill:#00ff00"/>)"
                                << body;
    QTest::newRow("of a class") << "<style>.body{fill:#00ff00}</style><path class=\"body\" " + box +
                                       "/>"
                                << body;
    QTest::newRow("unpainted") << "<path fill=\"#00ff00\" " + box + "/><path class=\"body\" " +
                                      box + R"(fill="none"/>)"
                               << drawn;
    QTest::newRow("no part") << "<path class=\"bodywork\" " + box + R"(fill="#00ff00"/>)" << drawn;
    QTest::newRow("sign") << "<path class=\"sign\" " + box + R"(fill="#00ff00"/>)"
                          << QColor(Qt::white);
    QTest::newRow("of this look") << "<path class=\"when-off when-on\" " + box +
                                         R"(fill="#00ff00"/>)"
                                  << drawn;
    QTest::newRow("of another look")
        << "<path class=\"when-off\" " + box + R"(fill="#00ff00"/>)" << QColor(Qt::transparent);
    QTest::newRow("empty level") << "<path class=\"level\" " + box + R"(fill="#00ff00"/>)"
                                 << QColor(Qt::transparent);
}

void TestSymbols::partsOfAPictureTakeTheStyle()
{
    QFETCH(QByteArray, inside);
    QFETCH(QColor, seen);
    Symbol symbol(svg(inside));
    QCOMPARE(symbol.refusal(), QString());
    SymbolPlace place;
    place.area = QSize(16, 16);
    const SymbolStyle style = SymbolStyle::of(SymbolLook::On, QColor(255, 0, 0), QColor());
    const QImage image = symbol.draw(style, place, place.area).toImage();
    const QColor middle = image.pixelColor(7, 7);
    QVERIFY2(middle == seen || middle.alpha() + seen.alpha() == 0, qPrintable(middle.name()));
}

void TestSymbols::thePictureFitsItsArea_data()
{
    QTest::addColumn<QSize>("area");
    QTest::addColumn<double>("angle");
    QTest::addColumn<bool>("keeps");
    QTest::addColumn<QRectF>("covered"); // by a picture twice as wide as high
    QTest::newRow("kept") << QSize(100, 100) << 0.0 << true << QRectF(0, 25, 100, 50);
    QTest::newRow("stretched") << QSize(100, 100) << 0.0 << false << QRectF(0, 0, 100, 100);
    QTest::newRow("turned") << QSize(100, 100) << 90.0 << true << QRectF(25, 0, 50, 100);
    QTest::newRow("turned, stretched") << QSize(60, 100) << -90.0 << false << QRectF(0, 0, 60, 100);
    QTest::newRow("upside down") << QSize(100, 20) << 180.0 << true << QRectF(30, 0, 40, 20);
    QTest::newRow("aslant") << QSize(90, 90) << 45.0 << true << QRectF(0, 0, 90, 90);
}

void TestSymbols::thePictureFitsItsArea()
{
    QFETCH(QSize, area);
    QFETCH(double, angle);
    QFETCH(bool, keeps);
    QFETCH(QRectF, covered);
    for (const bool mirrored : {false, true}) {
        SymbolPlace place;
        place.area = area;
        place.angle = angle;
        place.keepsAspect = keeps;
        place.isMirrored = mirrored;
        const QTransform transform = place.transform(QSizeF(200, 100));
        const QRectF got = transform.mapRect(QRectF(0, 0, 1, 1));
        QVERIFY2(qAbs(got.x() - covered.x()) + qAbs(got.y() - covered.y()) +
                         qAbs(got.width() - covered.width()) +
                         qAbs(got.height() - covered.height()) <
                     1e-6,
                 qPrintable(QString("%1 %2 %3 %4")
                                .arg(got.x())
                                .arg(got.y())
                                .arg(got.width())
                                .arg(got.height())));
        QCOMPARE(transform.determinant() < 0, mirrored);
    }
}

void TestSymbols::everyBuiltInSymbolShowsItsStates_data()
{
    QTest::addColumn<QString>("file");
    for (QDirIterator it(":/symbols"); it.hasNext();) {
        const QString file = it.next();
        QTest::newRow(qPrintable(it.fileName())) << file;
    }
}

void TestSymbols::everyBuiltInSymbolShowsItsStates()
{
    QFETCH(QString, file);
    const auto symbol = SymbolStore::getInstance().get(Nodes::ResourceLink(file.toStdString()));
    QCOMPARE(symbol->refusal(), QString());
    // On the grid of 8 that elements stand on.
    QCOMPARE(std::fmod(symbol->size().width(), 8) + std::fmod(symbol->size().height(), 8), 0.0);
    SymbolPlace place;
    place.area = symbol->size().toSize();
    QVector<QImage> seen;
    for (const SymbolLook look :
         {SymbolLook::Off, SymbolLook::On, SymbolLook::Moving, SymbolLook::Fault}) {
        const QImage image =
            symbol->draw(SymbolStyle::of(look, QColor(), QColor()), place, place.area).toImage();
        QVERIFY(!seen.contains(image));
        seen << image;
        // Only a fault has a saturated colour.
        QCOMPARE(colored(image, SymbolStyle::FaultColor) > 0, look == SymbolLook::Fault);
    }
}

void TestSymbols::symbolsAreShared()
{
    const PictureFiles files;
    files.write("own.svg", svg(R"(<rect class="body" width="8" height="8"/>)"));
    const int before = SymbolStore::getInstance().getCount();
    LiveElement<qwidgetSymbol> one(screen, 32);
    (void)one.drawn();
    LiveElement<qwidgetSymbol> other(screen, 32);
    (void)other.drawn();
    QCOMPARE(SymbolStore::getInstance().getCount(), before + 1);
}

void TestSymbols::aSymbolWithoutAPictureIsReported()
{
    const RuntimeProject project(screen);
    for (const auto &[source, count] :
         {std::pair(":/symbols/pump.svg", 0), std::pair("", 1), std::pair("absent.svg", 1)}) {
        project.set(20, "source", source);
        Nodes::ValidationResults results;
        project.node(20)->Validate(results);
        QCOMPARE(int(results.size()), count);
    }
}

QTEST_MAIN(TestSymbols)
#include "tst_symbols.moc"
