#include "PropertyFixture.h"

#include "editor/properties/values/KeysWindow.h"
#include "editor/properties/values/NumberSpin.h"
#include "editor/properties/values/ProjectColors.h"
#include "editor/properties/values/TextWindow.h"
#include "editor/properties/values/ValueEditor.h"
#include "editor/properties/values/ValueEditors.h"
#include "editor/properties/values/WordsWindow.h"
#include "support/Rows.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QListWidget>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QTimeEdit>
#include <QTimer>
#include <QToolButton>
#include <QtTest>

using Editor::ValueEditor;
using Nodes::PropertyDescriptor;

namespace {

struct Editing : PropertyFixture
{
    ValueEditor *open(const char *kindKey, const char *key, QWidget *parent)
    {
        const PropertyDescriptor *d = kind(kindKey).FindProperty(std::string_view(key));
        return Editor::makeValueEditor({d, a, &project, {}}, parent);
    }
};

// A text of the property's type that a fresh node does not have.
std::string otherText(const PropertyDescriptor &d, const Editing &e)
{
    if (!d.choices.empty() && d.binding.type == Nodes::PropertyType::String)
        return d.choices.back().token + " odd " + d.choices.front().token;
    if (!d.choices.empty())
        return d.choices.back().token;
    switch (d.binding.type) {
    case Nodes::PropertyType::Bool:
        return d.defaultText == "true" ? "false" : "true";
    case Nodes::PropertyType::Int:
    case Nodes::PropertyType::UInt:
        return std::to_string(d.hasRange ? long(d.maximum) : 1234567L);
    case Nodes::PropertyType::Double:
        return d.hasRange ? Nodes::PropertyDescriptor(d).defaultText : "0.1234567890123";
    case Nodes::PropertyType::Color:
        return "#01020304";
    case Nodes::PropertyType::Link:
        return idOf(e.signal);
    case Nodes::PropertyType::Links:
        return idOf(e.signal) + " " + idOf(e.action) + " " + idOf(e.signal);
    case Nodes::PropertyType::Resource:
        return "images/насос 1.svg";
    default:
        return d.editorHint == "privileges" ? "write open" : " строка \t\nи \"другая\" ";
    }
}

} // namespace

class ValueEditorsTest : public QObject
{
    Q_OBJECT

private slots:
    void everyPropertyKeepsItsText()
    {
        Editing e;
        for (const Nodes::KindInfo &kind : Nodes::KindTable::Instance().GetKinds()) {
            for (const PropertyDescriptor &d : kind.properties) {
                QWidget window;
                ValueEditor *editor = Editor::makeValueEditor({&d, e.a, &e.project, {}}, &window);
                for (const std::string &text : {d.defaultText, otherText(d, e)}) {
                    editor->setText(QString::fromStdString(text));
                    QVERIFY2(editor->text().toStdString() == text,
                             (kind.key + "." + d.key + " = " + text).c_str());
                }
                QVERIFY(!editor->isTouched());
            }
        }
    }

    void spins_data()
    {
        const Rows<QByteArray, QByteArray, QString, int, QString> row("kind", "key", "from",
                                                                      "steps", "to");
        row("whole", "label", "x", "10", 3, "13");
        row("down to the least", "label", "width", "2", -10, "0");
        row("keeps decimals", "bargraph", "maximum", "0.25", 1, "1.25");
        row("from none", "bargraph", "low", "-inf", 1, "1");
        row("from what is no number", "label", "x", "abc", 1, "1");
        row("comma", "bargraph", "maximum", "0,5", 1, "1.5");
    }

    void spins()
    {
        QFETCH(QByteArray, kind);
        QFETCH(QByteArray, key);
        QFETCH(QString, from);
        QFETCH(int, steps);
        QFETCH(QString, to);
        Editing e;
        QWidget window;
        ValueEditor *editor = e.open(kind, key, &window);
        editor->setText(from);
        const QSignalSpy stepped(editor, &ValueEditor::stepped);
        editor->findChild<Editor::NumberSpin *>()->stepBy(steps);
        QCOMPARE(editor->text(), to);
        QCOMPARE(stepped.count(), 1);
        QVERIFY(editor->isTouched());
    }

