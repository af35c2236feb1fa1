#include "nodes/events/BasicEvent.h"
#include "nodes/model/KindBuilder.h"
#include "nodes/model/KindTable.h"
#include "nodes/model/NodesCollection.h"
#include "nodes/model/NodesContainer.h"
#include "nodes/model/properties/BasicProperty.h"
#include "nodes/model/services/AccessCheck.h"
#include "nodes/model/services/AccessGuard.h"
#include "nodes/model/services/JournalSink.h"
#include "nodes/serial/ProjectReader.h"
#include "nodes/serial/ProjectWriter.h"
#include "nodes/serial/UnknownNode.h"
#include "nodes/signals/memorySignal.h"

#include <QObject>
#include <QTest>

using namespace Nodes;

namespace {

class Plant : public ConfigNode
{
public:
    static constexpr auto Code = NodeType::SubtypeProject;

    static KindInfo Kind()
    {
        return KindBuilder::For<Plant>("project", "Plant", "Установка")
            .Property<&Plant::m_flow>({1, "flow"}, "Flow", "Расход")
            .Property<&Plant::m_main>({2, "main"}, "Main signal", "Главный сигнал")
            .Children({NodeType::TypeSignal});
    }

private:
    double m_flow = 1.5;
    NodeLink m_main;
};

/// A server's own running system, as small as one can be.
struct Server : AccessGuard, JournalSink
{
    bool Allows(enPrivilegeType, const ConfigNode &) const override { return isOpen; }
    bool ForbidsToView(const ConfigNode &) const override { return !isOpen; }
    std::string GetUserName(const ConfigNode &) const override { return "Petrov"; }
    enAccessDeniedAction GetAccessDeniedAction(const ConfigNode &) const override
    {
        return AccessDeniedHide;
    }
    Result Append(BasicEvent event) override
    {
        taken.push_back(std::move(event));
        return Result();
    }

    bool isOpen = true;
    std::vector<BasicEvent> taken;
};

constexpr const char *file = R"(<project format="1" id="1" name="P" flow="2.5" main="2">
  <memorySignal id="2" name="T" writable="true" minimum="0" maximum="10"/>
  <robot id="3" name="R" speed="4"/>
</project>)";

/// The project of the file; null when it does not read.
std::unique_ptr<NodesCollection> load(std::string text)
{
    std::unique_ptr<NodesCollection> project;
    const Result read = ProjectReader().ReadBuffer(std::move(text), "p.xml", project);
    return read ? std::move(project) : nullptr;
}

} // namespace

/// The core of the node model, linked without kinds, drivers, journal, users and the running
/// system.
class TestCoreAlone : public QObject
{
    Q_OBJECT
private slots:
    void saysThatItHasNoKinds();
    void keepsAProject();
    void asksNobodyWithoutServices();
    void asksTheServicesInstalled();
};

// First: the other tests need kinds.
void TestCoreAlone::saysThatItHasNoKinds()
{
    const auto read = [] {
        std::unique_ptr<NodesCollection> project;
        return ProjectReader().ReadBuffer(file, "p.xml", project);
    };
    QVERIFY(KindTable::Instance().GetKinds().empty());
    QCOMPARE(read().GetType(), Result::NotAvailable);
    QVERIFY(read().GetDetail().find("KindTable::Provide") != std::string::npos);
    // The table is in use already: what is provided now is there at once.
    KindTable::Provide([](KindTable &table) { table.Add(Plant::Kind()); });
    KindTable::Provide([](KindTable &table) { table.Add(memorySignal::Kind()); });
    QCOMPARE(read().GetType(), Result::NotAvailable); // nothing to keep the robot with
    KindTable::Provide([](KindTable &table) { table.Add(UnknownNode::Kind()); });
    QVERIFY(read());
}

void TestCoreAlone::keepsAProject()
{
    const std::unique_ptr<NodesCollection> first = load(file);
    QVERIFY(first);
    const std::string written = ProjectWriter::ToText(*first);
    QVERIFY(written.find("speed=\"4\"") != std::string::npos);
    const std::unique_ptr<NodesCollection> again = load(written);
    QVERIFY(again);
    QCOMPARE(ProjectWriter::ToText(*again), written);
    QCOMPARE(boost::any_cast<double>(again->GetRoot()->GetPropertyByValueId(1)->GetPropertyValue()),
             2.5);
    QVERIFY(again->GetRoot()->IsLinked(again->FindNode(2)));

    NodesContainer packed;
    packed.Add(again->FindNode(2));
    NodesContainer unpacked;
    QVERIFY(again->Deserialize(again->Serialize(packed), unpacked));
    QCOMPARE(unpacked.GetLinks().front().GetLinkName(), std::string("T"));
}

void TestCoreAlone::asksNobodyWithoutServices()
{
    const std::unique_ptr<NodesCollection> project = load(file);
    auto *signal = dynamic_cast<memorySignal *>(project->FindNode(2));
    QVERIFY(!signal->GetCore() && !signal->GetStation() && !signal->GetLocalStation());
    QVERIFY(CheckAccess(PrivilegeWrite, *signal) && !IsForbiddenToView(*signal));
    QVERIFY(signal->WriteValue(4.0));
    QCOMPARE(signal->GetShownValue().ToDouble(), 4.0);
    QCOMPARE(signal->StoreMessage(LevelAction, "a", "b").GetType(), Result::NotAvailable);
}

void TestCoreAlone::asksTheServicesInstalled()
{
    const std::unique_ptr<NodesCollection> project = load(file);
    auto *signal = dynamic_cast<memorySignal *>(project->FindNode(2));
    Server server;
    project->SetServices({nullptr, &server, &server, nullptr, nullptr});
    QVERIFY(signal->WriteValue(5.0));
    QVERIFY(signal->StoreMessage(LevelInformation, "told", signal->GetNodeLink()));
    server.isOpen = false;
    QCOMPARE(signal->WriteValue(6.0).GetCode(), 1320);
    QCOMPARE(signal->GetValue().ToDouble(), 5.0);
    QVERIFY(signal->GetShownValue().IsError());
    QCOMPARE(int(DenialOf({{PrivilegeWrite, signal}})), int(AccessDeniedHide));

    QCOMPARE(server.taken.size(), std::size_t(3));
    QCOMPARE(server.taken[0].newValue + " by " + server.taken[0].user, std::string("5 by Petrov"));
    QCOMPARE(server.taken[1].text + server.taken[1].user, std::string("told")); // no act of a user
    QCOMPARE(int(server.taken[2].level), int(LevelSecurity));
}

QTEST_APPLESS_MAIN(TestCoreAlone)
#include "tst_core_alone.moc"
