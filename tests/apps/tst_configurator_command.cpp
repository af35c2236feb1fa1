#include "support/Rows.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

namespace {

struct Answer
{
    int code = -1;
    QStringList lines;
};

/// Runs the configurator where no window could be shown.
Answer run(const QStringList &arguments)
{
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("QT_QPA_PLATFORM", "none-such");
    environment.remove("DISPLAY");
    process.setProcessEnvironment(environment);
    process.start(STATION_BINARY_DIR "/bin/configurator", arguments);
    if (!process.waitForFinished() || process.exitStatus() != QProcess::NormalExit)
        return {};
    const QString output = QString::fromUtf8(process.readAllStandardOutput());
    return {process.exitCode(), output.split('\n', Qt::SkipEmptyParts)};
}

} // namespace

class ConfiguratorCommands : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        write("sound", "<folder id=\"2\" name=\"a\"/>");
        write("remark", "<folder id=\"2\" name=\"a\" odd=\"1\"/>");
        write("wrong",
              "\n<folder id=\"2\" name=\"a\">\n<label id=\"3\" name=\"b\" signal=\"9\"/></folder>");
        write("renamed", "<folder id=\"2\" name=\"a &quot;b&quot;\"/>");
        write("cut", "<folder id=\"2\"");
    }

    void screensAreRemarks()
    {
        write("pale", "<window id=\"2\" name=\"W\">\n"
                      "<label id=\"3\" name=\"b\" text=\"T\" color=\"#d6dade\"/></window>");
        const QString file = m_directory.filePath("pale");
        const Answer alone = run({"--check", file});
        const Answer reviewed = run({"--check", file, "--screens"});
        QCOMPARE(reviewed.code, alone.code);
        QStringList added = reviewed.lines;
        for (const QString &line : alone.lines)
            QVERIFY2(added.removeOne(line), qPrintable(line));
        QCOMPARE(added.size(), 1);
        QVERIFY2(added.front().contains("screen.contrast") &&
                     added.front().contains("project.xml:2: "),
                 qPrintable(added.front()));
        QCOMPARE(run({"--check", file, "--screens", "--strict"}).code, 1);
    }

    void check_data()
    {
        const Rows<QStringList, int, int> row("arguments", "code", "lines");
        row("sound", {"--check", "sound"}, 0, 0);
        row("remark", {"--check", "remark"}, 0, 1);
        row("wrong", {"--check", "wrong"}, 1, 2);
        row("unreadable", {"--check", "cut"}, 1, 1);
        row("missing", {"--check", "nothing"}, 1, 1);
        row("same", {"--diff", "sound", "sound"}, 0, 0);
        row("other", {"--diff", "sound", "wrong"}, 1, 1);
        row("unreadable to compare", {"--diff", "sound", "cut"}, 2, 0);
        row("one to compare", {"--diff", "sound"}, 2, 0);
        row("bad format", {"--check", "sound", "--format", "xml"}, 2, 0);
        row("strict", {"--check", "remark", "--strict"}, 1, 1);
        row("strict and sound", {"--check", "sound", "--strict"}, 0, 0);
        row("screens of nothing", {"--screens"}, 2, 0);
        row("strict comparison", {"--diff", "sound", "sound", "--strict"}, 2, 0);
        row("comparison as compilers", {"--diff", "sound", "sound", "--format", "gcc"}, 2, 0);
        row("format of nothing", {"--format", "json"}, 2, 0);
    }

    void check()
    {
        QFETCH(QStringList, arguments);
        QFETCH(int, code);
        QFETCH(int, lines);
        for (QString &argument : arguments) {
            if (QFileInfo::exists(m_directory.filePath(argument)))
                argument = m_directory.filePath(argument);
        }
        const Answer answer = run(arguments);
        QCOMPARE(answer.code, code);
        QCOMPARE(answer.lines.size(), lines);
    }

    void tellsTheLine()
    {
        const QString file = m_directory.filePath("wrong/project.xml");
        const Answer text = run({"--check", m_directory.filePath("wrong")});
        QVERIFY(text.lines[1].startsWith(file + ":3: project/folder[a]/label[b]: "));
        const Answer json = run({"--check", file, "--format", "json"});
        QCOMPARE(json.code, 1);
        const QJsonObject problem = QJsonDocument::fromJson(json.lines[1].toUtf8()).object();
        QCOMPARE(problem["line"].toInt(), 3);
        QCOMPARE(problem["code"].toString(), QString("no-target"));
        QCOMPARE(problem["property"].toString(), QString("signal"));
        const Answer compiler = run({"--check", file, "--format", "gcc"});
        QVERIFY(compiler.lines[1].startsWith(file + ":3:1: error: project/folder[a]/label[b]: "));
        QVERIFY(compiler.lines[1].endsWith(" [no-target]"));
        const Answer remark = run({"--check", m_directory.filePath("remark"), "--format", "gcc"});
        QVERIFY(remark.lines[0].contains(": warning: "));
    }

    void tellsWhatDiffersToPrograms()
    {
        const Answer added = run({"--diff", m_directory.filePath("sound"),
                                  m_directory.filePath("wrong"), "--format", "json"});
        QCOMPARE(added.code, 1);
        const QJsonObject node = QJsonDocument::fromJson(added.lines[0].toUtf8()).object();
        QCOMPARE(node["change"].toString(), QString("added"));
        QCOMPARE(node["after"].toInt(), 3);
        QVERIFY(!node.contains("before"));
        const Answer renamed = run({"--diff", m_directory.filePath("sound"),
                                    m_directory.filePath("renamed"), "--format", "json"});
        const QJsonObject change = QJsonDocument::fromJson(renamed.lines[0].toUtf8()).object();
        const QJsonObject name = change["properties"].toArray()[0].toObject();
        QCOMPARE(name["before"].toString(), QString("«a»"));
        QCOMPARE(name["after"].toString(), QString("«a \"b\"»"));
    }

private:
    void write(const char *name, const char *body)
    {
        QVERIFY(QDir(m_directory.path()).mkdir(name));
        QFile file(m_directory.filePath(name) + "/project.xml");
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(QByteArray("<project format=\"1\" id=\"1\">") + body + "</project>");
    }

    QTemporaryDir m_directory;
};

QTEST_GUILESS_MAIN(ConfiguratorCommands)
#include "tst_configurator_command.moc"
