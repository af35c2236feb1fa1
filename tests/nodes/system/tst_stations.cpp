#include "nodes/auth/systemAuthentication.h"
#include "nodes/events/BasicEvent.h"
#include "nodes/journal/EventJournal.h"
#include "nodes/journal/JournalQuery.h"
#include "nodes/model/KindTable.h"
#include "nodes/model/NodesCollection.h"
#include "nodes/serial/ProjectReader.h"
#include "nodes/signals/BasicSignal.h"
#include "nodes/system/BasicStation.h"
#include "nodes/system/systemCore.h"
#include "support/Rows.h"

#include <QTemporaryDir>
#include <QtTest>

using namespace Nodes;

namespace {

constexpr const char *twoStations = R"(<project id="1" format="1">
<memorySignal id="2" initial="1"/>
<station id="10" name="A"><memorySignal id="11" initial="1" writable="true"/>
  <operationTimer id="12" interval="1000"/></station>
<station id="20" name="B"><memorySignal id="21" initial="1" writable="true"/>
  <operationTimer id="22" interval="1000"/></station>
<authentification id="30"/>
</project>)";

} // namespace

class TestStations : public QObject
{
    Q_OBJECT

private slots:
    void runsTheLocalOneOnly_data();
    void runsTheLocalOneOnly();
    void usersFollowTheTree();
    void journalsErrorsOfTheProject();

private:
    void adopt(systemCore &core);

    QTemporaryDir m_directory;
};

void TestStations::adopt(systemCore &core)
{
    ProjectReader reader;
    std::unique_ptr<NodesCollection> project;
    QVERIFY(reader.ReadBuffer(twoStations, "p.xml", project));
    core.SetLoadReport(reader.GetReport());
    core.AdoptProject(std::move(project), "p.xml");
    core.SetDataDirectory(m_directory.path().toStdString());
}

void TestStations::runsTheLocalOneOnly_data()
{
    const Rows<std::string, int, int> row("station", "local", "remote");
    row("the first by default", "", 10, 20);
    row("by name", "B", 20, 10);
}

void TestStations::runsTheLocalOneOnly()
{
    QFETCH(std::string, station);
    QFETCH(int, local);
    QFETCH(int, remote);
    systemCore core;
    adopt(core);
    const Result unknown = core.SelectStation("C");
    QCOMPARE(unknown.GetType(), Result::NotFound);
    QVERIFY(unknown.GetDetail().find(R"("A", "B")") != std::string::npos);
    QVERIFY(!core.Start());
    QVERIFY(core.SelectStation(station));
    QVERIFY(core.Start());
    const auto node = [&core](int id) { return core.GetNodesCollection()->FindNode(id); };
    const auto value = [&](int id) { return static_cast<BasicSignal *>(node(id))->GetValue(); };
    QCOMPARE(core.GetLocalStation(), node(local));
    QCOMPARE(value(2).GetQuality(), Quality::Good);
    QCOMPARE(value(local + 1).GetQuality(), Quality::Good);
    QVERIFY(node(local + 2)->GetState() == NodeState::Running);
    QVERIFY(value(remote + 1).IsError());
    QCOMPARE(value(remote + 1).GetError().GetType(), Result::NotConnected);
    QVERIFY(node(remote + 2)->GetState() != NodeState::Running);
}

// However often they were asked for before.
void TestStations::usersFollowTheTree()
{
    systemCore core;
    adopt(core);
    NodesCollection &project = *core.GetNodesCollection();
    const KindInfo &kind = *KindTable::Instance().FindByKey("authentication");
    const unsigned long common = project.CreateNode(kind.type, project.GetRoot())->GetId();
    auto *first = dynamic_cast<BasicStation *>(project.FindNode(10));
    auto *second = dynamic_cast<BasicStation *>(project.FindNode(20));
    const auto found = [&] {
        const auto idOf = [](const ConfigNode *node) { return node ? node->GetId() : 0; };
        return std::vector<unsigned long>{
            idOf(core.GetLocalStation()), idOf(core.GetSystemAuthentication()),
            idOf(first->GetSystemAuthentication()), idOf(second->GetSystemAuthentication())};
    };
    using Ids = std::vector<unsigned long>;
    QCOMPARE(found(), (Ids{10, common, common, common}));
    const unsigned long own = project.CreateNode(kind.type, second)->GetId();
    QCOMPARE(found(), (Ids{10, common, common, own}));
    QVERIFY(core.SelectStation("B"));
    QCOMPARE(found(), (Ids{20, own, common, own}));
    QVERIFY(project.GetRoot()->DeleteNode(common));
    QCOMPARE(found(), (Ids{20, own, 0, own}));
    second->SetName("C");
    first->SetName("B");
    QCOMPARE(found(), (Ids{10, 0, 0, own}));
    QVERIFY(core.SelectStation(""));
    QVERIFY(project.GetRoot()->DeleteNode(10));
    first = second;
    QCOMPARE(found(), (Ids{20, own, own, own}));
    QVERIFY(second->DeleteNode(own));
    QCOMPARE(found(), (Ids{20, 0, 0, 0}));
}

void TestStations::journalsErrorsOfTheProject()
{
    systemCore core;
    adopt(core);
    QVERIFY(core.Start());
    QVERIFY(core.GetJournal().Flush());
    std::vector<BasicEvent> events;
    QVERIFY(core.GetJournal().Query({}, events));
    QVERIFY(std::any_of(events.begin(), events.end(), [](const BasicEvent &event) {
        return event.text.find("p.xml:7") != std::string::npos &&
               event.text.find("authentification") != std::string::npos;
    }));
}

QTEST_APPLESS_MAIN(TestStations)
#include "tst_stations.moc"
