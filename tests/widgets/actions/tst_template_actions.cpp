#include "support/FakeScreens.h"
#include "support/RuntimeProject.h"

#include "widgets/elements/binding/ShowsValue.h"
#include "widgets/scene/ProxyLayer.h"
#include "widgets/scene/ProxyScene.h"
#include "widgets/scene/ProxyWidget.h"
#include "widgets/windows/Access.h"
#include "widgets/windows/WindowBasic.h"
#include "widgets/windows/desktop/DesktopPlacement.h"

#include "nodes/model/NodesCollection.h"

using namespace Widgets;

namespace {

constexpr const char *plant = R"(
<folder id="100" name="P1"><memorySignal id="101" name="run"/></folder>
<folder id="110" name="P2"><memorySignal id="111" name="run"/></folder>
<windowTemplate id="10" name="Pump" width="200" height="100" title="%1">
  <templateParameter id="11" name="pump"><templateParameter id="12" name="run"/></templateParameter>
  <label id="13" name="L" signal="12" width="200" height="40"/>
  <actionCloseWindow id="14" name="close" window="10" display="-1"/>
</windowTemplate>
<windowComposed id="20" name="Host" width="120" height="90"/>
<compositionTemplate id="22" name="Comp" width="120" height="90">
  <templateParameter id="23" name="signal"/>
  <layer id="24" name="l"><label id="25" name="L" signal="23"/></layer>
</compositionTemplate>
<actionShowWindowTemplate id="40" name="first" window="10"><templateArgument id="60" name="pump" node="100"/></actionShowWindowTemplate>
<actionShowWindowTemplate id="41" name="second" window="10"><templateArgument id="61" name="pump" node="110"/></actionShowWindowTemplate>
<actionShowWindowTemplate id="42" name="anywhere" window="10" open="anywhere"><templateArgument id="62" name="pump" node="100"/></actionShowWindowTemplate>
<actionShowWindowTemplate id="43" name="always" window="10" open="always"><templateArgument id="63" name="pump" node="100"/></actionShowWindowTemplate>
<actionShowWindowTemplate id="44" name="vanished" window="10"><templateArgument id="64" name="pump" node="999"/></actionShowWindowTemplate>
<actionShowWindowTemplate id="45" name="no template" window="20"/>
<actionChangeCompositionTemplate id="50" name="composition" window="20" composition="22"><templateArgument id="65" name="signal" node="101"/></actionChangeCompositionTemplate>
<actionChangeCompositionTemplate id="51" name="other" window="20" composition="22"><templateArgument id="66" name="signal" node="111"/></actionChangeCompositionTemplate>
%2)";

constexpr const char *users =
    R"(<station id="80" name="St"><authentication id="81" name="A" guestRole="82">
<role id="82" name="R"><grant id="83" name="G" privileges="view open close" scope="10"/></role></authentication></station>
<user id="84" name="u"/>)";

struct Plant : RuntimeProject
{
    explicit Plant(const char *title = "", const char *more = "")
        : RuntimeProject(QString(plant).arg(title, more).toUtf8().constData())
    {
        node<Nodes::BasicSignal>(101)->GetCell()->Publish(1.0);
        node<Nodes::BasicSignal>(111)->GetCell()->Publish(2.0);
        nodesAtFirst = core.GetNodesCollection()->GetNodeCount();
    }
    /// Each open window as "<node's name>:<what its label shows>".
    QString open() const
    {
        QStringList open;
        for (const WidgetLink &link : manager->windows()) {
            const auto *window = qobject_cast<WindowBasic *>(link.widget);
            open << QString::fromStdString(window->getNode()->GetName()) + ':' + shown(*window);
        }
        return open.join(' ');
    }
    static QString shown(const WindowBasic &window)
    {
        const auto hosts = window.proxyScene()->getLayers().first()->getWidgets();
        return dynamic_cast<ShowsValue &>(*hosts.first()->widget()).shownText();
    }
    WindowBasic *window(int index) const
    {
        return qobject_cast<WindowBasic *>(manager->windows().at(index).widget);
    }
    void close(int index) const
    {
        const WidgetLink link = manager->windows().at(index);
        QVERIFY(manager->closeWindow(link.id, link.widget));
    }

    std::size_t nodesAtFirst;
};

} // namespace

class TestTemplateActions : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { FakeScreens::install(2); }
    void opens_data();
    void opens();
    void numbersAreTakenAgainAndNodesGo();
    void theTitleNamesTheArgument();
    void anInstanceClosesItselfByItsOwnAction();
    void instancesAreClosedAndToggledFromOutside();
    void rightsOfTheTemplateHoldForItsInstances();
    void instancesGoWithTheManager();
};

