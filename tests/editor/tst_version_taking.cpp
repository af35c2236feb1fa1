#include "editor/compare/VersionTaking.h"

#include "nodes/model/ConfigNode.h"
#include "nodes/model/NodesCollection.h"
#include "nodes/project/ProjectDiff.h"
#include "nodes/serial/ProjectReader.h"
#include "nodes/serial/ProjectWriter.h"
#include "nodes/system/systemCore.h"
#include "support/Rows.h"

#include <QTemporaryDir>
#include <QUndoStack>
#include <QtTest>

using namespace Editor;

namespace {

std::unique_ptr<Nodes::NodesCollection> read(const QString &elements)
{
    Nodes::ProjectReader reader;
    std::unique_ptr<Nodes::NodesCollection> project;
    const QString text = "<project format=\"1\" id=\"1\" name=\"P\">" + elements + "</project>";
    if (!reader.ReadBuffer(text.toStdString(), "p.xml", project))
        throw std::runtime_error("not read");
    return project;
}

QString lines(const Nodes::NodesCollection &other, const Nodes::NodesCollection &open)
{
    QStringList all;
    const Nodes::ProjectDiff diff(other, open);
    for (const Nodes::NodeDifference &difference : diff.GetDifferences()) {
        for (const std::string &line : difference.ToLines())
            all << QString::fromStdString(line);
    }
    return all.join('\n');
}

constexpr const char *driver =
    "<simulatorDriver id=\"2\" name=\"D\"><simulatorSignal id=\"3\" name=\"S\" formula=\"1\"/>"
    "</simulatorDriver>";

} // namespace

class VersionTakingTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { m_core.SetWorkMode(Nodes::WorkModeEditing); }

    void takesWhatDiffers_data()
    {
        const Rows<QString, QString> row("other", "open");
        const QString a = "<folder id=\"10\" name=\"a\"/>", b = "<folder id=\"11\" name=\"b\"/>",
                      c = "<folder id=\"12\" name=\"c\"/>", d = "<folder id=\"13\" name=\"d\"/>";
        row("added there, in the middle", a + b + c, a + c);
        row("several added there", a + b + c + d, d);
        row("added here", a, a + b);
        row("put in order", a + b + c + d, d + b + c + a);
        row("moved", "<folder id=\"10\" name=\"a\">" + b + c + "</folder>" + d,
            a + "<folder id=\"13\" name=\"d\">" + c + "</folder>" + b);
        row("moved into what is only there",
            "<folder id=\"20\" name=\"new\">" + a + b + "</folder>", b + a);
        row("moved out of what is only here", a + b,
            "<folder id=\"20\" name=\"new\">" + b + a + "</folder>");
        row("renamed", "<folder id=\"10\" name=\"x\" description=\"y\"/>", a);
        row("properties",
            "<label id=\"10\" name=\"a\" x=\"4\" text=\"T &amp; t\" color=\"#010203\"/>",
            "<label id=\"10\" name=\"a\" y=\"7\"/>");
        row("a link to what both have",
            driver + QString("<label id=\"10\" name=\"a\" signal=\"3\"/>"),
            driver + QString("<label id=\"10\" name=\"a\"/>"));
        row("a link to what is only there",
            driver + QString("<label id=\"10\" name=\"a\" signal=\"3\"/>"),
            "<label id=\"10\" name=\"a\"/>");
        row("both ends of a link are only there",
            driver +
                QString("<window id=\"9\" name=\"w\"><label id=\"10\" name=\"a\" signal=\"3\"/>"
                        "</window><frame id=\"8\" name=\"f\" windows=\"9\"/>"),
            "");
        // The number of the signal there is that of something else here.
        row("other numbers", driver + QString("<label id=\"10\" name=\"a\" signal=\"3\"/>"),
            "<folder id=\"3\" name=\"x\"/><simulatorDriver id=\"5\" name=\"D\">"
            "<simulatorSignal id=\"6\" name=\"S\" formula=\"1\"/></simulatorDriver>"
            "<label id=\"10\" name=\"a\"/>");
    }

    void takesWhatDiffers()
    {
        QFETCH(QString, other);
        QFETCH(QString, open);
        const auto theirs = read(other);
        const auto ours = read(open);
        const std::string before = Nodes::ProjectWriter::ToText(*ours);
        const Nodes::ProjectDiff diff(*theirs, *ours);
        QVERIFY(!diff.isEmpty());
        VersionTaking taking(*theirs, *ours);
        for (const Nodes::NodeDifference &difference : diff.GetDifferences())
            taking.take(difference);
        push(taking);
        QCOMPARE(taking.remarks(), QStringList());
        QCOMPARE(lines(*theirs, *ours), QString());
        m_stack.undo();
        QCOMPARE(withoutLastId(Nodes::ProjectWriter::ToText(*ours)), withoutLastId(before));
        m_stack.redo();
        QCOMPARE(lines(*theirs, *ours), QString());
        m_stack.clear();
    }

    void takesWhatItDoesNotKnow()
    {
        const auto theirs =
            read("<folder id=\"10\" name=\"a\"><pump id=\"11\" name=\"b\" speed=\"7\"/>"
                 "</folder>");
        const auto ours = read("");
        ours->SetUuid(theirs->GetUuid());
        VersionTaking taking(*theirs, *ours);
        const Nodes::ProjectDiff diff(*theirs, *ours);
        taking.take(diff.GetDifferences()[0]);
        push(taking);
        QCOMPARE(withoutLastId(Nodes::ProjectWriter::ToText(*ours)),
                 withoutLastId(Nodes::ProjectWriter::ToText(*theirs)));
        m_stack.clear();
    }

    void takesOneProperty()
    {
        const auto theirs = read("<label id=\"10\" name=\"a\" x=\"4\" y=\"5\"/>");
        const auto ours = read("<label id=\"10\" name=\"a\"/>");
        const Nodes::ProjectDiff diff(*theirs, *ours);
        const Nodes::NodeDifference &label = diff.GetDifferences()[0];
        VersionTaking taking(*theirs, *ours);
        taking.take(label, label.properties[1]);
        push(taking);
        QCOMPARE(lines(*theirs, *ours), QString("изменено: a (Надпись): «X»: 4 → 0"));
        m_stack.clear();
    }

    // Of several that look alike the one that was chosen, not another that has its number or name.
    void takesOneOfSeveral_data()
    {
        const Rows<int, QString, QString> row("which", "open", "number");
        row("first", 0, "", "2");
        row("last", 2, "", "4");
        row("number is of something else here", 2, "<label id=\"4\" name=\"x\"/>", "");
    }

    void takesOneOfSeveral()
    {
        QFETCH(int, which);
        QFETCH(QString, open);
        QFETCH(QString, number);
        const auto theirs = read("<folder id=\"2\" name=\"a\"/>"
                                 "<folder id=\"3\" name=\"b\"/>"
                                 "<folder id=\"4\" name=\"b\"/>");
        const auto ours = read(open);
        ours->SetUuid(theirs->GetUuid());
        QStringList left = lines(*theirs, *ours).split('\n').filter("удалено");
        QCOMPARE(left.size(), 3);
        left.removeAt(which);
        const Nodes::ProjectDiff diff(*theirs, *ours);
        const auto first = std::find_if(diff.GetDifferences().begin(), diff.GetDifferences().end(),
                                        [](const auto &found) { return found.isRemoved; });
        VersionTaking taking(*theirs, *ours);
        taking.take(first[which]);
        push(taking);
        QCOMPARE(lines(*theirs, *ours).split('\n').filter("удалено"), left);
        QVERIFY(!lines(*theirs, *ours).contains("изменено"));
        const Nodes::ConfigNode &taken = *ours->GetRoot()->Children().back();
        QVERIFY(number.isEmpty() || QString::number(taken.GetId()) == number);
        m_stack.clear();
    }

    // Nothing that the user did not choose goes, and no link leads to what it did not mean.
    void saysWhatItCannotTake_data()
    {
        const Rows<QString, QString, QString, QString> row("other", "open", "path", "left");
        row("link", driver + QString("<label id=\"10\" name=\"a\" signal=\"3\"/>"),
            "<label id=\"10\" name=\"a\"/>", "a", "удалено: D");
        row("what both have stands in it", "<folder id=\"10\" name=\"a\"/>",
            "<folder id=\"20\" name=\"new\"><folder id=\"10\" name=\"a\"/></folder>", "new",
            "добавлено: new");
        row("its place is not there",
            "<folder id=\"20\" name=\"new\"><folder id=\"10\" name=\"a\"/></folder>",
            "<folder id=\"10\" name=\"a\"/>", "a", "перемещено: new/a");
        row("attribute that nobody knows", "<folder id=\"10\" name=\"a\" odd=\"1\"/>",
            "<folder id=\"10\" name=\"a\"/>", "a", "атрибут odd");
    }

    void saysWhatItCannotTake()
    {
        QFETCH(QString, other);
        QFETCH(QString, open);
        QFETCH(QString, path);
        QFETCH(QString, left);
        const auto theirs = read(other);
        const auto ours = read(open);
        const Nodes::ProjectDiff diff(*theirs, *ours);
        VersionTaking taking(*theirs, *ours);
        for (const Nodes::NodeDifference &difference : diff.GetDifferences()) {
            if (difference.path == path.toStdString())
                taking.take(difference);
        }
        push(taking);
        QCOMPARE(taking.remarks().size(), 1);
        QVERIFY2(taking.remarks()[0].contains(path), qPrintable(taking.remarks()[0]));
        QVERIFY2(lines(*theirs, *ours).contains(left), qPrintable(lines(*theirs, *ours)));
        m_stack.clear();
    }

    void namesFilesThatAreNotHere_data()
    {
        const Rows<QString, QString, QString, bool> row("other", "open", "here", "told");
        const QString image = "<image id=\"10\" name=\"a\" image=\"%1\"/>";
        const QString folder = "<folder id=\"9\" name=\"f\">" + image + "</folder>";
        row("property", image.arg("x.svg"), image.arg(""), "y.svg", true);
        row("property, here", image.arg("x.svg"), image.arg(""), "x.svg", false);
        row("part of the program", image.arg(":/x.svg"), image.arg(""), "", false);
        row("none", image.arg(""), image.arg("y.svg"), "", false);
        row("in what is only there", folder.arg("x.svg"), "", "y.svg", true);
        row("in what is only there, here", folder.arg("x.svg"), "", "x.svg", false);
    }

    void namesFilesThatAreNotHere()
    {
        QFETCH(QString, other);
        QFETCH(QString, open);
        QFETCH(QString, here);
        QFETCH(bool, told);
        QTemporaryDir directory;
        QFile file(directory.filePath(here.isEmpty() ? "z" : here));
        QVERIFY(file.open(QIODevice::WriteOnly));
        const auto theirs = read(other);
        const auto ours = read(open);
        ours->SetDirectory(directory.path().toStdString());
        VersionTaking taking(*theirs, *ours);
        const Nodes::ProjectDiff diff(*theirs, *ours);
        taking.take(diff.GetDifferences()[0]);
        push(taking);
        QCOMPARE(lines(*theirs, *ours), QString()); // the name is taken all the same
        QCOMPARE(taking.remarks().filter("x.svg").size(), told ? 1 : 0);
        QCOMPARE(taking.remarks().size(), told ? 1 : 0);
        m_stack.clear();
    }

private:
    void push(VersionTaking &taking)
    {
        if (QUndoCommand *command = taking.make())
            m_stack.push(command);
    }
    // Numbers that were given are not given again.
    static QString withoutLastId(const std::string &text)
    {
        return QString::fromStdString(text).remove(QRegularExpression("lastId=\"\\d+\""));
    }

    Nodes::systemCore m_core;
    QUndoStack m_stack;
};

QTEST_MAIN(VersionTakingTest)
#include "tst_version_taking.moc"