    void takesAnEmptyNumberForNone()
    {
        Editing e;
        QWidget window;
        ValueEditor *limit = e.open("bargraph", "low", &window);
        const QString none = QString::fromStdString(
            e.kind("bargraph").FindProperty(std::string_view("low"))->defaultText);
        limit->setText(none);
        auto *line = limit->findChild<QLineEdit *>();
        QCOMPARE(line->text(), QString());
        QTest::keyClicks(line, "7,5");
        QCOMPARE(limit->text(), QStringLiteral("7.5"));
        line->clear();
        QCOMPARE(limit->text(), none);
    }

    void choosesAndTicks()
    {
        Editing e;
        QWidget window;
        ValueEditor *align = e.open("label", "align", &window);
        const QSignalSpy finished(align, &ValueEditor::finished);
        align->setText("left");
        auto *box = align->findChild<QComboBox *>();
        QTest::keyClick(box, Qt::Key_End); // chooses the last one
        QCOMPARE(align->text(), box->itemData(box->count() - 1).toString());
        QVERIFY(align->text() != QStringLiteral("left"));
        QCOMPARE(finished.count(), 1);

        ValueEditor *rights = e.open("grant", "privileges", &window);
        rights->setText("write");
        window.show();
        rights->findChild<QToolButton *>()->click();
        const QList<QCheckBox *> boxes = rights->findChildren<QCheckBox *>();
        QCOMPARE(boxes.size(), 9);
        boxes.first()->click();
        QCOMPARE(rights->text(), QStringLiteral("view write"));
        for (QCheckBox *each : boxes)
            each->setChecked(true);
        QCOMPARE(rights->text(), QStringLiteral("all"));
    }

    void leavesTheWheelToTheTable_data()
    {
        const Rows<QByteArray, QByteArray> row("kind", "key");
        row("choice", "label", "align");
        row("shared text", "memorySignal", "unit");
        row("time", "operationTimer", "time");
        row("number", "label", "x");
    }

