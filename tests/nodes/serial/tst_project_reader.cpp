#include "nodes/ProjectFixture.h"
#include "nodes/TestKind.h"

#include "nodes/serial/ElementScan.h"
#include "nodes/serial/ProjectReader.h"
#include "nodes/serial/ProjectWriter.h"

#include <QtTest>

Q_DECLARE_METATYPE(Nodes::LoadLimits)

using namespace Nodes;

namespace {

const QByteArray head = "<project format=\"1\" id=\"1\">\n";
const QByteArray tail = "</project>\n";

QByteArray nested(int levels)
{
    const int folders = levels - 1;
    QByteArray text = head;
    for (int i = 0; i < folders; ++i)
        text += "<folder id=\"" + QByteArray::number(i + 2) + "\">";
    for (int i = 0; i < folders; ++i)
        text += "</folder>";
    return text + tail;
}

QByteArray entityBomb()
{
    QByteArray text = "<!DOCTYPE p [<!ENTITY a \"aaaaaaaaaa\">";
    for (char c = 'b'; c < 'm'; ++c) {
        const QByteArray above = "&" + QByteArray(1, char(c - 1)) + ";";
        text += "<!ENTITY " + QByteArray(1, c) + " \"" + above.repeated(10) + "\">";
    }
    return text + "]>\n<project format=\"1\" id=\"1\" name=\"&l;\"/>";
}

} // namespace

class ProjectReading : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { TestKind::Register(); }
    void refused_data();
    void refused();
    void reportedAndKept_data();
    void reportedAndKept();
    void limits_data();
    void limits();
    void repairedValueReplacesTheKeptOne();
    void unknownElementFollowsEdits();
    void largestIdLeavesRoomForFreshOnes();
    void piecesOfTextBecomeOne();
    void entitiesStayText();
    void cancelLeavesNoProject();
    void reportIsBounded();
};

void ProjectReading::refused_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<int>("result");
    QTest::addColumn<int>("line");
    const int parse = Result::ParseError;
    QTest::newRow("empty") << QByteArray() << parse << 0;
    QTest::newRow("junk") << QByteArray("hello\n\xD0\x9F\xD1\x80") << parse << 0;
    QTest::newRow("binary") << QByteArray("<project>\n\0\x01", 12) << parse << 2;
    QTest::newRow("other encoding")
        << QByteArray(head + "<folder name=\"\xCF\xF0\"/>") << parse << 2;
    QTest::newRow("UTF-16") << QByteArray("\xFF\xFE<\0p\0", 6) << parse << 1;
    QTest::newRow("truncated tag") << QByteArray(head + "<folder id=\"2\"") << parse << 2;
    QTest::newRow("truncated tree") << QByteArray(head + "<folder id=\"2\">") << parse << 2;
    QTest::newRow("tags crossed") << QByteArray(head + "<a>\n<b></a>") << parse << 3;
    QTest::newRow("two roots") << QByteArray(head + tail + head + tail) << parse << 3;
    QTest::newRow("wrong root") << QByteArray("\n<station format=\"1\"/>") << parse << 2;
    QTest::newRow("newer format") << QByteArray("<project format=\"2\"/>") << parse << 1;
    QTest::newRow("no format") << QByteArray("<project id=\"1\"/>") << parse << 1;
    QTest::newRow("format zero") << QByteArray("<project format=\"0\"/>") << parse << 1;
    QTest::newRow("one level too deep")
        << nested(ConfigNode::MaximumDepth + 1) << int(Result::LimitExceeded) << 2;
    QTest::newRow("bottomless") << QByteArray("<project format=\"1\">").repeated(200000) << parse
                                << 1;
}

