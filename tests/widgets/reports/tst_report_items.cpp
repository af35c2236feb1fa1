#include "widgets/reports/ReportCells.h"

#include "widgets/reports/engine/expressions/ContentExpander.h"
#include "widgets/reports/engine/expressions/ReportErrors.h"
#include "widgets/reports/engine/expressions/ReportScope.h"
#include "widgets/reports/engine/items/ChartData.h"
#include "widgets/reports/engine/items/ItemPainter.h"
#include "widgets/reports/engine/items/SvgCheck.h"

#include <QDataStream>
#include <QDir>
#include <QImage>
#include <QPainter>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

#include <algorithm>
#include <cmath>
#include <numeric>

using namespace LimeReport;

namespace {

constexpr QRgb red = 0xffff0000;
const QByteArray redBox = "<svg xmlns='http://www.w3.org/2000/svg' viewBox='0 0 10 10'>"
                          "<rect width='10' height='10' fill='#ff0000'/></svg>";

DataSet plant()
{
    const QDateTime begin(QDate(2026, 3, 1), QTime(0, 0));
    QVector<QVariantList> rows;
    for (int i = 0; i < 24; ++i)
        rows.append({begin.addSecs(3600 * i), i == 10 ? QVariant() : 60 + 12 * std::sin(i / 3.0),
                     2.5 + i / 10.0, QString("Смена %1").arg(i)});
    auto hours = std::make_shared<ReportCells>(QStringList{"time", "t", "p", "label"}, rows);
    for (int i = 15; i < 18; ++i)
        hours->qualities.insert({i, 1}, Nodes::Quality::Stale);
    DataSet data;
    data.sources.insert("hours", DataSource(hours));
    data.sources.insert("fuel",
                        DataSource(std::make_shared<ReportCells>(
                            QStringList{"kind", "tons"},
                            QVector<QVariantList>{{"Газ", 120}, {"Мазут", 40}, {"Уголь", 15.5}})));
    data.variables = {{"svg", redBox}, {"ean", "460123456789"}};
    return data;
}

QVariantMap series(const QString &column, const QString &name)
{
    return {{"ClassName", "LimeReport::SeriesItem"}, {"valuesColumn", column}, {"name", name}};
}

QVariantMap chart(const QVariant &type, const QString &source, const QString &x,
                  const QStringList &columns)
{
    QVariantList list;
    for (const QString &column : columns)
        list.append(series(column, "Ряд " + column));
    return {{"chartType", type},
            {"datasource", source},
            {"xAxisField", x},
            {"series", list},
            {"chartTitle", "Котёл, °C"}};
}

/// An item painted as the engine does it: what is resolved goes through a file meanwhile.
class Painted
{
public:
    Painted(const QString &className, const QVariantMap &properties, QSize size = {600, 360})
        : scope(plant()), image(size, QImage::Format_RGB32)
    {
        scope.setPlace({"Band", "Item"});
        ContentExpander expander;
        const ItemPainter *item = itemPainter("LimeReport::" + className);
        resolved = item->resolve(properties, scope, expander);
        QByteArray bytes;
        QDataStream written(&bytes, QIODevice::WriteOnly);
        written << resolved;
        QVariantMap read;
        QDataStream stored(bytes);
        stored >> read;
        image.fill(Qt::white);
        QPainter painter(&image);
        if (!resolved.contains(itemError))
            item->paint(painter, QRectF(QPointF(), QSizeF(size)), size.width() / 100.0, read);
        painter.end();
        keep(className);
    }
    /// As the list of errors has it; what stands on the page is for operators.
    QString error() const
    {
        const QString shown = resolved.value(itemError).toString();
        const bool isRussian = shown.contains(QRegularExpression("[а-я]{3}"));
        return isRussian || resolved.value(itemError).isNull() ? scope.errors().texts().join('\n')
                                                               : "shown: " + shown;
    }
    int count(QRgb color) const
    {
        int found = 0;
        for (int y = 0; y < image.height(); ++y)
            for (int x = 0; x < image.width(); ++x)
                found += image.pixel(x, y) == color;
        return found;
    }

