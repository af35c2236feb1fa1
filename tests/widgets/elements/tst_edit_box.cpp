#include "support/MessageBoxes.h"
#include "support/Rows.h"
#include "support/ShownElement.h"
#include "support/WhenShown.h"

#include "widgets/dialogs/DialogPlacement.h"
#include "widgets/elements/input/InputNotice.h"
#include "widgets/elements/qwidgetEditBox.h"
#include "widgets/scene/ProxyLayer.h"
#include "widgets/scene/ProxyScene.h"
#include "widgets/scene/ProxyWidget.h"
#include "widgets/windows/WindowBasic.h"

#include "nodes/auth/systemAuthentication.h"

#include <QGraphicsView>
#include <QLabel>
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
<memorySignal id="18" name="Free" writable="true" minimum="0" maximum="0"/>
<memorySignal id="19" name="Wide" type="int" writable="true" minimum="-1e12" maximum="1e12"/>
<actionWriteValue id="17" name="after" signal="16" value="1"/>
<editBox id="20" name="Level" x="10" y="10" width="160" height="40" signal="10" step="0.25" stepButtons="true"
         keyboardButton="true" afterWrite="17"/>
<editBox id="21" name="Speed" signal="11" x="10" y="60" minimum="0" maximum="20"/>
<editBox id="22" name="Tag" signal="12" x="10" y="60"/><editBox id="23" name="On" signal="13" x="10" y="60"/>
<editBox id="24" name="Fixed" signal="14" x="10" y="60"/><editBox id="25" name="Count" signal="15" x="10" y="60"/>
<editBox id="26" name="Touch" signal="10" x="10" y="60" keyboardOnClick="true" step="0.00001"/>
<editBox id="28" name="Free" signal="18" x="10" y="60" maximum="0"/>
<editBox id="29" name="Wide" signal="19" x="10" y="60" maximum="0"/>
<editBox id="27" name="Text" signal="12" x="10" y="60" keyboardOnClick="true"/>)";

class EditBox : public ShownElement<qwidgetEditBox>
{
public:
    using ShownElement::ShownElement;

    void begin() const { QTest::mouseClick(element, Qt::LeftButton, {}, {5, 5}); }
    void type(const QString &keys) const
    {
        element->selectAll();
        QTest::keyClicks(element, keys);
    }
    void press(Qt::Key key) const { QTest::keyClick(element, key); }
    QPushButton *button(const QString &text) const
    {
        for (QPushButton *button : element->findChildren<QPushButton *>()) {
            if (button->text() == text && button->isVisible())
                return button;
        }
        return nullptr;
    }
};

QString notice()
{
    const QLabel *shown = InputNotice::current();
    return shown ? shown->text() : QString();
}

} // namespace

class TestEditBox : public QObject
{
    Q_OBJECT

private slots:
    void showsTheValue_data()
    {
        const Rows<QString, double, Quality, QString> row("step", "value", "quality", "text");
        row("decimals of the step", "0.25", 3, Quality::Good, "3.00");
        row("whole step", "1", 3, Quality::Good, "3");
        row("decimals of the signal", "0", 2.34, Quality::Good, "2.3");
        row("stale", "1", 3, Quality::Stale, "3");
        row("bad", "1", 3, Quality::Bad, "----");
    }

    void showsTheValue()
    {
        QFETCH(QString, step);
        QFETCH(double, value);
        QFETCH(Quality, quality);
        const RuntimeProject project(screen);
        project.set(20, "step", step);
        const EditBox box(project, 20);
        project.publish(10, value, quality);
        QTRY_COMPARE(box->shownQuality(), quality);
        QTEST(box->shownText(), "text");
        QVERIFY(box->text().isEmpty()); // the box draws the value itself
        box.begin();
        QCOMPARE(box->text(), quality == Quality::Bad ? QString() : box->shownText());
    }

