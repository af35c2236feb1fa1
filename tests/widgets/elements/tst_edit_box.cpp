#include "support/MessageBoxes.h"
#include "support/ShownElement.h"

#include "widgets/dialogs/VirtualKeyboard.h"
#include "widgets/dialogs/VirtualNumpad.h"
#include "widgets/elements/qwidgetEditBox.h"
#include "widgets/scene/ProxyWidget.h"

#include <QGraphicsScene>
#include <QGraphicsView>
#include <QPushButton>

using namespace Widgets;
using Nodes::Quality;

namespace {

constexpr const char *screen = R"(
<memorySignal id="10" name="Level" writable="true"/>
<memorySignal id="11" name="Speed" type="int" writable="true"/>
<memorySignal id="12" name="Tag" type="string" writable="true"/>
<memorySignal id="13" name="On" type="bool" writable="true"/>
<memorySignal id="14" name="Fixed"/>
<memorySignal id="15" name="Count" type="ulong" writable="true" maximum="500"/>
<memorySignal id="16" name="After" writable="true"/>
<actionWriteValue id="17" name="after" signal="16" value="1"/>
<editBox id="20" name="Level" x="10" y="10" width="160" height="40" signal="10" step="0.25" stepButtons="true"
         keyboardButton="true" afterWrite="17"/>
<editBox id="21" name="Speed" signal="11" x="10" y="60" minimum="0" maximum="20"/>
<editBox id="22" name="Tag" signal="12" x="10" y="60"/><editBox id="23" name="On" signal="13" x="10" y="60"/>
<editBox id="24" name="Fixed" signal="14" x="10" y="60"/><editBox id="25" name="Count" signal="15" x="10" y="60"/>
<editBox id="26" name="Touch" signal="10" x="10" y="60" keyboardOnClick="true"/>
<editBox id="27" name="Text" signal="12" x="10" y="60" keyboardOnClick="true"/>)";

constexpr const char *users =
    R"(<station id="89" name="St"><authentication id="90" name="A"/></station><user id="91" name="U"/>)";

void publish(const RuntimeProject &project, unsigned long signal, Nodes::SignalValue value,
             Quality quality = Quality::Good)
{
    value.SetQuality(quality);
    project.node<Nodes::BasicSignal>(signal)->GetCell()->Publish(value);
}

class EditBox : public ShownElement<qwidgetEditBox>
{
public:
    EditBox(const RuntimeProject &project, unsigned long id) : ShownElement(project, id) {}

    void begin() const { QTest::mouseClick(element, Qt::LeftButton, {}, {5, 5}); }
    void type(const char *keys) const
    {
        element->selectAll();
        QTest::keyClicks(element, QString::fromUtf8(keys));
    }
    void lose(Qt::FocusReason reason) const
    {
        QFocusEvent leaving(QEvent::FocusOut, reason);
        QCoreApplication::sendEvent(element, &leaving);
    }
    void press(Qt::Key key) const { QTest::keyClick(element, key); }
    QPushButton *button(const char *text) const
    {
        for (QPushButton *button : element->findChildren<QPushButton *>()) {
            if (button->text() == QLatin1String(text) && button->isVisible())
                return button;
        }
        return nullptr;
    }
};

} // namespace

class TestEditBox : public QObject
{
    Q_OBJECT

private slots:
    void showsTheValue_data();
    void showsTheValue();
    void enterWrites_data();
    void enterWrites();
    void leaving_data();
    void leaving();
    void escapeWritesTheValueBefore();
    void refusals_data();
    void refusals();
    void asksBeforeWriting_data();
    void asksBeforeWriting();
    void stepButtons_data();
    void stepButtons();
    void keyboards_data();
    void keyboards();
    void worksInAScene();
};

void TestEditBox::showsTheValue_data()
{
    QTest::addColumn<QByteArray>("step");
    QTest::addColumn<double>("value");
    QTest::addColumn<int>("quality");
    QTest::addColumn<QString>("text");
    QTest::newRow("decimals of the step")
        << QByteArray("0.25") << 3.0 << int(Quality::Good) << "3.00";
    QTest::newRow("whole step") << QByteArray("1") << 3.0 << int(Quality::Good) << "3";
    QTest::newRow("decimals of the signal")
        << QByteArray("0") << 2.34 << int(Quality::Good) << "2.3";
    QTest::newRow("stale") << QByteArray("1") << 3.0 << int(Quality::Stale) << "3";
    QTest::newRow("bad") << QByteArray("1") << 3.0 << int(Quality::Bad) << "----";
}

