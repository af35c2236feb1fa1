// What series make of samples: gaps, archive and live values in one line, pairs, tubes, cells.
#include "ChartProject.h"

#include "support/Rows.h"

#include "widgets/charts/multiaxis/MultiAxisPlot.h"
#include "widgets/charts/series/CorridorTube.h"
#include "widgets/charts/series/SerieColumn.h"
#include "widgets/charts/series/SerieFactory.h"
#include "widgets/charts/series/SeriePlotFlag.h"
#include "widgets/charts/series/SeriePoint.h"
#include "widgets/charts/series/XYPairing.h"
#include "widgets/charts/series/qwidgetChartCorridorSerie.h"
#include "widgets/charts/series/qwidgetChartHistorySerie.h"

#include "nodes/charts/widgetChartBasicSerie.h"
#include "nodes/charts/widgetChartCorridorSerie.h"
#include "nodes/model/KindTable.h"

#include <QRandomGenerator>
#include <qwt_scale_map.h>
#include <qwt_symbol.h>

#include <set>

Q_DECLARE_METATYPE(Nodes::IntervalSample)

namespace ChartTime = Widgets::ChartTime;
using Answers::gap;
using Nodes::Quality;
using Widgets::CurveData;
using Widgets::SerieColumn;
using Widgets::SeriePoint;

namespace {

constexpr double start = 1.7e12; // some day in 2023

constexpr const char *group = R"(
<memorySignal id="10" name="T" unit="°C" decimals="1"/>
<memorySignal id="11" name="Lo"/><memorySignal id="12" name="Hi"/>
<archiver id="80" name="А"><archiverSource id="20" name="a" signal="10"/>
  <archiverSource id="21" name="b" signal="11"/><archiverSource id="22" name="c" signal="12"/>
</archiver>
<chartHistory id="30" name="Ч"><chartGroup id="31" name="Г">
  <chartAxis id="33" name="Ось" axisTitle="Градусы"/>
  <chartSerie id="40" name="s" source="20" offsetY="100" text="Подача" color="#3c608c"/>
  <chartSerie id="41" name="past" source="20" shift="60"/>
  <chartSerie id="42" name="bare" signal="10"/>
  <chartCorridorSerie id="43" name="tube" source="20" sourceMin="21" sourceMax="22"/>
</chartGroup></chartHistory>)";

QString textOf(const CurveData &points)
{
    QStringList texts;
    for (std::size_t i = 0; i < points.size(); ++i) {
        const QPointF point = points.sample(i);
        texts << QStringLiteral("%1:%2%3")
                     .arg(point.x() - start)
                     .arg(std::isnan(point.y()) ? QString("-") : QString::number(point.y()))
                     .arg(points.quality(i) == Quality::Uncertain ? "?" : "");
    }
    return texts.join(' ');
}

Nodes::IntervalSample bucket(double begin, double end, double first, double low, double high,
                             double last, Quality worst = Quality::Good, unsigned long count = 9)
{
    return {Answers::timeAt(start + begin),
            Answers::timeAt(start + end),
            low,
            high,
            first,
            last,
            count,
            worst};
}

/// Nearest of `others` to `time` by looking at all of them; the earlier of two; -1 for none.
int nearestOf(const std::vector<SeriePoint> &others, double time, double tolerance)
{
    int nearest = -1;
    for (std::size_t i = 0; i < others.size(); ++i) {
        const double distance = std::abs(others[i].x - time);
        if (distance <= tolerance &&
            (nearest < 0 || distance < std::abs(others[std::size_t(nearest)].x - time)))
            nearest = int(i);
    }
    return nearest;
}

} // namespace

class TestChartSeries : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<RuntimeProject> m_project;

    template <class Serie = Widgets::qwidgetChartHistorySerie>
    std::unique_ptr<Serie> make(unsigned long id)
    {
        auto *node = m_project->node<Nodes::widgetChartBasicSerie>(id);
        return std::unique_ptr<Serie>(
            dynamic_cast<Serie *>(Widgets::SerieFactory::create(node, nullptr)));
    }