    void enterWrites_data()
    {
        const Rows<unsigned, QString, QString, QString, QString> row("id", "keys", "typed", "value",
                                                                     "told");
        const QString noMore = "Знаков после запятой не больше 2.";
        const QString whole = "Только целое число.";
        row("comma", 20, "1,5", "1.5", "1.5", "");
        row("negative beyond the limits", 20, "-1", "1", "1", "");
        row("letters are undone", 20, "1x2", "12", "12", "");
        row("beyond the range", 20, "150", "150", "", "150 не записано. Допустимо от 0 до 100.");
        row("surplus decimal", 20, "1.257", "1.25", "1.25", noMore);
        row("not a number yet", 20, ".", ".", "", ". не записано. Ввод не закончен.");
        row("nothing", 21, "", "7", "7", "");
        row("int takes no point", 21, "1.2", "12", "12", whole);
        row("int beyond its own range", 21, "99", "99", "",
            "99 не записано. Допустимо от 0 до 20.");
        row("bool", 23, "1", "1", "true", "");
        row("bool takes no 2", 23, "2", "0", "false", "");
        row("ulong", 25, "300", "300", "300", "");
        row("ulong takes no exponent", 25, "1e3", "13", "13", "");
        row("no limits", 28, "150", "150", "150", "");
        row("limits beyond an int", 29, "-2000000000", "-2000000000", "-2000000000", "");
        row("text", 22, "Pump, 1", "Pump. 1", "Pump. 1", "");
    }

    void enterWrites()
    {
        QFETCH(unsigned, id);
        QFETCH(QString, keys);
        QFETCH(QString, value); // of the signal afterwards; "" for unchanged
        const RuntimeProject project(screen);
        const unsigned signal = id == 20 ? 10 : id - 10;
        project.publish(10, 7.0);
        project.publish(11, 7);
        project.publish(13, false);
        project.publish(12, "");
        project.publish(15, 7ul);
        const EditBox box(project, id);
        const QString before = box->shownText();
        const std::string untouched = project.value(signal).ToString();
        const MessageBoxes boxes;
        box.begin();
        if (!keys.isEmpty())
            box.type(keys);
        QTEST(box->text(), "typed");
        // A value that would be refused is told while it is typed.
        QCOMPARE(box->inputProblem().isEmpty(), !value.isEmpty());
        box.press(Qt::Key_Return);
        QVERIFY(box->text().isEmpty() && box->isReadOnly());
        QTEST(notice(), "told");
        QCOMPARE(project.value(signal).ToString(),
                 value.isEmpty() ? untouched : value.toStdString());
        if (value.isEmpty())
            QCOMPARE(box->shownText(), before);
        else if (id == 20)
            QTRY_COMPARE(project.value(16).ToInt(), 1);
        QVERIFY(boxes.shown.isEmpty());
    }

    void leaving_data()
    {
        const Rows<Qt::FocusReason, bool, int, QString> row("reason", "isEnded", "written", "told");
        row("press elsewhere", Qt::MouseFocusReason, true, 0, "Нажатие вне поля.");
        row("hidden", Qt::NoFocusReason, true, 0, "Поле скрыто.");
        row("disabled", Qt::MenuBarFocusReason, true, 0, "Поле отключено.");
        row("moved on by key", Qt::TabFocusReason, true, 1, "");
        // Not the operator's doing: nothing is written, nothing is lost.
        row("other window", Qt::ActiveWindowFocusReason, false, 0, "");
        row("taken away", Qt::OtherFocusReason, false, 0, "");
    }

    void leaving()
    {
        QFETCH(Qt::FocusReason, reason);
        QFETCH(bool, isEnded);
        QFETCH(int, written);
        RuntimeProject project(screen);
        project.publish(10, 7.0);
        EditBox box(project, 20);
        box.begin();
        box.type("9");
        project.publish(10, 8.0);
        QSignalSpy values(box.element, &qwidgetEditBox::valueUpdated);
        QTRY_COMPARE(values.size(), 1);
        project.record({10});
        QTest::keyClick(box.element, 'x'); // undone, back to what was typed
        QFocusEvent event(QEvent::FocusOut, reason);
        if (reason == Qt::NoFocusReason)
            box->hide();
        else if (reason == Qt::MenuBarFocusReason)
            box->setEnabled(false);
        else
            QCoreApplication::sendEvent(box.element, &event);
        QCOMPARE(box->isEditing(), !isEnded);
        QCOMPARE(box->text(), isEnded ? "" : "9");
        QTRY_COMPARE(box->shownText(), written ? "9.00" : "8.00");
        QCOMPARE(project.recorded.size(), written);
        QFETCH(QString, told);
        QCOMPARE(notice(), told.isEmpty() ? "" : "Ввод отменён, 9 не записано. " + told);
    }

