#include "widgets/reports/LaidOut.h"
#include "widgets/reports/engine/pages/PagePainter.h"
#include "widgets/reports/engine/pages/PictureCache.h"

#include <QBuffer>
#include <QFont>
#include <QImage>
#include <QPainter>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QtTest>

using namespace LimeReport;
using namespace TemplateText;

namespace {

// A document type comes first.
QString withType(const QString &type, const QString &xml)
{
    return type + xml.mid(xml.indexOf(QLatin1String("<Report")));
}

ReportTemplatePtr read(const QString &xml, QString &error)
{
    return TemplateReader::read(xml.toUtf8(), QStringLiteral("test"), QString(), error);
}

QString pngHex()
{
    QImage image(20, 10, QImage::Format_RGB32);
    image.fill(Qt::red);
    QByteArray bytes;
    QBuffer buffer(&bytes);
    image.save(&buffer, "PNG");
    return QString::fromLatin1(bytes.toHex());
}

// A template of many kinds of bands and items.
QString rich()
{
    return report({page({
        band("PageHeader", "ph", 100, {item("$V{#PAGE} / $V{#PAGE_COUNT}")}),
        band("ReportHeader", "rh", 300,
             {item("<b>Котёл</b>", 0, 0, 500, 50, flag("allowHTML")),
              item("upright", 600, 0, 50, 200, whole("angle", 90) + whole("borders", 15)),
              object("ShapeItem", "s", 0, 60, 900, 5, whole("shape", 0)),
              object("ImageItem", "i", 0, 100, 100, 100,
                     "<image Type=\"QImage\">" + pngHex() + "</image>"),
              object("HLayout", "l", 0, 200, 400, 50, QString(), {item("a"), item("b")})}),
        band("GroupHeader", "gh", 50, {item("$D{rows.group}")},
             text("parentBand", "data") + text("groupFieldName", "group")),
        band("Data", "data", 50, {item("$D{rows.n}"), item("$S{1+$D{rows.n}}", 900)},
             text("datasource", "rows") + whole("columnsCount", 1)),
        band("GroupFooter", "gf", 50, {item("$S{SUM(\"$D{rows.n}\",\"data\")}")},
             text("parentBand", "gh")),
        band("PageFooter", "pf", 50, {item("end")}),
    })});
}

} // namespace

/// What is read of template files, and what comes of bad ones.
class tst_report_template : public QObject
{
    Q_OBJECT

private slots:
    void properties()
    {
        QString error;
        const auto made =
            read(report({page(
                     {band("ReportHeader", "a", 100,
                           {item("t", 10, 20, 300, 40,
                                 "<font Type=\"QFont\" family=\"DejaVu Sans\" pointSize=\"12\" "
                                 "weight=\"75\" italic=\"1\"/>"
                                 "<fontColor Type=\"QColor\" Value=\"#102030\"/>"
                                 "<lineSpacing Type=\"qreal\" Value=\"1.5\"/>"
                                 "<alignment Type=\"enumAndFlags\" Value=\"130\"/>"
                                 "<parts Type=\"Collection\"><item Type=\"Object\" ClassName=\"P\">"
                                 "<n Type=\"int\" Value=\"7\"/></item></parts>")})},
                     whole("pageOrientation", 1))}),
                 error);
        QVERIFY2(made, qPrintable(error));
        QCOMPARE(made->pages[0].size, QSizeF(2970, 2100));
        QCOMPARE(made->pages[0].printed(), QRectF(100, 100, 2770, 1900));
        const TemplateItem &text = made->pages[0].item.children[0].children[0];
        QCOMPARE(text.geometry, QRectF(10, 20, 300, 40));
        QCOMPARE(text.text("content"), QString("t"));
        const QFont font = text.font();
        QVERIFY(font.bold() && font.italic() && !font.underline());
        QCOMPARE(font.pointSizeF(), 12.0);
        QCOMPARE(text.color("fontColor"), QColor("#102030"));
        QCOMPARE(text.real("lineSpacing"), 1.5);
        QCOMPARE(text.integer("alignment"), 130);
        QCOMPARE(text.properties["parts"].toList().at(0).toMap()["n"].toInt(), 7);
        // What has no effect here is told.
        QVERIFY2(made->problems.join(' ').contains("lineSpacing"),
                 qPrintable(made->problems.join('\n')));
    }

