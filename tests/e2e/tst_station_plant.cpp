// The station as an operator meets it: a real display, real clicks, a real protocol to a plant that
// goes away, comes back and answers nonsense.
#include "e2e/StationRig.h"

#include "nodes/journal/EventJournal.h"

#include <QJsonObject>
#include <QRegularExpression>
#include <QtTest>

#include <algorithm>

using namespace EndToEnd;

namespace {

const QString header = QStringLiteral("Заголовок");
const QString footer = QStringLiteral("Навигация");
const QString schematic = QStringLiteral("Мнемосхема");
const QString control = QStringLiteral("Управление котлом 1");

// Time-out x requests of the driver, two polls, and the two programs' own pace.
constexpr int lossTime = 8000;
// The longest pause between attempts to reconnect that such short losses lead to.
constexpr int recoveryTime = 15000;

double numberIn(const QString &text)
{
    bool isNumber = false;
    const double number = text.section(QLatin1Char(' '), 0, 0).toDouble(&isNumber);
    return isNumber ? number : qQNaN();
}

} // namespace

class StationPlantTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void becomesLive();
    void showsWhatThePlantServes_data();
    void showsWhatThePlantServes();
    void marksLossAndRecovers();
    void navigatesByClick();
    void stopsTheBurnerByClick();
    void movesAndClosesAWindow();
    void survivesAFaultyLine_data();
    void survivesAFaultyLine();
    void endsOrderly();
    void keptTheWriteInItsJournal();

private:
    bool isAllGood() const;
    bool isRemoteBad() const;
    void showByTile(const QString &tile, const QString &composition);

    StationRig m_rig;
};

bool StationPlantTest::isAllGood() const
{
    const QVector<ShownElement> shown = m_rig.shown();
    return !shown.isEmpty() && std::all_of(shown.begin(), shown.end(), [](const auto &element) {
        return element.quality == QLatin1String("good");
    });
}

/// Every value of the plant is marked bad and reads as nothing; everything else is good.
bool StationPlantTest::isRemoteBad() const
{
    static const QRegularExpression content(QStringLiteral("\\w"),
                                            QRegularExpression::UseUnicodePropertiesOption);
    const QVector<ShownElement> shown = m_rig.shown();
    return !shown.isEmpty() && std::all_of(shown.begin(), shown.end(), [&](const auto &element) {
        if (!m_rig.project().isRemote(element.id))
            return element.quality == QLatin1String("good");
        return element.quality == QLatin1String("bad") && !element.text.contains(content);
    });
}

void StationPlantTest::showByTile(const QString &tile, const QString &composition)
{
    const QPoint place = m_rig.project().centreOf(footer, tile);
    m_rig.click(place);
    QTRY_COMPARE(m_rig.window(schematic).ids(), m_rig.project().boundIn(composition));
}

void StationPlantTest::initTestCase()
{
    const QString missing = StationRig::missingTool();
    if (!missing.isEmpty())
        QSKIP(qPrintable(missing + " is not installed; tools/install-dependencies installs it"));
    QVERIFY(m_rig.startDisplay());
    QVERIFY(m_rig.startPlant());
    QVERIFY(m_rig.startStation());
}

void StationPlantTest::becomesLive()
{
    QTRY_VERIFY_WITH_TIMEOUT(isAllGood(), recoveryTime);
    QCOMPARE(m_rig.status()["state"].toString(), QStringLiteral("running"));
    QVERIFY(m_rig.status()["firstFrameMs"].toInt() > 0);
    QCOMPARE(m_rig.window(header).ids(), m_rig.project().boundIn(header));
    QCOMPARE(m_rig.window(schematic).ids(), m_rig.project().boundIn("Котельная"));
}

void StationPlantTest::showsWhatThePlantServes_data()
{
    QTest::addColumn<QString>("window");
    QTest::addColumn<double>("tolerance"); // what noise and one poll may change
    QTest::newRow("Net.Temp.Supply") << header << 0.5;
    QTest::newRow("Outside.Temp") << header << 0.5;
    QTest::newRow("Net.Pressure.Return") << schematic << 0.01;
    QTest::newRow("Net.Flow") << schematic << 5.0;
    QTest::newRow("Gas.Flow") << schematic << 40.0;
}

void StationPlantTest::showsWhatThePlantServes()
{
    QFETCH(QString, window);
    QFETCH(double, tolerance);
    const char *signal = QTest::currentDataTag();
    const auto difference = [&] {
        const double shown = numberIn(m_rig.window(window).textOf(signal));
        return qAbs(shown - m_rig.plant().read(signal));
    };
    QTRY_VERIFY(difference() <= tolerance);
}