    void theLiveValueStaysInSight_data()
    {
        const Rows<QSize, QString, bool> row("size", "align", "isBeside");
        row("wide", {220, 40}, "right", true);
        row("wide, left", {220, 40}, "left", true);
        row("small", {70, 26}, "right", false);
        row("tiny", {48, 20}, "center", false);
    }

    void theLiveValueStaysInSight()
    {
        QFETCH(QSize, size);
        QFETCH(bool, isBeside);
        const RuntimeProject project(screen);
        project.set(28, "width", QString::number(size.width()));
        project.set(28, "height", QString::number(size.height()));
        QFETCH(QString, align);
        project.set(28, "align", align);
        project.publish(18, 7.0);
        const EditBox box(project, 28);
        QVERIFY(box->liveValueRect().isEmpty());
        box.begin();
        box.type("9");
        const QRect live = box->liveValueRect();
        QVERIFY(!live.isEmpty() && box->rect().contains(live));
        QCOMPARE(live.height() > size.height() / 2, isBeside);
        const auto look = [&] { return box->grab(box->liveValueRect()).toImage(); };
        QVector<QImage> looks{look()};
        // What is typed is clear of it.
        QVERIFY(!box->inputMethodQuery(Qt::ImCursorRectangle).toRect().intersects(live));
        const auto shows = [&](double value, Quality quality) {
            project.publish(18, value, quality);
            QSignalSpy told(box.element, &qwidgetEditBox::shownTextChanged);
            QVERIFY(told.wait());
            QCOMPARE(box->text(), QString("9"));
            QVERIFY(!looks.contains(look()));
            looks << look();
        };
        shows(8.0, Quality::Good);
        shows(8.0, Quality::Stale);
        shows(8.0, Quality::Bad);
        QCOMPARE(box->shownText(), QString("----"));
        box.press(Qt::Key_Return);
        QCOMPARE(project.value(18).ToDouble(), 9.0);
    }

    void anEditEndsByItself_data()
    {
        const Rows<unsigned, QByteArray, QString> row("id", "switchedOn", "told");
        row("typing", 20, "", "Ввод отменён, 9 не записано. Время ввода вышло.");
        row("question", 20, "confirm", "Ввод отменён. Время ввода вышло.");
        row("keyboard", 20, "keyboardOnClick", "Ввод отменён. Время ввода вышло.");
    }

    void anEditEndsByItself()
    {
        QFETCH(QByteArray, switchedOn);
        RuntimeProject project(screen);
        project.set(20, "editTimeout", "1");
        if (!switchedOn.isEmpty())
            project.set(20, switchedOn, "true");
        project.publish(10, 7.0);
        project.record({10});
        const EditBox box(project, 20);
        box.begin();
        if (switchedOn != "keyboardOnClick")
            box.type("9");
        if (switchedOn == "confirm")
            box.press(Qt::Key_Return);
        QTRY_VERIFY(!box->isEditing());
        QCOMPARE(box->shownText(), QString("7.00"));
        QTEST(notice(), "told");
        QVERIFY(project.recorded.isEmpty());
    }

    void anEditBelongsToWhoBeganIt_data()
    {
        const Rows<QByteArray, QString> row("switchedOn", "told");
        row("typing", "", "Ввод отменён, 9 не записано. Сменился пользователь.");
        row("question", "confirm", "Ввод отменён. Сменился пользователь.");
        row("keyboard", "keyboardOnClick", "Ввод отменён. Сменился пользователь.");
    }