    mutable ReportScope scope;
    QImage image;
    QVariantMap resolved;

private:
    void keep(const QString &className) const
    {
        const QString directory = qEnvironmentVariable("STATION_TEST_PICTURES");
        static int number = 0;
        if (!directory.isEmpty())
            image.save(QDir(directory).filePath(QString("%1-%2.png").arg(className).arg(++number)));
    }
};

/// Digits of an EAN-13 as a reader sees them in one line of a picture; "" when it can't.
QString readEan13(const QImage &image, int line)
{
    const QStringList left = {"0001101", "0011001", "0010011", "0111101", "0100011",
                              "0110001", "0101111", "0111011", "0110111", "0001011"};
    const QStringList parity = {"LLLLLL", "LLGLGG", "LLGGLG", "LLGGGL", "LGLLGG",
                                "LGGLLG", "LGGGLL", "LGLGLG", "LGLGGL", "LGGLGL"};
    const auto isDark = [&](int x) { return qGray(image.pixel(x, line)) < 128; };
    int begin = 0;
    int end = image.width();
    while (begin < end && !isDark(begin))
        ++begin;
    while (end > begin && !isDark(end - 1))
        --end;
    QString modules;
    for (int i = 0; i < 95; ++i)
        modules += isDark(int(begin + (i + 0.5) * (end - begin) / 95)) ? '1' : '0';
    QString digits, kinds;
    for (int i = 0; i < 12; ++i) {
        QString code = modules.mid(i < 6 ? 3 + 7 * i : 50 + 7 * (i - 6), 7);
        const bool isEven = code.count('1') % 2 == 0;
        if (isEven) { // right, or mirrored on the left
            QString flipped;
            for (const QChar c : code)
                flipped += c == '1' ? '0' : '1';
            if (i < 6)
                std::reverse(flipped.begin(), flipped.end());
            code = flipped;
        }
        kinds += i >= 6 ? "" : isEven ? "G" : "L";
        digits += QString::number(left.indexOf(code));
    }
    return QString::number(parity.indexOf(kinds)) + digits;
}

} // namespace

class tst_report_items : public QObject
{
    Q_OBJECT

private slots:
    void eanIsReadBack();
    void barcodeKinds_data();
    void barcodeKinds();
    void barcodeFaults_data();
    void barcodeFaults();
    void chartsShowTheirSeries_data();
    void chartsShowTheirSeries();
    void chartFaults_data();
    void chartFaults();
    void chartKeepsExtremesAndGaps();
    void drawings_data();
    void drawings();
    void drawingOfFile();
};

void tst_report_items::eanIsReadBack()
{
    for (const int angle : {0, 180}) {
        const Painted code("BarcodeItem",
                           {{"content", "$V{ean}"}, {"barcodeType", 13}, {"angle", angle}});
        QCOMPARE(code.error(), QString());
        QCOMPARE(readEan13(angle ? code.image.mirrored(true, true) : code.image, 100),
                 QString("4601234567893"));
    }
}

void tst_report_items::barcodeKinds_data()
{
    QTest::addColumn<QString>("type");
    QTest::addColumn<QString>("content");
    QTest::addColumn<bool>("isSquare");

    QTest::newRow("128") << "CODE128"
                         << "КTL-1 2026" << false;
    QTest::newRow("number of 128") << "20"
                                   << "KTL-1" << false;
    QTest::newRow("39") << "Code 39"
                        << "KTL1" << false;
    QTest::newRow("QR, Cyrillic") << "QRCODE"
                                  << "Котёл № 1" << true;
    QTest::newRow("matrix") << "DataMatrix"
                            << "KTL-1" << true;
    QTest::newRow("pdf417") << "PDF417"
                            << "KTL-1" << false;
    QTest::newRow("upright") << "Code 128"
                             << "KTL-1" << false;
}

void tst_report_items::barcodeKinds()
{
    QFETCH(QString, type);
    QFETCH(QString, content);
    QFETCH(bool, isSquare);
    const bool isLatinOnly = type == "CODE128" && content.startsWith(QChar(0x41a));
    const QVariantMap properties{{"content", content}, {"barcodeType", type}, {"hideText", true}};
    const Painted code("BarcodeItem", properties);
    if (isLatinOnly) { // a Cyrillic letter that looks Latin is told, not left out
        QVERIFY(code.error().contains("этим штрихкодом не записать"));
        return;
    }
    QCOMPARE(code.error(), QString());
    QCOMPARE(code.count(0xff000000) + code.count(0xffffffff) > 600 * 360 * 95 / 100, true);
    QRect dark;
    for (int y = 0; y < 360; ++y)
        for (int x = 0; x < 600; ++x)
            if (qGray(code.image.pixel(x, y)) < 128)
                dark |= QRect(x, y, 1, 1);
    QVERIFY(std::abs(dark.center().x() - 300) <= 4);
    if (isSquare) // with room around for readers
        QVERIFY(std::abs(dark.width() - dark.height()) <= 4 && dark.height() < 340);
    else
        QVERIFY(dark.left() > 20 && dark.width() > 400 && dark.height() > 350);
    QCOMPARE(Painted("BarcodeItem", properties).image, code.image);
    QVariantMap other = properties;
    other["content"] = content + "7";
    QVERIFY(Painted("BarcodeItem", other).image != code.image);
}

