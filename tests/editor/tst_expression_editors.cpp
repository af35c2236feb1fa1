#include "PropertyFixture.h"

#include "editor/properties/texts/BracketPair.h"
#include "editor/properties/texts/CodeEdit.h"
#include "editor/properties/texts/ExpressionWindow.h"
#include "editor/properties/texts/TrialPanel.h"
#include "editor/properties/texts/WordCompleter.h"
#include "editor/properties/values/ValueEditor.h"
#include "editor/properties/values/ValueEditors.h"
#include "support/Rows.h"

#include <QAbstractItemView>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QSignalSpy>
#include <QTableWidget>
#include <QTextBlock>
#include <QTextLayout>
#include <QTimer>
#include <QToolButton>
#include <QtTest>

using Editor::CodeEdit;
using Editor::ExpressionWindow;
using Editor::ValueEditor;

namespace {

struct Formula : PropertyFixture
{
    Formula()
    {
        Nodes::ConfigNode *driver = add("simulatorDriver", root(), "Имитатор");
        add("simulatorSignal", driver, "Расход газа");
        add("simulatorSignal", driver, "Текст", {{"type", "string"}});
        add("simulatorSignal", driver, "Пуск", {{"type", "bool"}});
        formula = add("simulatorSignal", driver, "F");
        report = add("reportSchedule", root(), "Сутки");
    }
    ValueEditor *open(Nodes::ConfigNode *node, const char *key, QWidget *parent)
    {
        const Nodes::PropertyDescriptor *d = node->GetKind()->FindProperty(std::string_view(key));
        auto *editor = Editor::makeValueEditor({d, node->GetNodeLink(), &project, {}}, parent);
        parent->show();
        editor->show();
        return editor;
    }
    ExpressionWindow *openWindow(ValueEditor *editor)
    {
        editor->findChild<QToolButton *>()->click();
        return editor->findChild<ExpressionWindow *>();
    }

    Nodes::ConfigNode *formula, *report;
};

QString shown(const ExpressionWindow &window)
{
    for (const QLabel *label : window.findChildren<QLabel *>()) {
        if (label->textFormat() == Qt::RichText)
            return label->text().remove(QRegularExpression("<[^>]*>"));
    }
    return {};
}

} // namespace

class ExpressionEditorsTest : public QObject
{
    Q_OBJECT

private slots:
    void pairsBrackets_data()
    {
        // "|" is the cursor; -1, -1: no bracket beside it.
        const Rows<QString, bool, QPoint> row("text", "isLua", "pair");
        row("inner", "(a (b|))", true, {5, 3});
        row("before the cursor first", "(b)|(c)", true, {2, 0});
        row("behind the cursor", "|(a)", true, {0, 2});
        row("beside none", "(a|b)", true, {-1, -1});
        row("open", "|(a", true, {0, 0});
        row("crossed", "(a]|", true, {2, 2});
        row("in quotes", "f(\")\")|", true, {5, 1});
        row("in a field", "{yyyy}|", false, {5, 0});
        row("letters before it", "\"ёж\" (1)|", true, {7, 5});
    }

    void pairsBrackets()
    {
        QFETCH(QString, text);
        QFETCH(bool, isLua);
        QFETCH(QPoint, pair);
        const int cursor = text.indexOf('|');
        const auto found = Editor::bracketPair(QString(text).remove('|'), cursor, isLua);
        QCOMPARE(found ? QPoint(found->first, found->second) : QPoint(-1, -1), pair);
    }

    void colours()
    {
        Formula f;
        CodeEdit edit(*Nodes::FindTextLanguage("formula"), f.formula->GetNodeLink(), nullptr);
        edit.show();
        edit.setPlainText("return --[[ ё\nif ]] 5");
        const auto formats = [&](int line) {
            return edit.document()->findBlockByNumber(line).layout()->formats();
        };
        QTRY_COMPARE(formats(0).size(), 2);
        QCOMPARE(formats(0)[0].format.fontWeight(), int(QFont::Bold));
        QVERIFY(formats(0)[1].format.fontItalic());
        QCOMPARE(formats(1).size(), 2); // the comment goes on: "if" is none
        QVERIFY(formats(1)[0].format.fontItalic());
        QCOMPARE(formats(1)[0].length, 5);
        edit.setPlainText("if");
        QTRY_COMPARE(formats(0).size(), 1);
    }

