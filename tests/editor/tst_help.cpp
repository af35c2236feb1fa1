#include "editor/help/AboutDialog.h"
#include "editor/help/DocumentsWindow.h"
#include "editor/help/Libraries.h"
#include "support/Rows.h"

#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QTemporaryDir>
#include <QTextBlock>
#include <QTextBrowser>
#include <QtTest>

using Editor::DocumentsWindow;

namespace {

/// A directory with two documents that lead to each other.
struct Documents
{
    Documents()
    {
        write("a.md",
              "# Насосы\n\nСм. [клапаны](b.md#второй-раздел), [тут](#о-насосах), "
              "[нет](gone.md), [сеть](https://example.org/x.md).\n\n## О насосах\n\nПуск.\n");
        write("b.md", "# Клапаны (`src/x`)\n\nПервый.\n\n## Второй раздел\n\nХод, пуск `on`.\n");
        write("c.txt", "not a document");
        window = std::make_unique<DocumentsWindow>(directory.path());
    }
    void write(const char *name, const char *text) const
    {
        QFile file(directory.filePath(name));
        if (!file.open(QIODevice::WriteOnly) || file.write(text) < 0)
            qFatal("not written");
    }
    QTextBrowser &text() const { return *window->findChild<QTextBrowser *>(); }
    QString told() const
    {
        QString all;
        for (const QLabel *label : window->findChildren<QLabel *>())
            all += label->text();
        return all;
    }
    QString rows() const
    {
        const auto *list = window->findChild<QListWidget *>();
        QStringList names;
        for (int i = 0; i < list->count(); ++i) {
            if (!list->item(i)->isHidden())
                names << list->item(i)->text();
        }
        return names.join(' ');
    }

    QTemporaryDir directory;
    std::unique_ptr<DocumentsWindow> window;
};

QStringList packagesOfBuild()
{
    QFile file(STATION_SOURCE_DIR "/tools/dependencies.txt");
    if (!file.open(QIODevice::ReadOnly))
        return {};
    const QString all = QString::fromUtf8(file.readAll());
    const QString libraries =
        all.section("# --- build: libraries ---", 1).section("# --- run", 0, 0);
    QStringList packages;
    for (const QString &line : libraries.split('\n', Qt::SkipEmptyParts)) {
        if (!line.startsWith('#'))
            packages << line.trimmed();
    }
    return packages;
}

} // namespace

class HelpTest : public QObject
{
    Q_OBJECT

private slots:
    void leadsFromDocumentToDocument_data()
    {
        const Rows<QString, QString, QString, QString> row("link", "file", "at", "told");
        row("a heading of another", "b.md#второй-раздел", "b.md", "Второй раздел", "");
        row("a heading of its own", "#о-насосах", "a.md", "О насосах", "");
        row("nowhere", "gone.md", "a.md", "Насосы", "Такого документа нет: gone.md");
        row("no heading of that name", "b.md#x", "b.md", "Клапаны (src/x)", "");
        row("out of this computer", "https://example.org/x.md", "a.md", "Насосы",
            "Ссылка ведёт в сеть: https://example.org/x.md");
    }

    void leadsFromDocumentToDocument()
    {
        QFETCH(QString, link);
        Documents f;
        QVERIFY(f.window->open("a.md"));
        emit f.text().anchorClicked(QUrl(link));
        QTEST(f.text().source().fileName(), "file");
        QTEST(f.text().textCursor().block().text(), "at");
        QTEST(f.told(), "told");
        const auto *shown = f.window->findChild<QListWidget *>()->currentItem();
        QVERIFY(shown && shown->isSelected());
        QCOMPARE(shown->text(),
                 QString(f.text().source().fileName() == "a.md" ? "Насосы" : "Клапаны"));
    }

    void findsInAllDocuments_data()
    {
        const Rows<QString, QString, int> row("words", "rows", "marks");
        row("none", " ", "Клапаны Насосы", 0);
        row("in both", "ПУСК", "Клапаны Насосы", 1);
        row("all words", "пуск ход", "Клапаны", 1);
        row("twice in the one shown", "насос", "Насосы", 2);
        row("nowhere", "щщ", "", 0);
    }

    void findsInAllDocuments()
    {
        QFETCH(QString, words);
        Documents f;
        QVERIFY(f.window->open("a.md"));
        f.window->findChild<QLineEdit *>()->setText(words);
        QTEST(f.rows(), "rows");
        QTEST(f.text().extraSelections().size(), "marks");
    }

    void opensWhatIsChosenInTheList()
    {
        Documents f;
        auto *list = f.window->findChild<QListWidget *>();
        list->setCurrentRow(0);
        QCOMPARE(f.text().source().fileName(), QString("b.md"));
        list->setCurrentRow(1);
        f.text().backward();
        QCOMPARE(list->currentRow(), 0);
    }

    // Whoever adds a library says under which licence it comes.
    void namesEveryLibraryOfTheBuild()
    {
        QStringList known;
        for (const Editor::Library &library : Editor::Libraries()) {
            known << library.package;
            QVERIFY2(*library.name && *library.purpose && *library.licence, library.package);
        }
        const QStringList wanted = packagesOfBuild();
        QVERIFY(wanted.size() > 10);
        for (const QString &package : wanted)
            QVERIFY2(known.contains(package), qPrintable(package));
    }

    void saysItsVersion()
    {
        QApplication::setApplicationVersion("7.8.9");
        const Editor::AboutDialog dialog;
        QString text;
        for (const QLabel *label : dialog.findChildren<QLabel *>())
            text += label->text();
        QVERIFY2(text.contains("7.8.9") && text.contains(qVersion()), qPrintable(text));
    }
};

QTEST_MAIN(HelpTest)
#include "tst_help.moc"
