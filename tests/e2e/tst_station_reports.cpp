// The report of the shift under way as an operator gets it: opened on its page, drawn on paper,
// saved as PDF by the key, and its numbers against those of the archive.
#include "e2e/StationRig.h"

#include <QRegularExpression>
#include <QtTest>

#include <algorithm>

using namespace EndToEnd;

namespace {

const QString footer = QStringLiteral("Навигация");
const QString schematic = QStringLiteral("Мнемосхема");
const QString page = QStringLiteral("Отчёты");
const QString display = QStringLiteral("Просмотр отчётов");
const QString saving = QStringLiteral("Сохранение отчёта в PDF");

constexpr int keys = 10; // of the tool bar, once there are pages; the choice of reports is none
constexpr int pdfKey = 3;
constexpr int toolBarHeight = 56;

int whiteOf(const QImage &image)
{
    int white = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            white += image.pixel(x, y) == 0xffffffff;
    }
    return white;
}

} // namespace

/// Each step goes on from where the last one left the station.
class StationReportsTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        if (QStandardPaths::findExecutable("pdftotext").isEmpty())
            QSKIP("pdftotext is not installed; tools/install-dependencies installs it");
        m_rig.begin();
    }
    void opensThePage()
    {
        QTRY_VERIFY_WITH_TIMEOUT(m_rig.window(schematic).isOpen, patience);
        QTRY_VERIFY_WITH_TIMEOUT(isArchived(), patience);
        m_rig.click(m_rig.project().centreOf(footer, "Страница: Отчёты"));
        QTRY_COMPARE_WITH_TIMEOUT(pressable().size(), keys, patience);
    }
    void drawsOnPaper()
    {
        const QRect body = displayPlace().adjusted(0, toolBarHeight, 0, 0);
        // A page fitted to the display covers a third of it, with little ink.
        QTRY_VERIFY_WITH_TIMEOUT(
            whiteOf(m_rig.grab(body, "report")) > body.width() * body.height() / 5, patience);
    }
    void savesAsPdf()
    {
        m_rig.click(pressable().value(pdfKey));
        // No press meanwhile: the dialog still moves until it is framed.
        QTRY_COMPARE_WITH_TIMEOUT(m_rig.activeTitle(), saving, patience);
        m_rig.type("", "ctrl+a");
        m_rig.type(m_directory.filePath("shift.pdf"), "Return");
        QTRY_VERIFY_WITH_TIMEOUT(!m_rig.hasTitle(saving), patience);
        QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(m_directory.filePath("shift.pdf")), patience);
    }
    void thePdfAgreesWithTheArchive_data()
    {
        QTest::addColumn<int>("signal");
        QTest::addColumn<QString>("name");
        QTest::addColumn<double>("rounding");

        QTest::newRow("temperature") << 128 << "Сеть: температура подачи" << 0.05;
        QTest::newRow("pressure") << 130 << "Сеть: давление подачи" << 0.0005;
        QTest::newRow("flow") << 136 << "Сеть: расход" << 0.05;
    }
    void thePdfAgreesWithTheArchive()
    {
        QFETCH(int, signal);
        QFETCH(QString, name);
        QFETCH(double, rounding);
        if (m_rig.isStationRunning())
            QVERIFY(m_rig.stopStation()); // all that it knows is on the disk then
        const QString text =
            StationRig::printed("pdftotext", {"-layout", m_directory.filePath("shift.pdf"), "-"});
        QVERIFY2(text.contains("Сменная ведомость") && text.contains("Лист 1 из"),
                 qPrintable(text));
        const QVector<double> archived = samplesOf(signal);
        QVERIFY(!archived.isEmpty());
        const QVector<double> told = numbersOf(name, text); // minimum, mean, maximum, last, known
        QCOMPARE(told.size(), 5);
        const auto [least, most] = std::minmax_element(archived.begin(), archived.end());
        const double slack = rounding + 1e-6;
        QVERIFY(told[0] >= *least - slack && told[0] <= archived.first() + slack);
        QVERIFY(told[2] <= *most + slack && told[2] >= archived.first() - slack);
        QVERIFY(told[1] >= told[0] && told[1] <= told[2]);
        QVERIFY2(std::any_of(archived.begin(), archived.end(),
                             [&](double sample) { return qAbs(sample - told[3]) <= slack; }),
                 qPrintable(QString("%1 is none of the samples").arg(told[3])));
    }

private:
    QRect displayPlace() const
    {
        return m_rig.project()
            .placeIn(page, display)
            .translated(m_rig.window(schematic).place.topLeft());
    }
    /// The keys of the tool bar that take a press.
    QVector<QPoint> pressable() const
    {
        QRect bar = displayPlace();
        bar.setHeight(toolBarHeight);
        return m_rig.buttonsIn(bar, keys);
    }
    QString exported(int signal) const
    {
        return StationRig::printed(
            STATION_BINARY_DIR "/bin/records",
            {"archive", "export", m_rig.dataDirectory(), "--signal", QString::number(signal)});
    }
    bool isArchived() const { return exported(136).contains(",good"); }
    /// Rows of time,signal,value,quality.
    QVector<double> samplesOf(int signal) const
    {
        QVector<double> samples;
        for (const QString &row : exported(signal).split('\n')) {
            bool isNumber = false;
            const double sample = row.section(',', 2, 2).toDouble(&isNumber);
            if (isNumber)
                samples.append(sample);
        }
        return samples;
    }
    /// Of the line of the table of the whole shift.
    static QVector<double> numbersOf(const QString &name, const QString &text)
    {
        static const QRegularExpression number(QStringLiteral("-?\\d+(?:,\\d+)?"));
        QVector<double> numbers;
        const QString line = text.split('\n').filter(name).value(0);
        auto found = number.globalMatch(line, line.indexOf(name) + name.size());
        while (found.hasNext())
            numbers.append(found.next().captured().replace(',', '.').toDouble());
        return numbers;
    }

    StationRig m_rig;
    QTemporaryDir m_directory;
};

QTEST_GUILESS_MAIN(StationReportsTest)
#include "tst_station_reports.moc"
