#include "apps/plant/BoilerHouse.h"

#include "support/Rows.h"

using namespace Plant;

namespace {
BoilerHouse warmHouse()
{
    BoilerHouse house;
    house.startAll();
    house.step(7200);
    return house;
}

bool isNear(double value, double wanted, double tolerance)
{
    if (std::abs(value - wanted) < tolerance)
        return true;
    qWarning("%g instead of %g", value, wanted);
    return false;
}
} // namespace

class TestBoilerHouse : public QObject
{
    Q_OBJECT

private slots:
    void sameSeedSameRunHoweverTheTimeIsCut()
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
    void startedBoilerHeatsTheNetwork()
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
    void setpointsMoveTheControlledValues_data()
    {
        const Rows<double, double, double> row("temperature", "flow", "pressure");
        row("up", 100.0, 220.0, 0.45);
        row("down", 85.0, 120.0, 0.3);
    }
    void setpointsMoveTheControlledValues()
    {
        QFETCH(double, temperature);
        QFETCH(double, flow);
        QFETCH(double, pressure);
        BoilerHouse house = warmHouse();
        house.boiler(0).commands().temperatureSetpoint = temperature;
        house.network().commands().flowSetpoint = flow;
        house.network().commands().pressureSetpoint = pressure;
        house.step(3600);
        const double delivered = house.network().readings().heatPower;
        const double made =
            house.boiler(0).readings().heatPower + house.boiler(1).readings().heatPower;
        QVERIFY(isNear(made, delivered, 0.03 * delivered) && !house.hasAnyFault());
        QVERIFY(isNear(house.boiler(0).temperature(), temperature, 1.0));
        QVERIFY(isNear(house.network().readings().flow, flow, 3.0));
        QVERIFY(isNear(house.network().returnPressure(), pressure, 0.01));
    }
    void tripLatchesUntilReset_data()
    {
        const Rows<int> row("cause");
        row("over-temperature", int(TripCause::HighTemperature));
        row("low flow", int(TripCause::LowFlow));
        row("flame loss", int(TripCause::FlameLoss));
        row("emergency stop", int(TripCause::EmergencyStop));
    }
    void tripLatchesUntilReset()
    {
        QFETCH(int, cause);
        BoilerHouse house = warmHouse();
        Boiler &boiler = house.boiler(0);
        BoilerCommands &commands = boiler.commands();
        const auto provoke = [&](TripCause provoked) {
            const bool isHot = provoked == TripCause::HighTemperature;
            commands.tripTemperature = isHot ? boiler.temperature() - 5 : 120;
            commands.valveSetpoint = provoked == TripCause::LowFlow ? 0 : 100;
            commands.simulateFlameLoss = provoked == TripCause::FlameLoss;
            house.setEmergencyStop(provoked == TripCause::EmergencyStop);
        };
        provoke(TripCause(cause));
        house.step(45);
        QCOMPARE(boiler.burner().state(), BurnerState::Tripped);
        QCOMPARE(int(boiler.burner().cause()), cause);
        QCOMPARE(boiler.gasFlow(), 0.0);
        QVERIFY(!commands.burnerStart);

        provoke(TripCause::None);
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
    void pumpFaultNeedsResetAndNewStart()
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
    void leakDropsPressureAndMakeUpRestoresIt()
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
        QVERIFY(isNear(house.network().returnPressure(), 0.35, 0.02));
    }
};

QTEST_APPLESS_MAIN(TestBoilerHouse)
#include "tst_boiler_house.moc"