    void anEditBelongsToWhoBeganIt()
    {
        QFETCH(QByteArray, switchedOn);
        RuntimeProject project(QByteArray(R"(<authentication id="90" name="A" guestRole="91">
<role id="91" name="all"><grant id="92" privileges="all"/></role>
<user id="93" name="anna" roles="91" passwordless="true"/></authentication>
<window id="94" name="W" width="400" height="300"><editBox id="95" name="E" signal="10" x="10" y="10"
  width="160" height="40"/></window>)") +
                               screen);
        if (!switchedOn.isEmpty())
            project.set(95, switchedOn, "true");
        project.publish(10, 7.0);
        auto *users = project.node<Nodes::systemAuthentication>(90);
        QVERIFY(users->Authenticate(project.node(93)));
        auto *window =
            qobject_cast<WindowBasic *>(project.manager->createWindow(project.node(94)).widget);
        window->show();
        const auto hosts = window->proxyScene()->getLayers().first()->getWidgets();
        auto *box = qobject_cast<qwidgetEditBox *>(hosts.first()->widget());
        const WhenShown<QDialog> leaver([&](QDialog &) { users->Logout(); });
        project.record({10});
        QTest::mouseClick(box, Qt::LeftButton, {}, {5, 5});
        if (switchedOn != "keyboardOnClick") {
            box->selectAll();
            QTest::keyClicks(box, "9");
        }
        if (switchedOn == "confirm")
            QTest::keyClick(box, Qt::Key_Return);
        else
            users->Logout();
        QTRY_VERIFY(!box->isEditing());
        QTEST(notice(), "told");
        QVERIFY(project.recorded.isEmpty());
    }

    void aQuestionIsNotAnsweredByReflex()
    {
        const RuntimeProject project(screen);
        project.set(20, "confirm", "true");
        project.publish(10, 7.0);
        const EditBox box(project, 20);
        const WhenShown<QMessageBox> typist(
            [](QMessageBox &question) { QTest::keyClick(&question, Qt::Key_Return); });
        box.begin();
        box.type("9");
        box.press(Qt::Key_Return);
        QCOMPARE(project.value(10).ToDouble(), 7.0);
    }

    void escapeWritesTheValueBefore()
    {
        RuntimeProject project(screen);
        project.publish(10, 7.123456);
        const EditBox box(project, 20);
        project.record({10});
        box.begin();
        box.type("9");
        box.press(Qt::Key_Escape);
        QCOMPARE(project.recorded.size(), 1);
        QCOMPARE(project.value(10).ToDouble(), 7.123456); // not the rounded text
        QVERIFY(!box->isEditing());
        box.begin();
        box.press(Qt::Key_Return); // as offered
        QCOMPARE(project.recorded.size(), 2);
        QCOMPARE(project.value(10).ToDouble(), 7.123456);
        project.publish(10, 7.0, Quality::Bad);
        QTRY_COMPARE(box->shownText(), QString("----"));
        box.begin();
        box.press(Qt::Key_Escape);
        QCOMPARE(project.recorded.size(), 3); // nothing was known, nothing is written
    }

    void messages_data()
    {
        const Rows<unsigned, QByteArray, QByteArray, int, QString, double> row(
            "id", "switchedOn", "users", "pressed", "message", "value");
        const QByteArray users = RuntimeProject::NobodyLoggedIn;
        const QString question = "Новое значение: Установить значение 9.5 ?";
        row("no right", 20, "checkRights", users, QMessageBox::Ok, "", 7);
        row("right asked late", 20, "", users, QMessageBox::Ok, "Внимание: Недостаточно прав", 7);
        row("read only", 24, "", "", QMessageBox::Ok, "Внимание: Только для чтения", 7);
        row("confirmed", 20, "confirm", "", QMessageBox::Ok, question, 9.5);
        row("not confirmed", 20, "confirm", "", QMessageBox::Cancel, question, 7);
    }

