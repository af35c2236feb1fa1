#include "widgets/reports/LaidOut.h"

#include <QtTest>

using namespace TemplateText;

namespace {

// Room for bands on a sheet, 0.1 mm: with 500 a row five rows fit, and 270 remain.
constexpr int Row = 500;

QString data(const QString &properties = QString(), int height = Row)
{
    return band(QStringLiteral("Data"), QStringLiteral("data"), height,
                {item(QStringLiteral("$D{rows.n}"))},
                text(QStringLiteral("datasource"), QStringLiteral("rows")) + properties);
}

QString fixed(const QString &className, int height, const QString &content,
              const QString &properties = QString())
{
    return band(className, className, height, {item(content)}, properties);
}

QString child(const QString &parent = QStringLiteral("data"))
{
    return text(QStringLiteral("parentBand"), parent);
}

QString byGroup()
{
    return child() + text(QStringLiteral("groupFieldName"), QStringLiteral("group"));
}

} // namespace

/// Which bands come onto which sheet.
class tst_report_layout : public QObject
{
    Q_OBJECT

private slots:
    void sheets_data()
    {
        QTest::addColumn<QStringList>("bands");
        QTest::addColumn<int>("rows");
        QTest::addColumn<int>("run");
        QTest::addColumn<QStringList>("expected");
        const QString header = fixed("PageHeader", 200, "H");
        const QString footer = fixed("PageFooter", 200, "F");
        const QString group = fixed("GroupHeader", 200, "$D{rows.group}", byGroup());

        QTest::newRow("nothing but a header") << QStringList{header} << 0 << 1 << QStringList{"H"};
        QTest::newRow("rows run over") << QStringList{header, data(), footer} << 9 << 99
                                       << QStringList{"H 1 2 3 4 F", "H 5 6 7 8 F", "H 9 F"};
        QTest::newRow("report header and footer once")
            << QStringList{fixed("ReportHeader", 200, "A"), data(), fixed("ReportFooter", 200, "Z")}
            << 6 << 99 << QStringList{"A 1 2 3 4 5", "6 Z"};
        QTest::newRow("tear-off at the foot of the last sheet")
            << QStringList{data(), fixed("TearOffBand", 300, "T"), footer} << 6 << 99
            << QStringList{"1 2 3 4 5 F", "6 T F"};
        QTest::newRow("header is not left alone")
            << QStringList{fixed("ReportHeader", 2300, "A"), fixed("DataHeader", 100, "D", child()),
                           data()}
            << 1 << 99 << QStringList{"A", "D 1"};
        QTest::newRow("data header again on each sheet")
            << QStringList{fixed("DataHeader", 200, "D", child() + flag("reprintOnEachPage")),
                           data()}
            << 6 << 99 << QStringList{"D 1 2 3 4 5", "D 6"};
        QTest::newRow("data header and footer of no rows")
            << QStringList{fixed("DataHeader", 200, "D", child()), data(),
                           fixed("DataFooter", 200, "E", child() + flag("printIfEmpty"))}
            << 0 << 99 << QStringList{"E"};
        QTest::newRow("footer goes with the last row")
            << QStringList{data(flag("keepFooterTogether")), fixed("DataFooter", 300, "E", child())}
            << 5 << 99 << QStringList{"1 2 3 4", "5 E"};
        QTest::newRow("footer may be left alone")
            << QStringList{data(), fixed("DataFooter", 300, "E", child())} << 5 << 99
            << QStringList{"1 2 3 4 5", "E"};
        QTest::newRow("a sheet a row")
            << QStringList{data(flag("startNewPage"))} << 3 << 99 << QStringList{"1", "2", "3"};
        QTest::newRow("groups") << QStringList{group, data(),
                                               fixed("GroupFooter", 100, "S", child("GroupHeader"))}
                                << 6 << 2 << QStringList{"g0 1 2 S g1 3 4 S", "g2 5 6 S"};
        QTest::newRow("a sheet a group") << QStringList{fixed("GroupHeader", 200, "$D{rows.group}",
                                                              byGroup() + flag("startNewPage")),
                                                        data()}
                                         << 4 << 2 << QStringList{"g0 1 2", "g1 3 4"};
        QTest::newRow("groups are kept together")
            << QStringList{fixed("GroupHeader", 200, "$D{rows.group}",
                                 byGroup() + flag("keepGroupTogether")),
                           data()}
            << 6 << 3 << QStringList{"g0 1 2 3", "g1 4 5 6"};
        QTest::newRow("a group too long for a sheet begins where it is")
            << QStringList{fixed("ReportHeader", 500, "A"),
                           fixed("GroupHeader", 200, "$D{rows.group}",
                                 byGroup() + flag("keepGroupTogether")),
                           data()}
            << 7 << 7 << QStringList{"A g0 1 2 3 4", "5 6 7"};
        QTest::newRow("group header again on each sheet")
            << QStringList{fixed("GroupHeader", 200, "$D{rows.group}",
                                 byGroup() + flag("reprintOnEachPage")),
                           data()}
            << 7 << 6 << QStringList{"g0 1 2 3 4 5", "g0 6 g1 7"};
        QTest::newRow("columns across") << QStringList{data(whole("columnsCount", 2))} << 12 << 99
                                        << QStringList{"1 2 3 4 5 6 7 8 9 10", "11 12"};
        QTest::newRow("columns down")
            << QStringList{data(whole("columnsCount", 2) + whole("columnsFillDirection", 1))} << 7
            << 99 << QStringList{"1 6 2 7 3 4 5"};
        QTest::newRow("what follows columns stands below them")
            << QStringList{data(whole("columnsCount", 2)), fixed("DataFooter", 100, "E", child())}
            << 3 << 99 << QStringList{"1 2 3 E"};
    }

