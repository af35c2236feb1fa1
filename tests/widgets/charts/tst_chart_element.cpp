// A chart in a window of the station, under the operator's hand.
#include "support/Mouse.h"
#include "widgets/charts/ChartRig.h"

#include "widgets/charts/axes/ToolBar.h"
#include "widgets/charts/axes/ToolBarChart.h"
#include "widgets/charts/elements/LowerParts.h"
#include "widgets/charts/legend/Legend.h"
#include "widgets/charts/pickers/IPickerCanvas.h"
#include "widgets/charts/plots/PlotCanvas.h"
#include "widgets/charts/plots/PlotPanner.h"
#include "widgets/charts/statistics/CursorPanel.h"
#include "widgets/scene/ProxyScene.h"
#include "widgets/scene/ProxyView.h"
#include "widgets/scene/ProxyWidget.h"

#include "nodes/auth/systemAuthentication.h"
#include "nodes/charts/widgetChartGroup.h"

#include <QTabBar>
#include <QToolButton>

using namespace Widgets;

namespace {

constexpr const char *screen = R"(
<station id="60" name="St"><authentication id="61" name="A" guestRole="62">
  <role id="62" name="Guest"><grant id="63" privileges="view"/>
    <grant id="64" privileges="view" scope="11" mode="deny"/></role>
  <role id="65" name="All"><grant id="66" privileges="all"/></role>
  <user id="67" name="u" roles="65" passwordless="true"/></authentication></station>
<memorySignal id="10" name="T"/><memorySignal id="11" name="P"/>
<archiverSource id="20" name="a" signal="10"/><archiverSource id="21" name="b" signal="11"/>
<window id="2" name="W" width="940" height="540">
  <chartHistory id="100" name="C" x="20" y="20" width="900" height="500">
    <chartGroup id="101" name="Котёл"><chartTimeAxis id="102" name="X" length="10" lengthUnit="seconds"/>
      <chartAxis id="103" name="Y"/><chartAxis id="106" name="Z" from="0" to="10"/>
      <chartSerie id="104" name="s" source="20" axisY="103"/>
      <chartSerie id="105" name="t" source="21" axisY="106"/></chartGroup>
    <chartGroup id="111" name="Насосы"><chartTimeAxis id="112" name="X"/>
      <chartAxis id="113" name="Y"/><chartSerie id="114" name="s" source="20"/></chartGroup>
  </chartHistory></window>)";

const QwtAxisId timeAxis(QwtAxis::xBottom);
const QwtAxisId inner(QwtAxis::yLeft, 0);
const QwtAxisId outer(QwtAxis::yLeft, 1);

struct Stage : RuntimeProject
{
    explicit Stage(const char *xml = screen) : RuntimeProject(xml)
    {
        auto *window = node<Nodes::BasicWindow>(2);
        view = std::make_unique<ProxyView>(window, nullptr);
        view->setScene(window);
        view->resize(950, 550);
        view->show();
        if (!QTest::qWaitForWindowExposed(view.get()))
            qFatal("the window does not show");
        const QList<QGraphicsItem *> items = view->scene()->items();
        for (QGraphicsItem *item : items) {
            if (auto *host = dynamic_cast<ProxyWidget *>(item); host && host->widget())
                proxy = host;
        }
        element = dynamic_cast<qwidgetChartHistory *>(proxy->element());
        plot = element->plot();
        (void)QTest::qWaitFor([this] { return !isWaiting(); });
    }

    bool isWaiting() const
    {
        QCoreApplication::processEvents();
        return plot->waitBox()->isRunning();
    }
    QPoint at(const QWidget &widget, const QPoint &place) const
    {
        const QPoint inElement = widget.mapTo(element, place);
        return view->mapFromScene(proxy->mapToScene(inElement));
    }
    void send(QEvent::Type type, const QPoint &canvas) const
    {
        sendMouse(*view->viewport(), type, at(*plot->canvas(), canvas));
    }
    void click(const QWidget &widget) const
    {
        const QPoint place = at(widget, widget.rect().center());
        sendMouse(*view->viewport(), QEvent::MouseButtonPress, place);
        sendMouse(*view->viewport(), QEvent::MouseButtonRelease, place);
        (void)QTest::qWaitFor([this] { return !isWaiting(); });
    }
    void click(const ToolBar &bar, int action) const
    {
        click(*bar.widgetForAction(bar.actions().at(action)));
    }
    QVector<double> scale(const QwtAxisId &axis) const
    {
        const QwtInterval shown = plot->axisInterval(axis);
        return {shown.minValue(), shown.maxValue()};
    }

