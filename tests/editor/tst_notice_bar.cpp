#include "OpenProject.h"

#include "editor/shell/NoticeBar.h"
#include "editor/shell/NoticePanel.h"

#include "support/Rows.h"

#include <QClipboard>
#include <QLabel>
#include <QPushButton>
#include <QToolButton>
#include <QTreeWidget>
#include <QtTest>

using Editor::NoticeBar;
using Editor::NoticePanel;
using Editor::Workspace;

class NoticeBarTest : public QObject
{
    Q_OBJECT

private slots:
    // "i" is information, "w" a warning, "e" an error, "x" a press of the button that closes.
    void warningsComeBack_data()
    {
        const Rows<QString, QString> row("told", "shown");
        row("information goes", "i1 x", "");
        row("a warning goes when it is closed", "w1 x", "");
        row("information before a warning", "w1 i2", "i2");
        row("the warning after it", "w1 i2 x", "w1");
        row("closed for good", "w1 i2 x x", "");
        row("one by one", "w1 e2 i3 x x", "w1");
        row("the same once", "w1 e2 w1 x x", "");
        row("no more than some", "w1 w2 w3 w4 w5 x x x", "w2");
    }

    void warningsComeBack()
    {
        QFETCH(QString, told);
        QFETCH(QString, shown);
        NoticeBar bar;
        for (const QString &word : told.split(' ')) {
            if (word == "x")
                bar.findChild<QToolButton *>("closeNotice")->click();
            else
                bar.tell(word[0] == 'i'   ? Workspace::Info
                         : word[0] == 'w' ? Workspace::Warning
                                          : Workspace::Error,
                         word);
        }
        QStringList texts;
        for (const QLabel *label : bar.findChildren<QLabel *>())
            texts << label->text();
        QCOMPARE(bar.isHidden() ? QString() : texts.join(QString()), shown);
        bar.clear();
        QVERIFY(bar.isHidden());
    }

    void everythingToldCanBeReadLater()
    {
        OpenProject f;
        NoticePanel panel(f.workspace, nullptr);
        const auto *rows = panel.findChild<QTreeWidget *>();
        const auto buttons = panel.findChildren<QPushButton *>();
        QVERIFY(!buttons[0]->isEnabled() && !buttons[1]->isEnabled());
        f.workspace.tell(Workspace::Info, "один");
        f.workspace.tell(Workspace::Error, "два");
        QCOMPARE(rows->topLevelItemCount(), 2);
        QCOMPARE(rows->topLevelItem(0)->text(1), QString("два"));
        buttons[0]->click();
        const QStringList lines = QGuiApplication::clipboard()->text().split('\n');
        QCOMPARE(lines.size(), 2);
        QVERIFY2(lines[0].endsWith("\tОшибка\tдва"), qPrintable(lines[0]));
        rows->topLevelItem(1)->setSelected(true);
        buttons[0]->click();
        QVERIFY(QGuiApplication::clipboard()->text().endsWith("\tСведения\tодин"));
        for (int i = 0; i < NoticePanel::keptAtMost; ++i)
            f.workspace.tell(Workspace::Info, QString::number(i));
        QCOMPARE(rows->topLevelItemCount(), NoticePanel::keptAtMost);
        QCOMPARE(rows->topLevelItem(NoticePanel::keptAtMost - 1)->text(1), QString("0"));
        const qint64 mark = rows->topLevelItem(0)->icon(0).cacheKey();
        QCOMPARE(rows->topLevelItem(1)->icon(0).cacheKey(), mark); // or each would hold its own
        buttons[1]->click();
        QCOMPARE(rows->topLevelItemCount(), 0);
        QVERIFY(!buttons[1]->isEnabled());
    }
};

QTEST_MAIN(NoticeBarTest)
#include "tst_notice_bar.moc"
