#include "support/MessageBoxes.h"
#include "support/Rows.h"
#include "support/ShownElement.h"

#include "widgets/elements/input/InputNotice.h"
#include "widgets/elements/input/ValueWriter.h"
#include "widgets/elements/qwidgetCheckBox.h"
#include "widgets/elements/qwidgetComboBox.h"
#include "widgets/scene/ProxyWidget.h"

#include "nodes/model/KindBuilder.h"
#include "nodes/model/KindTable.h"
#include "nodes/signals/memorySignal.h"
#include "nodes/visual/elements/widgetComboBox.h"

#include <QAbstractItemView>
#include <QGraphicsScene>
#include <QGraphicsView>
#include <QLabel>
#include <QLineEdit>

using namespace Widgets;
using Nodes::Quality;

namespace {

/// A source that refuses without a word.
class SilentSignal : public Nodes::memorySignal
{
public:
    static constexpr auto Code = Nodes::NodeType::enNodeSubtype(0x50F1);

    static Nodes::KindInfo Kind()
    {
        return Nodes::KindBuilder::For<SilentSignal>("silentSignal", "", "")
            .Inherit<Nodes::BasicSignal>();
    }

protected:
    Nodes::Result DoWrite(const Nodes::SignalValue &) override
    {
        return Nodes::Result(this, Nodes::Result::Refused);
    }
};

constexpr const char *screen = R"(
<memorySignal id="10" name="Mode" type="int" writable="true" maximum="5"/>
<memorySignal id="11" name="Ratio" type="double" writable="true"/>
<memorySignal id="12" name="Fixed" type="int"/>
<silentSignal id="13" name="Silent" type="int" writable="true"/>
<memorySignal id="14" name="Pump" type="bool" writable="true"/>
<memorySignal id="15" name="Second" type="int" writable="true"/>
<memorySignal id="16" name="After" type="int" writable="true"/>
<actionWriteValue id="17" name="after" signal="16" value="1"/>
<comboBox id="20" name="C" x="10" y="200" width="160" height="36" signal="10" afterWrite="17">
  <comboItem id="21" name="a" text="Стоп" value="0"/><comboItem id="22" name="b" text="Ручной" value="1"/>
  <comboItem id="23" name="c" text="Авто" value="2"/><comboItem id="24" name="d" text="Девять" value="9"/>
</comboBox>
<comboBox id="30" name="Ratio" signal="11" width="160">
  <comboItem id="31" name="a" value="0.1"/><comboItem id="32" name="b" value="0.5"/>
</comboBox>
<comboBox id="40" name="Targets" signal="10" targets="10 13 15" width="160">
  <comboItem id="41" name="a" value="0"/><comboItem id="42" name="b" value="1"/>
</comboBox>
<comboBox id="50" name="Loud" signal="10" targets="12 15" width="160">
  <comboItem id="51" name="a" value="0"/><comboItem id="52" name="b" value="1"/>
</comboBox>
<checkBox id="60" name="K" x="10" y="10" width="120" height="40" signal="14" afterWrite="17"/>
<checkBox id="61" name="Locked" signal="12"/>)";

/// Opens the list by a click on the text.
void openList(const qwidgetComboBox &box)
{
    QTest::mouseClick(box.findChild<QLineEdit *>(), Qt::LeftButton);
    QTRY_VERIFY(box.view()->isVisible());
}

/// Takes a row of the list by the keys.
void choose(const qwidgetComboBox &box, int row)
{
    openList(box);
    box.view()->setCurrentIndex(box.model()->index(row, 0));
    QTest::keyClick(box.view(), Qt::Key_Return);
}

} // namespace

class TestChoiceElements : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { Nodes::KindTable::Instance().Add(SilentSignal::Kind()); }
    void comboShowsTheValue_data();
    void comboShowsTheValue();
    void comboWrites_data();
    void comboWrites();
    void everyTargetIsWritten_data();
    void everyTargetIsWritten();
    void anOpenListKeepsStill();
    void aChoiceEndsByItself();
    void keysOpenTheList();
    void listsThatTargetEachOtherEnd();
    void theListOpensAboveItsNeighbours();
    void aRefusalShowsTheValueOfNow();
    void aChoiceWithoutASignalStays();
    void checkBoxToggles_data();
    void checkBoxToggles();
    void nothingFollowsAWriteInTheEditor();
    void aRefusalRestoresWithoutASignal();
};

