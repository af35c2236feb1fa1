#include "support/RuntimeProject.h"
#include "widgets/elements/PictureFiles.h"

#include "editor/review/CallUpMeter.h"
#include "editor/review/FindingModel.h"
#include "editor/review/ReviewColors.h"
#include "editor/review/ReviewRules.h"
#include "editor/review/ReviewRun.h"
#include "editor/review/ReviewScreen.h"
#include "editor/review/ScreenClicks.h"

#include <QAbstractItemModelTester>

#include <algorithm>

using namespace Editor;

namespace {

constexpr const char *screen = R"(
<memorySignal id="10" name="T" unit="°C" decimals="1" minimum="-40" maximum="1200"/>
<memorySignal id="11" name="On" type="bool"/>
<windowTemplate id="91" name="T" width="200" height="200"><label id="92" name="L" text="T" fontSize="11"/>
<instance id="93" name="itself" template="91"/></windowTemplate>
<window id="2" name="W" width="400" height="300" background="#d6dade">%1</window>)";

RuntimeProject projectWith(const QString &elements)
{
    return RuntimeProject(QString(screen).arg(elements).toUtf8(), Nodes::WorkModeEditing);
}

/// Ids of the nodes that one rule finds fault with, gravest severity behind a colon.
QString foundBy(const char *rule, const RuntimeProject &project)
{
    const ReviewScreen facts(*project.node(2));
    QStringList found;
    for (const ReviewRule &row : ReviewRules()) {
        ReviewFindings findings;
        if (QLatin1String(row.id) == QLatin1String(rule))
            row.check(facts, findings);
        for (const ReviewFinding &finding : qAsConst(findings)) {
            found << QString("%1:%2").arg(finding.where.GetNodeId()).arg(int(finding.severity));
            if (finding.what.isEmpty() || finding.advice.isEmpty())
                qFatal("nothing is said");
        }
    }
    return found.join(' ');
}

QString label(int id, const QString &attributes)
{
    return QString(R"(<label id="%1" name="L%1" x="8" y="8" width="160" height="32" %2/>)")
        .arg(id)
        .arg(attributes);
}

QString states(const QString &kind, const QString &one, const QString &other)
{
    return QString(R"(<%1 id="20" name="E" signal="10"><state id="21" name="a" %2/>)"
                   R"(<state id="22" name="b" from="1" to="1" %3/></%1>)")
        .arg(kind, one, other);
}

} // namespace

class TestReview : public QObject
{
    Q_OBJECT

private slots:
    void rules_data();
    void rules();
    void contrastIsThatOfTheGuidelines_data();
    void contrastIsThatOfTheGuidelines();
    void clicksAreCountedFromTheFrames();
    void callUpIsMeasuredAndLeavesNothingBehind();
    void heaviestKindsAreNamed();
    void screensAreReviewedOneByOne();
    void findingsStayWhenTheirNodesGo();
};

