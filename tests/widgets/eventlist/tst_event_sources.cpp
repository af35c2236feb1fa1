// The tree of sources to tick: what it offers, what is ticked with what, how it follows the
// project.
#include "support/Rows.h"
#include "support/RuntimeProject.h"

#include "widgets/eventlist/filter/FilterModel.h"

#include "nodes/visual/events/widgetEventList.h"

#include <QAbstractItemModelTester>

using namespace Widgets;

namespace {

constexpr const char *nodes = R"(
<folder id="5" name="К1"><memorySignal id="10" name="T"/><memorySignal id="11" name="Давление"/></folder>
<folder id="6" name="Пусто"/>
<folder id="7" name="Действия"><actionWriteValue id="30" name="Пуск" signal="10"/></folder>
<folder id="8" name="Отчёты"><reportSchedule id="50" name="После смены"/></folder>
<window id="40" name="Окно"><layer id="41" name="Слой"><label id="42" name="Надпись"/><button
  id="43" name="Кнопка"><actionWriteValue id="44" name="Стоп" signal="10"/></button><recorderDisplay
  id="45" name="Табло"><recorderChannel id="46" name="Канал" signal="10"/></recorderDisplay></layer></window>
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
    void showsWhatCanBeASource_data();
    void showsWhatCanBeASource();
    void beginsWithTheListsFilter();
    void ticksWhatIsBelow();
    void followsTheProject();
    void keepsWhatIsGoneUntilUnticked();
};

void TestEventSources::showsWhatCanBeASource_data()
{
    const Rows<QString, bool> row("name", "isOffered");
    row("signal", "T", true);
    row("action, refused and failed", "Пуск", true);
    row("window, refused", "Окно", true);
    row("action of an element", "Стоп", true);
    row("report that was not filed", "После смены", true);
    row("channel, its extremes reset", "Канал", true);
    row("element", "Надпись", false);
    row("event list", "E", false);
    row("folder of nothing", "Пусто", false);
}

void TestEventSources::showsWhatCanBeASource()
{
    QFETCH(QString, name);
    const Rig rig;
    QTEST(rig.find(name).isValid(), "isOffered");
}

void TestEventSources::beginsWithTheListsFilter()
{
    const Rig rig;
    QCOMPARE(rig.model.headerData(0, Qt::Horizontal, Qt::DisplayRole).toString(),
             QStringLiteral("Имя узла"));
    QCOMPARE(rig.ticked(), QVector<int>{10});
    QCOMPARE(rig.state("К1"), int(Qt::PartiallyChecked));
}

void TestEventSources::ticksWhatIsBelow()
{
    Rig rig;
    rig.tick("К1", Qt::Checked);
    QCOMPARE(rig.ticked(), (QVector<int>{5, 10, 11}));
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
    QVERIFY(rig.core.GetNodesCollection()->CreateNode(Nodes::NodeType(rig.node(11)->GetNodeType()),
                                                      rig.node(6)));
    QVERIFY(rig.find("Пусто").isValid()); // not empty any more
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
