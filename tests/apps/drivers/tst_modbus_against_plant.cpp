#include "support/PlantClient.h"
#include "support/RunningPlant.h"

#include "nodes/model/NodesCollection.h"
#include "nodes/signals/BasicSignal.h"
#include "nodes/system/systemCore.h"

#include <QTemporaryDir>
#include <QtTest>

namespace {

/// The project shows seconds as hours and kilowatt-hours as megawatt-hours.
double shownUnit(const Plant::RegisterEntry &row)
{
    if (row.unit == "s")
        return 3600;
    return row.unit == "kWh" ? 1000 : 1;
}

} // namespace

class TestModbusAgainstPlant : public QObject
{
    Q_OBJECT

private slots:
    void theDeliveredProjectReadsEveryRegister()
    {
        const RunningPlant plant(0.0, true);
        const PlantClient client(plant.server.port());
        const QTemporaryDir data;
        Nodes::systemCore core;
        core.SetDataDirectory(data.path().toStdString());
        core.SetDefine("plant.port", std::to_string(plant.server.port()));
        QVERIFY(core.LoadProject(STATION_SOURCE_DIR "/projects/boiler/project.xml"));
        QVERIFY(core.Start());
        Nodes::NodeLinks links;
        core.GetNodesCollection()->FindNodes(Nodes::NodeType::TypeSignal, &links);
        for (const Plant::RegisterEntry &row : Plant::registerMap()) {
            const auto link =
                std::find_if(links.begin(), links.end(), [&row](const auto &candidate) {
                    return candidate->GetName() == row.name;
                });
            QVERIFY2(link != links.end(), row.name.c_str());
            const auto *signal = dynamic_cast<Nodes::BasicSignal *>(link->GetNode());
            QTRY_VERIFY2(signal->GetValue().IsGood(), row.name.c_str());
            const double shown = signal->GetValue().ToDouble() * shownUnit(row);
            QVERIFY2(std::abs(shown - client.read(row.name.c_str())) < 1e-6, row.name.c_str());
        }
        QVERIFY(core.Stop());
    }
};

QTEST_GUILESS_MAIN(TestModbusAgainstPlant)
#include "tst_modbus_against_plant.moc"
