// Labels and ticks of the axes of charts, and the tool bars on their canvas.
#include "ChartProject.h"

#include "support/Rows.h"

#include "widgets/charts/axes/AxisRecord.h"
#include "widgets/charts/axes/DiscretScaleEngine.h"
#include "widgets/charts/axes/DiscretValueScaleDraw.h"
#include "widgets/charts/axes/TimeScaleDraw.h"
#include "widgets/charts/axes/TimeScaleEngine.h"
#include "widgets/charts/axes/ToolBarAutoScaleAxisX.h"
#include "widgets/charts/axes/ToolBarAutoScaleAxisY.h"
#include "widgets/charts/axes/ToolBarAxisX.h"
#include "widgets/charts/axes/ToolBarChart.h"
#include "widgets/charts/axes/ValueScaleDraw.h"
#include "widgets/charts/multiaxis/MultiAxisPlot.h"

#include "nodes/charts/widgetChartAxis.h"
#include "nodes/charts/widgetChartGroup.h"
#include "nodes/charts/widgetChartHistory.h"
#include "nodes/model/NodesContainer.h"
#include "nodes/model/validation/ValidationResults.h"

#include <QAction>
#include <QIcon>
#include <qwt_scale_widget.h>

namespace ChartTime = Widgets::ChartTime;
using Axis = Nodes::widgetChartAxis;

namespace {

constexpr const char *chartXml = R"(
<chartHistory id="30" name="Ч">
  <chartGroup id="31" name="Г">
    <chartTimeAxis id="32" name="Время" length="10" lengthUnit="minutes"/>
    <chartAxis id="33" name="A" from="0" to="120" axisTitle="°C" labelFormat="%.0f" color="#aa0000"/>
    <chartAxis id="34" name="B" from="1" to="1000" logarithmic="true" position="right"/>
    <chartAxis id="35" name="C" from="5" to="5" labelFormat="%n%s"/>
    <chartAxis id="36" name="D" autoScale="true" visible="false"/>
  </chartGroup>
</chartHistory>)";

double at(const QString &time)
{
    return double(QDateTime::fromString(time, "yyyy-MM-dd hh:mm:ss").toMSecsSinceEpoch() -
                  ChartTime::epoch());
}

QStringList texts(const QToolBar &bar)
{
    QStringList texts;
    for (const QAction *action : bar.actions())
        texts << action->text();
    return texts;
}

bool showsIcon(const QAction &action, const char *file)
{
    const QImage expected = QIcon(file).pixmap(20).toImage();
    return !expected.isNull() && action.icon().pixmap(20).toImage() == expected;
}

} // namespace

class TestChartScales : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<RuntimeProject> m_project;
    Nodes::widgetChart *chart() { return m_project->node<Nodes::widgetChart>(30); }
    Nodes::widgetChartGroup *group() { return m_project->node<Nodes::widgetChartGroup>(31); }