void TestEditBox::showsTheValue()
{
    QFETCH(QByteArray, step);
    QFETCH(double, value);
    QFETCH(int, quality);
    RuntimeProject project(screen);
    QVERIFY(project.node(20)->SetPropertyText("step", step.constData()));
    const EditBox box(project, 20);
    publish(project, 10, value, Quality(quality));
    QTRY_COMPARE(int(box->shownQuality()), quality);
    QTEST(box->shownText(), "text");
    QVERIFY(box->text().isEmpty()); // the box draws the value itself
    box.begin();
    QCOMPARE(box->text(), quality == int(Quality::Bad) ? QString() : box->shownText());
}

void TestEditBox::enterWrites_data()
{
    QTest::addColumn<unsigned>("id");
    QTest::addColumn<QByteArray>("keys");
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("value"); // of the signal afterwards; "" for unchanged
    const auto row = [](const char *name, unsigned id, const char *keys, const char *typed,
                        const char *value) {
        QTest::newRow(name) << id << QByteArray(keys) << typed << value;
    };
    row("comma", 20, "1,5", "1.5", "1.5");
    row("negative beyond the limits", 20, "-1", "1", "1");
    row("letters are undone", 20, "1x2", "12", "12");
    row("beyond the range", 20, "150", "150", "");
    row("not a number yet", 20, ".", ".", "");
    row("nothing", 21, "", "7", "7");
    row("int", 21, "12", "12", "12");
    row("int takes no point", 21, "1.2", "12", "12");
    row("int beyond its own range", 21, "99", "99", "");
    row("bool", 23, "1", "1", "true");
    row("bool takes no 2", 23, "2", "0", "false");
    row("ulong", 25, "300", "300", "300");
    row("text", 22, "Pump, 1", "Pump. 1", "Pump. 1");
}

void TestEditBox::enterWrites()
{
    QFETCH(unsigned, id);
    QFETCH(QByteArray, keys);
    QFETCH(QString, value);
    RuntimeProject project(screen);
    const unsigned signal = id == 20 ? 10 : id - 10;
    publish(project, 10, 7.0);
    publish(project, 11, 7);
    publish(project, 13, false);
    publish(project, 12, "");
    publish(project, 15, 7ul);
    const EditBox box(project, id);
    const QString before = box->shownText();
    const Nodes::SignalValue untouched = project.value(signal);
    MessageBoxes boxes;
    box.begin();
    if (!keys.isEmpty())
        box.type(keys.constData());
    QTEST(box->text(), "typed");
    // A value that would be refused is told while it is typed.
    QCOMPARE(box->inputProblem().isEmpty(), !value.isEmpty());
    box.press(Qt::Key_Return);
    QVERIFY(box->text().isEmpty() && box->isReadOnly());
    QCOMPARE(QString::fromStdString(project.value(signal).ToString()),
             value.isEmpty() ? QString::fromStdString(untouched.ToString()) : value);
    if (value.isEmpty())
        QCOMPARE(box->shownText(), before);
    else if (id == 20)
        QTRY_COMPARE(project.value(16).ToInt(), 1);
    QVERIFY(boxes.shown.isEmpty());
}

void TestEditBox::leaving_data()
{
    QTest::addColumn<int>("reason"); // of losing the focus; -1: a press elsewhere
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("shown");
    QTest::newRow("press elsewhere") << -1 << "9"
                                     << "8.00";
    QTest::newRow("other window") << int(Qt::ActiveWindowFocusReason) << "9"
                                  << "8.00";
    QTest::newRow("focus moves on") << int(Qt::OtherFocusReason) << "9"
                                    << "9.00";
}

void TestEditBox::leaving()
{
    QFETCH(int, reason);
    QFETCH(QString, typed);
    RuntimeProject project(screen);
    publish(project, 10, 7.0);
    EditBox box(project, 20);
    QLineEdit other(&box.window);
    other.setGeometry(300, 200, 100, 30);
    other.show();
    project.record({10});
    box.begin();
    box.type(qPrintable(typed));
    publish(project, 10, 8.0);
    QSignalSpy values(box.element, &qwidgetEditBox::valueUpdated);
    QTRY_COMPARE(values.size(), 1);
    QTest::keyClick(box.element, 'x'); // undone, back to what was typed
    QCOMPARE(box->text(), typed);      // a value that comes leaves the typing alone
    if (reason < 0)
        QTest::mouseClick(&other, Qt::LeftButton);
    else if (reason == Qt::ActiveWindowFocusReason)
        box.lose(Qt::FocusReason(reason));
    else
        other.setFocus(Qt::FocusReason(reason));
    QTRY_VERIFY(!box->isEditing());
    QFETCH(QString, shown);
    QTRY_COMPARE(box->shownText(), shown);
    QCOMPARE(project.recorded.size(), shown == QLatin1String("8.00") ? 1 : 2);
}

