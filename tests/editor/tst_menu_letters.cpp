#include "editor/shell/MenuLetters.h"

#include "editor/shell/MainWindow.h"
#include "editor/shell/MenuEntries.h"
#include "support/Rows.h"

#include <QAction>
#include <QMenu>
#include <QMenuBar>
#include <QTemporaryDir>
#include <QtTest>

namespace {

QString textsOf(const QMenu &menu)
{
    QStringList texts;
    for (const QAction *action : menu.actions())
        texts << action->text();
    return texts.join('|');
}

} // namespace

class MenuLettersTest : public QObject
{
    Q_OBJECT

private slots:
    void areUnique_data()
    {
        const Rows<QString, QString> row("texts", "marked");
        row("first letters", "Вырезать|Копировать", "&Вырезать|&Копировать");
        row("of another word", "Вид|Вид сверху", "&Вид|Вид &сверху");
        row("any", "Вид|Вид", "&Вид|В&ид");
        row("marked before keep theirs", "Копия|В&копать|Вид", "К&опия|В&копать|&Вид");
        row("two marked alike", "&Вид|&Ввод", "&Вид|Вв&од");
        row("capitals do not matter", "Вид|вВ", "&Вид|вВ");
        row("nothing left", "а|А|аА", "&а|А|аА");
        row("no letter at all", "…|«Б»", "…|«&Б»");
        row("digits", "100 %|1", "&100 %|1");
    }

    void areUnique()
    {
        QFETCH(QString, texts);
        QMenu menu;
        for (const QString &text : texts.split('|'))
            menu.addAction(text);
        Editor::MenuLetters::assign(menu);
        QTEST(textsOf(menu), "marked");
        const QString once = textsOf(menu);
        Editor::MenuLetters::assign(menu); // steady
        QCOMPARE(textsOf(menu), once);
    }

    void everyEntryOfTheWindowHasOne()
    {
        const QTemporaryDir directory;
        Editor::MainWindow window{QString()};
        QVERIFY(window.workspace().session().create(directory.filePath("p"), "P"));
        int menus = 0;
        for (QMenu *menu : window.menuBar()->findChildren<QMenu *>()) {
            emit menu->aboutToShow();
            QSet<QChar> taken;
            for (const QAction *action : menu->actions()) {
                if (action->isSeparator() || !action->isEnabled())
                    continue;
                const int at = action->text().indexOf('&');
                QVERIFY2(at >= 0, qPrintable(menu->title() + ": " + action->text()));
                const QChar letter = action->text().at(at + 1).toLower();
                QVERIFY2(!taken.contains(letter), qPrintable(menu->title() + ": " + letter));
                taken.insert(letter);
            }
            ++menus;
        }
        QVERIFY(menus > 8);
    }
};

QTEST_MAIN(MenuLettersTest)
#include "tst_menu_letters.moc"
