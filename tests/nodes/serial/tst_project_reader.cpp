#include "nodes/ProjectFixture.h"
#include "nodes/TestKind.h"

#include "nodes/serial/ElementScan.h"
#include "nodes/serial/ProjectReader.h"
#include "nodes/serial/ProjectWriter.h"
#include "support/Rows.h"

#include <QRegularExpression>
#include <QtTest>

using namespace Nodes;

using SizeLimit = std::size_t LoadLimits::*;
Q_DECLARE_METATYPE(SizeLimit)

namespace {

const std::string head = "<project format=\"1\" id=\"1\">\n";
const std::string tail = "</project>\n";

std::string nested(int levels)
{
    std::string text = head;
    for (int id = 2; id <= levels; ++id)
        text += "<folder id=\"" + std::to_string(id) + "\">";
    for (int id = 2; id <= levels; ++id)
        text += "</folder>";
    return text + tail;
}

std::string repeated(const char *text, int count)
{
    return QByteArray(text).repeated(count).toStdString();
}

/// What became of reading a text.
struct Reading
{
    Result read(const std::string &text) { return reader.ReadBuffer(text, "plant.xml", project); }
    Result readBody(const std::string &body) { return read(head + body + tail); }
    const LoadReport &report() const { return reader.GetReport(); }

    ProjectReader reader;
    std::unique_ptr<NodesCollection> project;
};

} // namespace