void TestEditBox::escapeWritesTheValueBefore()
{
    RuntimeProject project(screen);
    publish(project, 10, 7.123456);
    const EditBox box(project, 20);
    project.record({10});
    box.begin();
    box.type("9");
    box.press(Qt::Key_Escape);
    QCOMPARE(project.recorded.size(), 1);
    QCOMPARE(project.value(10).ToDouble(), 7.123456); // not the rounded text
    QVERIFY(!box->isEditing());
    publish(project, 10, 7.0, Quality::Bad);
    QTRY_COMPARE(box->shownText(), QString("----"));
    box.begin();
    box.press(Qt::Key_Escape);
    QCOMPARE(project.recorded.size(), 2); // nothing was known, nothing is written
}

void TestEditBox::refusals_data()
{
    QTest::addColumn<unsigned>("id");
    QTest::addColumn<QByteArray>("properties");
    QTest::addColumn<bool>("isRestricted");
    QTest::addColumn<bool>("edits");
    QTest::addColumn<QStringList>("messages");
    const QStringList none;
    QTest::newRow("no right") << 20u << QByteArray("true") << true << false << none;
    QTest::newRow("right asked late")
        << 20u << QByteArray("false") << true << true << QStringList{"Внимание: Недостаточно прав"};
    QTest::newRow("read only") << 24u << QByteArray("true") << false << true
                               << QStringList{"Внимание: read only (405), node 14: Fixed"};
}

void TestEditBox::refusals()
{
    QFETCH(unsigned, id);
    QFETCH(QByteArray, properties);
    QFETCH(bool, isRestricted);
    QFETCH(bool, edits);
    RuntimeProject project((QByteArray(screen) + (isRestricted ? users : "")).constData());
    QVERIFY(project.node(id)->SetPropertyText("checkRights", properties.constData()));
    publish(project, 10, 7.0);
    publish(project, 14, 7.0);
    const EditBox box(project, id);
    const QString before = box->shownText();
    MessageBoxes boxes;
    QString behind = "never shown";
    boxes.whileOpen = [&] { behind = box->shownText(); };
    box.begin();
    QCOMPARE(box->isEditing(), edits);
    box.type("9");
    box.press(Qt::Key_Return);
    QTEST(boxes.shown, "messages");
    QCOMPARE(behind, edits ? QString() : "never shown");
    QCOMPARE(box->shownText(), before);
    QCOMPARE(project.value(id == 20 ? 10 : 14).ToDouble(), 7.0);
}

void TestEditBox::asksBeforeWriting_data()
{
    QTest::addColumn<int>("button");
    QTest::addColumn<double>("value");
    QTest::newRow("yes") << int(QMessageBox::Ok) << 9.5;
    QTest::newRow("no") << int(QMessageBox::Cancel) << 7.0;
}

void TestEditBox::asksBeforeWriting()
{
    QFETCH(int, button);
    RuntimeProject project(screen);
    QVERIFY(project.node(20)->SetPropertyText("confirm", "true"));
    publish(project, 10, 7.0);
    const EditBox box(project, 20);
    MessageBoxes boxes{QMessageBox::StandardButton(button)};
    boxes.whileOpen = [&] { publish(project, 10, 7.0); };
    box.begin();
    box.type("9.5");
    box.press(Qt::Key_Enter);
    QCOMPARE(boxes.shown, QStringList{"Новое значение: Установить значение 9.5 ?"});
    QTEST(project.value(10).ToDouble(), "value");
    QTRY_COMPARE(box->shownText().toDouble(), project.value(10).ToDouble());
}