    void messages()
    {
        QFETCH(unsigned, id);
        QFETCH(QByteArray, switchedOn);
        QFETCH(QByteArray, users);
        QFETCH(int, pressed);
        QFETCH(QString, message);
        const RuntimeProject project(screen + users);
        for (const char *key : {"checkRights", "confirm"})
            project.set(id, key, key == switchedOn ? "true" : "false");
        const unsigned signal = id == 20 ? 10 : 14;
        project.publish(signal, 7.0);
        const EditBox box(project, id);
        MessageBoxes boxes{QMessageBox::StandardButton(pressed)};
        QString behind;
        boxes.whileOpen = [&] {
            behind = box->shownText();
            project.publish(signal, 7.0); // the process goes on behind the box
        };
        box.begin();
        QCOMPARE(box->isEditing(), !message.isEmpty());
        box.type("9.5");
        box.press(Qt::Key_Return);
        QCOMPARE(boxes.shown.join('\n'), message);
        if (!message.isEmpty())
            QCOMPARE(behind.toDouble(), 7.0); // not what was typed: it is not written
        QTEST(project.value(signal).ToDouble(), "value");
        QTRY_COMPARE(box->shownText().toDouble(), project.value(signal).ToDouble());
    }

    void stepButtons_data()
    {
        const Rows<double, QString, double> row("value", "button", "stepped");
        row("up", 3.0, "+", 4.0);
        row("tiny", 3e-5, "+", 4e-5);
        row("down", 3.0, "-", 2.0);
        row("not over the limit", 9.5, "+", 9.5);
        row("not under the limit", 0.5, "-", 0.5);
        row("beyond already", 12.0, "+", 13.0);
    }

    void stepButtons()
    {
        QFETCH(double, value);
        QFETCH(QString, button);
        const RuntimeProject project(screen);
        project.set(20, "step", value < 1e-3 ? "0.00001" : "1");
        project.set(20, "maximum", "10");
        project.publish(10, value);
        const EditBox box(project, 20);
        QVERIFY(!box.button("+"));
        box.begin();
        QVERIFY(box.button("+") && box.button("-") && box.button("..."));
        QCOMPARE(box.button("+")->geometry().right(), box.button("...")->x() + 1);
        QTest::mouseClick(box.button(button), Qt::LeftButton);
        QTEST(project.value(10).ToDouble(), "stepped");
        QVERIFY(box->isEditing()); // for the next step
    }

    void aRefusedStepShowsTheValueOfNow()
    {
        const RuntimeProject project(screen);
        project.set(20, "step", "1");
        project.set(10, "writable", "false");
        project.publish(10, 3.0);
        const EditBox box(project, 20);
        box.begin();
        MessageBoxes boxes;
        boxes.whileOpen = [&project] { project.publish(10, 8.0); };
        QTest::mouseClick(box.button("+"), Qt::LeftButton);
        QCOMPARE(boxes.shown.size(), 1);
        QTRY_COMPARE(box->shownText(), QString("8"));
        QCOMPARE(box->text(), QString("8"));
    }

    void keyboards_data()
    {
        // What is there, "" for no value; what is written, "" for nothing.
        const Rows<unsigned, QString, QString, Qt::Key, QString> row("id", "offered", "keys",
                                                                     "last", "written");
        row("numpad", 26, "34.56789", "42", Qt::Key_Return, "42");
        row("numpad rejected", 26, "34.56789", "42", Qt::Key_Escape, "");
        row("numpad at once", 26, "34.56789", "", Qt::Key_Return, "");
        row("numpad without a value", 26, "", "", Qt::Key_Return, "");
        row("keyboard", 27, "old", "abc", Qt::Key_Return, "abc");
        row("keyboard rejected", 27, "old", "abc", Qt::Key_Escape, "");
        row("button", 20, "7", "42", Qt::Key_Return, "42");
    }