    void refused_data()
    {
        QTest::addColumn<QString>("xml");
        QTest::addColumn<QString>("told");
        const QString good = report({page({band("Data", "d", 100, {item("x")})})});
        QTest::newRow("nothing") << QString() << "строка";
        QTest::newRow("cut off") << good.left(good.size() - 20) << "файл обрывается";
        QTest::newRow("not closed")
            << QString(good).replace("</item>", "</itm>") << "закрывающий тег";
        QTest::newRow("bare sign") << QString(good).replace("<pages", "<pages a=1") << "столбец";
        QTest::newRow("unquoted") << QString(good).replace("<pages", "<pages a=1")
                                  << "без кавычек. Заключите";
        QTest::newRow("twice") << QString(good).replace("<pages", "<pages a=\"1\" a=\"2\"")
                               << "атрибут «a» указан дважды";
        QTest::newRow("another root") << "<html><body/></html>"
                                      << "<Report>";
        QTest::newRow("no page") << report({}) << "нет страниц";
        QTest::newRow("a square kilometre")
            << QString(good).replace("width=\"2100\"", "width=\"10000000\"") << "мм";
        QTest::newRow("margins take all")
            << report({page({}, TemplateText::property("leftMargin", "qreal", "300"))}) << "поля";
        QTest::newRow("nested without end")
            << "<Report><object ClassName=\"R\">" + QString("<a Type=\"Object\">").repeated(5000)
            << "вложенность";
        QTest::newRow("a million bands")
            << report({page({QString("<item/>").repeated(200000)})}) << "объектов больше";
        QTest::newRow("entities that multiply")
            << withType("<!DOCTYPE r [<!ENTITY a \"xxxxxxxxxx\">"
                        "<!ENTITY b \"&a;&a;&a;&a;&a;&a;&a;&a;&a;&a;\"><!ENTITY c "
                        "\"&b;&b;&b;&b;&b;&b;&b;&b;\">"
                        "<!ENTITY d \"&c;&c;&c;&c;&c;&c;&c;&c;\">]>",
                        report({page(
                            {band("Data", "d", 100, {item("x")}, "<t Type=\"QString\">&d;</t>")})}))
            << "сущности";
    }

    void refused()
    {
        QFETCH(QString, xml);
        QFETCH(QString, told);
        QString error;
        QVERIFY(!read(xml, error));
        QVERIFY2(error.contains(told, Qt::CaseInsensitive), qPrintable(error));
    }

    void externalEntity()
    {
        QTemporaryDir dir;
        QFile secret(dir.filePath("secret"));
        QVERIFY(secret.open(QIODevice::WriteOnly));
        secret.write("geheim");
        secret.close();
        QString error;
        const auto made = read(
            withType("<!DOCTYPE r [<!ENTITY s SYSTEM \"file://" + secret.fileName() + "\">]>",
                     report({page({band("Data", "d", 100, {item("T")})})}).replace(">T<", ">&s;<")),
            error);
        QVERIFY(!made); // nor is its text dropped silently
        QVERIFY2(error.contains("тип документа"), qPrintable(error));
    }

    void picturesInRichText()
    {
        QTemporaryDir dir;
        QImage image(50, 50, QImage::Format_RGB32);
        image.fill(Qt::red);
        QVERIFY(image.save(dir.filePath("red.png")));
        const LaidOut made(
            report({page({band("ReportHeader", "a", 600,
                               {item("<img src=\"file://" + dir.filePath("red.png") + "\"/>", 0, 0,
                                     600, 600, flag("allowHTML"))})})}));
        QImage sheet(400, 400, QImage::Format_RGB32);
        sheet.fill(Qt::white);
        QPainter painter(&sheet);
        PagePainter(made.report).paint(painter, made.pages.page(0), QRectF(0, 0, 2100, 2970));
        painter.end();
        for (int y = 0; y < sheet.height(); ++y) {
            for (int x = 0; x < sheet.width(); ++x)
                QVERIFY(sheet.pixelColor(x, y) != QColor(Qt::red));
        }
    }