void TestReview::rules_data()
{
    QTest::addColumn<QString>("elements");
    QTest::addColumn<QByteArray>("rule");
    QTest::addColumn<QString>("found"); // id:severity
    const auto row = [](const char *rule, const char *name, const QString &elements,
                        const char *found) {
        QTest::addRow("%s, %s", rule, name) << elements << QByteArray(rule) << QString(found);
    };
    row("contrast", "dark on the window", label(20, R"(text="T" color="#202428")"), "");
    row("contrast", "grey on the window", label(20, R"(text="T" color="#808488")"), "20:3");
    row("contrast", "just too little", label(20, R"(text="T" color="#62666a")"), "20:2");
    row("contrast", "no text", label(20, R"(color="#d6dade")"), "");
    row("contrast", "own surface", label(20, R"(text="T" color="#ffffff" background="#102030")"),
        "");
    row("contrast", "on another element",
        label(20, R"(background="#102030")") + label(21, R"(text="T" color="#ffffff")"), "");
    row("contrast", "below another element",
        label(20, R"(text="T" color="#ffffff" zOrder="1")") +
            label(21, R"(background="#102030" zOrder="2")"),
        "20:3");
    row("contrast", "hidden", label(20, R"(text="T" color="#d6dade" visible="false")"), "");

    row("textSize", "good", label(20, R"(text="T" fontSize="11")"), "");
    row("textSize", "small", label(20, R"(text="T" fontSize="10")"), "20:1");
    row("textSize", "two small ones",
        label(20, R"(text="T" fontSize="10")") + label(21, R"(text="T" fontSize="10")"), "20:1");
    row("textSize", "too small", label(20, R"(text="T" fontSize="8")"), "20:2");
    row("textSize", "without a text", label(20, R"(fontSize="8")"), "");

    const QString instance =
        R"(<instance id="20" name="a" template="91" width="%1" height="%1" fit="%2"/>)";
    row("textSize", "instance in its own size", instance.arg(200).arg("true"), "");
    row("textSize", "instance made smaller", instance.arg(100).arg("true"), "20:2");
    row("textSize", "instance cut off", instance.arg(100).arg("false"), "");

    row("clippedText", "fits", label(20, R"(text="Насос 1")"), "");
    row("clippedText", "too long", label(20, R"(text="Насос сетевой воды первого подъёма")"),
        "20:2");
    row("clippedText", "wrapped", label(20, R"(text="Насос сетевой воды" wrap="true" height="64")"),
        "");
    row("clippedText", "too many lines", label(20, R"(text="1\n2\n3")"), "20:2");
    row("clippedText", "greatest value", label(20, R"(signal="10" text="Температура воды ")"),
        "20:2");
    row("clippedText", "value fits", label(20, R"(signal="10")"), "");
    row("clippedText", "upright", label(20, R"(text="Насос сетевой" angle="90")"), "20:2");

    row("states", "other texts", states("multiLabel", R"(text="Стоп")", R"(text="Работа")"), "");
    row("states", "other colours only",
        states("multiLabel", R"(text="1" ownColor="true" color="#008000")", R"(text="1")"), "20:2");
    row("states", "one look for two ranges",
        states("multiLabel", R"(text="1" ownColor="true")", R"(text="1" ownColor="true")"), "");
    row("states", "the value itself", states("multiLabel", R"(ownColor="true")", ""), "");
    row("states", "other looks", states("symbol", R"(look="off")", R"(look="on")"), "");
    row("states", "same looks",
        states("symbol", R"(look="on")", R"(look="on" ownBackground="true")"), "20:2");
    row("states", "pictures of other shapes",
        states("multiImage", R"(image="square.svg")", R"(image="halves.png")"), "");
    row("states", "pictures of other colours",
        states("multiImage", R"(image="red.png")", R"(image="green.png")"), "20:2");

    row("alarmColors", "muted", label(20, R"(background="#c8b090")"), "");
    row("alarmColors", "red surface", label(20, R"(background="#e02020")"), "20:2");
    row("alarmColors", "yellow text", label(20, R"(text="T" color="#ffd000")"), "20:2");
    row("alarmColors", "green", label(20, R"(background="#20c020")"), "");
    row("alarmColors", "see-through", label(20, R"(background="#e0202010")"), "");
    row("alarmColors", "colour of a state",
        states("multiLabel", R"(text="Авария" ownBackground="true" background="#e02020")", ""), "");

    row("places", "inside", R"(<label id="20" name="a" x="300" y="270" width="100" height="30"/>)",
        "");
    row("places", "beyond the edge",
        R"(<label id="20" name="a" x="301" y="270" width="100" height="30"/>)", "20:2");
    row("places", "outside", R"(<label id="20" name="a" x="-200" y="0" width="100"/>)", "20:3");

    row("overlaps", "apart",
        label(20, R"(text="a")") + R"(<label id="21" name="b" text="b" x="8" y="48"/>)", "");
    const QString beside =
        R"(<label id="21" name="b" text="b" x="%1" y="8" width="160" height="32" %2/>)";
    row("overlaps", "one over the other", label(20, R"(text="aaaa aaaa")") + beside.arg(40).arg(""),
        "21:2");
    row("overlaps", "boxes only", label(20, R"(text="a")") + beside.arg(100).arg(""), "");
    row("overlaps", "at the other end",
        label(20, R"(text="a" align="right")") + beside.arg(158).arg(""), "21:2");
    row("overlaps", "button",
        label(20, R"(text="a")") +
            R"(<button id="21" name="b" text="b" x="8" y="8" width="160" height="32"/>)",
        "21:2");
    row("overlaps", "sign that is hidden mostly",
        label(20, R"(text="a")") +
            R"(<multiLabel id="21" name="b" text="b" x="8" y="8" visibility="matching"/>)",
        "");
    row("overlaps", "the same place", label(20, R"(text="a")") + label(21, R"(text="b")"), "21:2");

    row("grid", "on it", label(20, ""), "");
    row("grid", "off it", R"(<label id="20" name="a" x="8" y="9"/><label id="21" name="b" x="3"/>)",
        "20:1");

    const QString symbol = R"(<symbol id="20" name="a" source="%1"/>)";
    row("symbols", "built in", symbol.arg(":/symbols/pump.svg"), "");
    row("symbols", "none chosen", symbol.arg(""), "");
    row("symbols", "absent", symbol.arg("absent.svg"), "20:3");
    row("symbols", "no SVG", symbol.arg("halves.png"), "20:3");
    row("symbols", "of a state", states("symbol", R"(look="on" image="halves.png")", ""), "20:3");

    const QString picture = R"(<image id="20" name="a" image="%1" width="%2" height="%2"/>)";
    row("pictures", "small", picture.arg("halves.png").arg(4), "");
    row("pictures", "huge", picture.arg("wide.png").arg(48), "20:2");
    row("pictures", "as large as shown", picture.arg("wide.png").arg(1100), "");
    row("pictures", "absent", picture.arg("absent.png").arg(48), "");
}

void TestReview::rules()
{
    QFETCH(QString, elements);
    QFETCH(QByteArray, rule);
    const PictureFiles files;
    const auto plain = [&files](const char *name, QSize size, const QColor &color) {
        QImage image(size, QImage::Format_RGB32);
        image.fill(color);
        image.save(files.path(name));
    };
    plain("red.png", {16, 16}, QColor(200, 60, 60));
    plain("green.png", {16, 16}, QColor(40, 130, 60)); // as bright
    plain("wide.png", {1100, 1000}, Qt::gray);
    const RuntimeProject project = projectWith(elements);
    QTEST(foundBy(rule, project), "found");
}

void TestReview::contrastIsThatOfTheGuidelines_data()
{
    QTest::addColumn<QColor>("one");
    QTest::addColumn<QColor>("other");
    QTest::addColumn<double>("ratio");
    QTest::newRow("most") << QColor(Qt::black) << QColor(Qt::white) << 21.0;
    QTest::newRow("none") << QColor(40, 90, 10) << QColor(40, 90, 10) << 1.0;
    QTest::newRow("lightest grey that passes on white")
        << QColor(0x76, 0x76, 0x76) << QColor(Qt::white) << 4.54;
    QTest::newRow("red on white") << QColor(Qt::white) << QColor(Qt::red) << 4.0;
}

void TestReview::contrastIsThatOfTheGuidelines()
{
    QFETCH(QColor, one);
    QFETCH(QColor, other);
    QFETCH(double, ratio);
    QVERIFY(qAbs(ReviewColors::contrast(one, other) - ratio) < 0.01);
    QVERIFY(qAbs(ReviewColors::contrast(other, one) - ratio) < 0.01);
}

void TestReview::clicksAreCountedFromTheFrames()
{
    const RuntimeProject project(R"(
<frame id="10" name="F" windows="11"/>
<windowComposed id="11" name="C" composition="12"/>
<composition id="12" name="P"><layer id="13" name="L">
  <button id="14" name="a" pressActions="20 24"/></layer></composition>
<window id="15" name="First"><button id="16" name="b" onPress="21"/>
  <actionShowWindow id="21" name="x" window="17"/></window>
<window id="17" name="Second"/>
<window id="18" name="ByMenu"/>
<window id="19" name="Never"><actionShowWindow id="23" name="y" window="19"/></window>
<actionShowWindow id="20" name="z" window="15"/>
<actionShowMenu id="24" name="m" menus="25"/>
<menu id="25" name="M"><menuItem id="26" name="i" actions="27"/></menu>
<actionShowWindow id="27" name="w" window="18"/>)",
                                 Nodes::WorkModeEditing);
    const ScreenClicks clicks(*project.core.GetNodesCollection()->GetRoot());
    QVERIFY(clicks.hasFrames());
    const std::pair<int, int> expected[] = {{12, 0}, {15, 1}, {17, 2}, {18, 2}, {19, -1}};
    for (const auto &[id, count] : expected)
        QVERIFY2(clicks.to(*project.node(unsigned(id))) == count,
                 qPrintable(QString("%1: %2").arg(id).arg(clicks.to(*project.node(unsigned(id))))));
}

void TestReview::callUpIsMeasuredAndLeavesNothingBehind()
{
    const RuntimeProject project = projectWith(label(20, R"(text="T" signal="10")"));
    const CallUpMeter::Times times = CallUpMeter::measure(*project.node(2));
    QCOMPARE(times.elements, 1);
    QVERIFY(times.firstPaint > 0 && times.live >= times.firstPaint);
    QVERIFY(project.node(20)->GetState() != Nodes::NodeState::Running);
    QVERIFY(CallUpMeter::budget(10) == CallUpMeter::budget(1000));
    QCOMPARE(CallUpMeter::budget(3000), 3 * CallUpMeter::budget(1000));
}

void TestReview::heaviestKindsAreNamed()
{
    const RuntimeProject project =
        projectWith(label(20, R"(text="T")") + label(21, R"(text="T")") +
                    R"(<chartHistory id="22" name="c" width="300" height="200"/>)");
    const auto shares = CallUpMeter::shares(*project.node(2));
    QCOMPARE(shares.size(), 2);
    QCOMPARE(shares[0].slowest.GetNodeId(), 22UL); // a chart is dearer than labels
    QCOMPARE(shares[1].count, 2);
}

void TestReview::screensAreReviewedOneByOne()
{
    const RuntimeProject project(R"(
<window id="2" name="A"><label id="20" name="a" text="T" color="#d6dade"/></window>
<window id="3" name="B"/><composition id="4" name="C"/>)",
                                 Nodes::WorkModeEditing);
    const Nodes::ConfigNode &root = *project.core.GetNodesCollection()->GetRoot();
    Nodes::NodeLinks screens = ReviewScreen::screensBelow(root);
    QCOMPARE(screens.size(), 3U);
    ReviewRun run;
    FindingModel model;
    const QAbstractItemModelTester tester(&model);
    connect(&run, &ReviewRun::found, &model, &FindingModel::take);
    QSignalSpy progressed(&run, &ReviewRun::progressed);
    QSignalSpy finished(&run, &ReviewRun::finished);
    run.start(screens, root);
    QVERIFY(finished.wait());
    QCOMPARE(progressed.size(), 3);
    QCOMPARE(model.count(), 1);
    QVERIFY(model.rowCount() >= 4); // and three measurements
    const Nodes::TextTable table = model.table();
    QCOMPARE(int(table.size()), model.rowCount() + 1);
    const auto faded = std::find_if(table.begin(), table.end(),
                                    [](const auto &cells) { return cells.back() == "A/a"; });
    QVERIFY(faded != table.end());
    QVERIFY(QString::fromStdString((*faded)[FindingModel::What]).contains("Контраст"));
    const int rows = model.rowCount();
    model.take(screens[1], {});
    QCOMPARE(model.rowCount(), rows - 1); // only what was measured there
    QCOMPARE(model.count(), 1);
    model.take(screens[0], {});
    QCOMPARE(model.count(), 0);
    run.start(screens, root);
    run.stop();
    QCOMPARE(finished.size(), 2);
    QTest::qWait(0);
    QCOMPARE(progressed.size(), 3);
}

void TestReview::findingsStayWhenTheirNodesGo()
{
    FindingModel model;
    {
        const RuntimeProject project = projectWith(label(20, R"(text="T" color="#d6dade")"));
        ReviewFindings findings;
        checkContrast(ReviewScreen(*project.node(2)), findings);
        model.take(Nodes::NodeLink(project.node(2)), findings);
    }
    QCOMPARE(model.data(model.index(0, FindingModel::Place)).toString(), QString("L20"));
    QVERIFY(!model.finding(0).where.GetNode());
}

QTEST_MAIN(TestReview)
#include "tst_review.moc"
