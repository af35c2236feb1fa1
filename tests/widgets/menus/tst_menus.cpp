#include "support/FakeScreens.h"
#include "support/Rows.h"
#include "support/RuntimeProject.h"
#include "support/WhenShown.h"
#include "widgets/elements/PictureFiles.h"

#include "widgets/menus/MirelMenu.h"
#include "widgets/menus/PushButtonMenuItem.h"
#include "widgets/menus/WidgetAction.h"

#include "nodes/actions/kinds/actionShowMenu.h"
#include "nodes/menus/BasicMenu.h"
#include "nodes/menus/BasicMenuItem.h"

using namespace Widgets;

namespace {

constexpr const char *plant = R"(
<frame id="8" name="F1" display="1"/><frame id="7" name="F2" display="2"/>
<window id="10" name="W" x="30" y="40" width="200" height="100"/>
<memorySignal id="30" name="start" writable="true"/><memorySignal id="31" name="mode" writable="true"/>
<actionWriteValue id="40" name="one" signal="30" value="1"/>
<actionWriteValue id="41" name="two" signal="31" value="1"/>
<actionShowWindow id="42" name="open" window="10"/>
<menu id="50" name="Насосы" entryWidth="240" entryHeight="48" pictures="true">
    <menuItem id="51" name="Пуск" actions="40" picture="halves.png"/>
    <folder id="55" name="no entry"/>
    <menu id="52" name="Режим работы"><menuItem id="53" name="Автомат" actions="41"/></menu>
    <menuItem id="54" name="Открыть" actions="42"/>
</menu>
<menu id="60" name="Empty"/><menuItem id="61" name="alone"/>
<actionShowMenu id="70" name="menu" menus="50" x="100" y="120"/>
<actionShowMenu id="71" name="far" menus="50" x="5000" y="5000"/>
<actionShowMenu id="72" name="none" menus=""/>)";

struct Rig : RuntimeProject
{
    Rig() : RuntimeProject(plant), menu(look(), node<Nodes::BasicMenu>(50)) { record({30, 31}); }
    Nodes::actionShowMenu *look() const { return node<Nodes::actionShowMenu>(70); }

    MirelMenu menu;
};

PushButtonMenuItem *entry(const QMenu &menu, int number)
{
    return qobject_cast<WidgetAction *>(menu.actions().at(number))->item();
}

QString hovered(const QMenu &menu)
{
    QStringList names;
    for (int i = 0; i < menu.actions().size(); ++i)
        if (entry(menu, i)->isHovered())
            names << entry(menu, i)->text();
    return names.join(',');
}

} // namespace

class MenusTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { FakeScreens::install(2); }
    void buildsEntries()
    {
        Rig rig;
        MirelMenu &menu = rig.menu;
        QCOMPARE(menu.title(), QString("Насосы"));
        QStringList texts;
        for (int i = 0; i < menu.actions().size(); ++i) {
            texts << entry(menu, i)->text();
            QCOMPARE(entry(menu, i)->sizeHint(), QSize(240, 48));
        }
        QCOMPARE(texts.join(','), QString("Пуск,Режим работы,Открыть"));
        QCOMPARE(menu.actions()[1]->menu()->actions().size(), 1);
        QVERIFY(!menu.actions()[0]->menu());
        menu.createMenu(nullptr);
        QCOMPARE(menu.actions().size(), 3);
        QVERIFY(MirelMenu(rig.look(), rig.node<Nodes::BasicMenu>(60)).isEmpty());
        const PushButtonMenuItem alone(rig.look(), rig.node<Nodes::BasicMenuItem>(61));
        QCOMPARE(alone.sizeHint(), QSize(0, 0));
    }
    void mouseRunsItemsOnce()
    {
        Rig rig;
        MirelMenu &menu = rig.menu;
        menu.popup({100, 100});
        QTest::mouseRelease(entry(menu, 0), Qt::LeftButton); // of the press that opened the menu
        QVERIFY(menu.isVisible());
        QTest::mouseMove(entry(menu, 1));
        QTest::mouseClick(entry(menu, 1), Qt::LeftButton);
        QTRY_VERIFY(menu.actions()[1]->menu()->isVisible());
        QCOMPARE(rig.ran(), QString());
        QTest::mouseMove(entry(menu, 0));
        QTest::mouseClick(entry(menu, 0), Qt::LeftButton);
        QVERIFY(!menu.isVisible());
        QCOMPARE(rig.ran(), QString("start"));
        menu.popup({100, 100}); // the mouse before does not count for the keys now
        QTest::keyClick(&menu, Qt::Key_Down);
        QTest::keyClick(&menu, Qt::Key_Return);
        QCOMPARE(rig.ran(), QString("start"));
    }
    void keysWork_data()
    {
        const Rows<QVector<int>, QString> row("keys", "written");
        row("enter on the first", {Qt::Key_Down, Qt::Key_Return}, "start");
        row("into the submenu", {Qt::Key_Down, Qt::Key_Down, Qt::Key_Right, Qt::Key_Return},
            "mode");
        row("escape", {Qt::Key_Down, Qt::Key_Escape}, "");
    }
    void keysWork()
    {
        QFETCH(QVector<int>, keys);
        Rig rig;
        bool wasShown = false;
        const WhenShown<MirelMenu> typist([&](MirelMenu &) {
            wasShown = true;
            for (const int key : keys)
                QTest::keyClick(QApplication::activePopupWidget(), Qt::Key(key));
        });
        rig.push(70);
        QTRY_VERIFY(wasShown && !QApplication::activePopupWidget());
        QTEST(rig.ran(), "written");
    }
    void marksOneEntry()
    {
        Rig rig;
        MirelMenu &menu = rig.menu;
        menu.popup({100, 100});
        QCOMPARE(hovered(menu), QString());
        for (const char *name : {"Пуск", "Режим работы", "Открыть"}) {
            QTest::keyClick(&menu, Qt::Key_Down);
            QCOMPARE(hovered(menu), QString(name));
        }
        QTest::keyClick(&menu, Qt::Key_Up);
        QTest::keyClick(&menu, Qt::Key_Right);
        QMenu *nested = menu.actions()[1]->menu();
        QTRY_COMPARE(hovered(*nested), QString("Автомат"));
        QCOMPARE(hovered(menu), QString("Режим работы"));
        menu.hide();
        QCOMPARE(hovered(menu), QString());
    }
    // Opened beyond the edge of the second display; the window its item opens appears there too.
    void staysOnItsDisplay()
    {
        Rig rig;
        rig.manager->Start();
        QRect shown;
        const WhenShown<MirelMenu> finger([&shown](MirelMenu &menu) {
            shown = menu.frameGeometry();
            QTest::mouseMove(entry(menu, 2));
            QTest::mouseClick(entry(menu, 2), Qt::LeftButton);
        });
        rig.push(72);
        rig.push(71, 1);
        QTRY_COMPARE(rig.openWindows(10), 1);
        QVERIFY(shown.width() >= 240);
        QVERIFY(QRect(FakeScreens::topLeft(1), FakeScreens::Size).contains(shown));
        const QWidget *window = rig.manager->GetWindow(10);
        QTRY_COMPARE(window->mapToGlobal(QPoint()), FakeScreens::topLeft(1) + QPoint(30, 40));
    }
    void showsPictures()
    {
        const PictureFiles files;
        const Rig rig;
        const auto isRedShown = [&](int number) {
            MirelMenu menu(rig.look(), rig.node<Nodes::BasicMenu>(50));
            PushButtonMenuItem *shown = entry(menu, number);
            shown->resize(shown->sizeHint());
            return shown->grab().toImage().pixelColor(20, 24) == QColor(Qt::red);
        };
        QVERIFY(isRedShown(0));
        QVERIFY(!isRedShown(2));
        rig.set(50, "pictures", "false");
        QVERIFY(!isRedShown(0));
    }
};

QTEST_MAIN(MenusTest)
#include "tst_menus.moc"
