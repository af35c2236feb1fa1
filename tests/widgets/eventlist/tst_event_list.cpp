// The element of an event list on a journal in a file: what it asks for, shows, keeps and saves.
#include "support/Rows.h"
#include "support/RuntimeProject.h"

#include "widgets/charts/plots/WaitBox.h"
#include "widgets/eventlist/EventCommands.h"
#include "widgets/eventlist/EventDetails.h"
#include "widgets/eventlist/EventStatusBar.h"
#include "widgets/eventlist/WidgetEvent.h"
#include "widgets/eventlist/WidgetEventModel.h"
#include "widgets/eventlist/WidgetEventSortModel.h"
#include "widgets/eventlist/WidgetEventToolBar.h"
#include "widgets/eventlist/WidgetEventView.h"
#include "widgets/eventlist/bar/EventFilterBar.h"

#include "nodes/visual/events/eventColumn.h"
#include "nodes/visual/events/widgetEventList.h"
#include "utils/convert/TimeConversions.h"

#include <QHeaderView>
#include <QLineEdit>
#include <QScrollBar>

using namespace Widgets;
using Nodes::BasicEvent;
using Nodes::EventInfo;

namespace {

constexpr const char *nodes = R"(
<memorySignal id="10" name="T"/><memorySignal id="11" name="P"/>
<layer id="2" name="L"><eventList id="20" name="E" width="900" height="600" tracking="false"/></layer>)";

struct Rig : RuntimeProject
{
    explicit Rig(bool hasJournal = true, Nodes::enWorkMode mode = Nodes::WorkModeRuntime)
        : RuntimeProject(nodes, mode)
    {
        core.GetJournal().SetHome(core.GetRecordHome(), core.GetNodesCollection());
        if (hasJournal && !core.GetJournal().Open(data.filePath("journal.sqlite").toStdString()))
            qFatal("no journal");
    }
    ~Rig()
    {
        if (list)
            list->stop();
    }
    void store(const QDateTime &time, const std::string &text, unsigned long source = 0,
               const std::string &user = {}) const
    {
        BasicEvent event;
        event.time = Utils::toTimestamp(time);
        event.text = text;
        event.user = user;
        if (source != 0)
            event.sourceNode = Nodes::NodeLink(source);
        QVERIFY(core.GetJournal().Append(event));
    }
    void storeMany(int count) const
    {
        const QDateTime start = QDate::currentDate().startOfDay();
        for (int i = 0; i < count; ++i)
            store(start.addMSecs(i), "e" + std::to_string(i));
        QVERIFY(core.GetJournal().Flush());
    }
    void show()
    {
        list = std::make_unique<WidgetEvent>(node<Nodes::widgetEventList>(20));
        list->start();
        list->show();
        QVERIFY(QTest::qWaitForWindowExposed(list.get()));
    }
    QStringList texts() const
    {
        QStringList shown;
        for (int row = 0; row < list->sortModel()->rowCount(); ++row)
            shown << QString::fromStdString(list->sortModel()->item(row).event().text);
        return shown;
    }
    int rows() const { return list->model()->rowCount(); }

    std::unique_ptr<WidgetEvent> list;
};

EventInfo eventAt(const QDateTime &time)
{
    BasicEvent event;
    event.time = Utils::toTimestamp(time);
    return EventInfo(event);
}

} // namespace

class TestEventList : public QObject
{
    Q_OBJECT

private slots:
    void aRefusalLeavesTheListAlone();
    void nothingIsAskedOutOfRunTime();
    void theDayIsShownAndWhatIsStoredThen();
    void liveEventsOfTheIntervalAreKept();
    void everyEventOnceWhileManyAreRead();
    void whatIsLeftOutIsTold();
    void onlyTheSourcesAreShown();
    void whatIsReadStaysInPlace();
    void whatCameOutOfSightIsCounted_data();
    void whatCameOutOfSightIsCounted();
    void aNewReadingLeavesThePlace();
    void filtersFindWhatHadNoRoom();
    void chosenSourcesAreKept();
    void whatIsShownIsSaved();
    void longTextsAreReadWhole();
    void whatWasChosenIsKept();
    void columnsFollowTheProject();
};

void TestEventList::aRefusalLeavesTheListAlone()
{
    Rig rig(false);
    rig.show();
    rig.list->model()->appendItems({eventAt(QDateTime::currentDateTime())});
    QVERIFY(!rig.list->getLastHistory());
    QVERIFY(!rig.list->waitBox()->isRunning());
    QCOMPARE(rig.rows(), 1);
    QVERIFY(rig.list->statusBar()->note().startsWith(QStringLiteral("Журнал не прочитан")));
}

void TestEventList::nothingIsAskedOutOfRunTime()
{
    Rig rig(true, Nodes::WorkModeEditing);
    rig.storeMany(3);
    rig.show();
    QVERIFY(!rig.list->getLastHistory());
    QCOMPARE(rig.rows(), 0);
}

