#include "support/Mouse.h"
#include "support/RuntimeProject.h"

#include "widgets/charts/elements/qwidgetChartHistory.h"
#include "widgets/charts/own/OwnTrend.h"
#include "widgets/charts/own/OwnTrendStore.h"
#include "widgets/charts/own/SignalList.h"
#include "widgets/charts/own/TrendDialog.h"
#include "widgets/charts/plots/Plot.h"
#include "widgets/charts/series/ISerie.h"

#include "nodes/auth/systemAuthentication.h"
#include "nodes/charts/widgetChart.h"
#include "nodes/charts/widgetChartBasicSerie.h"

#include <QLineEdit>
#include <QListView>
#include <QMenu>

using namespace Widgets;

class TestOwnTrend : public QObject
{
    Q_OBJECT

private slots:
    void cleanup()
    {
        while (TrendDialog *open = trend())
            delete open;
    }
    void actionShowsTheSignalOfTheElementPressedOrThoseGiven()
    {
        RuntimeProject project(nodes);
        project.run(50);
        QTRY_VERIFY(trend());
        QCOMPARE(names(*trend()), QStringList({"Давление", "Насос"}));
        QCOMPARE(trend()->windowTitle(), QString("Тренд: Давление"));
        cleanup();
        QCoreApplication::processEvents();
        QWidget *window = project.manager->createWindow(project.node(60)).widget;
        window->show();
        QVERIFY(QTest::qWaitForWindowExposed(window));
        auto *view = qobject_cast<QAbstractScrollArea *>(window);
        for (const QEvent::Type type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease})
            sendMouse(*view->viewport(), type, {50, 20});
        QTRY_VERIFY(trend());
        QCOMPARE(names(*trend()), QStringList("Температура"));
    }
    void noiseIsNotShownAsSwings()
    {
        RuntimeProject project(nodes);
        project.node(10)->SetDescription("Вода на выходе");
        project.set(10, "maximum", "200");
        OwnTrend::show({project.node(10)->GetNodeLink()}, -1);
        QVERIFY(trend());
        QCOMPARE(trend()->windowTitle(), QString("Тренд: Вода на выходе"));
        QCOMPARE(names(*trend()), QStringList("Вода на выходе"));
        Plot &plot = *trend()->chart()->plot();
        const QwtAxisId values(QwtAxis::yLeft);
        QCOMPARE(plot.axisTitle(values).text(), QString("Вода на выходе, °C"));
        for (const double noise : {95.0, 95.1, 94.9})
            project.publish(10, noise);
        QTRY_VERIFY(plot.axisInterval(values).contains(95) && plot.series().first()->pointCount());
        plot.replot();
        QVERIFY(plot.axisInterval(values).width() >= 10);
        project.publish(10, 180.0);
        QTRY_VERIFY(plot.axisInterval(values).contains(180));
    }
    void menuOfAValueOffersItsTrend()
    {
        RuntimeProject project(nodes);
        QWidget *window = project.manager->createWindow(project.node(60)).widget;
        window->show();
        QVERIFY(QTest::qWaitForWindowExposed(window));
        QWidget *viewport = qobject_cast<QAbstractScrollArea *>(window)->viewport();
        QContextMenuEvent event(QContextMenuEvent::Mouse, {50, 20},
                                viewport->mapToGlobal({50, 20}));
        QApplication::sendEvent(viewport, &event);
        auto *menu = qobject_cast<QMenu *>(QApplication::activePopupWidget());
        QVERIFY(menu);
        QCOMPARE(menu->actions().at(0)->text(), QString("Показать тренд"));
        menu->actions().at(1)->trigger();
        menu->close();
        QVERIFY(trend());
        QCOMPARE(names(*trend()), QStringList("Температура"));
    }
    void signalsAreTickedFoundAndKept()
    {
        RuntimeProject project(nodes);
        OwnTrend::open();
        QVERIFY(trend());
        auto *list = trend()->findChild<SignalList *>();
        QVERIFY(list->isVisible()); // nothing is shown yet
        auto *view = list->findChild<QListView *>();
        QCOMPARE(view->model()->rowCount(), 2); // those that are archived
        list->findChild<QLineEdit *>()->setText("давл");
        QCOMPARE(view->model()->rowCount(), 1);
        tick(*view);
        QCOMPARE(names(*trend()), QStringList("Давление"));
        OwnTrend::add({project.node(10)->GetNodeLink(), project.node(11)->GetNodeLink()});
        QCOMPARE(names(*trend()), QStringList({"Давление", "Температура"}));
        delete trend();
        OwnTrend::open();
        QCOMPARE(names(*trend()), QStringList({"Давление", "Температура"}));
        tick(*trend()->findChild<QListView *>());
        QCOMPARE(OwnTrendStore(project.core).load().size(), std::size_t(1));
    }
    void everyUserKeepsHisOwn()
    {
        RuntimeProject project((std::string(nodes) + RuntimeProject::NobodyLoggedIn).c_str());
        project.set(91, "passwordless", "true");
        QVERIFY(OwnTrendStore(project.core).save({project.node(10)->GetNodeLink()}));
        auto *users = project.node<Nodes::systemAuthentication>(90);
        QVERIFY(users->Start());
        QVERIFY(users->Authenticate(project.node(91)->GetNodeLink()));
        QCOMPARE(OwnTrendStore(project.core).load().size(), std::size_t(0));
        OwnTrend::open();
        QVERIFY(trend());
        users->Logout();
        QTRY_VERIFY(!trend()); // nobody ticks in what another one keeps
        QCOMPARE(OwnTrendStore(project.core).load().size(), std::size_t(1));
    }

private:
    static constexpr const char *nodes = R"(
<memorySignal id="10" name="Температура" unit="°C"/><memorySignal id="11" name="Давление" unit="бар"/>
<memorySignal id="12" name="Насос" type="bool"/>
<archiverSource id="20" name="a" signal="10"/><archiverSource id="21" name="b" signal="11"/>
<actionShowTrend id="50" name="A" signals="11 12"/><actionShowTrend id="51" name="B"/>
<window id="60" name="W" width="300" height="200"><label id="61" name="L" width="100" height="40"
  signal="10" onPress="51"/></window>)";

    static TrendDialog *trend()
    {
        for (QWidget *window : QApplication::topLevelWidgets())
            if (auto *dialog = qobject_cast<TrendDialog *>(window))
                return dialog;
        return nullptr;
    }
    static QStringList names(const TrendDialog &dialog)
    {
        QStringList found;
        if (dialog.chart())
            for (const ISerie *serie : dialog.chart()->plot()->series())
                found << QString::fromStdString(serie->getNode()->GetText());
        return found;
    }
    static void tick(const QListView &view)
    {
        const QPoint middle = view.visualRect(view.model()->index(0, 0)).center();
        for (const QEvent::Type type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease})
            sendMouse(*view.viewport(), type, middle);
    }
};

QTEST_MAIN(TestOwnTrend)
#include "tst_own_trend.moc"