void ProjectReading::refused()
{
    QFETCH(QByteArray, text);
    QFETCH(int, result);
    QFETCH(int, line);
    ProjectReader reader;
    std::unique_ptr<NodesCollection> project;
    const Result read = reader.ReadBuffer(text.toStdString(), "plant.xml", project);
    QCOMPARE(int(read.GetType()), result);
    QVERIFY(!project);
    const LoadMessage &last = reader.GetReport().GetMessages().back();
    QCOMPARE(last.severity, LoadMessage::Fatal);
    if (line != 0)
        QCOMPARE(last.line, line);
    QCOMPARE(last.file, std::string("plant.xml"));
    QVERIFY(!last.text.empty());
    QVERIFY(read.GetDetail().rfind("plant.xml:", 0) == 0);
}

void ProjectReading::reportedAndKept_data()
{
    QTest::addColumn<QByteArray>("body"); // from line 2
    QTest::addColumn<int>("severity");
    QTest::addColumn<int>("line");
    QTest::addColumn<QString>("said");
    QTest::addColumn<QByteArray>("saved"); // "": the body itself
    const int error = LoadMessage::Error;
    const int warning = LoadMessage::Warning;
    const QByteArray same;
    QTest::newRow("unknown kind") << QByteArray(
                                         "  <gizmo id=\"2\" a=\"1\">\n    <part />\n  </gizmo>\n")
                                  << warning << 2 << "gizmo" << same;
    QTest::newRow("unknown attribute")
        << QByteArray("  <folder id=\"2\" speed=\"fast\" />\n") << warning << 2 << "speed" << same;
    QTest::newRow("wrong type") << QByteArray("  <pipe id=\"2\" count=\"many\" />\n") << error << 2
                                << "«many» — ожидается целое число" << same;
    QTest::newRow("out of range") << QByteArray("  <pipe id=\"2\" count=\"10\" />\n") << error << 2
                                  << "от 1 до 9" << same;
    QTest::newRow("no such choice") << QByteArray("  <frame id=\"2\" border=\"9\" />\n") << error
                                    << 2 << "одно из: none, decorated" << same;
    QTest::newRow("not a number") << QByteArray("  <memorySignal id=\"2\" minimum=\"nan\" />\n")
                                  << error << 2 << "число с точкой" << same;
    QTest::newRow("no link list") << QByteArray("  <pipe id=\"2\" next=\"1;2\" />\n") << error << 2
                                  << "1;2" << same;
    QTest::newRow("kind not allowed")
        << QByteArray("  <layer id=\"2\" />\n") << error << 2 << "layer" << same;
    QTest::newRow("dangling link")
        << QByteArray("\n  <pipe id=\"2\" signal=\"77\" />\n") << error << 3 << "77"
        << QByteArray("  <pipe id=\"2\" signal=\"77\" />\n");
    QTest::newRow("link cycle")
        << QByteArray("  <pipe id=\"2\" next=\"3\" />\n  <pipe id=\"3\" next=\"2\" />\n") << error
        << 3 << "кольцо" << same;
    QTest::newRow("text") << QByteArray("  <folder id=\"2\">note</folder>\n") << warning << 2
                          << "note" << same;
    QTest::newRow("doctype") << QByteArray("  <folder id=\"2\" />\n") << warning << 1 << "DOCTYPE"
                             << same;
    const QByteArray fresh = "  <folder id=\"2\" />\n  <folder id=\"3\" />\n";
    QTest::newRow("no id") << QByteArray("  <folder id=\"2\" />\n  <folder />\n") << error << 3
                           << "нет атрибута id" << fresh;
    QTest::newRow("id zero") << QByteArray("  <folder id=\"2\" />\n  <folder id=\"0\" />\n")
                             << error << 3 << "«0»" << fresh;
    QTest::newRow("garbage id") << QByteArray("  <folder id=\"2\" />\n  <folder id=\"2x\" />\n")
                                << error << 3 << "«2x»" << fresh;
    QTest::newRow("huge id") << QByteArray("  <folder id=\"2\" />\n  <folder id=\"" +
                                           QByteArray(30, '9') + "\" />\n")
                             << error << 3 << "999" << fresh;
    QTest::newRow("duplicate id") << QByteArray("  <folder id=\"2\" />\n  <folder id=\"2\" />\n")
                                  << error << 3 << "в строке 2 (этот узел — в строке 3)" << fresh;
    QTest::newRow("attribute twice")
        << QByteArray("  <pipe id=\"2\" count=\"4\" count=\"5\" />\n") << error << 2 << "повторно"
        << QByteArray("  <pipe id=\"2\" count=\"4\" />\n");
}