void TestEditBox::stepButtons_data()
{
    QTest::addColumn<double>("value");
    QTest::addColumn<QByteArray>("button");
    QTest::addColumn<double>("stepped");
    QTest::newRow("up") << 3.0 << QByteArray("+") << 4.0;
    QTest::newRow("down") << 3.0 << QByteArray("-") << 2.0;
    QTest::newRow("not over the limit") << 9.5 << QByteArray("+") << 9.5;
    QTest::newRow("not under the limit") << 0.5 << QByteArray("-") << 0.5;
    QTest::newRow("beyond already") << 12.0 << QByteArray("+") << 13.0;
}

void TestEditBox::stepButtons()
{
    QFETCH(double, value);
    QFETCH(QByteArray, button);
    RuntimeProject project(screen);
    for (const auto &[key, text] : {std::pair("step", "1"), std::pair("maximum", "10")})
        QVERIFY(project.node(20)->SetPropertyText(key, text));
    publish(project, 10, value);
    const EditBox box(project, 20);
    QVERIFY(!box.button("+"));
    box.begin();
    QVERIFY(box.button("+") && box.button("-") && box.button("..."));
    QCOMPARE(box.button("+")->geometry().right(), box.button("...")->x() + 1);
    QTest::mouseClick(box.button(button.constData()), Qt::LeftButton);
    QTEST(project.value(10).ToDouble(), "stepped");
    QVERIFY(box->isEditing()); // for the next step
}

void TestEditBox::keyboards_data()
{
    QTest::addColumn<unsigned>("id");
    QTest::addColumn<bool>("accepted");
    QTest::addColumn<QString>("text");
    QTest::newRow("numpad") << 26u << true << "42";
    QTest::newRow("numpad rejected") << 26u << false << "7";
    QTest::newRow("keyboard") << 27u << true << "abc";
    QTest::newRow("keyboard rejected") << 27u << false << "old";
    QTest::newRow("button") << 20u << true << "42";
}

void TestEditBox::keyboards()
{
    QFETCH(unsigned, id);
    QFETCH(bool, accepted);
    QFETCH(QString, text);
    RuntimeProject project(screen);
    publish(project, 10, 7.0);
    publish(project, 12, "old");
    const EditBox box(project, id);
    QString offered;
    QTimer answer; // presses the dialog's keys once it is there
    connect(&answer, &QTimer::timeout, this, [&] {
        auto *dialog = qobject_cast<QDialog *>(QApplication::activeModalWidget());
        auto *field = dialog ? dialog->findChild<QLineEdit *>() : nullptr;
        if (!field)
            return;
        answer.stop();
        offered = field->text();
        field->selectAll();
        QTest::keyClicks(field, id == 27 ? "abc" : "42");
        publish(project, 16, 0.0);
        QTest::keyClick(field, accepted ? Qt::Key_Return : Qt::Key_Escape);
    });
    answer.start(0);
    box.begin();
    if (id == 20)
        QTest::mouseClick(box.button("..."), Qt::LeftButton);
    QCOMPARE(offered.left(1), QString(id == 27 ? "o" : "7"));
    QCOMPARE(QString::fromStdString(project.value(id == 27 ? 12 : 10).ToString()), text);
    QVERIFY(!box->isEditing() && box->isReadOnly());
}

void TestEditBox::worksInAScene()
{
    RuntimeProject project(screen);
    publish(project, 10, 7.0);
    QGraphicsScene scene(0, 0, 400, 300);
    QGraphicsView view(&scene);
    auto *host = new ProxyWidget(project.node(20)->GetNodeLink());
    scene.addItem(host);
    view.show();
    QVERIFY(QTest::qWaitForWindowActive(&view));
    auto *box = qobject_cast<qwidgetEditBox *>(host->widget());
    const auto press = [&](const QPointF &place) {
        QTest::mouseClick(view.viewport(), Qt::LeftButton, {}, view.mapFromScene(place));
    };
    press(QPointF(20, 20));
    QVERIFY(box->isEditing());
    press(QPointF(30, 30)); // in the box: goes on
    QVERIFY(box->isEditing());
    box->selectAll();
    QTest::keyClicks(view.viewport(), "8");
    press(QPointF(300, 200));
    QVERIFY(!box->isEditing());
    QCOMPARE(project.value(10).ToDouble(), 7.0);
    press(QPointF(20, 20));
    box->selectAll();
    QTest::keyClicks(view.viewport(), "9");
    QTest::keyClick(view.viewport(), Qt::Key_Return);
    QCOMPARE(project.value(10).ToDouble(), 9.0);
}

QTEST_MAIN(TestEditBox)
#include "tst_edit_box.moc"
