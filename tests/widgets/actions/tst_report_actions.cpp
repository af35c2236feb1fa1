#include "nodes/ManualClock.h"
#include "support/MessageBoxes.h"
#include "support/Rows.h"
#include "support/RuntimeProject.h"
#include "widgets/reports/TemplateText.h"

#include "widgets/reports/display/ReportDialog.h"
#include "widgets/reports/display/qwidgetReportDisplay.h"
#include "widgets/reports/printing/PrintCommand.h"

#include <QSignalSpy>

#include <lrdatasourcemanagerintf.h>
#include <lrreportengine.h>

using namespace Widgets;

namespace {

constexpr int patience = 20000; // ms

constexpr const char *nodes = R"(
<station id="80" name="St"><authentication id="90" name="A" guestRole="92"><role id="92" name="Guest">
  <grant id="94" privileges="all"/><grant id="95" privileges="view" scope="21" mode="deny"/></role>
</authentication></station>
<report id="20" name="Смена" template="@"><reportVariable id="22" name="plant" value="Завод"/>
  <reportVariable id="23" name="unit" value="т"/><reportEvents id="24" name="events"/></report>
<report id="21" name="Тайна" template="@"/>
<actionReport id="30" name="show" report="20"/>
<actionReport id="31" name="before" report="20" period="day" which="previous">
  <reportVariable id="32" name="plant" value="Котёл 7"/></actionReport>
<actionReport id="33" name="pdf" report="20" command="save" folder="by hand" fileName="{shift} {dd}"/>
<actionReport id="34" name="csv" report="20" command="save" fileFormat="csv" fileName="t"/>
<actionReport id="35" name="out" report="20" command="save" folder="../.."/>
<actionReport id="36" name="secret" report="21"/>
<actionReport id="37" name="gone" report="999"/>
<actionReport id="40" name="print" report="20" command="print" printer="shift office"/>
<actionReport id="41" name="usual" report="20" command="print"/>
<actionReport id="42" name="unnamed" report="20" command="print" printer="${nobody}"/>)";

QList<ReportDialog *> dialogs()
{
    QList<ReportDialog *> open;
    for (QWidget *window : QApplication::topLevelWidgets())
        if (auto *dialog = qobject_cast<ReportDialog *>(window))
            open << dialog;
    return open;
}

} // namespace

class TestReportActions : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();
    void showsInAWindowOfItsOwn();
    void showsWithParameters();
    void savesAndPrints_data();
    void savesAndPrints();
    void onceAtATime();
    void serviceThatHangs();

private:
    /// A print service of the test's own: what it does is a shell script. None for "".
    void serve(const QByteArray &script);
    QString printed() const;

    QTemporaryDir m_directory;
    QByteArray m_path = qgetenv("PATH");
    std::unique_ptr<RuntimeProject> m_project;
};

void TestReportActions::initTestCase()
{
    qputenv("TZ", "UTC0");
    ManualClock::Use(); // 14.11.2023, 22:13
    using namespace TemplateText;
    QFile file(m_directory.filePath("t.lrxml"));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(
        report({page({band("ReportHeader", "h", 100, {item("$V{plant} $V{period}")})})}).toUtf8());
}

void TestReportActions::init()
{
    const QByteArray file = m_directory.filePath("t.lrxml").toUtf8();
    m_project = std::make_unique<RuntimeProject>(QByteArray(nodes).replace("@", file).constData());
    QVERIFY(m_project->core.Start());
}

void TestReportActions::cleanup()
{
    m_project->manager.reset();
    m_project->core.Stop();
    m_project.reset();
    qputenv("PATH", m_path);
    QFile::remove(printed());
}

void TestReportActions::serve(const QByteArray &script)
{
    const QDir bin(m_directory.filePath("bin"));
    QVERIFY(bin.mkpath("."));
    QFile::remove(bin.filePath("lp"));
    qputenv("PATH", script.isEmpty() ? bin.path().toUtf8() : bin.path().toUtf8() + ":" + m_path);
    if (script.isEmpty())
        return;
    QFile lp(bin.filePath("lp"));
    QVERIFY(lp.open(QIODevice::WriteOnly));
    lp.write("#!/bin/sh\n" + QByteArray(script).replace("OUT", printed().toUtf8()));
    lp.setPermissions(lp.permissions() | QFile::ExeOwner);
}

QString TestReportActions::printed() const
{
    return m_directory.filePath("printed");
}

void TestReportActions::showsInAWindowOfItsOwn()
{
    m_project->run(30);
    QTRY_COMPARE(dialogs().size(), 1);
    const QPointer<ReportDialog> first = dialogs().first();
    QCOMPARE(first->windowTitle(), QString("Отчёт: Смена"));
    QTRY_VERIFY_WITH_TIMEOUT(first->display()->engine()->pageCount() == 1, patience);
    QCOMPARE(first->display()->engine()->lastError(), QString());
    m_project->run(30); // the same again
    QTRY_COMPARE_WITH_TIMEOUT(first->display()->engine()->pageCount(), 1, patience);
    QCOMPARE(dialogs(), QList<ReportDialog *>{first.data()});
    m_project->run(31); // another one
    QTRY_COMPARE(dialogs().size(), 2);
    first->close();
    QTRY_VERIFY(!first);
}

