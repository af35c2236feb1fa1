#include "support/Rows.h"

#include "widgets/dialogs/VirtualKeyboard.h"
#include "widgets/dialogs/VirtualNumpad.h"

#include <QIntValidator>
#include <QPushButton>
#include <QSignalSpy>

using namespace Widgets;

namespace {

void press(QDialog &dialog, const QString &keys)
{
    for (const QString &name : keys.split(' ', Qt::SkipEmptyParts)) {
        auto *button = dialog.findChild<QPushButton *>(name);
        QVERIFY2(button, qPrintable(name));
        QTest::mouseClick(button, Qt::LeftButton);
        QCoreApplication::processEvents();
    }
}

} // namespace

class KeyboardsTest : public QObject
{
    Q_OBJECT

private slots:
    void typesText_data()
    {
        const Rows<QString, int, QString, QString, int> row("start", "cursor", "keys", "text",
                                                            "cursorAfter");
        row("appends", "ab", 2, "btn_c btn_space btn_1", "abc 1", 5);
        row("inserts at the cursor", "ac", 1, "btn_b", "abc", 2);
        row("shift holds for one character", "", 0, "btn_lshift btn_q btn_w", "Qw", 2);
        row("either shift, caps stays", "", 0, "btn_caps btn_rshift btn_q btn_w btn_e", "qWE", 3);
        row("shift off by the other one", "", 0, "btn_lshift btn_rshift btn_8", "8", 1);
        row("caps kept over languages", "", 0, "btn_caps btn_lang btn_lang btn_q", "Q", 1);
        row("ampersand is itself", "", 0, "btn_lshift btn_7 btn_a", "&a", 2);
        row("second language and back", "", 0, "btn_lang btn_q btn_lshift btn_3 btn_lang btn_q",
            "й№q", 3);
        row("backspace at the start", "abc", 0, "btn_backspace", "abc", 0);
        row("backspace at one", "abc", 1, "btn_backspace", "bc", 0);
        row("backspace within", "abc", 2, "btn_backspace", "ac", 1);
        row("backspace at the end", "abc", 3, "btn_backspace", "ab", 2);
        row("cursor keys", "ac", 2, "btn_prev btn_b btn_next btn_d", "abcd", 4);
        row("clear, tab", "abc", 1, "btn_clear btn_tab", "\t", 1);
    }

    void typesText()
    {
        QFETCH(QString, start);
        QFETCH(int, cursor);
        QFETCH(QString, keys);
        VirtualKeyboard keyboard;
        keyboard.configure(start, 100, true);
        keyboard.show();
        auto *edit = keyboard.findChild<QLineEdit *>("edValue");
        edit->setCursorPosition(cursor);
        press(keyboard, keys);
        QTEST(keyboard.getData(), "text");
        QTEST(edit->cursorPosition(), "cursorAfter");
    }

    void hasEveryKeyOfBothLayouts_data()
    {
        const Rows<QString, QString, QString> row("atFirst", "beforeEach", "characters");
        row("latin", "", "", "`1234567890-=qwertyuiop[]\\asdfghjkl;'zxcvbnm,./");
        row("shift", "", "btn_lshift", "~!@#$%^&*()_+QWERTYUIOP{}|ASDFGHJKL:\"ZXCVBNM<>?");
        row("caps", "btn_caps", "", "`1234567890-=QWERTYUIOP[]\\ASDFGHJKL;'ZXCVBNM,./");
        row("both", "btn_caps", "btn_rshift", "~!@#$%^&*()_+qwertyuiop{}|asdfghjkl:\"zxcvbnm<>?");
        row("russian", "btn_lang", "", "ё1234567890-=йцукенгшщзхъ\\фывапролджэячсмитьбю.");
        row("russian shift", "btn_lang", "btn_lshift",
            "Ё!\"№;%:?*()_+ЙЦУКЕНГШЩЗХЪ/ФЫВАПРОЛДЖЭЯЧСМИТЬБЮ,");
        row("russian caps", "btn_lang btn_caps", "",
            "Ё1234567890-=ЙЦУКЕНГШЩЗХЪ\\ФЫВАПРОЛДЖЭЯЧСМИТЬБЮ.");
    }