void TestTemplateActions::opens_data()
{
    QTest::addColumn<QVector<QPoint>>("pushes"); // action, display
    QTest::addColumn<QString>("expected");
    using Pushes = QVector<QPoint>;
    QTest::newRow("two pumps") << Pushes{{40, 0}, {41, 0}} << "Pump_1:1.0 Pump_2:2.0";
    QTest::newRow("same again") << Pushes{{40, 0}, {41, 0}, {40, 0}} << "Pump_1:1.0 Pump_2:2.0";
    QTest::newRow("same on another display") << Pushes{{40, 0}, {40, 1}} << "Pump_1:1.0 Pump_2:1.0";
    QTest::newRow("anywhere") << Pushes{{40, 0}, {42, 1}} << "Pump_1:1.0";
    QTest::newRow("anywhere, another pump") << Pushes{{41, 0}, {42, 0}} << "Pump_1:2.0 Pump_2:1.0";
    QTest::newRow("always") << Pushes{{40, 0}, {43, 0}} << "Pump_1:1.0 Pump_2:1.0";
    QTest::newRow("vanished argument") << Pushes{{40, 0}, {44, 0}} << "Pump_1:1.0 Pump_2:----";
    QTest::newRow("no template") << Pushes{{45, 0}} << "";
    QTest::newRow("compositions") << Pushes{{50, 0}, {51, 0}, {50, 0}} << "Comp_1:1.0 Comp_2:2.0";
}

void TestTemplateActions::opens()
{
    QFETCH(QVector<QPoint>, pushes);
    QFETCH(QString, expected);
    Plant plant;
    for (const QPoint &push : pushes)
        plant.run(unsigned(push.x()), push.y());
    QTRY_COMPARE(plant.open(), expected);
    if (expected.isEmpty())
        return;
    // An instance is live: it follows its own signal, and nothing else's.
    plant.node<Nodes::BasicSignal>(101)->GetCell()->Publish(5.0);
    QTRY_COMPARE(plant.open(), expected.replace(":1.0", ":5.0"));
}

void TestTemplateActions::numbersAreTakenAgainAndNodesGo()
{
    Plant plant;
    for (const unsigned action : {40u, 43u, 43u})
        plant.run(action);
    plant.close(1);
    QTRY_COMPARE(plant.open(), QString("Pump_1:1.0 Pump_3:1.0"));
    plant.run(41);
    QCOMPARE(plant.open(), QString("Pump_1:1.0 Pump_3:1.0 Pump_2:2.0"));
    plant.run(50);
    while (!plant.manager->windows().isEmpty())
        plant.close(0);
    QTRY_COMPARE(plant.core.GetNodesCollection()->GetNodeCount(), plant.nodesAtFirst);
}

void TestTemplateActions::theTitleNamesTheArgument()
{
    Plant plant("Насос {pump}");
    plant.run(41);
    QCOMPARE(plant.window(0)->windowTitle(), QString("Насос P2"));
    plant.window(0)->onUpdateProperties();
    QCOMPARE(plant.window(0)->windowTitle(), QString("Насос P2"));
    Plant untitled;
    untitled.run(41);
    QCOMPARE(untitled.window(0)->windowTitle(), QString("Pump_1"));
}

void TestTemplateActions::anInstanceClosesItselfByItsOwnAction()
{
    Plant plant;
    plant.run(40);
    plant.run(41);
    auto *close = dynamic_cast<Nodes::BasicAction *>(
        plant.window(0)->getNode()->GetSubObject(std::string_view("close")));
    QVERIFY(close && close->GetId() != 14);
    // Pushed twice: the second still works on a copy of the instance's node when that is to go.
    plant.manager->PushActions({Nodes::NodeLink(close), Nodes::NodeLink(close)});
    QTRY_COMPARE(plant.open(), QString("Pump_2:2.0"));
    plant.close(0);
    QTRY_COMPARE(plant.core.GetNodesCollection()->GetNodeCount(), plant.nodesAtFirst);
}

void TestTemplateActions::instancesAreClosedAndToggledFromOutside()
{
    const Plant plant("", R"(<actionToggleWindow id="70" name="toggle" window="10"/>
<actionCloseWindow id="71" name="close them" window="10" display="1"/>)");
    for (const unsigned action : {40u, 41u, 50u})
        plant.run(action);
    for (const bool isVisible : {false, true}) {
        plant.run(70);
        for (const int instance : {0, 1})
            QCOMPARE(DesktopPlacement::outermost(plant.window(instance))->isVisible(), isVisible);
    }
    plant.run(71);
    QTRY_COMPARE(plant.open(), QString("Comp_1:1.0"));
}

void TestTemplateActions::rightsOfTheTemplateHoldForItsInstances()
{
    Plant plant("", users);
    plant.run(40);
    QCOMPARE(plant.open(), QString("Pump_1:1.0"));
    const Nodes::BasicWindow *instance = plant.window(0)->getNode();
    QVERIFY(HasPrivilege(Nodes::PrivilegeClose, instance));
    QVERIFY(HasPrivilege(Nodes::PrivilegeClose, instance->GetSubObject(std::string_view("L"))));
    QVERIFY(!HasPrivilege(Nodes::PrivilegeWrite, instance));
    plant.close(0);
}

void TestTemplateActions::instancesGoWithTheManager()
{
    Plant plant;
    for (const unsigned action : {40u, 41u, 50u})
        plant.run(action);
    plant.manager.reset();
    QCOMPARE(plant.core.GetNodesCollection()->GetNodeCount(), plant.nodesAtFirst);
}

QTEST_MAIN(TestTemplateActions)
#include "tst_template_actions.moc"