    void hugePicture()
    {
        // A header that claims 30000 x 30000 points is refused before memory is taken for them.
        PictureCache cache;
        QString error;
        QVERIFY(!cache.picture("P6\n1 1\n255\nabc", error).isNull());
        QVERIFY(cache.picture("P6\n30000 30000\n255\nabc", error).isNull());
        QVERIFY2(error.contains("30000"), qPrintable(error));
    }

    // On paper without colours too.
    void qualityIsSeen_data()
    {
        QTest::addColumn<int>("quality");
        QTest::newRow("uncertain") << int(Nodes::Quality::Uncertain);
        QTest::newRow("bad") << int(Nodes::Quality::Bad);
        QTest::newRow("stale") << int(Nodes::Quality::Stale);
    }

    void qualityIsSeen()
    {
        QFETCH(int, quality);
        const LaidOut made(report({page({band("ReportHeader", "a", 100, {item("12.5")})})}));
        const auto painted = [&](int told) {
            PrintedPage page = made.pages.page(0);
            page.items[0].quality = quint8(told);
            QImage sheet(500, 100, QImage::Format_Grayscale8);
            sheet.fill(Qt::white);
            QPainter painter(&sheet);
            painter.scale(0.5, 0.5);
            PagePainter(made.report).paint(painter, page, QRectF(0, 0, 2100, 2970));
            return sheet;
        };
        QVERIFY(painted(quality) != painted(int(Nodes::Quality::Good)));
    }

    // Whatever becomes of a template: an error or pages, never a crash or an endless run.
    void mutated()
    {
        const quint32 seed = qEnvironmentVariableIsSet("STATION_TEST_SEED")
                                 ? qEnvironmentVariable("STATION_TEST_SEED").toUInt()
                                 : QRandomGenerator::global()->generate();
        QRandomGenerator random(seed);
        const QStringList numbers{"0",   "-1",    "1e308", "nan",        "99999999", "-99999999",
                                  "inf", "17.25", "",      "2147483648", "text",     "3"};
        const QRegularExpression value("(Value|x|y|width|height|pointSize)=\"[^\"]*\"");
        const QString good = rich();
        QVERIFY(LaidOut(good, numbered(20, 7)).isWhole);
        int laidOut = 0;
        for (int turn = 0; turn < 300; ++turn) {
            QString xml = good;
            for (int change = random.bounded(1, 5); change > 0; --change) {
                const int from = random.bounded(xml.size());
                const auto match = value.match(xml, from);
                if (match.hasMatch() && random.bounded(4) > 0)
                    xml.replace(match.capturedStart(), match.capturedLength(),
                                match.captured(1) + "=\"" +
                                    numbers[random.bounded(numbers.size())] + '"');
                else if (random.bounded(2))
                    xml[from] = QChar(random.bounded(32, 127));
                else
                    xml.insert(from, xml.mid(random.bounded(xml.size()), random.bounded(60)));
            }
            const LaidOut made(xml, numbered(20, 7));
            QVERIFY2(made.report || !made.error.isEmpty(), qPrintable(QString::number(seed)));
            if (!made.report || made.pages.count() == 0)
                continue;
            ++laidOut;
            QImage sheet(210, 297, QImage::Format_RGB32);
            QPainter painter(&sheet);
            painter.scale(0.1, 0.1);
            PagePainter(made.report).paint(painter, made.pages.page(0), QRectF(0, 0, 2100, 2970));
        }
        QVERIFY2(laidOut > 100, qPrintable(QStringLiteral("%1 of seed %2").arg(laidOut).arg(seed)));
    }
};

QTEST_MAIN(tst_report_template)
#include "tst_report_template.moc"
