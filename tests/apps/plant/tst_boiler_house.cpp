#include "apps/plant/BoilerHouse.h"

#include <QtTest>

using namespace Plant;

class TestBoilerHouse : public QObject
{
    Q_OBJECT

private slots:
    void sameSeedSameRunHoweverTheTimeIsCut();
    void startedBoilerHeatsTheNetwork();
    void steadyStateBalancesHeat();
    void throttlingLowersFlow_data();
    void throttlingLowersFlow();
    void setpointMovesTheControlledValue_data();
    void setpointMovesTheControlledValue();
    void tripLatchesUntilReset_data();
    void tripLatchesUntilReset();
    void pumpFaultNeedsResetAndNewStart();
    void leakDropsPressureAndMakeUpRestoresIt();
};

namespace {
BoilerHouse warmHouse()
{
    BoilerHouse house;
    house.startAll();
    house.step(7200);
    return house;
}
} // namespace

void TestBoilerHouse::sameSeedSameRunHoweverTheTimeIsCut()
{
    BoilerHouse whole(7), cut(7), other(8);
    for (BoilerHouse *house : {&whole, &cut, &other})
        house->startAll();
    whole.step(30.0);
    other.step(30.0);
    for (int i = 0; i < 1200; ++i)
        cut.step(0.025);
    const auto shown = [](const BoilerHouse &h) {
        return h.boiler(0).readings().outletTemperature;
    };
    QCOMPARE(shown(cut), shown(whole));
    QVERIFY(shown(other) != shown(whole));
}

void TestBoilerHouse::startedBoilerHeatsTheNetwork()
{
    BoilerHouse house;
    house.step(60);
    QVERIFY(house.network().readings().flow < 1.0);
    QVERIFY(house.boiler(0).temperature() < 45.5);
    house.startAll();
    house.step(10);
    QCOMPARE(house.boiler(0).burner().state(), BurnerState::Purge);
    QCOMPARE(house.gasFlow(), 0.0);
    house.step(600);
    QVERIFY(house.boiler(0).temperature() > 60.0);
    QVERIFY(house.boiler(0).readings().flueGasTemperature > house.boiler(0).temperature() + 20);
    QVERIFY(house.boiler(0).readings().oxygen < 8.0);
    QVERIFY(house.network().readings().supplyTemperature > 55.0);
    QVERIFY(house.network().readings().energy > 100.0);
}

void TestBoilerHouse::steadyStateBalancesHeat()
{
    const BoilerHouse house = warmHouse();
    const double made = house.boiler(0).readings().heatPower + house.boiler(1).readings().heatPower;
    const double delivered = house.network().readings().heatPower;
    QVERIFY2(std::abs(made - delivered) < 0.03 * delivered,
             qPrintable(QString("%1 kW made, %2 kW delivered").arg(made).arg(delivered)));
    QVERIFY(!house.hasAnyFault());
}

void TestBoilerHouse::throttlingLowersFlow_data()
{
    QTest::addColumn<double>("position");
    QTest::addColumn<double>("least");
    QTest::addColumn<double>("most");
    QTest::newRow("half") << 50.0 << 40.0 << 70.0;
    QTest::newRow("closed") << 0.0 << 0.0 << 1.0;
}

void TestBoilerHouse::throttlingLowersFlow()
{
    QFETCH(double, position);
    BoilerHouse house;
    house.boiler(0).commands().pumpStart[0] = true;
    house.step(60);
    const double open = house.boiler(0).flow();
    QVERIFY(open > 90.0);
    house.boiler(0).commands().valveSetpoint = position;
    house.step(3);
    QVERIFY2(house.boiler(0).valve().position() > 0.85, "the drive needs its time");
    house.step(60);
    QFETCH(double, least);
    QFETCH(double, most);
    QVERIFY2(house.boiler(0).flow() >= least && house.boiler(0).flow() <= most,
             qPrintable(QString::number(house.boiler(0).flow())));
}

void TestBoilerHouse::setpointMovesTheControlledValue_data()
{
    QTest::addColumn<QString>("loop");
    QTest::addColumn<double>("setpoint");
    QTest::addColumn<double>("tolerance");
    QTest::newRow("boiler up") << "temperature" << 100.0 << 1.0;
    QTest::newRow("boiler down") << "temperature" << 85.0 << 1.0;
    QTest::newRow("network flow up") << "flow" << 220.0 << 3.0;
    QTest::newRow("network flow down") << "flow" << 120.0 << 3.0;
    QTest::newRow("return pressure up") << "pressure" << 0.45 << 0.01;
}

