#include "e2e/ConfiguratorRig.h"
#include "e2e/StationRig.h"

#include <QFile>
#include <QRegularExpression>
#include <QTest>

using EndToEnd::patience;

/// A newcomer's way from nothing to a live value, with mouse and keyboard.
class ConfiguratorTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { rig.begin(); }

    void makesAProject()
    {
        QVERIFY(rig.startNew("Pump house"));
        QVERIFY(rig.press("stepSimulator"));
    }

    void makesAWindow()
    {
        QVERIFY(rig.press("stepWindow"));
        QVERIFY(rig.await("Создать", "QPushButton").isValid());
        rig.key("Return");
        QVERIFY(rig.await("Окно 1", "tab").isValid());
    }

    void bindsALabel()
    {
        // From the panel of elements into the window, then a signal from the tree onto it.
        QVERIFY(rig.press("Имитатор", "item"));
        rig.key("Right"); // unfolds it
        QVERIFY(rig.await("Температура", "item").isValid());
        const QRect window = rig.await("scene");
        QVERIFY(window.isValid());
        QVERIFY(rig.press("Элементы", "tab"));
        QVERIFY(rig.dragTo(rig.await("Надпись", "item"), window));
        const QRect label = rig.await("Надпись", "element");
        QVERIFY(label.isValid());
        QVERIFY(rig.dragTo(rig.await("Температура", "item"), label));
    }

    void runsIt()
    {
        rig.key("ctrl+s");
        const QRegularExpression bound("<label [^>]*signal=\"\\d+\"");
        const auto isBound = [&] {
            QFile saved(file());
            return saved.open(QIODevice::ReadOnly) &&
                   bound.match(QString::fromUtf8(saved.readAll())).hasMatch();
        };
        QVERIFY(QTest::qWaitFor(isBound, patience));
        rig.key("F5");
        const auto reading = [this] {
            return EndToEnd::windowIn(rig.stationStatus(), "Окно 1").textOf("Температура");
        };
        const QRegularExpression number("^\\d+[.,]\\d");
        const bool isLive =
            QTest::qWaitFor([&] { return number.match(reading()).hasMatch(); }, patience);
        (void)rig.grab({}, "configurator-run");
        QVERIFY2(isLive, qPrintable(reading()));
        const QString first = reading();
        QVERIFY(QTest::qWaitFor([&] { return reading() != first; }, patience));
    }

    void undoesAll()
    {
        const QByteArray before = read();
        QVERIFY(rig.activate("Конфигуратор"));
        rig.key("F5"); // ends the station
        QVERIFY(QTest::qWaitFor([this] { return !rig.hasTitle("Окно 1"); }, patience));
        QVERIFY(rig.activate("Конфигуратор"));
        for (int i = 0; i < 4; ++i)
            rig.key("ctrl+z");
        rig.key("ctrl+s");
        QVERIFY(QTest::qWaitFor([&] { return read() != before && !read().contains("<window"); },
                                patience));
        for (int i = 0; i < 4; ++i)
            rig.key("ctrl+y");
        rig.key("ctrl+s");
        QVERIFY(QTest::qWaitFor([&] { return read() == before; }, patience));
        QVERIFY(rig.stop());
    }

private:
    QString file() const { return rig.project("Pump house"); }
    QByteArray read() const
    {
        QFile saved(file());
        return saved.open(QIODevice::ReadOnly) ? saved.readAll() : QByteArray();
    }

    EndToEnd::ConfiguratorRig rig;
};

QTEST_GUILESS_MAIN(ConfiguratorTest)
#include "tst_configurator_tour.moc"