    void tellsWhatIsWrongWhileWriting_data()
    {
        const Rows<QString, QString, bool> row("text", "told", "isTried");
        row("right", "t * 2", "✓ Ошибок нет", true);
        row("wrong", "t *\n* 2", "✖ строка 2, знак 1: «*»: здесь не ожидается", false);
        row("letters before it", "\"ёж\" )", "✖ знак 6: «)»: лишнее: здесь текст должен кончаться",
            false);
        row("odd", "tt", "⚠ знак 1: имени «tt» здесь нет, оно не имеет значения", true);
    }

    void tellsWhatIsWrongWhileWriting()
    {
        QFETCH(QString, text);
        QFETCH(QString, told);
        QFETCH(bool, isTried);
        Formula f;
        QWidget host;
        ExpressionWindow *window = f.openWindow(f.open(f.formula, "formula", &host));
        window->findChild<CodeEdit *>()->setPlainText(text);
        QCOMPARE(shown(*window), told);
        QVERIFY(window->findChild<Editor::TrialPanel *>()->outcome().contains("исправьте") !=
                isTried);
    }

    void triesWithValuesOfTheUser()
    {
        Formula f;
        QWidget host;
        ExpressionWindow *window = f.openWindow(f.open(f.formula, "formula", &host));
        auto *edit = window->findChild<CodeEdit *>();
        auto *trial = window->findChild<Editor::TrialPanel *>();
        auto *table = trial->findChild<QTableWidget *>();
        edit->setPlainText("signal('Расход газа') + t");
        QCOMPARE(trial->outcome(), QString("Проба: 110"));
        QCOMPARE(table->rowCount(), 4);
        table->item(3, 2)->setText("1,5");
        QCOMPARE(trial->outcome(), QString("Проба: 61.5"));
        edit->setPlainText("t");
        edit->setPlainText("t - signal('Расход газа')"); // its value is not forgotten
        QCOMPARE(trial->outcome(), QString("Проба: 58.5"));
    }

    void readsValuesByTheirTypes_data()
    {
        const Rows<QString, QString, QString> row("text", "written", "outcome");
        row("number", "signal('Расход газа') * 2", "1,5", "Проба: 3");
        row("text with a comma", "#signal('Текст')", "а, б ", "Проба: 7");
        row("logical", "signal('Пуск') and 1 or 2", "Да", "Проба: 1");
        row("none of its type", "signal('Пуск') and 1 or 2", "5 шт",
            "Проба не удалась: строка 1: значение «5 шт» для «Пуск» не подходит: нужно да или нет "
            "(true или false)");
    }

    void readsValuesByTheirTypes()
    {
        QFETCH(QString, text);
        QFETCH(QString, written);
        QFETCH(QString, outcome);
        Formula f;
        QWidget host;
        ExpressionWindow *window = f.openWindow(f.open(f.formula, "formula", &host));
        window->findChild<CodeEdit *>()->setPlainText(text);
        auto *trial = window->findChild<Editor::TrialPanel *>();
        trial->findChild<QTableWidget *>()->item(3, 2)->setText(written);
        QCOMPARE(trial->outcome(), outcome);
    }

    // Of a text of other line ends, nothing was changed.
    void leavesTextOfOtherLineEnds()
    {
        Formula f;
        QWidget host;
        ValueEditor *editor = f.open(f.formula, "formula", &host);
        editor->setText("local x = t\r\nreturn x");
        const QPointer<ExpressionWindow> window = f.openWindow(editor);
        window->reject();
        QVERIFY(!window || !window->isVisible());
    }

    void writesOnBehindAWholeWord()
    {
        Formula f;
        QWidget host;
        ExpressionWindow *window = f.openWindow(f.open(f.formula, "formula", &host));
        auto *edit = window->findChild<CodeEdit *>();
        edit->setFocus();
        QTest::keyClicks(edit, "while t > 9 d");
        QTest::keyClicks(edit, "o"); // is in "random" too
        QVERIFY(!edit->completer()->popup()->isVisible());
    }