void TestBoilerHouse::setpointMovesTheControlledValue()
{
    QFETCH(QString, loop);
    QFETCH(double, setpoint);
    QFETCH(double, tolerance);
    BoilerHouse house = warmHouse();
    if (loop == "temperature")
        house.boiler(0).commands().temperatureSetpoint = setpoint;
    if (loop == "flow")
        house.network().commands().flowSetpoint = setpoint;
    if (loop == "pressure")
        house.network().commands().pressureSetpoint = setpoint;
    const auto controlled = [&] {
        if (loop == "temperature")
            return house.boiler(0).temperature();
        return loop == "flow" ? house.network().readings().flow : house.network().returnPressure();
    };
    QVERIFY(std::abs(controlled() - setpoint) > 3 * tolerance);
    house.step(3600);
    QVERIFY2(std::abs(controlled() - setpoint) < tolerance,
             qPrintable(QString::number(controlled())));
}

void TestBoilerHouse::tripLatchesUntilReset_data()
{
    QTest::addColumn<int>("cause");
    QTest::newRow("over-temperature") << int(TripCause::HighTemperature);
    QTest::newRow("low flow") << int(TripCause::LowFlow);
    QTest::newRow("flame loss") << int(TripCause::FlameLoss);
    QTest::newRow("emergency stop") << int(TripCause::EmergencyStop);
}

void TestBoilerHouse::tripLatchesUntilReset()
{
    QFETCH(int, cause);
    BoilerHouse house = warmHouse();
    Boiler &boiler = house.boiler(0);
    BoilerCommands &commands = boiler.commands();
    const auto provoke = [&](bool on) {
        if (TripCause(cause) == TripCause::HighTemperature)
            commands.tripTemperature = on ? boiler.temperature() - 5 : 120;
        commands.valveSetpoint = on && TripCause(cause) == TripCause::LowFlow ? 0 : 100;
        commands.simulateFlameLoss = on && TripCause(cause) == TripCause::FlameLoss;
        house.setEmergencyStop(on && TripCause(cause) == TripCause::EmergencyStop);
    };
    provoke(true);
    house.step(45);
    QCOMPARE(boiler.burner().state(), BurnerState::Tripped);
    QCOMPARE(int(boiler.burner().cause()), cause);
    QCOMPARE(boiler.gasFlow(), 0.0);
    QVERIFY(!commands.burnerStart);

    provoke(false);
    house.step(60);
    commands.burnerStart = true;
    house.step(5);
    QCOMPARE(boiler.burner().state(), BurnerState::Tripped);
    commands.reset = true;
    house.step(1);
    QCOMPARE(boiler.burner().state(), BurnerState::Stopped);
    QVERIFY(!commands.reset);
    commands.burnerStart = true;
    house.step(60);
    QVERIFY(boiler.burner().hasFlame());
}

void TestBoilerHouse::pumpFaultNeedsResetAndNewStart()
{
    BoilerHouse house = warmHouse();
    Boiler &boiler = house.boiler(1);
    boiler.commands().simulatePumpFailure[0] = true;
    house.step(10);
    QVERIFY(boiler.pump(0).hasFault() && !boiler.pump(0).isRunning());
    boiler.commands().simulatePumpFailure[0] = false;
    boiler.commands().reset = true;
    house.step(10);
    QVERIFY(!boiler.pump(0).hasFault() && !boiler.pump(0).isRunning());
    boiler.commands().pumpStart[1] = true;
    house.step(10);
    QVERIFY(boiler.pump(1).isRunning() && boiler.flow() > 90);
}

void TestBoilerHouse::leakDropsPressureAndMakeUpRestoresIt()
{
    BoilerHouse house = warmHouse();
    house.network().commands().simulateLeak = true;
    house.step(360);
    QVERIFY(house.network().hasLowPressure());
    QVERIFY(house.network().readings().makeUpFlow > 12);
    house.step(600);
    QCOMPARE(int(house.boiler(0).burner().cause()), int(TripCause::LowPressure));
    house.network().commands().simulateLeak = false;
    house.step(3600);
    QVERIFY(std::abs(house.network().returnPressure() - 0.35) < 0.02);
}

QTEST_APPLESS_MAIN(TestBoilerHouse)
#include "tst_boiler_house.moc"
