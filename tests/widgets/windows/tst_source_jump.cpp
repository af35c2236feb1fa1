#include "support/Rows.h"
#include "support/RuntimeProject.h"

#include "widgets/scene/ProxyScene.h"
#include "widgets/scene/ProxyView.h"
#include "widgets/scene/ProxyWidget.h"
#include "widgets/scene/marks/ElementMark.h"
#include "widgets/windows/navigation/ShownPlace.h"
#include "widgets/windows/navigation/SourceJump.h"

#include "nodes/visual/BasicWidget.h"

using namespace Widgets;
using Nodes::NodeLink;

namespace {

constexpr const char *plant = R"(
<memorySignal id="10" name="Small and large"/>
<memorySignal id="11" name="Nowhere"/>
<memorySignal id="12" name="Frame only"><alarmLimit id="13" name="A" limit="1"/></memorySignal>
<memorySignal id="14" name="Window only"/>
<folder id="15" name="Pump"><memorySignal id="16" name="Fault"/></folder>
<folder id="17" name="Spare"><memorySignal id="18" name="Fault"/></folder>
<folder id="71" name="Standby"><memorySignal id="72" name="Fault"/></folder>
<memorySignal id="19" name="Page" writable="true"/><memorySignal id="20" name="Coil" writable="true"/>
<memorySignal id="21" name="Unseen"/>
<frame id="30" name="F" windows="31 32"/>
<window id="31" name="Header" width="200" height="40">
  <label id="33" name="H" width="190" height="30" signal="12"/>
  <label id="34" name="HL" width="190" height="30" signal="10"/>
  <label id="35" name="Hidden" width="190" height="30" signal="21" visible="false"/></window>
<windowComposed id="32" name="Main" y="40" width="300" height="200" composition="40"/>
<composition id="40" name="First"><layer id="41" name="L">
  <label id="42" name="Small" width="20" height="20" signal="10"/>
  <button id="43" name="Next" x="100" onPress="61 62 63"/>
  <button id="44" name="Open" x="150" onPress="64"/></layer></composition>
<composition id="45" name="Second"><layer id="46" name="L">
  <label id="47" name="Large" width="60" height="40" signal="10"/>
  <instance id="73" name="I" x="100" width="120" height="90" template="52">
    <templateArgument id="74" name="pump" node="71"/></instance></layer></composition>
<window id="50" name="Popup" width="100" height="80">
  <label id="51" name="P" width="90" height="30" signal="14"/></window>
<windowTemplate id="52" name="Pump" width="120" height="90">
  <templateParameter id="53" name="pump"><templateParameter id="54" name="Fault"/></templateParameter>
  <label id="55" name="T" width="90" height="30" signal="54"/></windowTemplate>
<actionChangeComposition id="61" name="To second" window="32" composition="45"/>
<actionWriteValue id="62" name="Tell the page" signal="19" value="2"/>
<actionCreateEvent id="63" name="Told"/>
<actionShowWindow id="64" name="Popup" window="50"/>
<actionShowWindowTemplate id="65" name="Pump" window="52">
  <templateArgument id="66" name="pump" node="15"/></actionShowWindowTemplate>)";

/// The mark in any window that is open; 0 without one.
unsigned long markedElement(const RuntimeProject &project)
{
    for (const WidgetLink &link : project.manager->windows()) {
        const auto *view = qobject_cast<ProxyView *>(link.widget);
        const ElementMark *mark = view ? ElementMark::in(*view->proxyScene()) : nullptr;
        const Nodes::BasicWidget *node = mark ? mark->element()->getNode() : nullptr;
        if (node) {
            const unsigned long original =
                project.core.GetNodesCollection()->GetOriginal(node->GetId());
            return original ? original : node->GetId();
        }
    }
    return 0;
}

} // namespace

class TestSourceJump : public QObject
{
    Q_OBJECT

private slots:
    void leadsToTheBestPlace_data()
    {
        const Rows<unsigned long, unsigned long> row("source", "element");
        row("the larger of two pages, not the header", 10, 47);
        row("what stands in a frame", 12, 33);
        row("an alarm: its signal", 13, 33);
        row("a window", 14, 51);
        row("an instance of a template", 16, 55);
        row("a device: what is below it", 15, 55);
        row("an element itself", 51, 51);
        row("an instance on a page", 72, 73);
        row("of no use: nobody opens the template for it", 18, 0);
        row("shown nowhere", 11, 0);
        row("shown hidden", 21, 0);
    }

    void leadsToTheBestPlace()
    {
        QFETCH(unsigned long, source);
        QFETCH(unsigned long, element);
        const RuntimeProject project(plant);
        project.manager->Start();
        QCOMPARE(SourceJump::canJump(NodeLink(source)), element != 0);
        const Nodes::Result result = SourceJump::jump(NodeLink(source), 0);
        if (element == 0)
            QCOMPARE(result.GetType(), Nodes::Result::NotFound);
        QTRY_COMPARE(markedElement(project), element);
    }

    // The list of the page's button: what tells the page goes along, what else it does not.
    void takesTheRoadOfThePagesButton()
    {
        const RuntimeProject project(plant);
        project.manager->Start();
        QVERIFY(SourceJump::jump(NodeLink(10ul), 0).IsSuccess());
        QTRY_COMPARE(markedElement(project), 47ul);
        QCOMPARE(project.value(19).ToInt(), 2);
        QCOMPARE(ShownPlace::of(*project.node(10)).front().road.size(), std::size_t(2));
    }

    void whatIsOpenIsNotOpenedAgain()
    {
        const RuntimeProject project(plant);
        project.manager->Start();
        for (int time = 0; time < 2; ++time) {
            QVERIFY(SourceJump::jump(NodeLink(14ul), 0).IsSuccess());
            QTRY_COMPARE(markedElement(project), 51ul);
        }
        QCOMPARE(project.openWindows(50), 1);
    }

    void theMarkGoesWithAPressAndCoversNothing()
    {
        const RuntimeProject project(plant);
        project.manager->Start();
        QVERIFY(SourceJump::jump(NodeLink(14ul), 0).IsSuccess());
        QTRY_COMPARE(markedElement(project), 51ul);
        auto *view = qobject_cast<ProxyView *>(project.manager->GetWindow(50));
        const ElementMark *mark = ElementMark::in(*view->proxyScene());
        const QRectF element = mark->element()->sceneBoundingRect();
        QVERIFY(mark->boundingRect().contains(element.bottomRight() + QPointF(9, 9)));
        const QImage shown = view->grab().toImage();
        QVERIFY(shown.pixelColor(element.bottomRight().toPoint() + QPoint(7, -10)) !=
                shown.pixelColor(element.bottomRight().toPoint() + QPoint(14, -10)));
        QTest::mouseClick(view->viewport(), Qt::LeftButton, {}, QPoint(95, 70));
        QTRY_COMPARE(markedElement(project), 0ul);
    }

    void whoMayNotOpenTheWindowStaysWhereHeIs()
    {
        const RuntimeProject project((std::string(plant) + RuntimeProject::NobodyLoggedIn).c_str());
        project.manager->Start();
        QVERIFY(SourceJump::jump(NodeLink(14ul), 0).IsSuccess());
        QCOMPARE(project.manager->queuedActions() > 0, true);
        QTRY_COMPARE(project.manager->queuedActions(), 0);
        QCOMPARE(project.openWindows(50), 0);
    }
};

QTEST_MAIN(TestSourceJump)
#include "tst_source_jump.moc"