    void completesByKeys()
    {
        Formula f;
        QWidget host;
        ExpressionWindow *window = f.openWindow(f.open(f.formula, "formula", &host));
        auto *edit = window->findChild<CodeEdit *>();
        QAbstractItemView *list = edit->completer()->popup();
        edit->setFocus();
        QTest::keyClicks(edit, "2 * sig");
        QCOMPARE(list->model()->index(0, 0).data().toString(), QString("signal"));
        QVERIFY(list->isVisible());
        QTest::keyClick(list, Qt::Key_Return);
        QCOMPARE(edit->toPlainText(), QString("2 * signal"));
        QTest::keyClicks(edit, "(\"");
        edit->insertPlainText("газ");
        QTest::keyClick(edit, Qt::Key_Space, Qt::ControlModifier);
        QCOMPARE(list->model()->rowCount(), 1);
        QTest::keyClick(list, Qt::Key_Escape);
        QVERIFY(!list->isVisible() && window->isVisible());
        QTest::keyClick(edit, Qt::Key_Space, Qt::ControlModifier);
        QTest::keyClick(list, Qt::Key_Return);
        QTest::keyClicks(edit, ")");
        QCOMPARE(edit->toPlainText(), QString("2 * signal(\"Расход газа\")"));
    }

    void indentsBlocks()
    {
        Formula f;
        CodeEdit edit(*Nodes::FindTextLanguage("formula"), f.formula->GetNodeLink(), nullptr);
        edit.setPlainText("  if t > 1 then");
        edit.moveCursor(QTextCursor::End);
        QTest::keyClick(&edit, Qt::Key_Return);
        QCOMPARE(edit.toPlainText(), QString("  if t > 1 then\n      "));
    }

    void takesOrLeaves_data()
    {
        // The button of the question; "" when none is to be asked.
        const Rows<bool, Qt::Key, QString, QString, bool> row("isChanged", "key", "answer", "text",
                                                              "isOpen");
        row("taken", true, Qt::Key_Return, "", "t1", false);
        row("unchanged", false, Qt::Key_Escape, "", "t", false);
        row("changed, taken", true, Qt::Key_Escape, "Применить", "t1", false);
        row("changed, dropped", true, Qt::Key_Escape, "Не применять", "t", false);
        row("changed, back", true, Qt::Key_Escape, "Вернуться", "t", true);
    }

    void takesOrLeaves()
    {
        QFETCH(bool, isChanged);
        QFETCH(Qt::Key, key);
        QFETCH(QString, answer);
        QFETCH(QString, text);
        QFETCH(bool, isOpen);
        Formula f;
        QWidget host;
        ValueEditor *editor = f.open(f.formula, "formula", &host);
        editor->setText("t");
        const QSignalSpy finished(editor, &ValueEditor::finished);
        const QPointer<ExpressionWindow> window = f.openWindow(editor);
        QVERIFY(QTest::qWaitForWindowActive(window));
        if (isChanged)
            window->findChild<CodeEdit *>()->insertPlainText("1");
        bool isAsked = false;
        QTimer::singleShot(0, this, [&] {
            auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
            for (QAbstractButton *button : box ? box->buttons() : QList<QAbstractButton *>()) {
                isAsked = isAsked || button->text() == answer;
                if (button->text() == answer)
                    button->click();
            }
        });
        QTest::keyClick(window->findChild<CodeEdit *>(), key,
                        key == Qt::Key_Return ? Qt::ControlModifier : Qt::NoModifier);
        QCoreApplication::processEvents();
        QCOMPARE(isAsked, !answer.isEmpty());
        QCOMPARE(editor->text(), text);
        QCOMPARE(finished.count(), text == "t" ? 0 : 1);
        QCOMPARE(window && window->isVisible(), isOpen);
    }

    void writesFieldsInTheRow()
    {
        Formula f;
        QWidget host;
        ValueEditor *editor = f.open(f.report, "fileName", &host);
        editor->setText("Сутки ");
        auto *line = editor->findChild<QLineEdit *>();
        line->setFocus();
        const QColor plain = line->palette().color(QPalette::Base);
        QTest::keyClicks(line, "{yy");
        QVERIFY(line->palette().color(QPalette::Base) != plain); // not closed yet
        auto *list = QApplication::activePopupWidget();
        QVERIFY(list);
        QTest::keyClick(list, Qt::Key_Return);
        QCOMPARE(editor->text(), QString("Сутки {yyyy}"));
        QCOMPARE(line->palette().color(QPalette::Base), plain);
        QVERIFY(editor->isTouched());
    }
};

QTEST_MAIN(ExpressionEditorsTest)
#include "tst_expression_editors.moc"