class ProjectReading : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { TestKind::Register(); }

    void refused_data()
    {
        const Rows<std::string, int, int> row("text", "result", "line");
        const int parse = Result::ParseError;
        row("empty", "", parse, 0);
        row("junk", "hello\n\xD0\x9F\xD1\x80", parse, 0);
        row("binary", std::string("<project>\n\0\x01", 12), parse, 2);
        row("other encoding", head + "<folder name=\"\xCF\xF0\"/>", parse, 2);
        row("UTF-16", std::string("\xFF\xFE<\0p\0", 6), parse, 1);
        row("truncated tag", head + "<folder id=\"2\"", parse, 2);
        row("truncated tree", head + "<folder id=\"2\">", parse, 2);
        row("tags crossed", head + "<a>\n<b></a>", parse, 3);
        row("two roots", head + tail + head + tail, parse, 3);
        row("wrong root", "\n<station format=\"1\"/>", parse, 2);
        row("newer format", "<project format=\"2\"/>", parse, 1);
        row("no format", "<project id=\"1\"/>", parse, 1);
        row("format zero", "<project format=\"0\"/>", parse, 1);
        row("one level too deep", nested(ConfigNode::MaximumDepth + 1), Result::LimitExceeded, 2);
        row("bottomless", repeated("<project format=\"1\">", 200000), parse, 1);
    }

    void refused()
    {
        QFETCH(std::string, text);
        QFETCH(int, line);
        Reading r;
        const Result read = r.read(text);
        QTEST(int(read.GetType()), "result");
        QVERIFY(!r.project);
        const LoadMessage &last = r.report().GetMessages().back();
        QCOMPARE(last.severity, LoadMessage::Fatal);
        QVERIFY(line == 0 || last.line == line);
        QCOMPARE(last.file, std::string("plant.xml"));
        QVERIFY(!last.text.empty());
        QVERIFY(read.GetDetail().rfind("plant.xml:", 0) == 0);
    }

    void reportedAndKept_data()
    {
        // body: from line 2; saved: what is written then, "" the body itself
        const Rows<std::string, int, int, QString, std::string> row("body", "severity", "line",
                                                                    "said", "saved");
        const int error = LoadMessage::Error;
        const int warning = LoadMessage::Warning;
        row("unknown kind", "<gizmo id=\"2\" a=\"1\">\n    <part />\n  </gizmo>", warning, 2,
            "gizmo", "");
        row("unknown attribute", R"(<folder id="2" speed="fast" />)", warning, 2, "speed", "");
        row("wrong type", R"(<pipe id="2" count="many" />)", error, 2,
            "«many» — ожидается целое число", "");
        row("out of range", R"(<pipe id="2" count="10" />)", error, 2, "от 1 до 9", "");
        row("no such choice", R"(<frame id="2" border="9" />)", error, 2,
            "одно из: none, decorated", "");
        row("not a number", R"(<memorySignal id="2" minimum="nan" />)", error, 2, "число с точкой",
            "");
        row("no link list", R"(<pipe id="2" next="1;2" />)", error, 2, "1;2", "");
        row("kind not allowed", R"(<layer id="2" />)", error, 2, "layer", "");
        row("driver in a driver",
            "<hostDriver id=\"2\">\n    <folder id=\"3\">\n      <hostDriver id=\"4\" />\n"
            "    </folder>\n  </hostDriver>",
            error, 4, "внутри драйвера «hostDriver»", "");
        const std::string dangling = R"(<pipe id="2" signal="77" />)";
        row("dangling link", "\n" + dangling, error, 3, "77", dangling);
        row("link cycle", "<pipe id=\"2\" next=\"3\" />\n  <pipe id=\"3\" next=\"2\" />", error, 3,
            "кольцо", "");
        row("text", R"(<folder id="2">note</folder>)", warning, 2, "note", "");
        row("doctype", R"(<folder id="2" />)", warning, 1, "DOCTYPE", "");
        row("attribute twice", R"(<pipe id="2" count="4" count="5" />)", error, 2, "повторно",
            R"(<pipe id="2" count="4" />)");
        row("name twice", R"(<folder id="2" name="a" name="b" />)", error, 2, "«b» отброшено",
            R"(<folder id="2" name="a" />)");
        row("id twice", R"(<folder id="2" id="3" />)", error, 2, "«3» отброшено",
            R"(<folder id="2" />)");
        const std::string first = "<folder id=\"2\" />\n  <folder";
        const std::string fresh = first + " id=\"3\" />";
        row("no id", first + " />", error, 3, "нет атрибута id", fresh);
        row("id zero", first + " id=\"0\" />", error, 3, "«0»", fresh);
        row("garbage id", first + " id=\"2x\" />", error, 3, "«2x»", fresh);
        row("huge id", first + " id=\"" + std::string(30, '9') + "\" />", error, 3, "999", fresh);
        row("duplicate id", first + " id=\"2\" />", error, 3, "в строке 2 (этот узел — в строке 3)",
            fresh);
    }

    void anUnknownAttributeTwiceIsReportedAndKeptOnce()
    {
        Reading r;
        QVERIFY(r.read(head + R"(  <folder id="2" future="1" future="2" />)" + "\n" + tail));
        QCOMPARE(r.report().GetMessages().size(), std::size_t(2));
        QVERIFY(r.report().GetMessages().back().text.find("повторно") != std::string::npos);
        const QString written = QString::fromStdString(ProjectWriter::ToText(*r.project));
        QVERIFY(written.contains(R"(future="1")") && written.count("future") == 1);
    }

    void reportedAndKept()
    {
        QFETCH(std::string, body);
        QFETCH(QString, said);
        QFETCH(std::string, saved);
        const std::string doctype = said == "DOCTYPE" ? "<!DOCTYPE project>" : "";
        Reading r;
        QVERIFY(r.read(doctype + head + "  " + body + "\n" + tail));
        QCOMPARE(r.report().GetMessages().size(), std::size_t(1));
        const LoadMessage &message = r.report().GetMessages().front();
        QTEST(int(message.severity), "severity");
        QTEST(message.line, "line");
        QVERIFY2(QString::fromStdString(message.text).contains(said), message.text.c_str());
        QVERIFY(message.path.rfind("project", 0) == 0);
        const QString written = QString::fromStdString(ProjectWriter::ToText(*r.project));
        const QRegularExpression identity(QStringLiteral(" uuid=\"\\S+\" lastId=\"\\d+\""));
        QCOMPARE(QString(written).remove(identity).toStdString(),
                 "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n" + head + "  " +
                     (saved.empty() ? body : saved) + "\n" + tail);
    }

    void sizeLimits_data()
    {
        const Rows<SizeLimit, int> row("limit", "needed");
        row("size", &LoadLimits::fileSize, 93);
        row("nodes", &LoadLimits::nodes, 3);
        row("attributes", &LoadLimits::attributes, 5);
        row("attribute length", &LoadLimits::attributeLength, 6);
    }

    void sizeLimits()
    {
        QFETCH(SizeLimit, limit);
        QFETCH(int, needed);
        for (const bool isEnough : {false, true}) {
            LoadLimits limits;
            limits.*limit = std::size_t(needed - !isEnough);
            Reading r;
            r.reader.SetLimits(limits);
            const Result read = r.readBody("<folder name=\"123456\" id=\"2\"><folder id=\"3\"/>"
                                           "</folder>");
            QCOMPARE(read == Result::LimitExceeded, !isEnough);
            QCOMPARE(r.project != nullptr, isEnough);
        }
    }

    void depthIsLimited()
    {
        LoadLimits limits;
        limits.depth = 3;
        Reading r;
        r.reader.SetLimits(limits);
        QVERIFY(r.read(nested(3)));
        QVERIFY(r.read(nested(4)) == Result::LimitExceeded);
    }

    void repairedValueReplacesTheKeptOne()
    {
        Reading r;
        QVERIFY(r.readBody(R"(<pipe id="2" count="many"/>)"));
        ConfigNode *pipe = r.project->FindNode(2);
        QVERIFY(pipe->SetPropertyText("count", "8"));
        QCOMPARE(pipe->SerializeXML(), std::string("<pipe id=\"2\" count=\"8\" />\n"));
    }

    void unknownElementFollowsEdits()
    {
        Reading r;
        QVERIFY(r.readBody(R"(<gizmo id="2" name="old"><part id="7"/></gizmo>)"));
        r.project->FindNode(2)->SetName("new");
        NodesArray clones;
        const NodesArray sources({NodeLink(r.project->FindNode(2))});
        QVERIFY(r.project->CloneNodes(sources, clones, false));
        std::unique_ptr<ConfigNode> clone = r.project->TakeClone(clones[0]);
        QVERIFY(r.project->GetRoot()->AddNode(clone));
        // Fresh ids keep clear of those inside the unknown element.
        QCOMPARE(clones[0]->SerializeXML(),
                 std::string("<gizmo id=\"8\" name=\"new\">\n  <part id=\"7\" />\n</gizmo>\n"));
    }

    void unknownElementSettlesWithTheFirstSave_data()
    {
        const Rows<QByteArray> row("body");
        row("no id", "<gizmo/><folder id=\"7\"/>");
        row("no number", "<gizmo id=\"abc\"/>");
        row("id of another", "<folder id=\"2\"/><gizmo id=\"2\"/>");
        row("within another", "<folder id=\"2\"><gizmo><part/><part id=\"9\"/></gizmo></folder>");
    }

    void unknownElementSettlesWithTheFirstSave()
    {
        QFETCH(QByteArray, body);
        Reading r;
        QVERIFY(r.readBody(body.toStdString()));
        ConfigNode *gizmo = nullptr;
        for (const NodeLink &link : r.project->GetRoot()->GetNodes(true)) {
            if (link->GetNodeType().GetSubtype() == NodeType::SubtypeUnknown)
                gizmo = r.project->FindNode(link.GetNodeId());
        }
        QVERIFY(gizmo);
        gizmo->SetName("renamed");
        gizmo->SetDescription("described");
        const std::string saved = ProjectWriter::ToText(*r.project);
        Reading again;
        QVERIFY(again.read(saved));
        QCOMPARE(ProjectWriter::ToText(*again.project), saved);
        const ConfigNode *found = again.project->FindNode(gizmo->GetId());
        QVERIFY(found);
        QCOMPARE(found->GetName(), std::string("renamed"));
        QCOMPARE(found->GetDescription(), std::string("described"));
    }

    void largestIdLeavesRoomForFreshOnes()
    {
        Reading r;
        QVERIFY(r.readBody("<folder id=\"" + std::to_string(MaximumId) +
                           "\"/><folder/><folder id=\"2\"/>"));
        QVERIFY(r.project->CreateNode(ProjectFixture::kind("folder").type, r.project->GetRoot()));
        Reading again;
        QVERIFY(again.read(ProjectWriter::ToText(*r.project)));
        QVERIFY(again.report().empty());
    }

    void piecesOfTextBecomeOne()
    {
        Reading first;
        QVERIFY(
            first.readBody(R"(<folder id="2">a<!--c--><![CDATA[b]]><folder id="3"/> d </folder>)"));
        Reading second;
        QVERIFY(second.read(ProjectWriter::ToText(*first.project)));
        for (const Reading *pass : {&first, &second}) {
            const BasicNode::Attributes kept = pass->project->FindNode(2)->GetForeignAttributes();
            QCOMPARE(kept.size(), std::size_t(2));
            QCOMPARE(kept.back().second, std::string("a\nb\nd"));
        }
        QCOMPARE(ProjectWriter::ToText(*second.project), ProjectWriter::ToText(*first.project));
    }

    void entitiesStayText()
    {
        Reading r;
        QVERIFY(r.read(R"(<!DOCTYPE p [<!ENTITY a "aa"><!ENTITY b "&a;&a;">]>
                          <project format="1" id="1" name="&b;"/>)"));
        QCOMPARE(r.project->GetRoot()->GetName(), std::string("&b;"));
    }

    void cancelLeavesNoProject()
    {
        LoadProgress progress;
        for (const bool isCancelled : {false, true}) {
            if (isCancelled)
                progress.Cancel();
            Reading r;
            r.reader.SetProgress(&progress);
            const Result read = r.readBody(repeated("<folder/>", 1998));
            QCOMPARE(read.GetType(), isCancelled ? Result::Cancelled : Result::Success);
            QCOMPARE(r.project == nullptr, isCancelled);
            QVERIFY(isCancelled || progress.GetDone() == 1999);
            QVERIFY(isCancelled || progress.GetTotal() == 1999);
        }
    }

    void reportIsBounded()
    {
        const int count = int(LoadReport::MaximumMessages) + 500;
        Reading r;
        QVERIFY(r.readBody(repeated("<folder/>", count)));
        QCOMPARE(r.report().GetMessages().size(), LoadReport::MaximumMessages);
        QCOMPARE(r.report().GetSuppressedCount(), std::size_t(500));
        QCOMPARE(r.report().GetCount(LoadMessage::Error), std::size_t(count));
    }
};

QTEST_APPLESS_MAIN(ProjectReading)
#include "tst_project_reader.moc"
