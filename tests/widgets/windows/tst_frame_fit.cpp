#include "support/FakeScreens.h"
#include "support/Mouse.h"
#include "support/RuntimeProject.h"

#include "widgets/events/AlarmWindow.h"
#include "widgets/windows/WindowBasic.h"
#include "widgets/windows/frames/FrameGeometry.h"
#include "widgets/windows/frames/FrameMapping.h"
#include "widgets/windows/frames/FrameTabs.h"
#include "widgets/windows/frames/FrameWidget.h"
#include "widgets/windows/frames/FrameWindow.h"

#include <QDialog>
#include <QPushButton>
#include <QTemporaryDir>

using namespace Widgets;
using Nodes::BasicFrame;

namespace {

// Drawn for twice the first display; the second display is as large as drawn.
constexpr const char *plant = R"(
<frame id="20" name="Beyond" display="3" fit="fit" windows="12"/>
<frame id="21" name="Main" display="1" fit="fit" windows="10 11"/>
<frame id="22" name="Fixed" display="2" windows="13"/>
<window id="10" name="Head" width="3840" height="161"/>
<window id="11" name="Mimic" y="161" width="3840" height="1999" onPress="40">
  <button id="15" name="B" x="1001" y="839" width="400" height="200" onPress="41"/></window>
<window id="12" name="Away" width="400" height="300"/>
<window id="13" name="Drawn" x="30" y="40" width="400" height="300"/>
<window id="14" name="Faceplate" x="1600" y="800" width="800" height="400" border="fixed"/>
<memorySignal id="30" name="window" type="int" writable="true"/>
<memorySignal id="31" name="button" type="int" writable="true"/>
<actionWriteValue id="40" name="W1" signal="30" value="1"/>
<actionWriteValue id="41" name="W2" signal="31" value="1"/>
<actionShowWindow id="42" name="own place" window="14"/>
<actionShowWindow id="43" name="point" window="14" position="point" x="200" y="100"/>
<actionShowWindow id="44" name="centre" window="14" position="center"/>
<actionShowWindow id="45" name="title above the edge" window="14" position="point" x="0" y="0"/>
<actionShowWindow id="46" name="as drawn" window="14" display="2"/>
<window id="16" name="Huge" width="30000" height="30000" border="fixed"/>
<actionShowWindow id="47" name="huge" window="16" display="2"/>
<station id="90" name="St"><alarming id="91" name="A"/></station>)";

QRect areaOf(const QWidget &widget)
{
    return {widget.mapToGlobal(QPoint(0, 0)), widget.size()};
}

struct Plant : RuntimeProject
{
    explicit Plant(const QString &journal = {}) : RuntimeProject(plant)
    {
        if (!journal.isEmpty() && !core.GetJournal().Open(journal.toStdString()))
            qFatal("no journal");
        manager->Start();
    }
    WindowBasic *window(unsigned long id) const
    {
        return qobject_cast<WindowBasic *>(manager->GetWindow(id));
    }
    QRect area(unsigned long id) const { return areaOf(*window(id)); }
    QString front(int screen) const
    {
        const QWidget *frame = manager->getFrame(screen);
        return frame ? frame->windowTitle() : QString();
    }
};

} // namespace