void tst_report_items::barcodeFaults_data()
{
    QTest::addColumn<QString>("type");
    QTest::addColumn<QString>("content");
    QTest::addColumn<QString>("error");

    QTest::newRow("type") << "999"
                          << "1"
                          << "штрихкода «999»";
    QTest::newRow("name") << "Strich"
                          << "1"
                          << "неизвестный вид штрихкода «Strich»";
    QTest::newRow("nothing") << "CODE128"
                             << ""
                             << "нет данных";
    QTest::newRow("check digit") << "EAN13"
                                 << "4601234567890"
                                 << "check digit";
    QTest::newRow("letters") << "EAN13"
                             << "46012345678x"
                             << "nvalid character";
    QTest::newRow("digits missing") << "EAN13"
                                    << "12"
                                    << "не 13 цифр";
    QTest::newRow("too long") << "QR" << QString(9000, 'x') << "слишком много";
    QTest::newRow("too long for the code") << "EAN8"
                                           << "123456789"
                                           << "не 8 цифр";
    QTest::newRow("missing value") << "QR"
                                   << "$D{hours.nothing}"
                                   << "нет данных";
}

void tst_report_items::barcodeFaults()
{
    QFETCH(QString, type);
    QFETCH(QString, content);
    QFETCH(QString, error);
    Painted code("BarcodeItem", {{"content", content}, {"barcodeType", type}});
    QVERIFY2(code.error().contains(error), qPrintable(code.error()));
    QVERIFY(code.scope.errors().texts().join('\n').contains("полоса «Band», элемент «Item»"));
}

void tst_report_items::chartsShowTheirSeries_data()
{
    QTest::addColumn<QVariantMap>("properties");
    QTest::addColumn<int>("least"); // painted pixels of the series' colour

    QTest::newRow("lines over time") << chart(4, "hours", "time", {"t", "p"}) << 300;
    QTest::newRow("lines by label") << chart("GridLines", "hours", "label", {"t"}) << 300;
    QTest::newRow("lines by number") << chart("Lines", "hours", "p", {"t"}) << 300;
    QTest::newRow("bars") << chart("VerticalBar", "hours", "label", {"t", "p"}) << 5000;
    QTest::newRow("bars across") << chart("HorizontalBar", "fuel", "kind", {"tons"}) << 20000;
    QTest::newRow("pie") << chart("Pie", "fuel", "kind", {"tons"}) << -1;
}

void tst_report_items::chartsShowTheirSeries()
{
    QFETCH(QVariantMap, properties);
    QFETCH(int, least);
    const Painted painted("ChartItem", properties);
    QCOMPARE(painted.error(), QString());
    if (least < 0) { // sectors by their areas: the largest takes two thirds
        int largest = 0;
        QMap<QRgb, int> areas;
        for (int y = 0; y < 360; ++y)
            for (int x = 0; x < 300; ++x)
                largest = std::max(largest, ++areas[painted.image.pixel(x, y)]);
        areas.remove(0xffffffff);
        largest = *std::max_element(areas.begin(), areas.end());
        const int sum = std::accumulate(areas.begin(), areas.end(), 0);
        QVERIFY(std::abs(double(largest) / sum - 120 / 175.5) < 0.05);
        return;
    }
    QVERIFY(painted.count(0xff1f5fa8) > least);
    if (least >= 5000) { // proportions stay: half as large has a quarter of the area
        const Painted half("ChartItem", properties, {300, 180});
        QVERIFY(std::abs(4.0 * half.count(0xff1f5fa8) / painted.count(0xff1f5fa8) - 1) < 0.2);
    }
}

void tst_report_items::chartFaults_data()
{
    QTest::addColumn<QVariantMap>("properties");
    QTest::addColumn<QString>("error");

    QTest::newRow("source") << chart(4, "x", "", {"t"}) << "нет источника данных «x»";
    QTest::newRow("column") << chart(4, "hours", "", {"x"}) << "нет столбца «x»";
    QTest::newRow("axis") << chart(4, "hours", "x", {"t"}) << "нет столбца «x»";
    QTest::newRow("type") << chart("Radar", "hours", "", {"t"})
                          << "неизвестный вид диаграммы «Radar»";
    QTest::newRow("series") << chart(4, "hours", "", {}) << "ни одного ряда";
    QTest::newRow("pie with a gap") << chart(0, "hours", "label", {"t"}) << "отсутствующих";
}

void tst_report_items::chartFaults()
{
    QFETCH(QVariantMap, properties);
    QFETCH(QString, error);
    const Painted painted("ChartItem", properties);
    QVERIFY2(painted.error().contains(error), qPrintable(painted.error()));
}

