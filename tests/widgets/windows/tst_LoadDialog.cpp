#include "nodes/model/ConfigNode.h"
#include "nodes/model/NodesCollection.h"
#include "widgets/windows/loading/LoadDialog.h"
#include "widgets/windows/loading/LoadReportTable.h"
#include "widgets/windows/loading/NodeLoadingThread.h"

#include <QLabel>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTimer>
#include <QtTest>

using namespace Widgets;

namespace {

// Answers the dialog once its table shows, and keeps what that said.
class Operator : public QTimer
{
public:
    Operator(LoadDialog &dialog, const QString &answer)
    {
        callOnTimeout(this, [this, &dialog, answer] {
            const auto *table = dialog.findChild<LoadReportTable *>();
            if (!table->isVisible())
                return;
            stop();
            for (int row = 0; row < table->rowCount(); ++row)
                rows << table->item(row, LoadReportTable::PlaceColumn)->text() + '|' +
                            table->item(row, LoadReportTable::TextColumn)->text();
            for (auto *button : dialog.findChildren<QPushButton *>()) {
                if (button->isVisible() && button->text() == answer)
                    button->click();
            }
        });
        start(5);
    }

    QStringList rows;
};

} // namespace

class LoadDialogTest : public QObject
{
    Q_OBJECT

private slots:
    void loadsQuietly();
    void listsFindings_data();
    void listsFindings();
    void cancels();
    void endsWithItsThread();

private:
    QString write(const QByteArray &text);
    QString writeLarge();

    QTemporaryDir m_directory;
};

QString LoadDialogTest::write(const QByteArray &text)
{
    QFile file(m_directory.filePath(QStringLiteral("project.xml")));
    if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size())
        qFatal("cannot write %s", qPrintable(file.fileName()));
    return file.fileName();
}

QString LoadDialogTest::writeLarge()
{
    QByteArray text = "<project format='1' id='1' name='P'>\n";
    for (int id = 2; id < 60000; ++id)
        text += QByteArray("<folder id='%'/>\n").replace('%', QByteArray::number(id));
    return write(text + "</project>");
}

void LoadDialogTest::loadsQuietly()
{
    write("<project format='1' id='1' name='P'/>");
    LoadDialog dialog(m_directory.path()); // a directory stands for its project.xml
    QVERIFY(dialog.load());
    QVERIFY(!dialog.isVisible());
    const auto project = dialog.takeProject();
    QVERIFY(project);
    QCOMPARE(project->GetRoot()->GetName(), std::string("P"));
    QVERIFY(!dialog.takeProject());
}

void LoadDialogTest::listsFindings_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QString>("answer");
    QTest::addColumn<bool>("goesOn");
    QTest::addColumn<QString>("place");
    const QByteArray broken = "<project format='1' id='1'>\n\n<folder></project>";
    const QByteArray unknown = "<project format='1' id='1' name='P'>\n"
                               "<folder id='2' name='F' colour='red'/></project>";
    QTest::newRow("broken") << broken << "Закрыть" << false << "project.xml:3|";
    QTest::newRow("findings, go on") << unknown << "Продолжить" << true << "project.xml:2|";
    QTest::newRow("findings, stop") << unknown << "Закрыть" << false << "project.xml:2|";
}

void LoadDialogTest::listsFindings()
{
    QFETCH(QByteArray, text);
    QFETCH(QString, answer);
    QFETCH(bool, goesOn);
    QFETCH(QString, place);
    LoadDialog dialog(write(text));
    Operator user(dialog, answer);
    QCOMPARE(dialog.load(), goesOn);
    QCOMPARE(user.rows.size(), 1);
    QVERIFY2(user.rows[0].startsWith(place), qPrintable(user.rows[0]));
    QVERIFY(user.rows[0].size() > place.size());

    LoadDialog unattended(write(text)); // never waits for an answer
    unattended.setUnattended(true);
    QCOMPARE(unattended.load(), text.contains("colour"));
    QCOMPARE(unattended.loadResult().IsSuccess(), text.contains("colour"));
    QCOMPARE(unattended.takeProject() != nullptr, text.contains("colour"));
    QVERIFY(!unattended.report().empty());
}

void LoadDialogTest::cancels()
{
    LoadDialog dialog(writeLarge());
    // Runs inside load(), once the thread has been started.
    QTimer::singleShot(0, &dialog, &LoadDialog::reject);
    QVERIFY(!dialog.load());
    QCOMPARE(dialog.loadResult(), Nodes::Result::Cancelled);
    QVERIFY(!dialog.takeProject());
}

void LoadDialogTest::endsWithItsThread()
{
    const QString file = writeLarge();
    NodeLoadingThread whole(file);
    QSignalSpy loaded(&whole, &NodeLoadingThread::loaded);
    QSignalSpy progress(&whole, &NodeLoadingThread::progress);
    whole.start();
    QVERIFY(loaded.wait(30000));
    QCOMPARE(progress.last().at(0).toInt(), 100);
    QCOMPARE(whole.takeProject()->GetNodeCount(), std::size_t(59999));

    NodeLoadingThread missing(m_directory.filePath(QStringLiteral("missing.xml")));
    QSignalSpy failed(&missing, &NodeLoadingThread::failed);
    missing.start();
    QVERIFY(failed.wait(30000));
    QCOMPARE(missing.result(), Nodes::Result::NotFound);

    auto dropped = std::make_unique<NodeLoadingThread>(file);
    dropped->start();
    dropped.reset(); // must cancel and wait, not crash
}

QTEST_MAIN(LoadDialogTest)
#include "tst_LoadDialog.moc"