void TestReportActions::showsWithParameters()
{
    m_project->run(31);
    QTRY_COMPARE(dialogs().size(), 1);
    const qwidgetReportDisplay &display = *dialogs().first()->display();
    QCOMPARE(display.choice().span.begin, Nodes::Timestamp(1699833600) * 1000000); // 13.11.2023
    QTRY_VERIFY_WITH_TIMEOUT(display.engine()->pageCount() == 1, patience);
    LimeReport::IDataSourceManager &data = *display.engine()->dataManager();
    QCOMPARE(data.variable("plant").toString(), QString("Котёл 7"));
    QCOMPARE(data.variable("unit").toString(), QString("т")); // the others are the report's
    QCOMPARE(data.variable("period").toString(), QString("Сутки 13.11.2023"));
}

void TestReportActions::savesAndPrints_data()
{
    // `entry`: of the journal and, with the title in front, of the box; `file`: below reports
    const Rows<unsigned, QByteArray, QString, QString> row("action", "script", "entry", "file");
    row("pdf", 33, "",
        "Отчёт: Отчёт «Смена» (Смена ночная, 14.11.2023 20:00 – 15.11.2023 08:00) сохранён: ",
        "by hand/ночная 14.pdf");
    row("csv", 34, "", "Отчёт: Отчёт «Смена» (Смена", "t.csv");
    row("out of the folder", 35, "", "Ошибка: Отчёт «Смена» (Смена", "");
    row("no right", 36, "", "Ошибка: Недостаточно прав для выполнения действия", "");
    row("no report", 37, "", "Ошибка: gone: Не найдено", "");
    row("print", 40, "echo \"$@\" > OUT; test -s \"$6\"", "отправлен на принтер «shift office»",
        "");
    row("usual printer", 41, "exit 0", "отправлен на принтер по умолчанию", "");
    row("unnamed printer", 42, "exit 0", "принтер не задан", "");
    row("printer refuses", 40, "echo 'lp: no such printer' >&2; exit 1",
        "принтер «shift office» не принимает заданий (lp: no such printer). Проверьте", "");
    row("no service", 40, "", "на этой станции нет службы печати", "");
}

void TestReportActions::savesAndPrints()
{
    QFETCH(unsigned, action);
    QFETCH(QByteArray, script);
    QFETCH(QString, entry);
    QFETCH(QString, file);
    const MessageBoxes boxes;
    serve(script);
    m_project->run(action);
    QTRY_COMPARE_WITH_TIMEOUT(boxes.shown.size(), 1, patience);
    QVERIFY2(boxes.shown.first().contains(entry), qPrintable(boxes.shown.first()));
    const QString text = boxes.shown.first().section(": ", 1);
    if (text.startsWith("Отчёт")) // whoever looks later finds it too
        QCOMPARE(m_project->journalled(text), 1);
    const QString reports = m_project->data.filePath("reports");
    QCOMPARE(QDir(reports).exists(), !file.isEmpty());
    QVERIFY(file.isEmpty() || QFileInfo(QDir(reports).filePath(file)).size() > 0);
    if (QFile out(printed()); out.open(QIODevice::ReadOnly)) {
        const QString arguments = QString::fromUtf8(out.readAll()).trimmed();
        QVERIFY2(arguments.startsWith("-t Смена 2023-11-14 20-00 -d shift office -- /"),
                 qPrintable(arguments));
        const QString sent = arguments.section(" -- ", 1); // nothing is left lying about
        QTRY_VERIFY(!QFileInfo::exists(QFileInfo(sent).path()));
    } else {
        QVERIFY(!script.contains("OUT"));
    }
}

void TestReportActions::onceAtATime()
{
    const MessageBoxes boxes;
    serve("touch OUT; while test -e OUT; do sleep 0.05; done");
    m_project->run(40);
    QTRY_VERIFY_WITH_TIMEOUT(QFileInfo::exists(printed()), patience);
    m_project->run(40);
    QTRY_COMPARE(boxes.shown, QStringList("Ошибка: Отчёт «Смена» ещё составляется."));
    QFile::remove(printed());
    QTRY_COMPARE_WITH_TIMEOUT(boxes.shown.size(), 2, patience);
    m_project->run(40); // it is free again
    QTRY_VERIFY_WITH_TIMEOUT(QFileInfo::exists(printed()), patience);
    QFile::remove(printed());
    QTRY_COMPARE_WITH_TIMEOUT(boxes.shown.size(), 3, patience);
}

void TestReportActions::serviceThatHangs()
{
    serve("exec sleep 600");
    PrintCommand command;
    QSignalSpy finished(&command, &PrintCommand::finished);
    command.setPatience(50);
    command.start("/nowhere.pdf", {}, "t");
    QTRY_COMPARE_WITH_TIMEOUT(finished.size(), 1, patience);
    QVERIFY(finished[0][0].toString().startsWith("служба печати не отвечает"));
}

QTEST_MAIN(TestReportActions)
#include "tst_report_actions.moc"