void tst_report_items::chartKeepsExtremesAndGaps()
{
    const auto hasScale = [](const QString &column) { // labels left of the values
        const Painted painted("ChartItem", chart("GridLines", "hours", "time", {column}));
        QImage blank(30, 200, QImage::Format_RGB32);
        blank.fill(Qt::white);
        return painted.error().isEmpty() && painted.image.copy(0, 60, 30, 200) != blank;
    };
    QVERIFY(hasScale("t"));
    QVERIFY(!hasScale("label")); // no numbers, and no scale as if there were

    QVector<QVariantList> rows;
    for (int i = 0; i < 100000; ++i)
        rows.append({i, i == 71234 ? 1e6 : i > 50000 && i < 60000 ? QVariant() : QVariant(i % 7)});
    DataSet data;
    data.sources.insert("s",
                        DataSource(std::make_shared<ReportCells>(QStringList{"n", "v"}, rows)));
    ItemFault fault;
    const ChartData read = ChartData::read(chart(4, "s", "n", {"v"}), ReportScope(data), &fault);
    QVERIFY(fault.isEmpty());
    const ChartData::Series &series = read.series.first();
    QVERIFY(series.x.size() < 5000);
    QVERIFY(std::is_sorted(series.x.begin(), series.x.end()));
    const int peak = series.x.indexOf(71234);
    QVERIFY(peak >= 0 && series.y[peak] == 1e6);
    for (int i = 0; i < series.x.size(); ++i)
        QVERIFY(std::isnan(series.y[i]) || series.x[i] <= 50000 || series.x[i] >= 60000);
    QVERIFY(std::any_of(series.y.begin(), series.y.end(), [](double y) { return std::isnan(y); }));
}

void tst_report_items::drawings_data()
{
    QTest::addColumn<QByteArray>("svg");
    QTest::addColumn<QString>("error");

    const QByteArray head = "<svg xmlns='http://www.w3.org/2000/svg' "
                            "xmlns:xlink='http://www.w3.org/1999/xlink' viewBox='0 0 9 9'>";
    QTest::newRow("fine") << redBox << "";
    QTest::newRow("used once") << head +
                                      "<g id='a'><path d='M0 0'/></g><use xlink:href='#a'/></svg>"
                               << "";
    QTest::newRow("empty") << QByteArray() << "не XML";
    QTest::newRow("torn") << redBox.left(60) << "не XML";
    QTest::newRow("other") << QByteArray("<html/>") << "не SVG";
    QTest::newRow("file") << head + "<image xlink:href='/etc/hostname'/></svg>"
                          << "другой файл";
    QTest::newRow("entities") << "<!DOCTYPE svg [<!ENTITY a 'b'>]>" + head + "&a;</svg>"
                              << "сущности";
    QTest::newRow("nested references")
        << head + "<g id='a'><use xlink:href='#b'/></g><g id='b'/><use xlink:href='#a'/></svg>"
        << "ссылки ведут";
    QTest::newRow("deep") << head + QByteArray("<g>").repeated(200) +
                                 QByteArray("</g>").repeated(200) + "</svg>"
                          << "вложенность больше";
    QTest::newRow("large") << head + QByteArray(9 << 20, ' ') + "</svg>"
                           << "он больше";
}

void tst_report_items::drawings()
{
    QFETCH(QByteArray, svg);
    QFETCH(QString, error);
    QVERIFY2(svgFault(svg).contains(error), qPrintable(svgFault(svg)));
    QCOMPARE(svgFault(svg).isEmpty(), error.isEmpty());
    const Painted painted("SVGItem", {{"image", QString(svg.toHex())}});
    QCOMPARE(painted.error().isEmpty(), error.isEmpty());
}

void tst_report_items::drawingOfFile()
{
    const Painted ofVariable("SVGItem", {{"variable", "svg"}});
    QVERIFY(std::abs(ofVariable.count(red) - 360 * 360) < 1500); // keeps its proportions

    QTemporaryDir directory;
    QVERIFY(QDir(directory.path()).mkdir("report"));
    for (const QString name : {"report/in.svg", "out.svg"}) {
        QFile file(directory.filePath(name));
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write(redBox) > 0);
    }
    QVERIFY(QFile::link(directory.filePath("out.svg"), directory.filePath("report/link.svg")));
    ReportScope scope(plant());
    ContentExpander expander;
    const auto errorOf = [&](const QString &path) {
        return itemPainter("SVGItem")
            ->resolve({{"resourcePath", path}}, scope, expander)
            .value(itemError)
            .toString();
    };
    QVERIFY(errorOf("in.svg").contains("нет файла")); // no directory, no file
    scope.setFilesDirectory(directory.filePath("report"));
    QCOMPARE(errorOf("in.svg"), QString());
    for (const QString path : {"../out.svg", "link.svg", "none.svg", "/etc/hostname"})
        QVERIFY(errorOf(path).contains("нет файла"));
    QCOMPARE(itemPainter("LimeReport::TextItem"), nullptr);
}

QTEST_MAIN(tst_report_items)
#include "tst_report_items.moc"