void TestEventList::theDayIsShownAndWhatIsStoredThen()
{
    Rig rig;
    const QDateTime now = QDateTime::currentDateTime();
    rig.store(now.addDays(-1), "вчера");
    rig.store(QDate::currentDate().startOfDay(), "утро");
    QVERIFY(rig.core.GetJournal().Flush());
    rig.show();
    QTRY_COMPARE(rig.texts(), QStringList{"утро"});
    rig.store(QDate::currentDate().endOfDay(), "вечер");
    QTRY_COMPARE(rig.texts(), (QStringList{"вечер", "утро"}));
    rig.list->toolBar()->onPrevious();
    QTRY_COMPARE(rig.texts(), QStringList{"вчера"});
}

void TestEventList::liveEventsOfTheIntervalAreKept()
{
    Rig rig;
    rig.show();
    const QDateTime from = rig.list->toolBar()->getFromDt();
    const QDateTime to = rig.list->toolBar()->getToDt();
    QSignalSpy inserted(rig.list->model(), &QAbstractItemModel::rowsInserted);
    rig.list->onEventsStored({eventAt(from.addMSecs(-1)), eventAt(to.addMSecs(1))});
    QCOMPARE(inserted.count(), 0);
    rig.list->onEventsStored({eventAt(to), eventAt(from.addMSecs(-1)), eventAt(from)});
    QCOMPARE(inserted.count(), 1);
    QCOMPARE(rig.rows(), 2);
    QCOMPARE(rig.list->model()->getItems()[0].time(), Utils::toTimestamp(to));
}

void TestEventList::everyEventOnceWhileManyAreRead()
{
    constexpr int before = 10000; // several pages
    constexpr int during = 300;
    Rig rig;
    rig.storeMany(before);
    rig.show();
    for (int i = 0; i < during; ++i)
        rig.store(QDateTime::currentDateTime(), "later " + std::to_string(i));
    QTRY_COMPARE(rig.rows(), before + during);
    QVERIFY(rig.core.GetJournal().Flush());
    QCoreApplication::processEvents();
    const QStringList texts = rig.texts();
    QCOMPARE(QSet<QString>(texts.begin(), texts.end()).size(), before + during);
    QCOMPARE(texts.last(), QStringLiteral("e0"));
    QVERIFY(rig.list->statusBar()->note().isEmpty());
}

void TestEventList::whatIsLeftOutIsTold()
{
    Rig rig;
    rig.storeMany(2000);
    rig.set(20, "maximumRows", "1000");
    rig.show();
    QTRY_VERIFY(rig.list->statusBar()->note().startsWith(QStringLiteral("Показано не всё")));
    QCOMPARE(rig.rows(), 900); // the newest; the rest is room for live events
    QCOMPARE(rig.texts().first(), QStringLiteral("e1999"));
    QCOMPARE(rig.texts().last(), QStringLiteral("e1100"));
}

void TestEventList::onlyTheSourcesAreShown()
{
    Rig rig;
    const QDateTime noon = QDate::currentDate().startOfDay().addSecs(3600);
    rig.store(noon, "T", 10);
    rig.store(noon, "P", 11);
    rig.store(noon, "system");
    QVERIFY(rig.core.GetJournal().Flush());
    rig.set(20, "sources", "11");
    rig.show();
    QTRY_COMPARE(rig.texts(), QStringList{"P"});
    rig.store(noon, "live T", 10);
    rig.store(noon.addSecs(1), "live P", 11);
    QTRY_COMPARE(rig.texts(), (QStringList{"live P", "P"}));
}

void TestEventList::whatIsReadStaysInPlace()
{
    Rig rig;
    rig.storeMany(400);
    rig.show();
    QTRY_COMPARE(rig.rows(), 400);
    WidgetEventView &view = *rig.list->view();
    QTRY_VERIFY(view.verticalScrollBar()->maximum() > 1234);
    view.verticalScrollBar()->setValue(1234);
    const int top = view.rowAt(0);
    const unsigned long id = rig.list->sortModel()->item(top).id();
    const int place = view.rowViewportPosition(top);
    rig.store(QDate::currentDate().endOfDay(), "new");
    QTRY_COMPARE(rig.rows(), 401);
    QCOMPARE(rig.list->sortModel()->item(view.rowAt(0)).id(), id);
    QCOMPARE(view.rowViewportPosition(view.rowAt(0)), place);
    QCOMPARE(rig.list->statusBar()->newCount(), 1);
    rig.list->toolBar()->setTraking(true);
    QCOMPARE(view.verticalScrollBar()->value(), 0);
    QCOMPARE(rig.list->statusBar()->newCount(), 0);
}

