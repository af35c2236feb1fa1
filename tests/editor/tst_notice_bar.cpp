#include "editor/shell/NoticeBar.h"

#include "support/Rows.h"

#include <QLabel>
#include <QToolButton>
#include <QtTest>

using Editor::NoticeBar;
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
                bar.findChild<QToolButton *>()->click();
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
};

QTEST_MAIN(NoticeBarTest)
#include "tst_notice_bar.moc"