    void sheets()
    {
        QFETCH(QStringList, bands);
        QFETCH(int, rows);
        QFETCH(int, run);
        const LaidOut made(report({page(bands)}), numbered(rows, run));
        QVERIFY2(made.report, qPrintable(made.error));
        QTEST(made.texts(), "expected");
        QCOMPARE(made.problems, QStringList());
    }

    void pageNumbers()
    {
        const LaidOut made(report({page({fixed("PageHeader", 200, "$V{#PAGE}/$V{#PAGE_COUNT}"),
                                         fixed("GroupHeader", 200, "on $V{#PAGE}",
                                               byGroup() + flag("keepGroupTogether")),
                                         data()}),
                                   page({fixed("ReportHeader", 200, "last $V{#PAGE}")})}),
                           numbered(6, 3));
        QCOMPARE(made.texts(), QStringList({"1/3 on 1 1 2 3", "2/3 on 2 4 5 6", "last 3"}));
    }

    void totals()
    {
        const QString sum = QStringLiteral("$S{SUM(\"$D{rows.n}\",\"data\")}");
        const LaidOut made(report({page({fixed("ReportHeader", 200, sum), data(),
                                         fixed("GroupHeader", 100, sum, byGroup()),
                                         fixed("GroupFooter", 100, sum, child("GroupHeader")),
                                         fixed("PageFooter", 100, sum)})}),
                           numbered(6, 3));
        // Whole report, group, its rows, group, the rows of the sheet.
        QCOMPARE(made.texts(), QStringList({"21 6 1 2 3 6 15 4 10", "5 6 15 11"}));
    }

    void details()
    {
        QMap<QString, LimeReport::DataSource> sources = numbered(2);
        sources.insert("parts", LimeReport::DataSource(std::make_shared<TestRows>(
                                    QStringList{"p"}, QVector<QVariantList>{{"a"}, {"b"}})));
        const LaidOut made(
            report({page({data(QString(), 100), fixed("SubDetailHeader", 100, "D", child("sub")),
                          band("SubDetail", "sub", 100, {item("$D{parts.p}")},
                               child() + text("datasource", "parts")),
                          fixed("SubDetailFooter", 100, "$S{COUNT(\"$D{parts.p}\",\"sub\")}",
                                child("sub"))})}),
            sources);
        QCOMPARE(made.texts(), QStringList({"1 D a b 2 2 D a b 2"}));
    }

    void heights_data()
    {
        QTest::addColumn<QString>("properties");
        QTest::addColumn<QString>("bandProperties");
        QTest::addColumn<bool>("grows");
        QTest::newRow("fixed") << QString() << QString() << false;
        QTest::newRow("grows") << flag("autoHeight") << QString() << true;
        QTest::newRow("in a band that does not")
            << flag("autoHeight") << flag("autoHeight", false) << false;
    }

    // A long text, one below it, one beside it that stretches, and the band after them.
    void heights()
    {
        QFETCH(QString, properties);
        QFETCH(QString, bandProperties);
        QFETCH(bool, grows);
        const QString longText = QString("слово ").repeated(60).trimmed();
        const LaidOut made(report(
            {page({band("ReportHeader", "a", 120,
                        {item(longText, 0, 0, 400, 50, properties), item("below", 0, 50, 400, 50),
                         item("beside", 400, 0, 400, 100, flag("stretchToMaxHeight"))},
                        bandProperties),
                   fixed("ReportFooter", 100, "after")})}));
        const auto items = made.pages.page(0).items;
        QCOMPARE(items.size(), 4);
        const double growth = items[0].rect.height() - 50;
        QCOMPARE(growth > 200, grows);
        QCOMPARE(items[1].rect.top(), items[0].rect.bottom());
        QCOMPARE(items[2].rect.height(), 100 + growth);
        QCOMPARE(items[3].rect.top(), 100 + 120 + growth);
    }

    // Every word of a text that is longer than a sheet is there, in order and once.
    void dividedTexts_data()
    {
        QTest::addColumn<QString>("properties");
        QTest::newRow("splittable") << flag("splittable");
        QTest::newRow("not, but higher than a sheet") << QString();
    }