void ProjectReading::reportedAndKept()
{
    QFETCH(QByteArray, body);
    QFETCH(int, severity);
    QFETCH(int, line);
    QFETCH(QString, said);
    QFETCH(QByteArray, saved);
    const QByteArray doctype = said == "DOCTYPE" ? "<!DOCTYPE project>" : "";
    ProjectReader reader;
    std::unique_ptr<NodesCollection> project;
    const QByteArray text = doctype + head + body + tail;
    QVERIFY(reader.ReadBuffer(text.toStdString(), "plant.xml", project));
    QCOMPARE(reader.GetReport().GetMessages().size(), std::size_t(1));
    const LoadMessage &message = reader.GetReport().GetMessages().front();
    QCOMPARE(int(message.severity), severity);
    QCOMPARE(message.line, line);
    QVERIFY2(QString::fromStdString(message.text).contains(said), message.text.c_str());
    QVERIFY(message.path.rfind("project", 0) == 0);
    const QByteArray written = QByteArray::fromStdString(ProjectWriter::ToText(*project));
    const QByteArray declaration = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n";
    QCOMPARE(written, declaration + head + (saved.isEmpty() ? body : saved) + tail);
}

void ProjectReading::limits_data()
{
    QTest::addColumn<LoadLimits>("limits");
    QTest::addColumn<bool>("isRead");
    LoadLimits limits;
    QTest::newRow("default") << limits << true;
    limits.fileSize = 20;
    QTest::newRow("size") << limits << false;
    limits = {};
    limits.nodes = 2;
    QTest::newRow("nodes") << limits << false;
    limits = {};
    limits.attributes = 3;
    QTest::newRow("attributes") << limits << false;
    limits = {};
    limits.attributeLength = 5;
    QTest::newRow("attribute length") << limits << false;
    limits = {};
    limits.depth = 2;
    QTest::newRow("depth") << limits << false;
    limits.depth = 3;
    QTest::newRow("depth just enough") << limits << true;
}

void ProjectReading::limits()
{
    QFETCH(LoadLimits, limits);
    QFETCH(bool, isRead);
    ProjectReader reader;
    reader.SetLimits(limits);
    std::unique_ptr<NodesCollection> project;
    const std::string text = (nested(3) + "").toStdString();
    const std::string named =
        std::string(text).insert(text.find("<folder") + 7, " name=\"123456\"");
    const Result read = reader.ReadBuffer(named, "plant.xml", project);
    QCOMPARE(read == Result::LimitExceeded, !isRead);
    QCOMPARE(project != nullptr, isRead);
}

void ProjectReading::repairedValueReplacesTheKeptOne()
{
    ProjectReader reader;
    std::unique_ptr<NodesCollection> project;
    const QByteArray text = head + "<pipe id=\"2\" count=\"many\"/>" + tail;
    QVERIFY(reader.ReadBuffer(text.toStdString(), "plant.xml", project));
    ConfigNode *pipe = project->FindNode(2);
    QVERIFY(pipe->SetPropertyText("count", "8"));
    QCOMPARE(pipe->SerializeXML(), std::string("<pipe id=\"2\" count=\"8\" />\n"));
}

void ProjectReading::unknownElementFollowsEdits()
{
    ProjectReader reader;
    std::unique_ptr<NodesCollection> project;
    const QByteArray text = head + "<gizmo id=\"2\" name=\"old\"><part id=\"7\"/></gizmo>" + tail;
    QVERIFY(reader.ReadBuffer(text.toStdString(), "plant.xml", project));
    project->FindNode(2)->SetName("new");
    NodesArray clones;
    QVERIFY(project->CloneNodes(NodesArray({NodeLink(project->FindNode(2))}), clones, false));
    std::unique_ptr<ConfigNode> clone = project->TakeClone(clones[0]);
    QVERIFY(project->GetRoot()->AddNode(clone));
    // Fresh ids keep clear of those inside the unknown element.
    QCOMPARE(clones[0].GetNodeId(), 8ul);
    const std::string saved = clones[0]->SerializeXML();
    QCOMPARE(saved, std::string("<gizmo id=\"8\" name=\"new\">\n  <part id=\"7\" />\n</gizmo>\n"));
}