    // Each character of a layout is on exactly one key, which shows it and types it.
    void hasEveryKeyOfBothLayouts()
    {
        QFETCH(QString, atFirst);
        QFETCH(QString, beforeEach);
        QFETCH(QString, characters);
        VirtualKeyboard keyboard;
        keyboard.configure("", 100, false);
        press(keyboard, atFirst);
        QString captions;
        for (auto *key : keyboard.findChildren<QPushButton *>()) {
            if (!key->property("btnData").isValid())
                continue;
            press(keyboard, beforeEach);
            captions += key->text().replace("&&", "&");
            key->click();
        }
        QCOMPARE(captions, characters);
        QCOMPARE(keyboard.getData(), characters);
    }

    void keepsToLengthAndValidator()
    {
        VirtualKeyboard keyboard;
        QIntValidator validator(0, 99);
        keyboard.setValidator(&validator);
        keyboard.configure("1", 3, false);
        press(keyboard, "btn_a btn_2 btn_3");
        QCOMPARE(keyboard.getData(), QString("12"));
        keyboard.setValidator(nullptr);
        keyboard.configure("abcd", 3, false);
        keyboard.findChild<QLineEdit *>("edValue")->setCursorPosition(1);
        press(keyboard, "btn_x");
        QCOMPARE(keyboard.getData(), QString("abc"));
    }

    void takesBothKeyboards()
    {
        VirtualKeyboard keyboard;
        keyboard.configure("", 2147483647, false);
        keyboard.show();
        QVERIFY(QTest::qWaitForWindowActive(&keyboard));
        QSignalSpy accepted(&keyboard, &QDialog::accepted);
        QString announced;
        connect(&keyboard, &VirtualKeyboard::dataSet, this,
                [&](QVariant *data) { announced = data->toString(); });
        QTest::keyClicks(QApplication::focusWidget(), "pu");
        press(keyboard, "btn_m");
        QTest::keyClicks(QApplication::focusWidget(), "p");
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
        QCOMPARE(accepted.count(), 1);
        QCOMPARE(announced, QString("pump"));

        keyboard.show();
        QTest::keyClick(&keyboard, Qt::Key_Escape);
        QCOMPARE(keyboard.result(), int(QDialog::Rejected));
        press(keyboard, "btn_enter");
        QCOMPARE(keyboard.result(), int(QDialog::Accepted));
        press(keyboard, "btn_esc");
        QCOMPARE(keyboard.result(), int(QDialog::Rejected));
    }

    void numpadTypesNumbers_data()
    {
        const Rows<QString, QString> row("keys", "text");
        row("digits", "key1 key2 key3 key4 key5 key6 key7 key8 key9 key0", "1234567890");
        row("minus only at the start", "keyMinus key5 keyMinus", "-5");
        row("one period", "key0 keyDot key5 keyDot key2", "0.52");
        row("no leading zeros", "key0 key7", "0");
        row("no period first", "keyDot key7", "7");
        row("backspace", "key1 key2 keyBackspace key3", "13");
    }

    void numpadTypesNumbers()
    {
        QFETCH(QString, keys);
        VirtualNumpad numpad;
        press(numpad, keys);
        QTEST(numpad.findChild<QLineEdit *>("lineEdit")->text(), "text");
    }

    void numpadEnds()
    {
        VirtualNumpad numpad;
        numpad.setValue(1234567);
        QCOMPARE(numpad.findChild<QLineEdit *>("lineEdit")->text(), QString("1.23457e+06"));
        numpad.setValue(-12.5);
        numpad.show();
        QVERIFY(QTest::qWaitForWindowActive(&numpad));
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_End); // else a key replaces the number
        press(numpad, "keyBackspace keyEnter");                    // "-12." is no number yet
        QVERIFY(numpad.isVisible() && !numpad.findChild<QPushButton *>("keyEnter")->isEnabled());
        press(numpad, "keyBackspace");
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_7);
        press(numpad, "keyEnter");
        QCOMPARE(numpad.result(), int(QDialog::Accepted));
        QCOMPARE(numpad.getValue(), -127.0);
        numpad.show();
        press(numpad, "keyCancel");
        QCOMPARE(numpad.result(), int(QDialog::Rejected));
    }
};

QTEST_MAIN(KeyboardsTest)
#include "tst_keyboards.moc"