void TestEventList::whatCameOutOfSightIsCounted_data()
{
    const Rows<int> row("order");
    row("above", Qt::DescendingOrder);
    row("below", Qt::AscendingOrder);
}

// Who stands at the newest row and does not follow sees no newer one either.
void TestEventList::whatCameOutOfSightIsCounted()
{
    QFETCH(int, order);
    Rig rig;
    rig.storeMany(400);
    rig.show();
    QTRY_COMPARE(rig.rows(), 400);
    WidgetEventView &view = *rig.list->view();
    view.sortByColumn(0, Qt::SortOrder(order));
    view.showNewest();
    QTRY_VERIFY(view.verticalScrollBar()->maximum() > 0 && view.isAtNewest());
    rig.store(QDate::currentDate().endOfDay(), "new");
    QTRY_COMPARE(rig.rows(), 401);
    QVERIFY(!view.isAtNewest());
    QCOMPARE(rig.list->statusBar()->newCount(), 1);
    view.showNewest(); // by hand
    QCOMPARE(rig.list->statusBar()->newCount(), 0);
}

// As when the page was left and is shown again.
void TestEventList::aNewReadingLeavesThePlace()
{
    Rig rig;
    rig.storeMany(400);
    rig.show();
    QTRY_COMPARE(rig.rows(), 400);
    WidgetEventView &view = *rig.list->view();
    QTRY_VERIFY(view.verticalScrollBar()->maximum() > 1234);
    view.verticalScrollBar()->setValue(1234);
    view.selectRow(view.rowAt(0) + 1);
    const auto idAt = [&rig](int row) { return rig.list->sortModel()->item(row).id(); };
    const unsigned long top = idAt(view.rowAt(0));
    const unsigned long current = idAt(view.currentIndex().row());
    rig.list->stop();
    for (int i = 0; i < 7; ++i)
        rig.store(QDate::currentDate().endOfDay(), "new");
    QVERIFY(rig.core.GetJournal().Flush());
    rig.list->start();
    QTRY_COMPARE(rig.rows(), 407);
    QCOMPARE(idAt(view.rowAt(0)), top);
    QCOMPARE(idAt(view.currentIndex().row()), current);
    QCOMPARE(rig.list->statusBar()->newCount(), 7);
    view.verticalScrollBar()->setValue(0);
    QCOMPARE(rig.list->statusBar()->newCount(), 0);
    QVERIFY(rig.list->getLastHistory());
    QCOMPARE(view.verticalScrollBar()->value(), 0);
}

void TestEventList::filtersFindWhatHadNoRoom()
{
    Rig rig;
    rig.store(QDate::currentDate().startOfDay(), "old", 0, "Иванов");
    rig.storeMany(2000);
    rig.set(20, "maximumRows", "1000");
    rig.show();
    QTRY_COMPARE(rig.rows(), 900);
    QTRY_VERIFY(rig.list->statusBar()->note().startsWith(QStringLiteral("Показано не всё")));
    EventRowFilter filter;
    filter.users = QStringList{"Иванов"};
    rig.list->filterBar()->setFilter(filter);
    emit rig.list->filterBar()->changed();
    QTRY_COMPARE(rig.texts(), QStringList{"old"});
    QVERIFY(rig.list->statusBar()->note().startsWith(QStringLiteral("Весь интервал")));
    rig.list->filterBar()->reset();
    QTRY_COMPARE(rig.rows(), 900);
    filter = {};
    filter.text = "OLD";
    rig.list->filterBar()->setFilter(filter);
    emit rig.list->filterBar()->changed();
    QTRY_COMPARE(rig.texts(), QStringList{"old"});
}

void TestEventList::chosenSourcesAreKept()
{
    Rig rig;
    const QDateTime start = QDate::currentDate().startOfDay();
    rig.store(start, "T", 10);
    rig.store(start, "P", 11);
    QVERIFY(rig.core.GetJournal().Flush());
    rig.show();
    QTRY_COMPARE(rig.rows(), 2);
    rig.node<Nodes::widgetEventList>(20)->SetSources(Nodes::NodeLinks{rig.node(11)->GetNodeLink()});
    emit rig.list->toolBar()->filterChanged();
    QTRY_COMPARE(rig.texts(), QStringList{"P"});
    QVERIFY(rig.list->statusBar()->counts().contains(QStringLiteral("источников: 1")));
    rig.list->stop();
    rig.node<Nodes::widgetEventList>(20)->ResetSources(); // the station began anew
    rig.show();
    QTRY_COMPARE(rig.texts(), QStringList{"P"});
}