void TestChoiceElements::comboShowsTheValue_data()
{
    const Rows<unsigned, double, Quality, QString> row("box", "value", "quality", "shown");
    row("choice", 20, 2, Quality::Good, "Авто");
    row("no such choice", 20, 4, Quality::Good, "----");
    row("stale", 20, 2, Quality::Stale, "Авто");
    row("bad", 20, 2, Quality::Bad, "----");
    row("same to six decimals", 30, 0.1000000004, Quality::Good, "a");
    row("differs in the sixth", 30, 0.100001, Quality::Good, "----");
}

void TestChoiceElements::comboShowsTheValue()
{
    QFETCH(unsigned, box);
    QFETCH(double, value);
    QFETCH(Quality, quality);
    const RuntimeProject project(screen);
    const ShownElement<qwidgetComboBox> shown(project, box);
    project.publish(box == 20 ? 10 : 11, value, quality);
    QTRY_COMPARE(shown->shownQuality(), quality);
    QTEST(shown->shownText(), "shown");
}

void TestChoiceElements::comboWrites_data()
{
    const Rows<QByteArray, QByteArray, int, int, int, QString> row("users", "confirm", "button",
                                                                   "row", "written", "message");
    const QString question = "Новое значение: Установить значение Авто ?";
    row("at once", "", "false", QMessageBox::Ok, 2, 2, "");
    row("confirmed", "", "true", QMessageBox::Ok, 2, 2, question + "|Установить");
    row("cancelled", "", "true", QMessageBox::Cancel, 2, 1, question + "|Отмена");
    row("no right", RuntimeProject::NobodyLoggedIn, "false", QMessageBox::Ok, 2, 1,
        "Внимание: Недостаточно прав|ОK");
    row("beyond the limits", "", "false", QMessageBox::Ok, 3, 1,
        "Внимание: Значение вне допустимых пределов\nMode = 9, 0..5|ОK");
}

void TestChoiceElements::comboWrites()
{
    QFETCH(QByteArray, users);
    QFETCH(QByteArray, confirm);
    QFETCH(int, button);
    QFETCH(int, row);
    QFETCH(int, written);
    const RuntimeProject project(screen + users);
    project.set(20, "confirm", confirm);
    project.publish(10, 1);
    const ShownElement<qwidgetComboBox> shown(project, 20);
    MessageBoxes boxes{QMessageBox::StandardButton(button)};
    // The value goes on living behind the question; the question is about what was chosen.
    boxes.whileOpen = [&] { project.publish(10, 1); };
    choose(*shown.element, row);
    QTRY_COMPARE(shown->currentIndex(), written);
    QCOMPARE(project.value(10).ToInt(), written);
    QTEST((boxes.shown + boxes.captions).join('|'), "message");
    const bool isWritten = written == row;
    QCOMPARE(project.node<Nodes::widgetComboBox>(20)->GetCurrentIndex(), isWritten ? row : -1);
    if (isWritten)
        QTRY_COMPARE(project.value(16).ToInt(), 1);
    else
        QVERIFY(project.value(16).IsEmpty());
}

void TestChoiceElements::everyTargetIsWritten_data()
{
    const Rows<unsigned, int, int> row("box", "third", "messages");
    row("a silent refusal ends all", 40, 0, 0);
    row("a loud one only its own", 50, 1, 1);
}

void TestChoiceElements::everyTargetIsWritten()
{
    QFETCH(unsigned, box);
    const RuntimeProject project(screen);
    project.publish(10, 0);
    project.publish(15, 0);
    const ShownElement<qwidgetComboBox> shown(project, box);
    const MessageBoxes boxes;
    choose(*shown.element, 1);
    QTRY_COMPARE(shown->currentIndex(), project.value(10).ToInt());
    QTEST(project.value(15).ToInt(), "third");
    QTEST(boxes.shown.size(), "messages");
}

void TestChoiceElements::anOpenListKeepsStill()
{
    const RuntimeProject project(screen);
    project.publish(10, 0);
    const ShownElement<qwidgetComboBox> shown(project, 20);
    openList(*shown.element);
    project.publish(10, 2);
    QTRY_COMPARE(shown->shownText(), QString("Авто")); // the box tells the value of now
    QCOMPARE(shown->view()->currentIndex().row(), 0);
    QTest::keyClick(shown->view(), Qt::Key_Escape);
    QCOMPARE(shown->shownText(), QString("Авто"));
    QCOMPARE(project.value(10).ToInt(), 2);
    // What was the value when the list opened is a choice like any other.
    openList(*shown.element);
    project.publish(10, 0);
    QTRY_COMPARE(shown->shownText(), QString("Стоп"));
    QTest::keyClick(shown->view(), Qt::Key_Return);
    QTRY_COMPARE(project.value(10).ToInt(), 2);
}

