#include "OperatedChart.h"
#include "support/Rows.h"
#include "support/VisibleBoxes.h"

#include "widgets/charts/zones/EditedZone.h"
#include "widgets/charts/zones/IntervalEditorManager.h"
#include "widgets/charts/zones/ZoneHandle.h"

using namespace Widgets;

class TestChartZones : public QObject
{
    Q_OBJECT

private slots:
    void limitIsWrittenWhenTheHandLetsGo_data()
    {
        const Rows<double, double> row("to", "written");
        row("up", 70, 70);
        row("decimals of the signal", 63.27, 63.3);
        row("not past the other limit", 5, 20);
        row("not past the range", 110, 100);
    }
    void limitIsWrittenWhenTheHandLetsGo()
    {
        QFETCH(double, to);
        Zoned chart;
        QCOMPARE(chart.handle()->isVisible(), true);
        QVERIFY(!chart.editors->zones()[0]->handle(false)); // a fixed limit
        chart.drag(50, to);
        QCOMPARE(chart.value(12).ToDouble(), 50.0); // still in the hand
        chart.release();
        QFETCH(double, written);
        // A pixel is a quarter of a unit here.
        QVERIFY2(qAbs(chart.value(12).ToDouble() - written) < 0.3,
                 chart.value(12).ToString().c_str());
        QCOMPARE(std::round(chart.value(12).ToDouble() * 10) / 10, chart.value(12).ToDouble());
    }
    void escapeTakesItBack()
    {
        Zoned chart;
        chart.drag(50, 70);
        QTest::keyClick(chart.handle(), Qt::Key_Escape);
        chart.release();
        QCOMPARE(chart.value(12).ToDouble(), 50.0);
        QVERIFY(!chart.handle()->isDragged());
    }
    void nothingIsTakenHoldOf_data()
    {
        const Rows<QString, QString> row("key", "text");
        row("node says so", "editable", "false");
        row("signal cannot be written", "writable", "false");
    }
    void nothingIsTakenHoldOf()
    {
        QFETCH(QString, key);
        QFETCH(QString, text);
        Zoned chart;
        chart.set(key == "editable" ? 106 : 12, key.toLatin1(), text);
        chart.editors->updateProperties();
        QCOMPARE(chart.handle()->isVisible(), false);
    }
    void unknownOrForbiddenLimitsHaveNoHandle()
    {
        Zoned chart;
        chart.editors->setEnable(false);
        QCOMPARE(chart.handle()->isVisible(), false);
        chart.editors->setEnable(true);
        QCOMPARE(chart.handle()->isVisible(), true);
        chart.publish(12, 50.0, Nodes::Quality::Stale);
        QTRY_COMPARE(chart.handle()->isVisible(), false);
        Zoned guarded(RuntimeProject::NobodyLoggedIn);
        QCOMPARE(guarded.handle()->isVisible(), false);
    }
    void refusalIsTold()
    {
        Zoned chart;
        chart.drag(50, 70);
        chart.set(12, "writable", "false"); // while it is in the hand
        QStringList told;
        QTimer::singleShot(0, [&] {
            told = visibleBoxes();
            if (QWidget *box = QApplication::activeModalWidget())
                box->close();
        });
        chart.release();
        QVERIFY(!told.isEmpty() && told.first().contains("Внимание"));
        QCOMPARE(chart.value(12).ToDouble(), 50.0);
    }

private:
    struct Zoned : OperatedChart
    {
        explicit Zoned(const char *more = "")
            : OperatedChart((QByteArray(nodes) + more).constData())
        {
            publish(12, 50.0);
            editors.reset(IntervalEditorManager::make(plot, QwtAxisId(QwtAxis::yLeft),
                                                      node<Nodes::widgetChartAxis>(103),
                                                      node<Nodes::widgetChartGroup>(101)));
        }
        ~Zoned() { editors.reset(); }
        ZoneHandle *handle() const { return editors->zones()[0]->handle(true); }
        QPoint onHandle(double y) const
        {
            return handle()->mapFrom(plot->canvas(),
                                     QPoint(handle()->geometry().center().x(), place(0, y).y()));
        }
        void drag(double from, double to)
        {
            sendMouse(*handle(), QEvent::MouseButtonPress, onHandle(from));
            sendMouse(*handle(), QEvent::MouseMove, onHandle((from + to) / 2));
            sendMouse(*handle(), QEvent::MouseMove, onHandle(to));
        }
        void release() { sendMouse(*handle(), QEvent::MouseButtonRelease, {5, 5}); }

        std::unique_ptr<IntervalEditorManager> editors;
    };
};

QTEST_MAIN(TestChartZones)
#include "tst_chart_zones.moc"