    void dividedTexts()
    {
        QFETCH(QString, properties);
        QStringList words;
        for (int word = 0; word < 3000; ++word)
            words.append(QStringLiteral("слово%1").arg(word));
        const LaidOut made(report({page(
            {fixed("ReportHeader", 300, "A"),
             band("Data", "data", 100, {item(words.join(' '), 0, 0, 900, 60, flag("autoHeight"))},
                  properties)})}));
        QVERIFY(made.pages.count() > 2);
        QCOMPARE(made.texts().join(' ').split(QRegularExpression("\\s+"), Qt::SkipEmptyParts),
                 QStringList("A") + words);
        for (int index = 0; index < made.pages.count(); ++index) {
            for (const auto &one : made.pages.page(index).items)
                QVERIFY(one.rect.bottom() <= 2970 - 100 + 1);
        }
    }

    void hiddenAndFollowing()
    {
        const QString longText = QString("слово ").repeated(40).trimmed();
        const LaidOut made(report({page(
            {band("ReportHeader", "a", 300,
                  {object("TextItem", "first", 0, 0, 400, 100,
                          text("content", longText) + text("followTo", "second")),
                   object("TextItem", "second", 0, 100, 400, 800, text("content", "own")),
                   item("   ", 400, 0, 100, 100, flag("hideIfEmpty") + whole("borders", 15))})})}));
        const auto items = made.pages.page(0).items;
        QCOMPARE(items.size(), 2);
        QVERIFY(!items[0].text.isEmpty() && !items[1].text.isEmpty());
        QCOMPARE(items[0].text + items[1].text, longText);
    }

    void layouts()
    {
        const auto cell = [](const QString &content, int x, const QString &more = QString()) {
            return item(content, x, 0, 200, 50, flag("hideIfEmpty") + more);
        };
        const LaidOut made(
            report({page({band("ReportHeader", "a", 100,
                               {object("HLayout", "row", 0, 0, 800, 50, QString(),
                                       {cell("c", 400), cell("", 200), cell("a", 0)}),
                                object("VLayout", "stack", 900, 0, 300, 100, QString(),
                                       {item("x", 0, 0, 100, 50, flag("autoHeight")),
                                        item("y", 0, 60, 100, 40)})})})}));
        QMap<QString, QRectF> places;
        for (const auto &one : made.pages.page(0).items)
            places.insert(one.text, one.rect);
        // The blank cell takes no room; things stand in the order of their places, not of the file.
        QCOMPARE(places.keys(), QStringList({"a", "c", "x", "y"}));
        QCOMPARE(places["a"].left(), 100.0);
        QCOMPARE(places["c"].left(), 300.0);
        QCOMPARE(places["y"].top(), places["x"].bottom());
        QCOMPARE(places["y"].width(), 300.0);
    }

    void placeholders_data()
    {
        QTest::addColumn<QString>("bands");
        QTest::addColumn<QString>("told");
        QTest::newRow("unknown item")
            << band("ReportHeader", "a", 100, {object("Hologram", "star", 0, 0, 300, 100)})
            << "Hologram";
        QTest::newRow("no such source")
            << band("Data", "data", 100, {item("x")}, text("datasource", "none")) << "none";
        QTest::newRow("picture outside") << band("ReportHeader", "a", 100,
                                                 {object("ImageItem", "logo", 0, 0, 300, 100,
                                                         text("resourcePath", "../../etc/passwd"))})
                                         << "passwd";
        QTest::newRow("no such column of a picture")
            << band("ReportHeader", "a", 100,
                    {object("ImageItem", "logo", 0, 0, 300, 100,
                            text("datasource", "rows") + text("field", "photo"))})
            << "photo";
    }

    void placeholders()
    {
        QFETCH(QString, bands);
        QFETCH(QString, told);
        const LaidOut made(report({page({bands})}), numbered(1));
        const auto items = made.pages.page(0).items;
        QCOMPARE(items.size(), 1);
        QCOMPARE(int(items[0].kind), int(LimeReport::PageItem::Placeholder));
        QCOMPARE(made.problems.size(), 1);
        QVERIFY2(made.problems[0].contains(told), qPrintable(made.problems[0]));
    }

    void orphans()
    {
        const LaidOut made(
            report({page({fixed("GroupFooter", 100, "S", child("nobody")), data()})}), numbered(1));
        QCOMPARE(made.texts(), QStringList("1"));
        QCOMPARE(made.problems.size(), 1);
        QVERIFY(made.problems[0].contains("nobody"));
    }

    void noRoom()
    {
        const LaidOut made(
            report({page({fixed("PageHeader", 2000, "H"), data(), fixed("PageFooter", 760, "F")})}),
            numbered(3));
        QVERIFY(!made.isWhole);
        QVERIFY(made.failure.contains("не оставляют места"));
    }
};

QTEST_MAIN(tst_report_layout)
#include "tst_report_layout.moc"