void ProjectReading::largestIdLeavesRoomForFreshOnes()
{
    ProjectReader reader;
    std::unique_ptr<NodesCollection> project;
    const QByteArray text = head + "<folder id=\"" + QByteArray::number(qulonglong(MaximumId)) +
                            "\"/><folder/><folder id=\"2\"/>" + tail;
    QVERIFY(reader.ReadBuffer(text.toStdString(), "plant.xml", project));
    QVERIFY(project->CreateNode(ProjectFixture::kind("folder").type, project->GetRoot()));
    ProjectReader again;
    QVERIFY(again.ReadBuffer(ProjectWriter::ToText(*project), "plant.xml", project));
    QVERIFY(again.GetReport().empty());
}

void ProjectReading::piecesOfTextBecomeOne()
{
    std::string saved =
        (head + "<folder id=\"2\">a<!--c--><![CDATA[b]]><folder id=\"3\"/> d " + "</folder>" + tail)
            .toStdString();
    for (int pass = 0; pass < 2; ++pass) {
        ProjectReader reader;
        std::unique_ptr<NodesCollection> project;
        QVERIFY(reader.ReadBuffer(saved, "plant.xml", project));
        const BasicNode::Attributes kept = project->FindNode(2)->GetForeignAttributes();
        QCOMPARE(kept.size(), std::size_t(2));
        QCOMPARE(kept.back().second, std::string("a\nb\nd"));
        const std::string again = ProjectWriter::ToText(*project);
        QVERIFY(pass == 0 || again == saved);
        saved = again;
    }
}

void ProjectReading::entitiesStayText()
{
    ProjectReader reader;
    std::unique_ptr<NodesCollection> project;
    QVERIFY(reader.ReadBuffer(entityBomb().toStdString(), "plant.xml", project));
    QCOMPARE(project->GetRoot()->GetName(), std::string("&l;"));
}

void ProjectReading::cancelLeavesNoProject()
{
    QByteArray text = head;
    for (int i = 2; i < 2000; ++i)
        text += "<folder id=\"" + QByteArray::number(i) + "\"/>";
    LoadProgress progress;
    std::unique_ptr<NodesCollection> project;
    ProjectReader reader;
    reader.SetProgress(&progress);
    QVERIFY(reader.ReadBuffer((text + tail).toStdString(), "plant.xml", project));
    QCOMPARE(progress.GetDone(), std::size_t(1999));
    QCOMPARE(progress.GetTotal(), progress.GetDone());
    progress.Cancel();
    project.reset();
    ProjectReader second;
    second.SetProgress(&progress);
    const Result read = second.ReadBuffer((text + tail).toStdString(), "plant.xml", project);
    QVERIFY(read == Result::Cancelled);
    QVERIFY(!project);
}

void ProjectReading::reportIsBounded()
{
    const int count = int(LoadReport::MaximumMessages) + 500;
    const QByteArray text = head + QByteArray("<folder/>").repeated(count) + tail;
    ProjectReader reader;
    std::unique_ptr<NodesCollection> project;
    QVERIFY(reader.ReadBuffer(text.toStdString(), "plant.xml", project));
    QCOMPARE(reader.GetReport().GetMessages().size(), LoadReport::MaximumMessages);
    QCOMPARE(reader.GetReport().GetSuppressedCount(), std::size_t(500));
    QCOMPARE(reader.GetReport().GetCount(LoadMessage::Error), std::size_t(count));
}

QTEST_APPLESS_MAIN(ProjectReading)
#include "tst_project_reader.moc"