void TestEventList::whatIsShownIsSaved()
{
    Rig rig;
    const QDateTime start = QDate::currentDate().startOfDay();
    rig.store(start, "насос; \"пуск\"", 10, "Иванов");
    rig.store(start.addSecs(1), "клапан");
    rig.store(start.addSecs(2), std::string(100000, 'x') + " насос");
    QVERIFY(rig.core.GetJournal().Flush());
    rig.show();
    QTRY_COMPARE(rig.rows(), 3);
    EventRowFilter filter;
    filter.levels = {Nodes::LevelInformation};
    rig.list->sortModel()->setFilter(filter);
    rig.list->sortModel()->sort(0, Qt::AscendingOrder);
    const QString name = rig.data.filePath("e.csv");
    QSignalSpy exported(rig.list->commands(), &EventCommands::exported);
    rig.list->commands()->exportTo(name);
    QTRY_COMPARE(exported.count(), 1);
    QCOMPARE(exported[0][0].toString(), QString());
    QFile file(name);
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QByteArray content = file.readAll();
    QVERIFY(content.startsWith("\xEF\xBB\xBF"));
    const QStringList lines = QString::fromUtf8(content).split("\r\n");
    QCOMPARE(lines.size(), 5);
    QVERIFY(lines[1].contains(QStringLiteral(";\"насос; \"\"пуск\"\"\";\"\";\"\";\"Иванов\";")));
    QVERIFY(lines[1].startsWith(start.toString(QStringLiteral("yyyy-MM-dd"))));
    QVERIFY(lines[3].contains(QString(100000, 'x') + QStringLiteral(" насос"))); // nothing cut off
    rig.list->commands()->exportTo(rig.data.filePath("no/such/e.csv"));
    QTRY_COMPARE(exported.count(), 2);
    QVERIFY(exported[1][0].toString().contains(QStringLiteral("не записан")));
}

void TestEventList::longTextsAreReadWhole()
{
    Rig rig;
    rig.store(QDate::currentDate().startOfDay(), std::string(500000, 'x') + "\nend");
    QVERIFY(rig.core.GetJournal().Flush());
    rig.show();
    QTRY_COMPARE(rig.rows(), 1);
    QVERIFY(rig.list->model()->getItems()[0].isCut());
    rig.list->view()->selectRow(0);
    rig.list->filterBar()->setDetailsShown(true);
    QVERIFY(rig.list->details()->isVisible());
    QTRY_VERIFY(rig.list->details()->shownText().contains("\nend"));
}

void TestEventList::whatWasChosenIsKept()
{
    Rig rig;
    rig.storeMany(3);
    rig.show();
    QTRY_COMPARE(rig.rows(), 3);
    rig.list->view()->horizontalHeader()->resizeSection(0, 333);
    rig.list->view()->sortByColumn(3, Qt::AscendingOrder);
    auto *search = rig.list->filterBar()->findChild<QLineEdit *>();
    search->setText("E1");
    QTRY_COMPARE(rig.texts(), QStringList{"e1"});
    rig.list->stop();
    rig.show();
    QTRY_COMPARE(rig.texts(), QStringList{"e1"});
    QCOMPARE(rig.list->filterBar()->filter().text, QStringLiteral("E1"));
    QCOMPARE(rig.list->view()->columnWidth(0), 333);
    QCOMPARE(rig.list->sortModel()->sortColumn(), 3);
    rig.list->filterBar()->reset();
    QTRY_COMPARE(rig.texts(), (QStringList{"e0", "e1", "e2"}));
}

// As they become in the project, without the element being made anew.
void TestEventList::columnsFollowTheProject()
{
    using Nodes::ColumnInfo;
    Rig rig;
    rig.show();
    auto *view = rig.list->view();
    const int user = WidgetEventModel::columnOf(ColumnInfo::ColumnUser);
    const auto place = [view, user] { return view->horizontalHeader()->visualIndex(user); };
    const int placeBefore = place();
    const int widthBefore = view->columnWidth(user);
    QVERIFY(!view->isColumnHidden(user) && placeBefore > 0 && widthBefore != 333);

    auto *node = rig.node<Nodes::widgetEventList>(20);
    Nodes::ConfigNode *column =
        rig.core.GetNodesCollection()->CreateNode(Nodes::NodeType(Nodes::eventColumn::Code), node);
    QVERIFY(column && column->SetPropertyText("column", "user") &&
            column->SetPropertyText("width", "333"));
    QTRY_COMPARE(view->columnWidth(user), 333);
    QCOMPARE(place(), 1); // behind the time, which is the first as well
    QVERIFY(column->SetPropertyText("visible", "false"));
    QTRY_VERIFY(view->isColumnHidden(user));
    QVERIFY(node->RemoveNode(Nodes::NodeLink(column)));
    QTRY_COMPARE(view->columnWidth(user), widthBefore);
    QVERIFY(!view->isColumnHidden(user));
    QCOMPARE(place(), placeBefore);
}

QTEST_MAIN(TestEventList)
#include "tst_event_list.moc"