void TestChoiceElements::aChoiceEndsByItself()
{
    const RuntimeProject project(screen);
    project.set(20, "editTimeout", "1");
    project.set(20, "confirm", "true");
    project.publish(10, 1);
    const ShownElement<qwidgetComboBox> shown(project, 20);
    openList(*shown.element);
    QTRY_VERIFY(!shown->view()->isVisible());
    QVERIFY(!InputNotice::current()); // nothing was chosen
    choose(*shown.element, 2);        // returns when the question is gone
    QTRY_VERIFY(InputNotice::current());
    QCOMPARE(InputNotice::current()->text(), QString("Значение не записано. Время выбора вышло."));
    QCOMPARE(project.value(10).ToInt(), 1);
    QTRY_COMPARE(shown->currentIndex(), 1);
}

void TestChoiceElements::keysOpenTheList()
{
    const RuntimeProject project(screen);
    const ShownElement<qwidgetComboBox> box(project, 20);
    project.publish(10, 0., Quality::Bad);
    QTRY_COMPARE(box->currentIndex(), -1);
    QTest::keyClick(box.operator->(), Qt::Key_Down);
    QTRY_VERIFY(box->view()->isVisible());
    QCOMPARE(box->currentIndex(), -1);
}

void TestChoiceElements::listsThatTargetEachOtherEnd()
{
    const RuntimeProject project(R"(<memorySignal id="10" name="S" type="int" writable="true"/>
<comboBox id="20" name="A" signal="10" targets="30"><comboItem id="21" name="a" value="1"/></comboBox>
<comboBox id="30" name="B" signal="10" targets="20"><comboItem id="31" name="b" value="1"/></comboBox>)");
    QVERIFY(project.node<Nodes::widgetComboBox>(20)->WriteValue(1));
    QCOMPARE(project.value(10), Nodes::SignalValue(1));
}

void TestChoiceElements::theListOpensAboveItsNeighbours()
{
    struct Row
    {
        const char *popupUp;
        int height; // of the scene
        double scale;
        bool isAbove;
    };
    for (const auto &[popupUp, height, scale, isAbove] :
         {Row{"false", 600, 1, false}, Row{"true", 600, 1, true}, Row{"false", 600, 0.5, false},
          Row{"true", 600, 0.5, true}, Row{"true", 600, 1.5, true}, Row{"false", 250, 1, true}}) {
        const RuntimeProject project(screen);
        project.set(20, "popupUp", popupUp);
        QGraphicsScene scene(0, 0, 400, height);
        QGraphicsView view(&scene);
        view.scale(scale, scale);
        auto *host = new ProxyWidget(project.node(20)->GetNodeLink());
        scene.addItem(host);
        host->setZValue(3);
        view.show();
        auto *box = qobject_cast<qwidgetComboBox *>(host->widget());
        QVERIFY(box && QTest::qWaitForWindowExposed(&view));
        QApplication::setActiveWindow(&view);
        QTest::mouseClick(view.viewport(), Qt::LeftButton, {},
                          view.mapFromScene(host->sceneBoundingRect().center()));
        QTRY_VERIFY(box->view()->isVisible());
        QCOMPARE(host->zValue(), 100.0);
        const QRectF list = host->childItems().first()->sceneBoundingRect();
        const QRectF below = host->sceneBoundingRect();
        const double gap = isAbove ? below.top() - list.bottom() : list.top() - below.bottom();
        QVERIFY2(qAbs(gap) <= 1, QByteArray::number(gap));
        QVERIFY(box->view()->sizeHintForRow(0) >= 32);
        box->hidePopup();
        QCOMPARE(host->zValue(), 3.0);
        box->showPopup();
        QTRY_VERIFY(box->view()->isVisible());
        QWidget other; // the list goes with the activity of its window
        other.show();
        QApplication::setActiveWindow(&other);
        QTRY_VERIFY(!box->view()->isVisible());
        project.publish(10, 1);
        QTRY_COMPARE(box->shownText(), QString("Ручной"));
        QCOMPARE(host->zValue(), 3.0);
    }
}