    std::unique_ptr<ProxyView> view;
    ProxyWidget *proxy = nullptr;
    qwidgetChartHistory *element = nullptr;
    Plot *plot = nullptr;
};

} // namespace

class TestChartElement : public QObject
{
    Q_OBJECT

private slots:
    void curvesFollowTheHand();
    void escapeTakesADragBack();
    void keysOnTheCanvasAct();
    void plotKeepsItsShareOfTheHeight();
    void tabsChooseTheGroup();
    void aSignalThatMayNotBeViewedHasNoLine();
};

void TestChartElement::curvesFollowTheHand()
{
    Stage stage;
    QVERIFY(stage.plot->tracking()); // a trend follows the present from the start
    stage.plot->setAxisScale(timeAxis, 100000, 200000);
    stage.plot->replot();
    const double pixel = 100000.0 / stage.plot->canvas()->width();
    const double high = stage.plot->canvas()->height();
    QSignalSpy panned(stage.plot, &Plot::panned);
    stage.send(QEvent::MouseButtonPress, {400, 200});
    QCOMPARE(stage.proxy->cursor().shape(), Qt::CrossCursor);
    stage.send(QEvent::MouseMove, {300, 210});
    QVERIFY(qAbs(stage.scale(timeAxis)[0] - (100000 + 100 * pixel)) < pixel);
    QCOMPARE(panned.count(), 0);
    // Live values do not pull the curves out of the hand.
    auto *serie = stage.plot->series().first();
    stage.plot->appendPoints({ChartRig::Rig::at(900000)}, serie);
    stage.plot->replot();
    QVERIFY(qAbs(stage.scale(timeAxis)[0] - (100000 + 100 * pixel)) < pixel);
    stage.send(QEvent::MouseButtonRelease, {200, 220});
    QCOMPARE(panned, (QList<QVariantList>{{-200, 20}}));
    QVERIFY(qAbs(stage.scale(timeAxis)[0] - (100000 + 200 * pixel)) < pixel);
    QVERIFY(qAbs(stage.scale(inner)[0] - 20 * 100 / high) < 0.5);
    QVERIFY(qAbs(stage.scale(outer)[0] - 20 * 10 / high) < 0.05);
    QVERIFY(!stage.plot->tracking());
    QVERIFY(!stage.plot->axisAutoScale(inner));
    (void)QTest::qWaitFor([&] { return !stage.isWaiting(); });
}

void TestChartElement::escapeTakesADragBack()
{
    Stage stage;
    stage.plot->setTracking(false);
    const auto before = stage.scale(timeAxis);
    stage.send(QEvent::MouseButtonPress, {400, 200});
    stage.send(QEvent::MouseMove, {300, 200});
    QVERIFY(stage.scale(timeAxis) != before);
    QTest::keyClick(stage.plot->canvas(), Qt::Key_Escape);
    QCOMPARE(stage.scale(timeAxis), before);
    stage.send(QEvent::MouseButtonRelease, {300, 200});
    QCOMPARE(stage.scale(timeAxis), before);
}

void TestChartElement::keysOnTheCanvasAct()
{
    Stage stage;
    const PlotCanvas &canvas = *stage.plot->plotCanvas();
    QCOMPARE(canvas.tbAxisX()->pos(), QPoint(canvas.tbAxisX()->height(), 9));
    QCOMPARE(canvas.tbAxisY()->pos(), QPoint(0, canvas.tbAxisY()->width() + 9));
    QCOMPARE(canvas.tbChart()->pos(), QPoint(canvas.rect().right() - canvas.tbChart()->width(), 9));
    const auto before = stage.scale(timeAxis);
    stage.click(*canvas.tbAxisX(), 2);                          // <<
    QVERIFY(qAbs(stage.scale(timeAxis)[1] - before[0]) < 1500); // the clock may have ticked
    QVERIFY(!stage.plot->tracking());

    stage.click(*canvas.tbChart(), 2); // cursor
    QVERIFY(stage.plot->picker());
    QVERIFY(!stage.plot->panner());
    const auto still = stage.scale(timeAxis);
    stage.send(QEvent::MouseButtonPress, {400, 200});
    stage.send(QEvent::MouseMove, {300, 200});
    stage.send(QEvent::MouseButtonRelease, {300, 200});
    QCOMPARE(stage.scale(timeAxis), still);
    stage.click(*canvas.tbChart(), 0); // panning again
    QVERIFY(stage.plot->panner() && !stage.plot->picker());

    QVERIFY(stage.element->legend()->isVisible());
    stage.click(*canvas.tbChart(), 1);
    QVERIFY(!stage.element->legend()->isVisible());
    stage.element->setVisibleToolBar(false);
    QCOMPARE(canvas.tbAxisX()->pos(), QPoint(-1000, -1000));
    stage.element->setVisibleToolBar(true);
    QCOMPARE(canvas.tbAxisX()->pos(), QPoint(canvas.tbAxisX()->height(), 9));
}