    void leavesTheWheelToTheTable()
    {
        QFETCH(QByteArray, kind);
        QFETCH(QByteArray, key);
        Editing e;
        e.add("memorySignal", e.root(), "расход", {{"unit", "т/ч"}});
        QWidget window;
        ValueEditor *editor = e.open(kind, key, &window);
        const PropertyDescriptor *d = e.kind(kind).FindProperty(std::string_view(key));
        editor->setText(QString::fromStdString(d->defaultText));
        QWheelEvent turn({2, 2}, {2, 2}, {}, {0, -120}, Qt::NoButton, Qt::NoModifier,
                         Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(editor->focusProxy(), &turn);
        QCOMPARE(editor->text().toStdString(), d->defaultText);
        QVERIFY(!turn.isAccepted());
    }

    void choosesWords()
    {
        Editing e;
        QWidget window;
        window.show();
        ValueEditor *columns = e.open("chartHistory", "legendColumns", &window);
        columns->setText("name odd value");
        QVERIFY(columns->findChild<QLineEdit *>()->text().contains("Название, odd"));
        columns->findChild<QToolButton *>()->click();
        auto *words = columns->findChild<Editor::WordsWindow *>();
        auto *list = words->findChild<QListWidget *>();
        QCOMPARE(words->text(), QStringLiteral("name odd value"));
        list->setCurrentRow(2);
        words->findChildren<QPushButton *>().first()->click(); // up
        list->item(2)->setCheckState(Qt::Unchecked);
        list->item(3)->setCheckState(Qt::Checked); // the first that was not there
        words->accept();
        QCOMPARE(columns->text(), QStringLiteral("name value visible"));
    }

    void takesPressedKeys_data()
    {
        const Rows<int, Qt::KeyboardModifiers, QString> row("key", "with", "text");
        row("function key", Qt::Key_F5, Qt::NoModifier, "F5");
        row("with others", Qt::Key_P, Qt::ControlModifier | Qt::ShiftModifier, "Ctrl+Shift+P");
        row("closes nothing", Qt::Key_Escape, Qt::NoModifier, "Esc");
        row("of the block of digits", Qt::Key_1, Qt::KeypadModifier, "1");
    }

    void takesPressedKeys()
    {
        QFETCH(int, key);
        QFETCH(Qt::KeyboardModifiers, with);
        QFETCH(QString, text);
        Editing e;
        QWidget window;
        window.show();
        ValueEditor *keys = e.open("button", "hotKey", &window);
        keys->findChild<QToolButton *>()->click();
        auto *pressed = keys->findChild<Editor::KeysWindow *>();
        QTest::keyClick(pressed, Qt::Key_Shift); // alone it is no combination
        QVERIFY(pressed->isVisible());
        QTest::keyClick(pressed, Qt::Key(key), with);
        QCOMPARE(keys->text(), text);
        QVERIFY(!pressed->isVisible());
    }

    void offersWhatOthersHave()
    {
        Editing e;
        e.add("memorySignal", e.root(), "расход", {{"unit", "т/ч"}});
        e.add("memorySignal", e.root(), "насос", {{"unit", "т/ч"}});
        QWidget window;
        ValueEditor *unit = e.open("memorySignal", "unit", &window);
        unit->setText("кг");
        auto *box = unit->findChild<QComboBox *>();
        QCOMPARE(box->count(), 1);
        QCOMPARE(box->itemText(0), QStringLiteral("т/ч"));
        QVERIFY(!unit->isTouched());
        QTest::keyClicks(box, "2");
        QCOMPARE(unit->text(), QStringLiteral("кг2"));
        QVERIFY(unit->isTouched());
    }

    void writesValuesAsTheirSignalHasThem_data()
    {
        const Rows<std::string, bool> row("type", "isChoice");
        row("logical", "bool", true);
        row("number", "double", false);
    }

    void writesValuesAsTheirSignalHasThem()
    {
        QFETCH(std::string, type);
        QFETCH(bool, isChoice);
        Editing e;
        e.set(e.signal, {{"type", type}});
        e.set(e.action, {{"signal", idOf(e.signal)}});
        QWidget window;
        const PropertyDescriptor *d = e.action->GetKind()->FindProperty(std::string_view("value"));
        ValueEditor *value =
            Editor::makeValueEditor({d, e.action->GetNodeLink(), &e.project, {}}, &window);
        auto *box = value->findChild<QComboBox *>();
        QCOMPARE(box != nullptr, isChoice);
        value->setText("1"); // means true, and stays what it is
        QCOMPARE(value->text(), QStringLiteral("1"));
        if (box)
            QTest::keyClick(box, Qt::Key_Home);
        QCOMPARE(value->text(), isChoice ? QString() : QStringLiteral("1"));
    }

    void keepsATimeThatIsNone()
    {
        Editing e;
        QWidget window;
        ValueEditor *time = e.open("operationTimer", "time", &window);
        time->setText("утром");
        QCOMPARE(time->text(), QStringLiteral("утром"));
        time->findChild<QTimeEdit *>()->setTime(QTime(6, 30));
        QCOMPARE(time->text(), QStringLiteral("06:30:00"));
    }

    void editsSeveralLinesInAWindow()
    {
        Editing e;
        QWidget window;
        window.show();
        ValueEditor *label = e.open("label", "text", &window);
        label->setText("Котёл\nработает");
        QVERIFY(label->findChild<QLineEdit *>()->isReadOnly()); // would lose the second line
        label->findChild<QToolButton *>()->click();
        auto *text = label->findChild<Editor::TextWindow *>();
        QCOMPARE(text->text(), QStringLiteral("Котёл\nработает"));
        text->findChild<QPlainTextEdit *>()->setPlainText("Котёл\n");
        QTimer::singleShot(0, this, [] {
            auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
            QVERIFY(box);
            box->reject();
        });
        text->reject(); // asks, and goes on
        QVERIFY(text->isVisible());
        const QSignalSpy finished(label, &ValueEditor::finished);
        text->accept();
        QCOMPARE(finished.count(), 1);
        QCOMPARE(label->text(), QStringLiteral("Котёл\n"));
        label->findChild<QToolButton *>()->click(); // the row may go while its window is open
        delete label;
    }

    void neverShowsASecret()
    {
        Editing e;
        QWidget window;
        ValueEditor *password = e.open("user", "passwordHash", &window);
        password->setText("$argon2id$hash");
        QCOMPARE(password->findChild<QLineEdit *>()->text(), QStringLiteral("задан"));
        password->findChildren<QToolButton *>().last()->click();
        QCOMPARE(password->text(), QString());
        QVERIFY(password->isTouched());
    }

    void knowsTheColoursOfTheProject()
    {
        Editing e;
        e.set(e.a, {{"color", "#112233"}});
        e.set(e.b, {{"color", "#112233"}, {"background", "#445566"}});
        QCOMPARE(Editor::projectColors(&e.project, 5), QStringList({"#112233", "#445566"}));
        QCOMPARE(Editor::projectColors(&e.project, 1).size(), 1);
        QVERIFY(Editor::projectColors(nullptr, 5).isEmpty());
    }
};

QTEST_MAIN(ValueEditorsTest)
#include "tst_value_editors.moc"
