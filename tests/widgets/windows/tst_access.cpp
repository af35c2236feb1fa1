#include "support/MessageBoxes.h"
#include "support/Rows.h"
#include "support/RuntimeProject.h"

#include "widgets/elements/binding/ElementTooltip.h"
#include "widgets/elements/qwidgetRecorderDigitalDisplay.h"
#include "widgets/menus/MirelMenu.h"
#include "widgets/scene/ProxyLayer.h"
#include "widgets/scene/ProxyScene.h"
#include "widgets/scene/ProxyWidget.h"
#include "widgets/windows/WindowBasic.h"

#include "nodes/actions/kinds/actionShowMenu.h"
#include "nodes/auth/systemAuthentication.h"
#include "nodes/menus/BasicMenu.h"
#include "nodes/visual/BasicWidget.h"

#include <QTest>

using namespace Widgets;

namespace {

constexpr const char *plant = R"(
<authentication id="10" name="Users" guestRole="11">
<role id="11" name="Guest"><grant id="12" privileges="view open close"/>
  <grant id="13" privileges="view" scope="25" mode="deny"/>
  <grant id="14" privileges="view" scope="30" mode="deny"/>
  <grant id="17" privileges="view" scope="41" mode="deny"/></role>
<role id="15" name="Boss"><grant id="16" privileges="all"/></role>
<user id="18" name="anna" roles="15" passwordless="true"/></authentication>
<window id="20" name="Main" width="300" height="300">
<label id="21" name="value" signal="31"/>
<editBox id="22" name="edit" signal="31" y="40"/>
<checkBox id="23" name="check" signal="31" y="80"/>
<button id="24" name="write" pressActions="40" y="120"/>
<label id="25" name="not for guests" signal="31" y="160"/>
<label id="26" name="secret signal" signal="30" y="200"/>
<button id="27" name="navigation" pressActions="42" y="240"/></window>
<memorySignal id="30" name="Secret" initial="1"/>
<memorySignal id="31" name="S" initial="1" writable="true"/>
<actionWriteValue id="40" name="w" signal="31" value="5"/>
<window id="41" name="Office" width="100" height="100"/>
<menu id="50" name="M"><menuItem id="51" name="w" actions="40"/></menu><actionShowMenu id="44" name="m" menu="50"/>
<actionShowWindow id="42" name="o" window="20"/><actionShowWindow id="43" name="o2" window="41"/>)";

enum Look { Usable, Disabled, Hidden };

} // namespace

class TestAccess : public QObject
{
    Q_OBJECT

private slots:
    void elementsFollowTheUser_data();
    void elementsFollowTheUser();
    void forbiddenValuesShowNowhere();
    void windowsNotToBeViewedAreRefused();
};

void TestAccess::elementsFollowTheUser_data()
{
    const Rows<QString, int> row("accessDenied", "control");
    row("refuse", "refuse", Usable);
    row("disable", "disable", Disabled);
    row("hide", "hide", Hidden);
}

void TestAccess::elementsFollowTheUser()
{
    QFETCH(QString, accessDenied);
    QFETCH(int, control);
    const RuntimeProject project(plant);
    auto *users = project.node<Nodes::systemAuthentication>(10);
    project.set(10, "accessDenied", accessDenied);
    const auto *window =
        qobject_cast<WindowBasic *>(project.manager->createWindow(project.node(20)).widget);
    const QList<ProxyWidget *> hosts = window->proxyScene()->getLayers().first()->getWidgets();
    const auto looks = [&hosts](int first, int last) {
        QVector<int> found;
        for (int id = first; id <= last; ++id) {
            const auto host = std::find_if(hosts.begin(), hosts.end(), [id](const ProxyWidget *h) {
                return h->getNodeLink().GetNodeId() == unsigned(id);
            });
            found << (!(*host)->isVisible() ? Hidden
                      : (*host)->widget()->isEnabled() && !(*host)->getNode()->isDisabled()
                          ? Usable
                          : Disabled);
        }
        return found;
    };
    const auto menuLook = [&project] {
        const MirelMenu menu(project.node<Nodes::actionShowMenu>(44),
                             project.node<Nodes::BasicMenu>(50));
        return menu.isEmpty() ? Hidden : menu.actions()[0]->isEnabled() ? Usable : Disabled;
    };
    const QVector<int> ofGuests{Usable, control, control, control, Hidden, Hidden, Usable};
    QCOMPARE(looks(21, 27), ofGuests); // at once, before anything is seen
    QCOMPARE(menuLook(), control);
    QVERIFY(users->Authenticate(project.node(18)));
    QTRY_COMPARE(looks(21, 27), QVector<int>(7, Usable));
    QCOMPARE(menuLook(), Usable);
    project.set(18, "enabled", "false");
    QTRY_COMPARE(looks(21, 27), ofGuests);
}