void TestChartElement::plotKeepsItsShareOfTheHeight()
{
    QByteArray many(screen);
    for (int id = 300; id < 320; ++id)
        many.insert(many.indexOf("<chartSerie id=\"104\""),
                    "<chartSerie id=\"" + QByteArray::number(id) +
                        "\" name=\"s\" source=\"20\" axisY=\"103\"/>");
    Stage stage(many);
    const PlotCanvas &canvas = *stage.plot->plotCanvas();
    auto &panel = *stage.element->findChild<CursorPanel *>();
    const auto share = [&](int height) {
        stage.element->resize(stage.element->width(), height);
        QCoreApplication::processEvents();
        return double(stage.plot->height()) / height;
    };
    QVERIFY(stage.element->legend()->height() > 100);
    for (const int height : {500, 250, 120})
        QVERIFY(share(height) >= LowerParts::PlotShare);
    stage.click(*canvas.tbChart(), 2); // cursor
    panel.show();
    for (const int height : {120, 250, 500})
        QVERIFY(share(height) >= LowerParts::PlotShare);
    QVERIFY(panel.height() > 60 && !stage.element->legend()->isVisible());
    stage.click(*canvas.tbChart(), 1); // the legend instead
    QVERIFY(stage.element->legend()->isVisible() && !panel.isVisible());
    panel.show();
    panel.hide();
    QVERIFY(stage.element->legend()->isVisible());

    stage.element->resize(300, 300); // no room for the tool bars beside each other
    QCoreApplication::processEvents();
    QVERIFY(!canvas.tbAxisX()->geometry().intersects(canvas.tbChart()->geometry()));
}

void TestChartElement::tabsChooseTheGroup()
{
    Stage stage;
    auto *tabs = stage.element->findChild<QTabBar *>();
    QVERIFY(tabs->isVisible());
    QCOMPARE(tabs->tabText(1), QStringLiteral("Насосы"));
    const QPoint second = stage.at(*tabs, tabs->tabRect(1).center());
    sendMouse(*stage.view->viewport(), QEvent::MouseButtonPress, second);
    sendMouse(*stage.view->viewport(), QEvent::MouseButtonRelease, second);
    QTRY_COMPARE(stage.element->chart()->currentGroupTab(), 1);
    QCOMPARE(stage.element->groupManager()->group()->GetId(), 111ul);
    QCOMPARE(stage.plot->series().size(), 1);
    QCOMPARE(stage.plot->axesCount(QwtAxis::yLeft), 1);
    QCOMPARE(tabs->currentIndex(), 1);
    (void)QTest::qWaitFor([&] { return !stage.isWaiting(); });
    // Groups that come and go are followed.
    auto &chart = *stage.element->chart();
    QVERIFY(chart.DeleteNode(111, true, true));
    QTRY_VERIFY(!tabs->isVisible());
    QCOMPARE(stage.element->groupManager()->group()->GetId(), 101ul);
}

void TestChartElement::aSignalThatMayNotBeViewedHasNoLine()
{
    Stage stage;
    ISerie *forbidden = stage.plot->series().at(1);
    stage.publish(11, 5.0);
    QTRY_VERIFY(stage.plot->note().contains(QStringLiteral("P")));
    QCOMPARE(forbidden->pointCount(), std::size_t(0));
    auto *users = stage.node<Nodes::systemAuthentication>(61);
    QVERIFY(users->Authenticate(stage.node(67)));
    stage.publish(11, 6.0);
    QTRY_VERIFY(forbidden->pointCount() > 0);
    users->Logout();
    QTRY_COMPARE(forbidden->pointCount(), std::size_t(0));
    QTRY_VERIFY(stage.plot->note().contains(QStringLiteral("P")));
}

QTEST_MAIN(TestChartElement)
#include "tst_chart_element.moc"
