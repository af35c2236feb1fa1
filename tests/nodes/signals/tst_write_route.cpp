#include "nodes/CoreFixture.h"
#include "nodes/drivers/BasicDriver.h"
#include "nodes/model/KindBuilder.h"
#include "nodes/signals/BasicSignal.h"
#include "nodes/signals/WriteRoute.h"
#include "nodes/signals/WriteRoutes.h"

#include <QTest>

using namespace Nodes;

namespace {

using Written = std::vector<std::string>;

std::string told(const BasicSignal &signal, const SignalValue &value)
{
    return signal.GetName() + "=" + value.ToString();
}

/// Takes every write and notes it.
class NotingDriver : public BasicDriver
{
public:
    static constexpr auto Code = NodeType::enNodeSubtype(0x3FF0);

    static KindInfo Kind()
    {
        return KindBuilder::For<NotingDriver>("notingDriver", "Noting driver", "Драйвер-свидетель")
            .Inherit<BasicDriver>();
    }
    Result Write(const BasicSignal &signal, const SignalValue &value) override
    {
        if (GetState() != NodeState::Running)
            return Result(this, Result::NotConnected);
        written.push_back(told(signal, value));
        return Result();
    }

    Written written;

protected:
    Result StartWork() override { return Result(); }
    void StopWork() override {}
};

struct NotingRoute : WriteRoute
{
    Result Write(BasicSignal &signal, const SignalValue &value) override
    {
        written.push_back(told(signal, value));
        return answer;
    }

    Written written;
    Result answer;
};

BasicSignal *addSignal(ProjectFixture &plant, ConfigNode *parent, const char *name)
{
    return plant.add<BasicSignal>("simulatorSignal", parent, name,
                                  {{"writable", "true"}, {"minimum", "0"}, {"maximum", "9"}});
}

} // namespace

/// Where a write goes once it is checked.
class TestWriteRoute : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase() { KindTable::Instance().Add(NotingDriver::Kind()); }
    void driverTakesTheWritesInOrder();
    void otherStationsNeedARoute();
    void ownSignalsOfScreens();
};

void TestWriteRoute::driverTakesTheWritesInOrder()
{
    ProjectFixture plant;
    auto *driver = plant.add<NotingDriver>("notingDriver", plant.root());
    ConfigNode *folder = plant.add("folder", driver);
    BasicSignal *a = addSignal(plant, folder, "a");
    BasicSignal *b = addSignal(plant, driver, "b");
    QCOMPARE(a->WriteValue(1.0).GetType(), Result::NotAvailable); // no driver has started
    QVERIFY(driver->Start());
    QVERIFY(a->WriteValue(1.0) && b->WriteValue(2.0) && a->WriteValue(3.0));
    QCOMPARE(a->WriteValue(10.0).GetType(), Result::OutOfRange);
    QCOMPARE(driver->written, (Written{"a=1", "b=2", "a=3"}));

    std::unique_ptr<ConfigNode> removed = driver->RemoveNode(b);
    QCOMPARE(static_cast<BasicSignal &>(*removed).WriteValue(4.0).GetType(), Result::NotAvailable);
    QVERIFY(driver->AddNode(removed)); // undo
    QVERIFY(b->WriteValue(5.0));
    QCOMPARE(driver->written.size(), std::size_t(4));

    QVERIFY(driver->Stop());
    QCOMPARE(a->WriteValue(1.0).GetType(), Result::NotConnected);
    std::unique_ptr<ConfigNode> orphan = driver->RemoveNode(folder);
    QVERIFY(plant.root()->AdoptNode(orphan));
    QVERIFY(plant.root()->DeleteNode(driver->GetId()));
    QCOMPARE(a->WriteValue(1.0).GetType(), Result::NotAvailable);
}

void TestWriteRoute::otherStationsNeedARoute()
{
    const QTemporaryDir directory;
    CoreFixture plant(directory);
    plant.add("station", plant.root(), "A");
    ConfigNode *other = plant.add("station", plant.root(), "B");
    BasicSignal *signal = addSignal(plant, plant.add("folder", other), "s");
    QVERIFY(plant.core.Start());

    const Result none = signal->WriteValue(1.0);
    QCOMPARE(none.GetType(), Result::NotAvailable);
    QVERIFY(none.GetDetail().find("\"B\"") != std::string::npos);
    auto route = std::make_shared<NotingRoute>();
    plant.core.GetWriteRoutes().SetRoute(other, route);
    QVERIFY(signal->WriteValue(1.0) && signal->WriteValue(2.0));
    QCOMPARE(signal->WriteValue(10.0).GetType(), Result::OutOfRange);
    route->answer = Result(signal, Result::Refused);
    QCOMPARE(signal->WriteValue(3.0).GetCode(), 403);
    plant.set(signal, {{"writable", "false"}});
    QCOMPARE(signal->WriteValue(4.0).GetType(), Result::ReadOnly);
    QCOMPARE(route->written, (Written{"s=1", "s=2", "s=3"}));
    // A slip in the users of the project closes the other station too.
    plant.add("user", plant.root());
    QCOMPARE(signal->WriteValue(5.0).GetCode(), 1320);
    QVERIFY(plant.root()->DeleteNode(plant.root()->GetNodes().back().GetNodeId()));
    route.reset();
    QCOMPARE(signal->WriteValue(1.0).GetType(), Result::NotAvailable);
    QCOMPARE(plant.journalledText("Запись значения").size(), std::size_t(2));
    QCOMPARE(plant.journalledText("Запись отклонена").size(), std::size_t(6));
}

void TestWriteRoute::ownSignalsOfScreens()
{
    const QTemporaryDir directory;
    CoreFixture plant(directory);
    QVERIFY(plant.core.Start());
    auto *page = plant.add<BasicSignal>("memorySignal", plant.root(), "page",
                                        {{"writable", "true"}, {"journal", "false"}});
    QVERIFY(page->WriteValue(7.0));
    QCOMPARE(page->GetValue().ToDouble(), 7.0);
    QVERIFY(!page->WriteValue(700.0));
    QCOMPARE(plant.journalledText("Запись значения").size(), std::size_t(0));
    QCOMPARE(plant.journalledText("Запись отклонена").size(), std::size_t(1)); // refusals always
}

QTEST_GUILESS_MAIN(TestWriteRoute)
#include "tst_write_route.moc"