void StationPlantTest::marksLossAndRecovers()
{
    const ProjectFacts &project = m_rig.project();
    const QString label = project.elementShowing(header, "Net.Temp.Supply");
    const QRect place =
        project.placeIn(header, label).translated(m_rig.window(header).place.topLeft());
    const QImage live = m_rig.grab(place, "live");
    QVERIFY(!live.isNull());

    QVERIFY(m_rig.stopPlant());
    QTRY_VERIFY_WITH_TIMEOUT(isRemoteBad(), lossTime);
    QVERIFY(m_rig.grab(place, "lost") != live);

    QVERIFY(m_rig.startPlant());
    QTRY_VERIFY_WITH_TIMEOUT(isAllGood(), recoveryTime);
}

void StationPlantTest::navigatesByClick()
{
    showByTile("Котёл 1 2", "Котёл 1");
    QTRY_VERIFY(isAllGood());
}

void StationPlantTest::stopsTheBurnerByClick()
{
    m_rig.click(m_rig.project().centreOf(footer, "Управление К1"));
    QTRY_COMPARE(m_rig.window(control).ids(), m_rig.project().boundIn(control));
    QCOMPARE(m_rig.plant().read("K1.Burner.Start"), 1.0);
    const QRect button = m_rig.project().placeIn(control, "Горелка: стоп");
    m_rig.click(m_rig.window(control).place.topLeft() + button.center());
    QTRY_COMPARE(m_rig.plant().read("K1.Burner.Start"), 0.0);
    QTRY_VERIFY(m_rig.window(control).textOf("K1.Burner.State").contains("ОСТАНОВЛЕН"));
    m_rig.grab({}, "control");
}

void StationPlantTest::movesAndClosesAWindow()
{
    const QRect before = m_rig.window(control).place;
    const QPoint title(before.center().x(), before.top() - 16);
    const QPoint shift(-160, 96);
    m_rig.drag(title, title + shift);
    QTRY_COMPARE(m_rig.window(control).place.topLeft(), before.topLeft() + shift);
    m_rig.click(m_rig.window(control).place.topRight() + QPoint(-16, -16));
    QTRY_VERIFY(!m_rig.window(control).isOpen);
}

void StationPlantTest::survivesAFaultyLine_data()
{
    QTest::addColumn<double>("fault");
    QTest::addColumn<QString>("tile");
    QTest::addColumn<QString>("composition");
    QTest::newRow("late") << 1.0 << "Котёл 2 2"
                          << "Котёл 2";
    QTest::newRow("garbage") << 2.0 << "Котельная"
                             << "Котельная";
    QTest::newRow("truncate") << 3.0 << "Котёл 1 2"
                              << "Котёл 1";
    QTest::newRow("silent") << 4.0 << "Котёл 2 2"
                            << "Котёл 2";
}

void StationPlantTest::survivesAFaultyLine()
{
    QFETCH(double, fault);
    QFETCH(QString, tile);
    QFETCH(QString, composition);
    m_rig.plant().write("Line.Fault", fault);
    QTRY_VERIFY_WITH_TIMEOUT(isRemoteBad(), lossTime);
    // The operator's hands are not tied meanwhile, and what opens is not taken for live either.
    showByTile(tile, composition);
    QTRY_VERIFY(isRemoteBad());
    const double uptime = m_rig.status()["uptime"].toDouble();
    QTRY_VERIFY(m_rig.status()["uptime"].toDouble() > uptime);
    m_rig.plant().write("Line.Fault", 0.0);
    QTRY_VERIFY_WITH_TIMEOUT(isAllGood(), recoveryTime);
}

void StationPlantTest::endsOrderly()
{
    QVERIFY(m_rig.stopStation());
    QCOMPARE(m_rig.status()["state"].toString(), QStringLiteral("stopped"));
}

void StationPlantTest::keptTheWriteInItsJournal()
{
    Nodes::EventJournal journal;
    QVERIFY(journal.Open((m_rig.dataDirectory() + "/journal.sqlite").toStdString()));
    Nodes::JournalQuery query;
    query.text = "Запись значения";
    std::vector<Nodes::BasicEvent> events;
    QVERIFY(journal.Query(query, events));
    QCOMPARE(events.size(), std::size_t(1));
    QVERIFY(QString::fromStdString(events[0].source).endsWith("/K1.Burner.Start"));
    QCOMPARE(events[0].oldValue, std::string("true"));
    QCOMPARE(events[0].newValue, std::string("false"));
    QVERIFY(journal.Verify());
}

QTEST_GUILESS_MAIN(StationPlantTest)
#include "tst_station_plant.moc"