void TestChoiceElements::checkBoxToggles_data()
{
    const Rows<unsigned, QPoint, QByteArray, bool, bool, int> row("id", "hit", "users", "editing",
                                                                  "toggled", "messages");
    const QPoint middle(60, 20);
    row("middle", 60, middle, "", false, true, 0);
    row("far corner", 60, {119, 39}, "", false, true, 0);
    row("no right", 60, middle, RuntimeProject::NobodyLoggedIn, false, false, 1);
    row("read only", 61, {5, 5}, "", false, false, 1);
    row("editor", 60, middle, "", true, false, 0);
}

void TestChoiceElements::checkBoxToggles()
{
    QFETCH(unsigned, id);
    QFETCH(QPoint, hit);
    QFETCH(QByteArray, users);
    QFETCH(bool, editing);
    QFETCH(bool, toggled);
    RuntimeProject project(screen + users,
                           editing ? Nodes::WorkModeEditing : Nodes::WorkModeRuntime);
    project.publish(14, false);
    project.publish(12, 0);
    project.record({14, 16});
    const ShownElement<qwidgetCheckBox> shown(project, id);
    const MessageBoxes boxes;
    QTest::mouseClick(shown.element, Qt::LeftButton, {}, hit);
    QTRY_COMPARE(shown->isChecked(), toggled);
    QCOMPARE(project.value(14).ToBool(), toggled);
    QTEST(boxes.shown.size(), "messages");
    QTRY_COMPARE(project.recorded.join(' '), QString(toggled ? "Pump After" : ""));
    project.publish(id == 60 ? 14 : 12, true, Quality::Bad);
    QTRY_COMPARE(shown->shownText(), QString(editing ? "0" : "----"));
    project.recorded.clear();
    QTest::mouseClick(shown.element, Qt::LeftButton, {}, hit);
    QVERIFY(project.recorded.isEmpty()); // no opposite of an unknown is written
}

void TestChoiceElements::aRefusalShowsTheValueOfNow()
{
    const RuntimeProject project(screen);
    project.publish(10, 0);
    project.publish(12, 0);
    project.set(15, "writable", "false");
    const ShownElement<qwidgetComboBox> combo(project, 50);
    const ShownElement<qwidgetCheckBox> check(project, 61);
    QSignalSpy updates(check.element, &qwidgetCheckBox::valueUpdated);
    MessageBoxes boxes;
    boxes.whileOpen = [&] {
        updates.clear();
        project.publish(10, 1);
        project.publish(12, 5);
        QTRY_VERIFY(!updates.isEmpty());
    };
    choose(*combo.element, 1);
    QTRY_COMPARE(boxes.shown.size(), 2);
    QCOMPARE(combo->currentIndex(), 1);
    project.publish(12, 0);
    QTRY_VERIFY(!check->isChecked());
    check->click();
    QCOMPARE(boxes.shown.size(), 3);
    QVERIFY(check->isChecked());
}

void TestChoiceElements::aChoiceWithoutASignalStays()
{
    const RuntimeProject project(screen);
    project.set(50, "signal", "0");
    project.set(50, "targets", "15");
    const ShownElement<qwidgetComboBox> combo(project, 50);
    choose(*combo.element, 1);
    QTRY_COMPARE(combo->shownText(), QString("b"));
    openList(*combo.element);
    QTest::keyClick(combo->view(), Qt::Key_Escape);
    QCOMPARE(combo->shownText(), QString("b"));
}

void TestChoiceElements::nothingFollowsAWriteInTheEditor()
{
    RuntimeProject project(screen, Nodes::WorkModeEditing);
    project.record({14, 16});
    QWidget element;
    QVERIFY(ValueWriter::write(element, *SceneContext::process(),
                               *project.node<Nodes::BasicWidget>(60), true, {}));
    QTest::qWait(60); // longer than the action pacing
    QCOMPARE(project.recorded, QStringList{"Pump"});
}

void TestChoiceElements::aRefusalRestoresWithoutASignal()
{
    const RuntimeProject project(screen);
    const MessageBoxes boxes;
    QCheckBox element;
    const QSignalSpy changes(&element, &QCheckBox::toggled);
    QVERIFY(!ValueWriter::write(element, *SceneContext::process(),
                                *project.node<Nodes::BasicWidget>(61), true,
                                [&element] { element.setChecked(true); }));
    QVERIFY(element.isChecked() && changes.isEmpty());
}

QTEST_MAIN(TestChoiceElements)
#include "tst_choice_elements.moc"
