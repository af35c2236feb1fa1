#include "nodes/ProjectFixture.h"
#include "nodes/TestKind.h"

#include "nodes/project/ProjectCheck.h"
#include "nodes/serial/ProjectWriter.h"
#include "support/Rows.h"

#include <QDir>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>
#include <QtTest>

#include <fstream>
#include <set>

using namespace Nodes;

namespace {

const std::string driver = "<modbusDriver id=\"10\" name=\"D\" host=\"h\" port=\"1\">\n";
const std::string group = "<modbusGroup id=\"11\" name=\"G\" start=\"100\" count=\"9\">\n";

std::string point(int id, const char *more)
{
    const std::string number = std::to_string(id);
    return "<modbusSignal id=\"" + number + "\" name=\"S" + number + "\" " + more + "/>\n";
}

std::string twoPoints(const char *left, const char *right)
{
    return driver + group + point(20, left) + point(21, right) + "</modbusGroup></modbusDriver>\n";
}

std::string show(const char *frame, const std::string &rest)
{
    return "<frame id=\"40\" name=\"F\" windows=\"" + std::string(frame) + "\"/>\n" + rest;
}

QStringList shown(const std::vector<ProjectProblem> &problems)
{
    QStringList all;
    for (const ProjectProblem &problem : problems)
        all << QStringLiteral("%1 %2 %3")
                   .arg(problem.line)
                   .arg(QString::fromStdString(problem.code))
                   .arg(problem.node);
    return all;
}

} // namespace