private slots:
    void initTestCase()
    {
        // Clocks go forward on 2024-03-31 02:00, back on 2024-10-27 03:00.
        qputenv("TZ", "Europe/Berlin");
        tzset();
    }
    void init() { m_project = std::make_unique<RuntimeProject>(chartXml); }

    void valueLabels_data()
    {
        const Rows<std::string, double, QString> row("format", "value", "label");
        row("default", "", 3.14159, " 3.14");
        row("own", "%.1f °C", 20.0, " 20.0 °C");
        row("hostile", "%n", 3.14159, " 3.14");
        row("string", "%s", -0.001, " 0.00");
        row("markup", "<b>%.0f</b>", 1, " <b>1</b>");
    }
    void valueLabels()
    {
        QFETCH(std::string, format);
        QFETCH(double, value);
        Widgets::ValueScaleDraw draw(Qt::red, format);
        QTEST(draw.label(value).text(), "label");
        QCOMPARE(draw.label(value).color(), QColor(Qt::red));
        QVERIFY(draw.label(value).textSize().height() < 30); // one line, no markup
        draw.setFormat("");
        QCOMPARE(draw.label(1).text(), QString(" 1.00"));
    }

    void timeLabels_data()
    {
        const Rows<std::string, QString, QString> row("format", "time", "label");
        row("default", "", "2024-01-02 03:04:05", "03:04:05");
        row("two lines", "hh:mm\\ndd.MM", "2024-01-02 03:04:05", "03:04\n02.01");
        row("summer", "hh:mm", "2024-07-01 12:00:00", "12:00");
    }
    void timeLabels()
    {
        QFETCH(std::string, format);
        QFETCH(QString, time);
        const Widgets::TimeScaleDraw draw(Qt::black, format);
        QTEST(draw.label(at(time)).text(), "label");
    }

    void datesAreTold_data()
    {
        const Rows<std::string, QString, QString, std::string> row("given", "from", "to", "format");
        row("today", "", "2024-06-10 08:00:00", "2024-06-10 09:00:00", "hh:mm:ss");
        row("yesterday", "hh:mm", "2024-06-09 08:00:00", "2024-06-09 09:00:00", "hh:mm\\ndd.MM");
        row("over midnight", "", "2024-06-09 23:00:00", "2024-06-10 01:00:00", "hh:mm:ss\\ndd.MM");
        row("a week", "", "2024-06-03 10:00:00", "2024-06-10 10:00:00", "hh:mm\\ndd.MM");
        row("last year", "hh", "2023-12-31 22:00:00", "2024-01-01 10:00:00", "hh\\ndd.MM.yy");
        row("has them", "dd.MM hh:mm", "2024-06-03 10:00:00", "2024-06-10 10:00:00", "dd.MM hh:mm");
    }
    void datesAreTold()
    {
        QFETCH(std::string, given);
        QFETCH(QString, from);
        QFETCH(QString, to);
        QTEST(Widgets::TimeScaleDraw::formatFor(given, at(from), at(to), at("2024-06-10 12:00:00")),
              "format");
    }

    void discretLabels_data()
    {
        const Rows<double, QString> row("value", "label");
        row("off", 0, " 0");
        row("on", 1, " 1");
        row("off of the second", 1.5, " 0");
        row("on of the third", 4.0, " 1");
        row("between", 0.5, " 0.5");
        row("on of the thousandth", 1498.5 + 1, " 1");
    }
    void discretLabels()
    {
        QFETCH(double, value);
        Widgets::DiscretValueScaleDraw draw(Qt::black);
        draw.setFormat("%.3f");
        QTEST(draw.label(value).text(), "label");
    }

    void discretTicks()
    {
        const Widgets::DiscretScaleEngine engine;
        double lower = 0.2;
        double upper = 3.9;
        double step = 0;
        engine.autoScale(8, lower, upper, step);
        QCOMPARE(lower, -0.25);
        QCOMPARE(upper, 4.25);
        const auto ticks = engine.divideScale(lower, upper, 8, 5).ticks(QwtScaleDiv::MajorTick);
        QCOMPARE(ticks, (QList<double>{0, 1, 1.5, 2.5, 3, 4}));
        QVERIFY(engine.divideScale(0, 1e12, 8, 5).ticks(QwtScaleDiv::MajorTick).size() < 20);
    }

    void timeTicks_data()
    {
        const Rows<QString, QString, QString, QString> row("from", "to", "format", "ticks");
        row("seconds", "2024-01-01 10:00:03", "2024-01-01 10:00:31", "ss", "05 10 15 20 25 30");
        row("minutes", "2024-01-01 10:01:00", "2024-01-01 11:00:00", "hh:mm",
            "10:10 10:20 10:30 10:40 10:50 11:00");
        row("hours", "2024-01-01 22:10:00", "2024-01-02 03:10:00", "hh", "23 00 01 02 03");
        row("days", "2024-02-27 12:00:00", "2024-03-03 12:00:00", "dd.MM hh:mm",
            "28.02 00:00 29.02 00:00 01.03 00:00 02.03 00:00 03.03 00:00");
        row("weeks", "2024-01-01 12:00:00", "2024-02-10 00:00:00", "ddd dd",
            "Mon 08 Mon 15 Mon 22 Mon 29 Mon 05");
        row("months", "2024-01-15 00:00:00", "2024-07-02 00:00:00", "dd.MM",
            "01.02 01.03 01.04 01.05 01.06 01.07");
        row("years", "2019-05-01 00:00:00", "2024-05-01 00:00:00", "dd.MM.yyyy",
            "01.01.2020 01.01.2021 01.01.2022 01.01.2023 01.01.2024");
        row("clocks go forward", "2024-03-31 00:30:00", "2024-03-31 05:30:00", "hh", "01 03 04 05");
        row("clocks go back", "2024-10-27 00:30:00", "2024-10-27 04:30:00", "hh", "01 02 02 03 04");
        row("over a short day", "2024-03-30 20:00:00", "2024-03-31 13:00:00", "hh",
            "21 00 03 06 09 12");
        row("a short day's midnight", "2024-03-30 12:00:00", "2024-04-02 12:00:00", "dd hh:mm",
            "30 12:00 31 00:00 31 12:00 01 00:00 01 12:00 02 00:00 02 12:00");
    }
    void timeTicks()
    {
        QFETCH(QString, from);
        QFETCH(QString, to);
        QFETCH(QString, format);
        const QwtScaleDiv division = Widgets::TimeScaleEngine().divideScale(at(from), at(to), 6, 5);
        QStringList ticks;
        for (const double tick : division.ticks(QwtScaleDiv::MajorTick))
            ticks << QLocale::c().toString(ChartTime::toDateTime(tick), format);
        QTEST(ticks.join(' '), "ticks");
        for (const double tick : division.ticks(QwtScaleDiv::MinorTick))
            QVERIFY(!division.ticks(QwtScaleDiv::MajorTick).contains(tick));
    }

    void timeTicksOfNoTimes_data()
    {
        const Rows<double, double> row("lower", "upper");
        row("NaN", Answers::gap, 1);
        row("infinite", 0, HUGE_VAL);
        row("beyond all calendars", -1e300, 1e300);
        row("nothing", 5, 5);
    }
    void timeTicksOfNoTimes()
    {
        QFETCH(double, lower);
        QFETCH(double, upper);
        const Widgets::TimeScaleEngine engine;
        QVERIFY(engine.divideScale(lower, upper, 8, 5).ticks(QwtScaleDiv::MajorTick).size() < 10);
        double step = 0;
        engine.autoScale(8, lower, upper, step);
        QVERIFY(lower < upper);
    }

    void axesOfAGroup()
    {
        Widgets::MultiAxisPlot plot;
        plot.resize(800, 400);
        const auto records =
            Widgets::AxisRecord::make(plot, group()->GetYAxes(), group()->GetXAxes());
        QCOMPARE(records.size(), std::size_t(5));
        QCOMPARE(plot.axesCount(QwtAxis::yLeft), 3);
        QCOMPARE(plot.axesCount(QwtAxis::yRight), 1);
        QCOMPARE(plot.axisInterval({QwtAxis::yLeft, 0}).maxValue(), 120.0);
        QCOMPARE(plot.axisTitle({QwtAxis::yLeft, 0}).text(), QString("°C"));
        QCOMPARE(plot.axisScaleDraw({QwtAxis::yLeft, 0})->label(7).text(), QString(" 7"));
        QVERIFY(dynamic_cast<QwtLogScaleEngine *>(plot.axisScaleEngine(QwtAxis::yRight)));
        // What a project says wrongly still is a scale, and is told.
        QVERIFY(plot.axisInterval({QwtAxis::yLeft, 1}).width() > 0);
        QCOMPARE(plot.axisScaleDraw({QwtAxis::yLeft, 1})->label(7).text(), QString(" 7.00"));
        Nodes::ValidationResults found;
        m_project->node(35)->Validate(found);
        QVERIFY(std::any_of(found.begin(), found.end(), [](const auto &message) {
            return message.GetMessageStr().find("%n%s") != std::string::npos;
        }));
        QVERIFY(plot.axisAutoScale({QwtAxis::yLeft, 2}));
        QVERIFY(!plot.isAxisVisible({QwtAxis::yLeft, 2}));
        // The window ends now, as long as the node says, and stays where it is from then on.
        const QwtInterval window = plot.axisInterval(QwtAxis::xBottom);
        QCOMPARE(window.width(), 600000.0);
        QVERIFY(std::abs(window.maxValue() - ChartTime::now()) < 10000);
        plot.setAxisScale(QwtAxis::xBottom, at("2024-01-01 00:00:00"), at("2024-01-01 00:10:00"));
        plot.updateAxes();
        m_project->node<Axis>(32)->SetRangeUnit(Axis::RangeHours);
        records.back()->apply();
        plot.updateAxes();
        QCOMPARE(plot.axisInterval(QwtAxis::xBottom).maxValue(), at("2024-01-01 00:10:00"));
        QCOMPARE(plot.axisInterval(QwtAxis::xBottom).width(), 36000000.0);
    }

    void toolBars()
    {
        Widgets::ToolBarAxisX x(chart(), nullptr);
        QCOMPARE(texts(x).first(), QString("Следовать"));
        QCOMPARE(texts(x).mid(2), QStringList({"<<", ">>"}));
        QVERIFY(showsIcon(*x.actions()[0], ":/icons/play-20.png"));
        const Widgets::ToolBarAutoScaleAxisX autoX(chart(), nullptr);
        const Widgets::ToolBarAutoScaleAxisY autoY(chart(), nullptr);
        QCOMPARE(texts(autoX), QStringList("Автомасштаб"));
        QVERIFY(showsIcon(*autoX.actions()[0], ":/icons/autoscaleX.png"));
        QVERIFY(showsIcon(*autoY.actions()[0], ":/icons/autoscaleY.png"));
        const Widgets::ToolBarChart bar(chart(), nullptr);
        QCOMPARE(texts(bar), QStringList({"Тренд", "Легенда", "Визир"}));
        QVERIFY(bar.actions()[0]->isChecked());
        QVERIFY(showsIcon(*bar.actions()[2], ":/icons/visir-20.png"));
    }

    void following()
    {
        Widgets::ToolBarAxisX bar(chart(), nullptr);
        const QSignalSpy told(&bar, &Widgets::ToolBarAxisX::trackingChanged);
        bar.setTracking(true);
        QVERIFY(bar.tracking() && showsIcon(*bar.actions()[0], ":/icons/play-20.png"));
        bar.actions()[0]->trigger();
        QVERIFY(!bar.tracking() && showsIcon(*bar.actions()[0], ":/icons/pause-20.png"));
        bar.setTracking(false);
        QCOMPARE(told.count(), 3);
        const QSignalSpy length(&bar, &Widgets::ToolBarAxisX::actionLengthX);
        const QSignalSpy back(&bar, &Widgets::ToolBarAxisX::actionPeriodPrev);
        const QSignalSpy forth(&bar, &Widgets::ToolBarAxisX::actionPeriodNext);
        for (int i = 1; i <= 3; ++i)
            bar.actions()[i]->trigger();
        QVERIFY(length.count() == 1 && back.count() == 1 && forth.count() == 1);
    }

    void lengthTitle_data()
    {
        const Rows<double, int, QString> row("length", "unit", "title");
        row("seconds", 30, 1, "30с");
        row("minutes", 10, 2, "10м");
        row("hours", 8.9, 3, "8ч");
        row("days", 1, 4, "1Д");
        row("unknown unit", 10, 7, "?");
    }
    void lengthTitle()
    {
        QFETCH(double, length);
        QFETCH(int, unit);
        QFETCH(QString, title);
        auto *axis = m_project->node<Axis>(32);
        axis->SetRangeLength(length);
        axis->SetRangeUnit(Axis::enRangeUnit(unit));
        Widgets::ToolBarAxisX bar(chart(), nullptr);
        bar.updateLenghtXTitle(); // without a group: nothing
        QVERIFY(bar.actions()[1]->text() != title);
        bar.setCurrentGroup(group());
        QCOMPARE(bar.actions()[1]->text(), title);
        QCOMPARE(bar.actions()[2]->toolTip(), "Перемотать назад на " + title);
        QCOMPARE(bar.actions()[3]->toolTip(), "Перемотать вперед на " + title);
    }

    void autoScale()
    {
        Widgets::ToolBarAutoScaleAxisY bar(chart(), nullptr);
        const QSignalSpy told(&bar, &Widgets::ToolBarAutoScale::autoScaleChanged);
        bar.setCurrentGroup(group());
        QVERIFY(!bar.isAutoScale());
        for (const unsigned long id : {33, 34, 35})
            m_project->set(id, "autoScale", "true");
        bar.onUpdateProperties();
        QVERIFY(bar.isAutoScale());
        QCOMPARE(told.count(), 0); // the axes are so already
        bar.setAutoScale(false);
        bar.actions()[0]->trigger();
        QCOMPARE(told.count(), 2);
    }

    void cursorOrTrend()
    {
        Widgets::ToolBarChart bar(chart(), nullptr);
        const QSignalSpy cursor(&bar, &Widgets::ToolBarChart::changeVizir);
        const QSignalSpy legend(&bar, &Widgets::ToolBarChart::changeVisibleLegend);
        bar.setVisir(true);
        QVERIFY(bar.actions().last()->isChecked() && !bar.actions().first()->isChecked());
        bar.actions().first()->trigger();
        QVERIFY(!bar.isVisir() && bar.actions().first()->isChecked());
        QCOMPARE(cursor.count(), 2);
        bar.actions()[1]->trigger();
        QCOMPARE(legend.value(0).value(0).toBool(), false);
    }
};

QTEST_MAIN(TestChartScales)
#include "tst_chart_scales.moc"
