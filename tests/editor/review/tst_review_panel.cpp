#include "editor/OpenProject.h"

#include "editor/review/FindingModel.h"
#include "editor/review/ReviewMend.h"
#include "editor/review/ReviewPanel.h"
#include "editor/review/ReviewRun.h"
#include "editor/review/ReviewScreen.h"
#include "editor/review/ScreenClicks.h"
#include "editor/workspace/TableFile.h"

#include <QAbstractItemModel>
#include <QPushButton>
#include <QTableView>
#include <QTemporaryDir>
#include <QtTest>

using namespace Editor;

namespace {

/// A window of 400 by 300 with one element to look at.
struct ReviewedWindow : OpenProject
{
    using Texts = std::initializer_list<std::pair<const char *, std::string>>;

    explicit ReviewedWindow(const char *kind = "label")
    {
        screen = add("window", root(), "Окно");
        set(screen, {{"width", "400"}, {"height", "300"}, {"background", "#d6dade"}});
        element = add(kind, screen, "э");
        set(element, {{"x", "8"}, {"y", "8"}, {"width", "160"}, {"height", "32"}});
    }
    ReviewFindings found() const { return ReviewRun::check(*screen, ScreenClicks(*root())); }
    /// What one rule finds.
    ReviewFindings found(const QByteArray &rule) const
    {
        ReviewFindings some;
        for (const ReviewFinding &finding : found()) {
            if (finding.rule == rule)
                some.append(finding);
        }
        return some;
    }

    Nodes::ConfigNode *screen;
    Nodes::ConfigNode *element;
};

QPushButton *buttonOf(const QWidget &panel, const QString &text)
{
    for (QPushButton *button : panel.findChildren<QPushButton *>()) {
        if (button->text().remove('&').startsWith(text))
            return button;
    }
    return nullptr;
}

} // namespace

class TestReviewPanel : public QObject
{
    Q_OBJECT

private slots:
    void findingsAreMended_data();
    void findingsAreMended();
    void onlyWhatStillHoldsIsMended();
    void thePanelReviewsMendsAndReviewsAgain();
    void aMendedScreenWaitsForTheOthers();
    void listsAreSavedForSpreadsheets();
};

void TestReviewPanel::findingsAreMended_data()
{
    QTest::addColumn<QByteArray>("rule");
    QTest::addColumn<QStringList>("before"); // key=value
    QTest::addColumn<QStringList>("after");  // none: it cannot be mended
    using List = QStringList;
    QTest::newRow("pale text") << QByteArray("contrast") << List{"text=T", "color=#d0d4d8"}
                               << List{"color=#202428"};
    QTest::newRow("dark text on dark")
        << QByteArray("contrast") << List{"text=T", "color=#303438", "background=#202428"}
        << List{"color=#ffffff"};
    QTest::newRow("small text") << QByteArray("textSize") << List{"text=T", "fontSize=8"}
                                << List{"fontSize=11"};
    QTest::newRow("rather small text")
        << QByteArray("textSize") << List{"text=T", "fontSize=10"} << List{"fontSize=11"};
    QTest::newRow("small text without room")
        << QByteArray("textSize") << List{"text=T", "fontSize=8", "height=10"} << List{};
    QTest::newRow("beyond the edge")
        << QByteArray("places") << List{"x=-40", "y=290"} << List{"x=0", "y=268"};
    QTest::newRow("larger than the screen") << QByteArray("places") << List{"width=500"} << List{};
    QTest::newRow("off the grid") << QByteArray("grid") << List{"x=13", "y=11"}
                                  << List{"x=16", "y=8"};
    QTest::newRow("off the grid at the edge")
        << QByteArray("grid") << List{"x=237", "width=163"} << List{"x=232"};
    const QString sentence = "text=Насос сетевой воды первого подъёма";
    QTest::newRow("clipped") << QByteArray("clippedText") << List{sentence} << List{"x=8", "y=8"};
    QTest::newRow("clipped at the other end")
        << QByteArray("clippedText") << List{sentence, "x=232", "align=right"}
        << List{"y=8", "height=32"};
    QTest::newRow("clipped between others")
        << QByteArray("clippedText") << List{sentence, "x=232"} << List{};
    QTest::newRow("alarm colour") << QByteArray("alarmColors") << List{"background=#e02020"}
                                  << List{};
}

