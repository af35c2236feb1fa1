#include "support/MessageBoxes.h"
#include "support/ShownElement.h"

#include "widgets/elements/qwidgetCheckBox.h"
#include "widgets/elements/qwidgetComboBox.h"
#include "widgets/scene/ProxyWidget.h"

#include "nodes/model/KindBuilder.h"
#include "nodes/model/KindTable.h"
#include "nodes/signals/memorySignal.h"
#include "nodes/visual/widgetComboBox.h"

#include <QAbstractItemView>
#include <QGraphicsScene>
#include <QGraphicsView>
#include <QLineEdit>

using namespace Widgets;
using Nodes::Quality;

Q_DECLARE_METATYPE(Nodes::Quality)

namespace {

/// A source that refuses without a word.
class SilentSignal : public Nodes::memorySignal
{
public:
    static Nodes::KindInfo Kind()
    {
        return Nodes::KindBuilder::For<SilentSignal>(Nodes::NodeType::enNodeSubtype(0x50F1),
                                                     "silentSignal", "", "")
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

constexpr const char *users =
    R"(<station id="89" name="St"><authentication id="90" name="A"/></station><user id="91" name="U"/>)";

void publish(const RuntimeProject &project, unsigned long signal, Nodes::SignalValue value,
             Quality quality = Quality::Good)
{
    if (!value.IsEmpty())
        value.SetQuality(quality);
    project.node<Nodes::BasicSignal>(signal)->GetCell()->Publish(value);
}

/// Opens the list by a click on the text and takes a row by the keys.
void choose(qwidgetComboBox &box, int row)
{
    QTest::mouseClick(box.findChild<QLineEdit *>(), Qt::LeftButton);
    QTRY_VERIFY(box.view()->isVisible());
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
    void theListOpensAboveItsNeighbours_data();
    void theListOpensAboveItsNeighbours();
    void checkBoxToggles_data();
    void checkBoxToggles();
};

void TestChoiceElements::comboShowsTheValue_data()
{
    QTest::addColumn<unsigned>("box");
    QTest::addColumn<Nodes::SignalValue>("value");
    QTest::addColumn<Quality>("quality");
    QTest::addColumn<QString>("shown");
    const auto row = [](const char *name, unsigned box, Nodes::SignalValue value, Quality quality,
                        const char *shown) {
        QTest::newRow(name) << box << value << quality << shown;
    };
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
    QFETCH(Nodes::SignalValue, value);
    QFETCH(Quality, quality);
    RuntimeProject project(screen);
    const ShownElement<qwidgetComboBox> shown(project, box);
    publish(project, box == 20 ? 10 : 11, value, quality);
    QTRY_COMPARE(shown->shownQuality(), quality);
    QTEST(shown->shownText(), "shown");
}

void TestChoiceElements::comboWrites_data()
{
    QTest::addColumn<QByteArray>("extra");
    QTest::addColumn<bool>("confirmed");
    QTest::addColumn<int>("button");
    QTest::addColumn<int>("row");
    QTest::addColumn<int>("written");
    QTest::addColumn<QStringList>("messages");
    const QStringList none;
    const QStringList question{"Новое значение: Установить значение Авто ?"};
    QTest::newRow("at once") << QByteArray() << false << int(QMessageBox::Ok) << 2 << 2 << none;
    QTest::newRow("confirmed") << QByteArray() << true << int(QMessageBox::Ok) << 2 << 2
                               << question;
    QTest::newRow("cancelled") << QByteArray() << true << int(QMessageBox::Cancel) << 2 << 1
                               << question;
    QTest::newRow("no right") << QByteArray(users) << false << int(QMessageBox::Ok) << 2 << 1
                              << QStringList{"Внимание: Недостаточно прав"};
    QTest::newRow("beyond the limits")
        << QByteArray() << false << int(QMessageBox::Ok) << 3 << 1
        << QStringList{"Внимание: out of range (416), node 10: Mode = 9, 0..5"};
}

void TestChoiceElements::comboWrites()
{
    QFETCH(bool, confirmed);
    QFETCH(int, button);
    QFETCH(int, row);
    QFETCH(int, written);
    QFETCH(QByteArray, extra);
    RuntimeProject project((QByteArray(screen) + extra).constData());
    QVERIFY(project.node(20)->SetPropertyText("confirm", confirmed ? "true" : "false"));
    publish(project, 10, 1);
    const ShownElement<qwidgetComboBox> shown(project, 20);
    MessageBoxes boxes{QMessageBox::StandardButton(button)};
    // The value goes on living behind the question; the question is about what was chosen.
    if (confirmed)
        boxes.whileOpen = [&project] { publish(project, 10, 1); };
    choose(*shown.element, row);
    QTRY_COMPARE(shown->currentIndex(), written);
    QCOMPARE(project.value(10).ToInt(), written);
    QTEST(boxes.shown, "messages");
    if (!boxes.captions.isEmpty() && confirmed)
        QCOMPARE(boxes.captions.first(),
                 QString(button == QMessageBox::Ok ? "Установить" : "Отмена"));
    const bool isWritten = written == row;
    QCOMPARE(project.node<Nodes::widgetComboBox>(20)->GetCurrentIndex(), isWritten ? row : -1);
    if (isWritten)
        QTRY_COMPARE(project.value(16).ToInt(), 1);
    else
        QVERIFY(project.value(16).IsEmpty());
}

void TestChoiceElements::everyTargetIsWritten_data()
{
    QTest::addColumn<unsigned>("box");
    QTest::addColumn<int>("third");
    QTest::addColumn<int>("messages");
    QTest::newRow("a silent refusal ends all") << 40u << 0 << 0;
    QTest::newRow("a loud one only its own") << 50u << 1 << 1;
}

void TestChoiceElements::everyTargetIsWritten()
{
    QFETCH(unsigned, box);
    RuntimeProject project(screen);
    publish(project, 10, 0);
    publish(project, 15, 0);
    const ShownElement<qwidgetComboBox> shown(project, box);
    const MessageBoxes boxes;
    choose(*shown.element, 1);
    QTRY_COMPARE(shown->currentIndex(), project.value(10).ToInt());
    QTEST(project.value(15).ToInt(), "third");
    QTEST(boxes.shown.size(), "messages");
}

void TestChoiceElements::anOpenListKeepsStill()
{
    RuntimeProject project(screen);
    publish(project, 10, 0);
    const ShownElement<qwidgetComboBox> shown(project, 20);
    QTest::mouseClick(shown->findChild<QLineEdit *>(), Qt::LeftButton);
    QTRY_VERIFY(shown->view()->isVisible());
    QSignalSpy values(shown.element, &qwidgetComboBox::valueUpdated);
    publish(project, 10, 2);
    QTRY_COMPARE(values.size(), 1);
    QCOMPARE(shown->currentIndex(), 0);
    QTest::keyClick(shown->view(), Qt::Key_Escape);
    QTRY_COMPARE(shown->currentIndex(), 2);
    QCOMPARE(project.value(10).ToInt(), 2);
}

void TestChoiceElements::theListOpensAboveItsNeighbours_data()
{
    QTest::addColumn<bool>("upward");
    QTest::newRow("down") << false;
    QTest::newRow("up") << true;
}

void TestChoiceElements::theListOpensAboveItsNeighbours()
{
    QFETCH(bool, upward);
    RuntimeProject project(screen);
    QVERIFY(project.node(20)->SetPropertyText("popupUp", upward ? "true" : "false"));
    QGraphicsScene scene(0, 0, 400, 600);
    QGraphicsView view(&scene);
    auto *host = new ProxyWidget(project.node(20)->GetNodeLink());
    scene.addItem(host);
    host->setZValue(3);
    view.show();
    auto *box = qobject_cast<qwidgetComboBox *>(host->widget());
    QVERIFY(box && QTest::qWaitForWindowExposed(&view));
    QTest::mouseClick(view.viewport(), Qt::LeftButton, {},
                      view.mapFromScene(host->sceneBoundingRect().center()));
    QTRY_VERIFY(box->view()->isVisible());
    QCOMPARE(host->zValue(), 100.0);
    const QRectF list = host->childItems().first()->sceneBoundingRect();
    QCOMPARE(list.bottom() <= host->sceneBoundingRect().top() + 1, upward);
    QVERIFY(box->view()->sizeHintForRow(0) >= 32);
    box->hidePopup();
    QCOMPARE(host->zValue(), 3.0);
}

void TestChoiceElements::checkBoxToggles_data()
{
    QTest::addColumn<unsigned>("id");
    QTest::addColumn<QPoint>("hit");
    QTest::addColumn<QByteArray>("extra");
    QTest::addColumn<bool>("editing");
    QTest::addColumn<bool>("toggled");
    QTest::addColumn<int>("messages");
    const QByteArray none;
    QTest::newRow("middle") << 60u << QPoint(60, 20) << none << false << true << 0;
    QTest::newRow("far corner") << 60u << QPoint(119, 39) << none << false << true << 0;
    QTest::newRow("no right") << 60u << QPoint(60, 20) << QByteArray(users) << false << false << 1;
    QTest::newRow("read only") << 61u << QPoint(5, 5) << none << false << false << 1;
    QTest::newRow("editor") << 60u << QPoint(60, 20) << none << true << false << 0;
}

void TestChoiceElements::checkBoxToggles()
{
    QFETCH(unsigned, id);
    QFETCH(QPoint, hit);
    QFETCH(QByteArray, extra);
    QFETCH(bool, editing);
    QFETCH(bool, toggled);
    RuntimeProject project((QByteArray(screen) + extra).constData(),
                           editing ? Nodes::WorkModeEditing : Nodes::WorkModeRuntime);
    publish(project, 14, false);
    publish(project, 12, 0);
    const ShownElement<qwidgetCheckBox> shown(project, id);
    const MessageBoxes boxes;
    QTest::mouseClick(shown.element, Qt::LeftButton, {}, hit);
    QTRY_COMPARE(shown->isChecked(), toggled);
    QCOMPARE(project.value(14).ToBool(), toggled);
    QTEST(boxes.shown.size(), "messages");
    if (toggled)
        QTRY_COMPARE(project.value(16).ToInt(), 1);
    publish(project, 14, true, Quality::Bad);
    if (id == 60)
        QTRY_COMPARE(shown->shownText(), QString("----"));
}

QTEST_MAIN(TestChoiceElements)
#include "tst_choice_elements.moc"