class TestFrameFit : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { FakeScreens::install(2); }

    void maps_data()
    {
        QTest::addColumn<int>("fit");
        QTest::addColumn<QRect>("place"); // of the right half of what is drawn
        QTest::newRow("as drawn") << int(BasicFrame::FitAsDrawn) << QRect(1000, 60, 800, 900);
        QTest::newRow("fit") << int(BasicFrame::FitInside) << QRect(200, 144, 100, 112);
        QTest::newRow("fill") << int(BasicFrame::FitFill) << QRect(200, 50, 100, 300);
    }
    void maps()
    {
        QFETCH(int, fit);
        const FrameMapping mapping =
            FrameMapping::fitted({100, 10, 1600, 900}, {100, 50, 200, 300}, BasicFrame::enFit(fit));
        const QRect rightHalf(900, 10, 800, 900);
        QTEST(mapping.toScreen(rightHalf), "place");
        const QPointF back = mapping.toNode(mapping.toScreen(QPointF(333, 777)));
        QVERIFY(QLineF(back, QPointF(333, 777)).length() < 1e-9);
    }

    void framesFitTheirDisplays()
    {
        const Plant project;
        QCOMPARE(project.manager->getFrame(0)->geometry(), QRect(QPoint(), FakeScreens::Size));
        QCOMPARE(project.area(10), QRect(0, 0, 1920, 81)); // 80.5: the edge is shared
        QCOMPARE(project.area(11), QRect(0, 81, 1920, 999));
        QCOMPARE(project.area(13),
                 QRect(FakeScreens::topLeft(1) + QPoint(30, 40), QSize(400, 300)));
    }

    void pressesLandOnWhatIsSeen()
    {
        const Plant project;
        QWidget &mimic = *project.window(11)->viewport();
        sendMouse(mimic, QEvent::MouseButtonPress, QPoint(703, 425)); // just beside the button
        sendMouse(mimic, QEvent::MouseButtonRelease, QPoint(703, 425));
        QTRY_COMPARE(project.value(30).ToInt(), 1);
        QVERIFY(project.value(31).IsEmpty());
        sendMouse(mimic, QEvent::MouseButtonPress, QPoint(505, 425)); // just inside
        QTRY_COMPARE(project.value(31).ToInt(), 1);
    }

    void openedWindowsMatchTheFrame_data()
    {
        QTest::addColumn<int>("action");
        QTest::addColumn<QRect>("client");
        const int title = FrameWindow().getTitleHeight() + FrameWindow().getFrameWidth();
        QTest::newRow("own place") << 42 << QRect(800, 400, 400, 200);
        QTest::newRow("point") << 43 << QRect(100, 50, 400, 200);
        QTest::newRow("centre") << 44 << QRect(760, 440, 400, 200);
        QTest::newRow("title above the edge") << 45 << QRect(0, title, 400, 200);
        QTest::newRow("as drawn") << 46 << QRect(1920 + 1600, 800, 800, 400);
    }
    void openedWindowsMatchTheFrame()
    {
        QFETCH(int, action);
        const Plant project;
        project.run(unsigned(action));
        QTEST(project.area(14), "client");
        const double scale = action == 46 ? 1 : 0.5;
        QCOMPARE(project.window(14)->transform(), QTransform::fromScale(scale, scale));
    }

    void followsTheResolution()
    {
        const Plant project;
        project.run(43);
        FakeScreens::resize(0, {960, 600});
        QTRY_COMPARE(project.manager->getFrame(0)->size(), QSize(960, 600));
        QCOMPARE(project.area(10), QRect(0, 30, 960, 40)); // 16:9 in the middle of 16:10
        QCOMPARE(project.area(14), QRect(50, 55, 200, 100));
        FakeScreens::resize(0, FakeScreens::Size);
        QTRY_COMPARE(project.area(14), QRect(100, 50, 400, 200));
    }

    void nothingIsLargerThanTheDisplays()
    {
        const Plant project;
        project.run(47);
        const QSize desktop(2 * FakeScreens::Size.width(), FakeScreens::Size.height());
        QCOMPARE(project.window(16)->size(), desktop);
        QVERIFY(project.window(16)->window()->width() < desktop.width() + 100);
        QCOMPARE(project.window(16)->sceneRect().size(), QSizeF(30000, 30000));
    }

    void missingDisplayHidesNothing()
    {
        const QTemporaryDir directory;
        const Plant project(directory.filePath("j.sqlite"));
        QCOMPARE(project.journalled("Дисплей 3 не подключён: фрейм «Beyond»"), 1);
        Nodes::JournalQuery ofFrame; // as an event list filtered by that source asks
        ofFrame.nodes = {project.core.GetJournal().SourceOf(project.node(20)->GetNodeLink())};
        std::vector<Nodes::BasicEvent> told;
        QVERIFY(project.core.GetJournal().Query(ofFrame, told));
        QCOMPARE(told.size(), std::size_t(1));
        QCOMPARE(project.front(0), QString("Main"));
        QWidget *main = project.manager->getFrame(0);
        QCOMPARE(project.area(12).topLeft(), QPoint(240, 0)); // 4:3 in the middle
        FrameTabs *tabs = FrameTabs::of(*main);
        QVERIFY(tabs && tabs->isVisible() && !FrameTabs::of(*project.manager->getFrame(1)));
        QEvent enter(QEvent::Enter);
        QApplication::sendEvent(tabs, &enter);
        QVERIFY(!tabs->isOpen()); // the pointer may only pass
        QTRY_VERIFY(tabs->isOpen());
        const auto buttons = tabs->findChildren<QPushButton *>();
        QCOMPARE(buttons.size(), 2);
        QVERIFY(main->rect().contains(tabs->geometry()));
        buttons[0]->click();
        QVERIFY(!tabs->isOpen());
        QTRY_COMPARE(project.front(0), QString("Beyond"));
        FakeScreens::add();
        QTRY_COMPARE(project.front(2), QString("Beyond"));
        QCOMPARE(project.area(12).topLeft(), FakeScreens::topLeft(2) + QPoint(240, 0));
        QCOMPARE(project.front(0), QString("Main"));
        QVERIFY(!FrameTabs::of(*main));
        FakeScreens::remove(2);
        QTRY_VERIFY(FrameTabs::of(*main));
        QCOMPARE(project.front(0), QString("Main"));
    }

    void dialogsFollowTheirDisplay()
    {
        const Plant project;
        AlarmWindow &alarms = *project.manager->GetWindowAlarms(); // hidden as yet
        QDialog dialog(nullptr, Qt::Dialog | Qt::FramelessWindowHint);
        for (QWidget *window : {static_cast<QWidget *>(&alarms), static_cast<QWidget *>(&dialog)})
            window->setGeometry(QRect(FakeScreens::topLeft(1) + QPoint(300, 200), QSize(400, 300)));
        dialog.show();
        FakeScreens::remove(1);
        QTRY_COMPARE(dialog.pos(), QPoint(300, 200));
        QCOMPARE(alarms.pos(), QPoint(300, 200));
        FakeScreens::resize(0, {640, 160}); // the titles are below its edge now
        QTRY_COMPARE(dialog.pos(), QPoint(240, 0));
        FakeScreens::resize(0, FakeScreens::Size);
        FakeScreens::add();
    }

    void titlesStayWithinReach_data()
    {
        QTest::addColumn<bool>("isMaximised");
        QTest::newRow("shown") << false;
        QTest::newRow("restored") << true;
    }
    void titlesStayWithinReach()
    {
        QFETCH(bool, isMaximised);
        FrameWindow window;
        window.setAttribute(Qt::WA_DeleteOnClose, false);
        window.setGeometry(100, -500, 300, 200);
        if (isMaximised)
            window.showMaximized();
        QCOMPARE(window.isVisible(), isMaximised);
        window.showNormal();
        window.resize(300, 200);
        QTRY_COMPARE(window.pos(), QPoint(100, 0));
    }

    void windowsComeBackOnToAScreen_data()
    {
        QTest::addColumn<QRect>("place");
        QTest::addColumn<QPoint>("moved");
        QTest::newRow("within reach") << QRect(-100, 700, 300, 200) << QPoint(-100, 700);
        QTest::newRow("title above") << QRect(100, -30, 300, 200) << QPoint(100, 0);
        QTest::newRow("beyond the edge") << QRect(1900, 1070, 300, 200) << QPoint(1620, 880);
        QTest::newRow("too large") << QRect(50, 2000, 3000, 2000) << QPoint(0, 0);
    }
    void windowsComeBackOnToAScreen()
    {
        QFETCH(QRect, place);
        const QVector<QRect> screens{{0, 0, 1920, 1080}};
        const bool isCaught =
            FrameGeometry::reachable(place, FrameGeometry::TitleStrip, screens) == place.topLeft();
        QTEST(isCaught ? place.topLeft() : FrameGeometry::inside(place, screens), "moved");
    }
};

QTEST_MAIN(TestFrameFit)
#include "tst_frame_fit.moc"