private slots:
    void init() { m_project = std::make_unique<RuntimeProject>(group); }
    void cleanup() { m_project.reset(); }

    void everyKindOfSerieIsDrawn()
    {
        const auto codes = Widgets::SerieFactory::codes();
        for (const Nodes::KindInfo &kind : Nodes::KindTable::Instance().GetKinds()) {
            const auto *serie =
                dynamic_cast<const Nodes::widgetChartBasicSerie *>(kind.prototype.get());
            if (serie)
                QVERIFY2(std::count(codes.begin(), codes.end(), kind.type.GetCode()) == 1,
                         kind.key.c_str());
        }
    }

    void archiveAndLive()
    {
        const auto serie = make(40);
        QVERIFY(serie->hasArchiverSource());
        QVERIFY(!make(42)->hasArchiverSource());
        serie->appendPoint(start + 50, Nodes::SignalValue(5.0)); // came while it was asked for
        serie->updateArchPoints(Answers::of(10, {{start, 1},
                                                 {start + 20, gap, Quality::Bad},
                                                 {start + 30, 3, Quality::Uncertain},
                                                 {start + 50, 5}}));
        serie->updateArchPoints(Answers::of(11, {{start + 10, 9}})); // another signal's
        QCOMPARE(textOf(*serie->points()), QString("0:101 20:- 30:103? 50:105"));
        // Bad and stale values, and errors, are gaps, whatever number they hold.
        Nodes::SignalValue bad(7.0);
        bad.SetQuality(Quality::Stale);
        serie->appendPoint(start + 60, bad);
        serie->appendPoint(start + 70, Nodes::SignalValue(Nodes::Result(Nodes::Result::NotFound)));
        QCOMPARE(textOf(*serie->points()), QString("0:101 20:- 30:103? 50:105 60:- 70:-"));
        serie->setOffsetY(0);
        QCOMPARE(textOf(*serie->points()), QString("0:1 20:- 30:3? 50:5 60:- 70:-"));
        // One point stays left of the window.
        serie->trimLeft(start + 40);
        QCOMPARE(textOf(*serie->points()), QString("30:3? 50:5 60:- 70:-"));
        serie->clearPoints();
        QCOMPARE(serie->lastPoint(), QPointF(0, 0));
    }

    void aggregates_data()
    {
        const Rows<Nodes::IntervalSample, QString> row("sample", "points");
        row("rising", bucket(0, 300, 1, 0, 9, 5), "0:1 100:0 200:9 299:5");
        row("falling", bucket(0, 300, 5, 0, 9, 1), "0:5 100:9 200:0 299:1");
        row("begins unknown", bucket(0, 300, gap, 0, 9, 1, Quality::Bad),
            "0:- 100:0? 200:9? 299:1?");
        row("ends unknown", bucket(0, 300, 1, 0, 9, gap, Quality::Stale),
            "0:1? 100:0? 200:9? 299:-");
        row("all unknown", bucket(0, 300, gap, gap, gap, gap, Quality::Bad), "0:-");
        row("one sample", bucket(0, 300, 4, 4, 4, 4, Quality::Uncertain, 1), "0:4?");
        row("of now", bucket(0, 1e12, 1, 0, 9, 5), "");
    }
    void aggregates()
    {
        QFETCH(Nodes::IntervalSample, sample);
        QFETCH(QString, points);
        const auto serie = make(40);
        serie->setOffsetY(0);
        serie->updateArchPoints(Answers::ofAggregates(10, {sample}));
        if (points.isEmpty())
            QVERIFY(serie->lastPoint().x() <= ChartTime::now());
        else
            QCOMPARE(textOf(*serie->points()), points);
    }

    void earlier()
    {
        const auto serie = make(41);
        QVERIFY(!serie->isLive());
        QCOMPARE(serie->Widgets::PlotCurve::pen().style(), Qt::DashLine);
        serie->updateArchPoints(Answers::of(10, {{start, 1}}));
        QCOMPARE(serie->lastPoint(), QPointF(start + 60000, 1));
    }

    void cells()
    {
        const auto serie = make(40);
        const auto text = [&serie](SerieColumn column) {
            return serie->getData(int(column), Qt::DisplayRole).toString();
        };
        QCOMPARE(text(SerieColumn::Name), QString("Подача"));
        QCOMPARE(text(SerieColumn::Unit), QString("°C"));
        QCOMPARE(text(SerieColumn::Axis), QString("Градусы"));
        QCOMPARE(serie->getData(int(SerieColumn::Color), Qt::DecorationRole).value<QColor>(),
                 QColor("#3c608c"));
        m_project->publish(10, 21.25);
        QCOMPARE(text(SerieColumn::Value), QString("21.2"));
        for (const Quality quality : {Quality::Uncertain, Quality::Stale, Quality::Bad}) {
            m_project->publish(10, 21.25, quality);
            QVERIFY(text(SerieColumn::Value) != QString("21.2"));
            QCOMPARE(serie->getData(int(SerieColumn::Value), Widgets::SerieQualityRole).toInt(),
                     int(quality));
        }
        QCOMPARE(text(SerieColumn::CursorValue), QString());
        serie->updateArchPoints(
            Answers::of(10, {{start, 1}, {start + 100, 2}, {start + 200, gap}}));
        const QSignalSpy told(serie.get(), &Widgets::ISerie::informationChaged);
        serie->setCursor(start + 60);
        QCOMPARE(text(SerieColumn::CursorValue), QString("2.0"));
        serie->setStyle(QwtPlotCurve::Steps); // what holds there, not what is near
        QCOMPARE(text(SerieColumn::CursorValue), QString("1.0"));
        serie->setCursor(start + 250);
        QCOMPARE(text(SerieColumn::CursorValue), QString("----"));
        QCOMPARE(told.count(), 2);
        serie->setVisible(false);
        QCOMPARE(serie->getData(int(SerieColumn::Visible), Qt::CheckStateRole).toInt(),
                 int(Qt::Unchecked));
    }

    // Of a line and of the middle of a tube.
    void symbolsKeepToThePen()
    {
        Widgets::MultiAxisPlot plot; // deletes what is attached: the series go before it
        const auto line = make(40);
        const auto tube = make<Widgets::qwidgetChartCorridorSerie>(43);
        for (Widgets::ISerie *serie : {static_cast<Widgets::ISerie *>(line.get()),
                                       static_cast<Widgets::ISerie *>(tube.get())}) {
            serie->attachToPlot(&plot);
            serie->setSymbol(QwtSymbol::Diamond, QSize(7, 7));
            m_project->set(serie->getNode()->GetId(), "color", "#8a3b12");
        }
        int curves = 0;
        for (const QwtPlotItem *item : plot.itemList()) {
            const auto *drawn = dynamic_cast<const QwtPlotCurve *>(item);
            if (!drawn)
                continue;
            ++curves;
            QCOMPARE(drawn->pen().color(), QColor("#8a3b12"));
            QCOMPARE(drawn->symbol()->pen(), drawn->pen());
            QCOMPARE(drawn->symbol()->style(), QwtSymbol::Diamond);
            QCOMPARE(drawn->symbol()->size(), QSize(7, 7));
        }
        QCOMPARE(curves, 2);
    }

    void flag()
    {
        const auto serie = make(40);
        QwtScaleMap x;
        x.setScaleInterval(start, start + 100);
        x.setPaintInterval(0, 1000);
        QwtScaleMap y;
        y.setScaleInterval(0, 200);
        y.setPaintInterval(400, 0);
        const QRectF canvas(0, 0, 1000, 400);
        QVERIFY(serie->GetFlag()->flagRect(x, y, canvas).isEmpty());
        serie->updateArchPoints(Answers::of(10, {{start + 50, 0}, {start + 60, gap}}));
        serie->updateLabel(QPointF(start + 50, 100));
        const QRectF rect = serie->GetFlag()->flagRect(x, y, canvas);
        QVERIFY(rect.left() > 500 && rect.left() < 520 && std::abs(rect.center().y() - 200) < 1);
        QCOMPARE(serie->GetFlag()->lineStyle(), QwtPlotMarker::HLine);
        const QString time = ChartTime::text(start + 50, "hh:mm:ss");
        QVERIFY(serie->GetFlag()->label().text().contains(time));
    }

    void pairing_data()
    {
        const Rows<quint32, double> row("seed", "tolerance");
        for (quint32 seed = 1; seed <= 6; ++seed)
            row(qPrintable(QString::number(seed)), seed, seed * 4.0);
        row("none but equal times", 9, 0);
    }
    // Samples come late, twice, in any order and in between questions: the pairs are those that
    // looking at all samples gives.
    void pairing()
    {
        QFETCH(quint32, seed);
        QFETCH(double, tolerance);
        QRandomGenerator random(seed);
        Widgets::XYPairing pairing;
        pairing.setTolerance(tolerance);
        std::vector<SeriePoint> all[2];
        for (int i = 0; i < 300; ++i) {
            const int side = random.bounded(2);
            const double value = random.bounded(10) == 0 ? gap : double(i);
            const SeriePoint point{double(i * 5 + random.bounded(200)), value, Quality::Good};
            side ? pairing.addX(point) : pairing.addY(point);
            if (random.bounded(20) == 0)
                side ? pairing.addX(point) : pairing.addY(point); // told again
            Widgets::SeriePoints::insert(all[side], point);
            if (random.bounded(10) == 0)
                (void)pairing.pairs();
        }
        std::set<std::pair<std::size_t, std::size_t>> expected; // indices of x and y
        for (const int side : {0, 1}) {
            for (std::size_t i = 0; i < all[side].size(); ++i) {
                const int other = nearestOf(all[1 - side], all[side][i].x, tolerance);
                if (other >= 0)
                    expected.insert(side ? std::pair(i, std::size_t(other))
                                         : std::pair(std::size_t(other), i));
            }
        }
        using Row = std::tuple<double, double, double>; // gaps as -1: NaN equals nothing
        std::multiset<Row> wanted;
        for (const auto &[x, y] : expected) {
            const bool isKnown = !std::isnan(all[1][x].y) && !std::isnan(all[0][y].y);
            wanted.insert({std::max(all[1][x].x, all[0][y].x), isKnown ? all[1][x].y : -1,
                           isKnown ? all[0][y].y : -1});
        }
        std::multiset<Row> given;
        double last = 0;
        for (const auto &pair : pairing.pairs()) {
            QVERIFY(pair.time >= last);
            last = pair.time;
            given.insert(
                {pair.time, std::isnan(pair.x) ? -1 : pair.x, std::isnan(pair.y) ? -1 : pair.y});
        }
        QVERIFY(given == wanted);
    }

    void slices()
    {
        Widgets::CorridorSlices slices;
        slices.setWidth(100);
        for (const double value : {4.0, 1.0, 7.0})
            slices.add({start + value, value, Quality::Good});
        slices.add({start + 150, gap, Quality::Bad});
        slices.add({start + 230, 5, Quality::Uncertain});
        const auto samples = slices.samples();
        QCOMPARE(samples.size(), std::size_t(3));
        QCOMPARE(samples[0].x, start + 50);
        QVERIFY(samples[0].lower == 1 && samples[0].middle == 4 && samples[0].upper == 7);
        QVERIFY(std::isnan(samples[1].lower));
        QVERIFY(samples[2].x == start + 230 && samples[2].quality == Quality::Uncertain);
        // Aggregates of the archive lose no extreme, and may be longer than a slice.
        slices.clear();
        slices.add(Answers::ofAggregates(10, {bucket(0, 400, 2, -8, 30, 4)}), 10);
        QCOMPARE(slices.longest(), 400.0);
        QVERIFY(slices.samples()[0].lower == -8 && slices.samples()[0].upper == 30);
    }

    void edges()
    {
        const auto serie = make<Widgets::qwidgetChartCorridorSerie>(43);
        QVERIFY(serie);
        Nodes::HistoryAnswer answer;
        Answers::append(answer, 10, {{start, 5}, {start + 30, 6}});
        Answers::append(answer, 11, {{start, 1}, {start + 20, 2}});
        Answers::append(answer, 12, {{start + 10, 9}, {start + 30, gap}});
        serie->updateArchPoints(Nodes::SignalHistoryResponse::AllOf(answer));
        QCOMPARE(serie->sliceLength(), 0.0);
        QStringList tube;
        for (std::size_t i = 0; i < serie->tube().size(); ++i) {
            const QwtIntervalSample sample = serie->tube().sample(i);
            tube << (sample.interval.isValid() ? QString("%1:%2..%3")
                                                     .arg(sample.value - start)
                                                     .arg(sample.interval.minValue())
                                                     .arg(sample.interval.maxValue())
                                               : QString("%1:-").arg(sample.value - start));
        }
        QCOMPARE(tube.join(' '), QString("10:1..9 20:2..9 30:-"));
        QCOMPARE(textOf(*serie->middle().points()), QString("0:5 30:6"));
    }
};

QTEST_MAIN(TestChartSeries)
#include "tst_chart_series.moc"
