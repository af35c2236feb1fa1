// Trends as an operator meets them: pages of curves opened by clicks, a value of the plant that
// moves, a station that was away for a while.
#include "e2e/StationRig.h"

#include <QProcess>
#include <QRegularExpression>
#include <QtTest>

#include <algorithm>
#include <cstdlib>

using namespace EndToEnd;

namespace {

const QString footer = QStringLiteral("Навигация");
const QString schematic = QStringLiteral("Мнемосхема");
const QString page = QStringLiteral("Тренды котла 1");
const QString trend = QStringLiteral("Тренд котла 1");

const QColor setPointLine(0x80, 0x6a, 0x10);

bool isAlike(QRgb left, const QColor &right)
{
    return std::abs(qRed(left) - right.red()) < 24 && std::abs(qGreen(left) - right.green()) < 24 &&
           std::abs(qBlue(left) - right.blue()) < 24;
}

/// Row of the line's end at the right edge, where it is of now: the one that most of its pixels
/// there are in, for the flag with the value is tied to it by a slanting line; -1 without any.
int newestRow(const QImage &picture, const QColor &line)
{
    constexpr int edge = 8; // columns
    int best = 0;
    int row = -1;
    for (int y = 0; y < picture.height(); ++y) {
        int count = 0;
        for (int x = std::max(picture.width() - edge, 0); x < picture.width(); ++x)
            count += isAlike(picture.pixel(x, y), line) ? 1 : 0;
        if (count > best) {
            best = count;
            row = y;
        }
    }
    return row;
}

} // namespace

class StationTrendsTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { m_rig.begin(); }
    void opensByClick()
    {
        QTRY_VERIFY_WITH_TIMEOUT(m_rig.window(schematic).isOpen, patience);
        showTrends();
        QTRY_VERIFY_WITH_TIMEOUT(newestRow(plot("opened"), setPointLine) > 0, patience);
    }
    void followsThePlant()
    {
        const double before = m_rig.plant().read("K1.Temp.Setpoint");
        const int row = newestRow(plot("before"), setPointLine);
        m_rig.plant().write("K1.Temp.Setpoint", before - 40);
        // Each picture is another one: what was seen once is not asked for again.
        QVERIFY(QTest::qWaitFor([&] { return newestRow(plot("lower"), setPointLine) > row + 40; },
                                patience));
        m_rig.plant().write("K1.Temp.Setpoint", before);
        QVERIFY(QTest::qWaitFor(
            [&] { return std::abs(newestRow(plot("back"), setPointLine) - row) < 12; }, patience));
    }
    void pansAndReturnsToThePresent()
    {
        const QImage present = plot("present");
        const QRect place = plotPlace();
        m_rig.drag(place.center(), place.center() + QPoint(300, 0));
        QTRY_VERIFY_WITH_TIMEOUT(plot("panned") != present, patience);
        // Nothing comes while the past is looked at: what is seen stays where it is.
        QVERIFY(m_rig.isStationRunning());
    }
    void showsWhatWasBeforeARestart()
    {
        QVERIFY(m_rig.stopStation());
        QCOMPARE(archived("K1.Temp.Setpoint"), true);
        QVERIFY(m_rig.startStation());
        QTRY_VERIFY_WITH_TIMEOUT(m_rig.window(schematic).isOpen, patience);
        showTrends();
        // The steps made before it stopped are left of what came since.
        QTRY_VERIFY_WITH_TIMEOUT(rowsOf(plot("after"), setPointLine) > 60, patience);
        QVERIFY(m_rig.stopStation());
    }

private:
    void showTrends() { m_rig.click(m_rig.project().centreOf(footer, "Страница: Тренды К1")); }
    /// Of the curves as far as now, without scales, tool bars and legend.
    QRect plotPlace() const
    {
        const QRect chart = m_rig.project()
                                .placeIn(page, trend)
                                .translated(m_rig.window(schematic).place.topLeft());
        return chart.adjusted(120, 60, -74, -220);
    }
    QImage plot(const QString &name) const { return m_rig.grab(plotPlace(), name); }
    /// How many rows of the picture the line reaches over.
    static int rowsOf(const QImage &picture, const QColor &line)
    {
        int rows = 0;
        for (int y = 0; y < picture.height(); ++y) {
            int x = 0;
            while (x < picture.width() && !isAlike(picture.pixel(x, y), line))
                ++x;
            rows += x < picture.width() ? 1 : 0;
        }
        return rows;
    }
    /// Whether the archive that the station left knows the signal, by the command that tells.
    bool archived(const QString &signal) const
    {
        QProcess records;
        records.start(STATION_BINARY_DIR "/bin/records",
                      {"archive", "info", m_rig.dataDirectory()});
        return records.waitForFinished() && records.exitCode() == 0 &&
               QString::fromUtf8(records.readAllStandardOutput()).contains(signal);
    }

    StationRig m_rig;
};

QTEST_GUILESS_MAIN(StationTrendsTest)
#include "tst_station_trends.moc"