class CheckOfProjects : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { TestKind::Register(); }

    void finds_data()
    {
        // Lines of the body begin with 2; found: line, code, node.
        const Rows<std::string, QStringList> row("body", "found");
        row("nothing", "<folder id=\"2\" name=\"a\"/>\n", {});
        row("once, though reader and node both see it",
            "<pipe id=\"2\" name=\"a\"\n count=\"many\" signal=\"99\" odd=\"1\"/>\n",
            {"2 no-target 2", "2 bad-value 2", "2 unknown-attribute 2"});
        row("what only the text shows",
            "<folder id=\"2\" name=\"a\" name=\"b\">text</folder>\n<folder id=\"2\" name=\"c\"/>\n",
            {"2 repeated-attribute 2", "2 idle-text 2", "3 repeated-id 2"});
        row("unknown kind", "<gadget id=\"2\"/>\n", {"2 unknown-kind 2"});
        row("circle", "<pipe id=\"2\" name=\"a\" next=\"2\"/>\n", {"2 link-cycle 2"});
        row("no file", "<pipe id=\"2\" name=\"a\" picture=\"no.png\"/>\n", {"2 no-file 2"});
        row("misplaced", "<folder id=\"2\" name=\"a\"><layer id=\"3\" name=\"b\"/></folder>\n",
            {"2 misplaced 2"});
        row("siblings of a name", "<folder id=\"2\" name=\"a\"/>\n<folder id=\"3\" name=\"a\"/>\n",
            {"1 repeated-name 1"});
        row("same register", twoPoints("offset=\"2\"", "offset=\"2\""), {"5 repeated-address 21"});
        row("same register read otherwise",
            twoPoints("offset=\"2\" dataType=\"bit\" bit=\"1\"",
                      "offset=\"2\" dataType=\"bit\" bit=\"2\""),
            {});
        row("same device",
            driver +
                "</modbusDriver>\n<modbusDriver id=\"12\" name=\"E\" host=\"h\" port=\"1\"/>\n",
            {"4 repeated-device 12"});
        row("windows and no frame", "<window id=\"30\" name=\"w\"/>\n",
            {"1 nothing-shown 1", "2 unreachable-window 30"});
        row("window of a frame", show("30", "<window id=\"30\" name=\"w\"/>\n"), {});
        row("windows that only name each other",
            show("30", "<window id=\"30\" name=\"w\"/>\n"
                       "<window id=\"31\" name=\"x\"><button id=\"34\" name=\"b\" "
                       "onPress=\"35\"/></window>\n"
                       "<window id=\"32\" name=\"y\"/>\n"
                       "<actionShowWindow id=\"35\" name=\"s\" window=\"32\"/>\n"),
            {"4 unreachable-window 31", "5 unreachable-window 32"});
        row("window of an action of a window that is shown",
            show("30", "<window id=\"30\" name=\"w\"><button id=\"34\" name=\"b\" onPress=\"35\"/>"
                       "</window>\n<actionShowWindow id=\"35\" name=\"s\" window=\"32\"/>\n"
                       "<window id=\"32\" name=\"y\"/>\n"),
            {});
        row("window of a menu in a menu",
            show("30", "<window id=\"30\" name=\"w\"><button id=\"34\" name=\"b\" "
                       "onPress=\"35\"/></window>\n"
                       "<actionShowMenu id=\"35\" name=\"s\" menus=\"36\"/>\n"
                       "<menu id=\"36\" name=\"m\"><menu id=\"37\" name=\"n\"><menuItem id=\"38\" "
                       "name=\"i\" actions=\"39\"/></menu></menu>\n"
                       "<actionShowWindow id=\"39\" name=\"t\" window=\"32\"/>\n"
                       "<window id=\"32\" name=\"y\"/>\n"),
            {});
        row("window of an action that nothing runs",
            show("30", "<window id=\"30\" name=\"w\"/>\n"
                       "<actionShowWindow id=\"35\" name=\"s\" window=\"32\"/>\n"
                       "<window id=\"32\" name=\"y\"/>\n"),
            {"5 unreachable-window 32"});
        row("an argument that passes on a parameter",
            show("30 31",
                 "<windowTemplate id=\"30\" name=\"t\"><templateParameter id=\"33\" "
                 "name=\"p\"/><actionShowWindowTemplate id=\"34\" name=\"a\" window=\"31\">"
                 "<templateArgument id=\"35\" name=\"q\" node=\"33\"/>"
                 "</actionShowWindowTemplate></windowTemplate>\n"
                 "<windowTemplate id=\"31\" name=\"u\"><templateParameter id=\"36\" "
                 "name=\"q\"/></windowTemplate>\n"),
            {});
        row("an argument that names a parameter of another template",
            show("30 31",
                 "<windowTemplate id=\"30\" name=\"t\"><actionShowWindowTemplate id=\"34\" "
                 "name=\"a\" window=\"31\"><templateArgument id=\"35\" name=\"q\" "
                 "node=\"36\"/></actionShowWindowTemplate></windowTemplate>\n"
                 "<windowTemplate id=\"31\" name=\"u\"><templateParameter id=\"36\" "
                 "name=\"q\"/></windowTemplate>\n"),
            {"3 missing 34"});
    }

    void finds()
    {
        QFETCH(std::string, body);
        QFETCH(QStringList, found);
        const std::vector<ProjectProblem> problems = check("1", body);
        QCOMPARE(shown(problems), found);
        for (const ProjectProblem &problem : problems) {
            QCOMPARE(problem.file, m_file);
            QVERIFY(!problem.text.empty());
        }
    }

    // A script picks findings apart by these.
    void tellsTheProperty()
    {
        const auto problems = check("1", "<pipe id=\"2\" name=\"a\" count=\"many\"/>\n");
        QCOMPARE(problems.size(), std::size_t(1));
        QCOMPARE(problems[0].property, std::string("count"));
        QVERIFY(problems[0].text.find("от 1 до 9") != std::string::npos);
        QCOMPARE(problems[0].ToString().substr(0, m_file.size() + 21),
                 m_file + ":2: project/pipe[a]: ");
        const QJsonObject json =
            QJsonDocument::fromJson(QByteArray::fromStdString(problems[0].ToJson())).object();
        QCOMPARE(json["line"].toInt(), 2);
        QCOMPARE(json["code"].toString(), QString("bad-value"));
        QCOMPARE(json["text"].toString().toStdString(), problems[0].text);
    }

    void readsWhatItCanOfANewerProgram()
    {
        const auto problems =
            check("7", "<pipe id=\"2\" name=\"a\" magic=\"1\"/>\n<rune id=\"3\"/>");
        QCOMPARE(shown(problems),
                 (QStringList{"1 newer-format 0", "2 unknown-attribute 2", "3 unknown-kind 3"}));
        ProjectReader reader;
        std::unique_ptr<NodesCollection> project;
        reader.SetLenient(true);
        QVERIFY(reader.ReadFile(m_file, project));
        QVERIFY(reader.IsNewer());
        QVERIFY(project->FindNode(2));
        QVERIFY(ProjectWriter::WriteFile(*project, m_file) == Result::ReadOnly);
        const QByteArray copy = QByteArray::fromStdString(ProjectWriter::ToText(*project));
        QVERIFY(!copy.contains("newer"));
    }

    void saysWhyThereIsNothingToCheck()
    {
        std::vector<ProjectProblem> problems;
        QVERIFY(ProjectCheck::OfFile("/nowhere/project.xml", problems) == Result::NotFound);
        QCOMPARE(shown(problems), QStringList{"0 unreadable 0"});
    }

    // Nodes may go while a check is under way.
    void survivesEdits()
    {
        ProjectFixture f;
        for (int i = 0; i < 100; ++i)
            f.add("pipe", f.root(), nullptr, {{"signal", "99"}});
        ProjectCheck check(f.project);
        QVERIFY(check.Work(std::chrono::milliseconds(0)));
        const NodeLinks pipes = f.root()->GetNodes();
        for (std::size_t i = 50; i < pipes.size(); ++i)
            (void)f.root()->RemoveNode(pipes[i]);
        while (check.Work(std::chrono::milliseconds(0))) {
        }
        QCOMPARE(check.GetProblems().size(), std::size_t(50));
        QCOMPARE(check.GetDone(), check.GetCount());
    }

    void samplesAreSound_data()
    {
        QTest::addColumn<QString>("directory");
        const QDir samples(STATION_SOURCE_DIR "/projects");
        for (const QString &name : samples.entryList(QDir::Dirs | QDir::NoDotAndDotDot))
            QTest::newRow(qPrintable(name)) << samples.filePath(name);
    }

    void samplesAreSound()
    {
        QFETCH(QString, directory);
        std::vector<ProjectProblem> problems;
        QVERIFY(ProjectCheck::OfFile(directory.toStdString(), problems));
        for (const ProjectProblem &problem : problems)
            QVERIFY2(false, problem.ToString().c_str());
    }

private:
    std::vector<ProjectProblem> check(const std::string &format, const std::string &body)
    {
        m_file = m_directory.filePath("project.xml").toStdString();
        std::ofstream(m_file) << "<project format=\"" << format << "\" id=\"1\">\n"
                              << body << "</project>\n";
        std::vector<ProjectProblem> problems;
        if (!ProjectCheck::OfFile(m_directory.path().toStdString(), problems))
            throw std::logic_error("not read");
        return problems;
    }

    QTemporaryDir m_directory;
    std::string m_file;
};

QTEST_APPLESS_MAIN(CheckOfProjects)
#include "tst_project_check.moc"
