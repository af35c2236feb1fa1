#include "nodes/ProjectFixture.h"
#include "nodes/TestKind.h"

#include "nodes/serial/ProjectWriter.h"
#include "support/Rows.h"

#include <QtTest>

using namespace Nodes;

namespace {

// Heads of MessagePack items, as far as these tests write them by hand.
QByteArray array(int count)
{
    return count < 16 ? QByteArray(1, char(0x90 + count))
                      : QByteArray("\xDC") + char(count >> 8) + char(count & 0xFF);
}

QByteArray text(const QByteArray &value)
{
    return char(0xA0 + value.size()) + value;
}

QByteArray map(int pairs)
{
    return QByteArray(1, char(0x80 + pairs));
}

QByteArray number(int value)
{
    return QByteArray("\xCE") + char(value >> 24) + char(value >> 16) + char(value >> 8) +
           char(value);
}

QByteArray top(const QByteArray &nodes, int count = 1)
{
    return array(3) + text("nodes") + number(1) + array(count) + nodes;
}

QByteArray node(int code, const QByteArray &properties = map(0),
                const QByteArray &foreign = array(0), const QByteArray &children = array(0))
{
    return array(7) + number(code) + number(5) + text("n") + text("") + properties + foreign +
           children;
}

const int pipeCode = 0x2FF0;
const int folderCode = 0x2001;

QByteArray nested(int levels)
{
    QByteArray inner = node(folderCode);
    for (int i = 1; i < levels; ++i)
        inner = node(folderCode, map(0), array(0), array(1) + inner);
    return top(inner);
}

} // namespace

class NodePack : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { TestKind::Register(); }

    void refused_data()
    {
        const Rows<QByteArray> row("bytes");
        const QByteArray huge("\xDD\xFF\xFF\xFF\xFF", 5);
        row("empty", "");
        row("junk", "junk");
        row("left over", top(node(folderCode)) + "x");
        row("other signature", array(3) + text("other") + number(1) + array(0));
        row("newer version", array(3) + text("nodes") + number(2) + array(0));
        row("no list", array(3) + text("nodes") + number(1) + map(0));
        row("huge list", array(3) + text("nodes") + number(1) + huge);
        row("huge lists in lists", huge.repeated(120));
        row("long text announced", QByteArray("\xDB\x7F\xFF\xFF\xFF", 5));
        row("node too short", top(array(2) + number(folderCode) + number(1)));
        row("name not UTF-8", top(array(7) + number(folderCode) + number(5) + text("\xFF") +
                                  text("") + map(0) + array(0) + array(0)));
        row("second node broken", top(node(folderCode) + array(0), 2));
        row("child broken", top(node(folderCode, map(0), array(0), array(1) + array(0))));
        row("unknown element with children",
            top(node(0x1FFF, map(0), array(0), array(1) + node(folderCode))));
        row("properties no map", top(node(folderCode, array(0))));
        row("too deep", nested(ConfigNode::MaximumDepth + 10));
        row("bottomless", array(1).repeated(100000));
    }

    void refused()
    {
        QFETCH(QByteArray, bytes);
        ProjectFixture f;
        NodesContainer nodes;
        const std::size_t count = f.project.GetNodeCount();
        const Result result = f.project.Deserialize(bytes.toStdString(), nodes);
        QVERIFY2(result == Result::ParseError, result.ToString().c_str());
        QVERIFY(!result.GetDetail().empty());
        QVERIFY(nodes.empty());
        QCOMPARE(f.project.GetNodeCount(), count);
    }

    void skippedAndNamed_data()
    {
        const Rows<QByteArray, QString, int> row("bytes", "said", "nodes");
        const auto property = [](int id, const QByteArray &value) {
            return top(node(pipeCode, map(1) + number(id) + value));
        };
        row("kind", top(node(0x2FFF)), "kind 12287", 0);
        row("child kind", top(node(folderCode, map(0), array(0), array(1) + node(0x2FFF))),
            "kind 12287", 1);
        row("property", property(99, number(1)), "property 99", 1);
        row("type", property(4, text("many")), "property 4", 1);
        row("range", property(4, number(10)), "property 4", 1);
        row("list of texts", property(1, array(1) + text("1")), "property 1", 1);
        row("negative id", property(2, "\xFF"), "property 2", 1);
        row("foreign key",
            top(node(pipeCode, map(0), array(1) + array(2) + text("a=\"") + text("v"))), "foreign",
            1);
    }

    void skippedAndNamed()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(QString, said);
        ProjectFixture f;
        NodesContainer read;
        const Result result = f.project.Deserialize(bytes.toStdString(), read);
        QVERIFY2(result, result.ToString().c_str());
        QVERIFY2(QString::fromStdString(result.GetDetail()).contains(said),
                 result.ToString().c_str());
        QTEST(int(read.size()), "nodes");
    }

    void everyTruncationIsRefused()
    {
        ProjectFixture f;
        f.add("pipe", f.root(), nullptr, {{"secret", "hash"}});
        f.add("label", f.addLayer());
        NodesContainer packed(f.root()->GetArray());
        const std::string bytes = f.project.Serialize(packed);
        for (std::size_t length = 0; length < bytes.size(); ++length) {
            NodesContainer nodes;
            QVERIFY(!f.project.Deserialize(bytes.substr(0, length), nodes));
            QVERIFY(nodes.empty());
        }
        NodesContainer nodes;
        QVERIFY(f.project.Deserialize(bytes, nodes));
        QCOMPARE(nodes.size(), packed.size());
    }

    void unknownElementsAndForeignAttributesTravel()
    {
        ProjectFixture f;
        ConfigNode *folder = f.add("folder", f.root());
        QVERIFY(
            folder->DeserializeXML("<folder a=\"1\"><gizmo id=\"9\"><part/></gizmo>t</folder>"));
        NodesContainer packed;
        packed.Add(folder);
        NodesContainer nodes;
        QVERIFY(f.project.Deserialize(f.project.Serialize(packed), nodes));
        const ConfigNode *copy = nodes.GetLinks().at(0).GetNode();
        QCOMPARE(copy->GetForeignAttributes(), folder->GetForeignAttributes());
        const std::string xml = copy->SerializeXML();
        QVERIFY2(xml.find("<part />") != std::string::npos, xml.c_str());
        QVERIFY(xml.find("id=\"9\"") == std::string::npos);
    }

    void wrongUnknownElementStaysReadable()
    {
        ProjectFixture f;
        const auto unknown = [](const QByteArray &xml) {
            return top(node(0x1FFF, map(1) + number(1901) + text(xml)));
        };
        for (const QByteArray &xml : {unknown("</a><b/>"), unknown("<a/><b/>"), unknown("")}) {
            NodesContainer nodes;
            QVERIFY(f.project.Deserialize(xml.toStdString(), nodes));
            f.insert(nodes.GetLinks().at(0), f.root());
        }
        ConfigNode *copy = f.add("folder", f.root());
        QVERIFY(copy->DeserializeXML("<folder>" + f.root()->GetNodeAt(0)->SerializeXML() +
                                     f.root()->GetNodeAt(1)->SerializeXML() + "</folder>"));
        QCOMPARE(copy->GetNodeCount(), 2);
    }
};

QTEST_APPLESS_MAIN(NodePack)
#include "tst_node_pack.moc"