void TestReviewPanel::findingsAreMended()
{
    QFETCH(QByteArray, rule);
    QFETCH(QStringList, before);
    QFETCH(QStringList, after);
    ReviewedWindow window;
    for (const QString &pair : before)
        window.set(window.element, {{pair.section('=', 0, 0).toUtf8().constData(),
                                     pair.section('=', 1).toStdString()}});
    const std::string text = window.text();
    const ReviewFindings findings = window.found(rule);
    QCOMPARE(findings.size(), 1);
    QUndoCommand *command = ReviewMend::make({Nodes::NodeLink(window.screen)}, findings);
    QCOMPARE(command != nullptr, !after.isEmpty());
    if (!command)
        return;
    QVERIFY(window.workspace.push(command));
    QCOMPARE(window.found(rule).size(), 0);
    for (const QString &pair : after)
        QCOMPARE(QString::fromStdString(
                     textOf(*window.element, pair.section('=', 0, 0).toUtf8().constData())),
                 pair.section('=', 1));
    window.session.undoStack().undo();
    QCOMPARE(window.text(), text);
}

void TestReviewPanel::onlyWhatStillHoldsIsMended()
{
    ReviewedWindow window;
    window.set(window.element, {{"x", "-40"}});
    const ReviewFindings findings = window.found("places");
    QCOMPARE(findings.size(), 1);
    window.set(window.element, {{"x", "56"}});
    QVERIFY(!ReviewMend::make({Nodes::NodeLink(window.screen)}, findings));
}

void TestReviewPanel::thePanelReviewsMendsAndReviewsAgain()
{
    ReviewedWindow window;
    window.set(window.element, {{"text", "T"}, {"color", "#d0d4d8"}});
    ReviewPanel panel(window.workspace, nullptr);
    panel.show();
    auto *table = panel.findChild<QTableView *>();
    const QAbstractItemModel &rows = *table->model();
    QVERIFY(panel.focusProxy() && panel.focusProxy() != table); // a key press begins
    panel.reviewAll();
    QPushButton *stop = buttonOf(panel, "Стоп");
    QVERIFY(stop->isVisible());
    QTRY_VERIFY(!stop->isVisible());
    QCOMPARE(panel.focusProxy(), table);
    const auto pale = rows.match(rows.index(0, FindingModel::What), Qt::DisplayRole, "Контраст", -1,
                                 Qt::MatchContains);
    QCOMPARE(pale.size(), 1);
    QPushButton *mend = buttonOf(panel, "Исправить");
    table->selectRow(pale.front().row());
    QVERIFY(mend->isEnabled());
    mend->click();
    QCOMPARE(textOf(*window.element, "color"), std::string("#202428"));
    QTRY_VERIFY(rows.match(rows.index(0, FindingModel::What), Qt::DisplayRole, "Контраст", -1,
                           Qt::MatchContains)
                    .isEmpty());
    QTRY_VERIFY(!stop->isVisible());
    window.session.setReadOnly("x");
    window.set(window.element, {{"color", "#d0d4d8"}});
    panel.reviewAll();
    QTRY_VERIFY(!stop->isVisible());
    table->selectAll();
    QVERIFY(!mend->isEnabled());
}

void TestReviewPanel::aMendedScreenWaitsForTheOthers()
{
    ReviewedWindow window;
    window.set(window.element, {{"text", "T"}, {"color", "#d0d4d8"}});
    const Nodes::ConfigNode *other = window.add("window", window.root(), "Другое");
    ReviewPanel panel(window.workspace, nullptr);
    panel.show();
    const auto *run = panel.findChild<ReviewRun *>();
    Nodes::NodeLinks reviewed;
    connect(run, &ReviewRun::found, &panel,
            [&reviewed](const Nodes::NodeLink &screen) { reviewed.push_back(screen); });
    QSignalSpy step(run, &ReviewRun::progressed);
    panel.reviewAll();
    const Nodes::NodeLink first(window.screen);
    while (reviewed.empty() || reviewed.back() != first)
        QVERIFY(step.wait());
    panel.findChild<QTableView *>()->selectAll();
    buttonOf(panel, "Исправить")->click();
    QTRY_VERIFY(!buttonOf(panel, "Стоп")->isVisible());
    QCOMPARE(std::count(reviewed.begin(), reviewed.end(), Nodes::NodeLink(other)), 1);
    QCOMPARE(std::count(reviewed.begin(), reviewed.end(), first), 2);
}

void TestReviewPanel::listsAreSavedForSpreadsheets()
{
    const QTemporaryDir directory;
    const QString path = directory.filePath("a.csv");
    const Nodes::TextTable table{{"Важность", "Что не так"}, {"▲", "«a»; \"b\""}};
    QCOMPARE(TableFile::write(path, table), QString());
    QFile file(path);
    QVERIFY(file.open(QIODevice::ReadOnly));
    Nodes::TextTable read;
    QVERIFY(Nodes::DelimitedText::Read(file.readAll().toStdString(), ';', read));
    QVERIFY(read == table);
    QVERIFY(!TableFile::write(directory.filePath("none/a.csv"), table).isEmpty());
}

QTEST_MAIN(TestReviewPanel)
#include "tst_review_panel.moc"