    void keyboards()
    {
        QFETCH(unsigned, id);
        QFETCH(QString, offered);
        QFETCH(QString, keys);
        QFETCH(Qt::Key, last);
        RuntimeProject project(screen);
        project.publish(10, offered.toDouble(), offered.isEmpty() ? Quality::Bad : Quality::Good);
        project.publish(12, "old");
        project.record({10, 12});
        const EditBox box(project, id);
        QString found = "no keyboard";
        const WhenShown<QDialog> typist([&](QDialog &keyboard) {
            auto *field = keyboard.findChild<QLineEdit *>();
            found = field->text();
            field->selectAll();
            QTest::keyClicks(field, keys);
            QTest::keyClick(field, last);
            if (keyboard.isVisible())
                keyboard.reject();
        });
        box.begin();
        if (id == 20)
            QTest::mouseClick(box.button("..."), Qt::LeftButton);
        QCOMPARE(found, offered);
        const QString value = QString::fromStdString(project.value(id == 27 ? 12 : 10).ToString());
        QTEST(project.recorded.isEmpty() ? QString() : value, "written");
        QVERIFY(!box->isEditing() && box->isReadOnly());
    }

    void worksInAScene()
    {
        const RuntimeProject project(screen);
        project.publish(10, 7.0);
        QGraphicsScene scene(0, 0, 400, 300);
        QGraphicsView view(&scene);
        auto *host = new ProxyWidget(project.node(20)->GetNodeLink());
        scene.addItem(host);
        auto *neighbour = new ProxyWidget(project.node(28)->GetNodeLink()); // right below
        scene.addItem(neighbour);
        view.resize(760, 500);
        view.show();
        QVERIFY(QTest::qWaitForWindowActive(&view));
        auto *box = qobject_cast<qwidgetEditBox *>(host->widget());
        const auto press = [&](const QPointF &place) {
            QTest::mouseClick(view.viewport(), Qt::LeftButton, {}, view.mapFromScene(place));
        };
        const auto type = [&](const QString &keys) {
            press(QPointF(20, 20));
            press(QPointF(30, 30)); // in the box: goes on
            QVERIFY(box->isEditing());
            box->selectAll();
            QTest::keyClicks(view.viewport(), keys);
        };
        type("8");
        press(QPointF(300, 200));
        QVERIFY(!box->isEditing());
        const QLabel *told = InputNotice::current();
        QVERIFY(told && told->testAttribute(Qt::WA_TransparentForMouseEvents));
        QVERIFY(!told->isWindow()); // a window would take the clicks of what lies below
        const QRect place(told->mapToGlobal(QPoint(0, 0)), told->size());
        for (const QWidget *element : {static_cast<QWidget *>(box), neighbour->widget()})
            QVERIFY(!place.intersects(InputNotice::globalRect(*element)));
        QCOMPARE(project.value(10).ToDouble(), 7.0);
        type("9");
        QTest::keyClick(view.viewport(), Qt::Key_Return);
        QCOMPARE(project.value(10).ToDouble(), 9.0);
        type("6");
        QTest::keyClick(&view, Qt::Key_Tab);
        QVERIFY(!box->isEditing());
        QCOMPARE(project.value(10).ToDouble(), 6.0);
    }

    void dialogsLeaveTheirElementInSight_data()
    {
        QTest::addColumn<QRect>("element");
        QTest::addColumn<QSize>("dialog");
        QTest::addColumn<QPoint>("place");
        const QSize pad(340, 400);
        QTest::newRow("below") << QRect(900, 100, 100, 30) << pad << QPoint(779, 138);
        QTest::newRow("above") << QRect(900, 900, 100, 30) << pad << QPoint(779, 492);
        QTest::newRow("in a corner") << QRect(0, 1050, 100, 30) << pad << QPoint(0, 642);
        QTest::newRow("right") << QRect(900, 500, 100, 30) << QSize(340, 700) << QPoint(1008, 164);
        QTest::newRow("left") << QRect(1700, 500, 100, 30) << QSize(340, 700) << QPoint(1352, 164);
        QTest::newRow("no room") << QRect(900, 500, 100, 30) << QSize(1800, 900) << QPoint(49, 180);
    }
    void dialogsLeaveTheirElementInSight()
    {
        QFETCH(QRect, element);
        QFETCH(QSize, dialog);
        QTEST(DialogPlacement::beside(element, dialog, {0, 0, 1920, 1080}, 8), "place");
    }
};

QTEST_MAIN(TestEditBox)
#include "tst_edit_box.moc"
