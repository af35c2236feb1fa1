// The tree of sources to tick: what it offers, what is ticked with what, how it follows the
// project.
#include "support/RuntimeProject.h"

#include "widgets/eventlist/filter/FilterModel.h"

#include "nodes/visual/events/widgetEventList.h"

#include <QAbstractItemModelTester>

using namespace Widgets;

namespace {

constexpr const char *nodes = R"(
<folder id="5" name="К1"><memorySignal id="10" name="T"/><memorySignal id="11" name="Давление"/></folder>
<folder id="6" name="Пусто"/>
<layer id="2" name="L"><eventList id="20" name="E" sources="10"/></layer>)";

struct Rig : RuntimeProject
{
    Rig() : RuntimeProject(nodes), model(node<Nodes::widgetEventList>(20)) {}
    QModelIndex find(const QString &name) const
    {
        const QModelIndexList found = model.match(model.index(0, 0), Qt::DisplayRole, name, 1,
                                                  Qt::MatchExactly | Qt::MatchRecursive);
        return found.value(0);
    }
    int state(const QString &name) const { return find(name).data(Qt::CheckStateRole).toInt(); }
    void tick(const QString &name, Qt::CheckState state)
    {
        QVERIFY(model.setData(find(name), state, Qt::CheckStateRole));
    }
    QVector<int> ticked() const
    {
        QVector<int> ids;
        for (const Nodes::NodeLink &link : model.getNa())
            ids << int(link.GetNodeId());
        std::sort(ids.begin(), ids.end());
        return ids;
    }

    FilterModel model;
    QAbstractItemModelTester tester{&model, QAbstractItemModelTester::FailureReportingMode::Fatal};
};

} // namespace

class TestEventSources : public QObject
{
    Q_OBJECT

private slots:
    void showsWhatCanBeASource();
    void ticksWhatIsBelow();
    void followsTheProject();
    void keepsWhatIsGoneUntilUnticked();
};

void TestEventSources::showsWhatCanBeASource()
{
    const Rig rig;
    QCOMPARE(rig.model.headerData(0, Qt::Horizontal, Qt::DisplayRole).toString(),
             QStringLiteral("Имя узла"));
    QVERIFY(rig.find("T").isValid());
    QVERIFY(!rig.find("E").isValid());
    QVERIFY(!rig.find("Пусто").isValid());
    QCOMPARE(rig.ticked(), QVector<int>{10}); // the list's filter
    QCOMPARE(rig.state("К1"), int(Qt::PartiallyChecked));
}

void TestEventSources::ticksWhatIsBelow()
{
    Rig rig;
    rig.tick("К1", Qt::Checked);
    QCOMPARE(rig.ticked(), (QVector<int>{1, 5, 10, 11}));
    rig.tick("Давление", Qt::Unchecked);
    QCOMPARE(rig.ticked(), QVector<int>{10});
    QCOMPARE(rig.state("Давление"), int(Qt::Unchecked));
    QCOMPARE(rig.state("К1"), int(Qt::PartiallyChecked));
    rig.model.uncheckAll();
    QCOMPARE(rig.ticked(), QVector<int>());
}

void TestEventSources::followsTheProject()
{
    Rig rig;
    QVERIFY(rig.node(5)->DeleteNode(10));
    QVERIFY(!rig.find("T").isValid());
    QCOMPARE(rig.ticked(), QVector<int>());
    auto *added = rig.core.GetNodesCollection()->CreateNode(
        Nodes::NodeType(rig.node(11)->GetNodeType()), rig.node(5));
    QVERIFY(added);
    QVERIFY(rig.find(QString::fromStdString(added->GetName())).isValid());
}

void TestEventSources::keepsWhatIsGoneUntilUnticked()
{
    Rig rig;
    QVERIFY(rig.node(5)->DeleteNode(11));
    Nodes::NodesArray sources;
    sources.push_back(Nodes::NodeLink(10));
    sources.push_back(Nodes::NodeLink(11));
    rig.node<Nodes::widgetEventList>(20)->SetSources(sources);
    FilterModel again(rig.node<Nodes::widgetEventList>(20));
    const QModelIndex gone = again.index(1, 0);
    QCOMPARE(gone.data().toString(), QStringLiteral("Узел 11 (удалён)"));
    QCOMPARE(again.getNa().size(), std::size_t(2));
    QVERIFY(again.setData(gone, Qt::Unchecked, Qt::CheckStateRole));
    QCOMPARE(again.rowCount(), 1);
    QCOMPARE(again.getNa().size(), std::size_t(1));
}

QTEST_MAIN(TestEventSources)
#include "tst_event_sources.moc"