void TestAccess::forbiddenValuesShowNowhere()
{
    const RuntimeProject project(QByteArray(plant) + R"(
<memorySignal id="61" name="Gauge"><alarmLimit id="66" name="a" type="L" limit="90"/></memorySignal>
<window id="60" name="Gauges" width="600" height="300">
<recorderDisplay id="62" name="R" width="300" height="100"><recorderChannel id="63" name="c" signal="30"/>
  <recorderChannel id="64" name="d" signal="61"/></recorderDisplay>
<bargraph id="65" name="B" x="300" width="100" height="260" signal="61" setPoint="30"/>
<multiLabel id="67" name="L" y="150" signal="30"><state id="68" name="on" from="0" to="99" text="Вкл"/></multiLabel>
</window>)");
    project.publish(30, 37.5);
    project.publish(61, 50.0);
    const auto *window =
        qobject_cast<WindowBasic *>(project.manager->createWindow(project.node(60)).widget);
    const auto hosted = [window](unsigned id) {
        for (const ProxyWidget *host : window->proxyScene()->getLayers().first()->getWidgets()) {
            if (host->getNodeLink().GetNodeId() == id)
                return host->widget();
        }
        return static_cast<QWidget *>(nullptr);
    };
    auto *board = qobject_cast<qwidgetRecorderDigitalDisplay *>(hosted(62));
    auto *label = project.node<Nodes::BasicWidget>(67);
    QStringList handedOver;
    const Nodes::ScopedConnection values = label->ConnectValueChanged(
        [&](const Nodes::SignalValue &value) { handedOver << value.ToString().c_str(); });
    const auto tooltip = [label] { return ElementTooltip::text(*label); };
    const auto verifyForbidden = [&] {
        QTRY_COMPARE(board->shownText(), QString("Нет прав\n50.0"));
        QVERIFY2(board->extremesText(0).startsWith("мин –  макс –"),
                 qPrintable(board->extremesText(0)));
        QVERIFY(label->GetDisplayText().find("37.5") == std::string::npos &&
                label->GetDisplayText() != "Вкл");
        QVERIFY2(tooltip().contains("Нет прав на просмотр") && !tooltip().contains("37"),
                 qPrintable(tooltip()));
        project.publish(30, 37.5);
        QVERIFY(!handedOver.takeLast().contains("37"));
    };
    verifyForbidden();
    const QImage withoutSetPoint = hosted(65)->grab().toImage();
    auto *users = project.node<Nodes::systemAuthentication>(10);
    QVERIFY(users->Authenticate(project.node(18)));
    QTRY_COMPARE(board->shownText(), QString("37.5\n50.0")); // no new value came
    QVERIFY(board->extremesText(0).startsWith("мин 37.5"));
    QVERIFY(tooltip().contains("37.5"));
    QTRY_VERIFY(hosted(65)->grab().toImage() != withoutSetPoint);
    project.publish(30, 37.5);
    QCOMPARE(handedOver.takeLast(), QString("37.5"));
    users->Logout();
    verifyForbidden();
    QTRY_COMPARE(hosted(65)->grab().toImage(), withoutSetPoint);
}

void TestAccess::windowsNotToBeViewedAreRefused()
{
    const RuntimeProject project(plant);
    const MessageBoxes boxes;
    project.run(43);
    QCOMPARE(boxes.shown, QStringList("Ошибка: Недостаточно прав для выполнения действия"));
    QCOMPARE(project.openWindows(41), 0);
}

QTEST_MAIN(TestAccess)
#include "tst_access.moc"
