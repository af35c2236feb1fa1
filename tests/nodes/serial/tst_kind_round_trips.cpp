#include "nodes/ProjectFixture.h"
#include "nodes/TestKind.h"

#include "nodes/serial/ProjectReader.h"
#include "nodes/serial/ProjectWriter.h"
#include "nodes/values/NumberText.h"
#include "support/Rows.h"

#include <boost/property_tree/ptree.hpp>

#include <QtTest>

using namespace Nodes;

namespace {

std::string format(const PropertyDescriptor &d, const ConfigNode &node)
{
    return d.binding.format(d, node);
}

/// Gives the property a value that a fresh node does not have.
bool makeUnusual(const PropertyDescriptor &d, ConfigNode &node, unsigned long id)
{
    std::vector<std::string> texts{"true", "false", "#12345678", std::to_string(id),         "1",
                                   "2",    "7.25",  "0.5",       "Текст <&\"'>\n\t]]> конец"};
    if (d.binding.type == PropertyType::String || d.binding.type == PropertyType::Secret)
        std::swap(texts.front(), texts.back());
    if (d.hasRange)
        texts.insert(texts.end(), {FormatDouble(d.minimum), FormatDouble(d.maximum)});
    for (const PropertyChoice &choice : d.choices)
        texts.push_back(choice.token);
    for (const std::string &text : texts) {
        if (d.binding.parse(d, node, text) && format(d, node) != d.defaultText)
            return true;
    }
    return false;
}

void compareNodes(const ConfigNode &left, const ConfigNode &right)
{
    QCOMPARE(left.GetNodeType(), right.GetNodeType());
    QCOMPARE(left.GetName(), right.GetName());
    QCOMPARE(left.GetDescription(), right.GetDescription());
    QCOMPARE(left.GetForeignAttributes(), right.GetForeignAttributes());
    for (const PropertyDescriptor &d : left.GetKind()->properties)
        QVERIFY2(format(d, left) == format(d, right), d.key.c_str());
}

} // namespace

class KindRoundTrips : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { TestKind::Register(); }

    void everyKind_data()
    {
        const Rows<QString> row("key");
        for (const KindInfo &kind : KindTable::Instance().GetKinds()) {
            if (kind.type.GetSubtype() != NodeType::SubtypeUnknown)
                row(kind.key.c_str(), QString::fromStdString(kind.key));
        }
    }

    void everyKind()
    {
        QFETCH(QString, key);
        ProjectFixture f;
        const ConfigNode *folder = f.add("folder", f.root());
        const KindInfo &kind = f.kind(qPrintable(key));
        std::unique_ptr<ConfigNode> node = f.project.CreateDetached(kind);
        node->SetName("Имя \"с\" <кавычками> & прочим");
        node->SetDescription("a\nb");
        for (const PropertyDescriptor &d : kind.properties)
            QVERIFY2(makeUnusual(d, *node, folder->GetId()), d.key.c_str());
        const NodeLink link(node.get());
        QVERIFY(f.root()->AdoptNode(node));

        std::unique_ptr<NodesCollection> read;
        ProjectReader reader;
        QVERIFY(reader.ReadBuffer(ProjectWriter::ToText(f.project), "project.xml", read));
        compareNodes(*link.GetNode(), *read->FindNode(link.GetNodeId()));

        NodesContainer packed;
        packed.Add(link);
        NodesContainer unpacked;
        const Result result = f.project.Deserialize(f.project.Serialize(packed), unpacked);
        QVERIFY2(result && result.GetDetail().empty(), result.ToString().c_str());
        compareNodes(*link.GetNode(), *unpacked.GetLinks().at(0).GetNode());

        const auto fromXml = f.project.CreateDetached(kind);
        QVERIFY(fromXml->DeserializeXML(link->SerializeXML()));
        compareNodes(*link.GetNode(), *fromXml);
        const auto fromTree = f.project.CreateDetached(kind);
        QVERIFY(fromTree->DeserializePropTree(link->SerializePropTree()));
        compareNodes(*link.GetNode(), *fromTree);
    }

    void onlyUnusualValuesAreWritten()
    {
        ProjectFixture f;
        for (const KindInfo &kind : KindTable::Instance().GetKinds()) {
            if (kind.type.GetSubtype() == NodeType::SubtypeUnknown)
                continue;
            std::unique_ptr<ConfigNode> node = f.project.CreateDetached(kind, 100);
            node->SetName("n");
            const bool isRoot = kind.type.GetSubtype() == NodeType::SubtypeProject;
            const std::string expected =
                "<" + kind.key + (isRoot ? " format=\"1\"" : "") + " id=\"100\" name=\"n\" />\n";
            QCOMPARE(node->SerializeXML(), expected);
        }
    }

    void linksFollowDeserialisedNodes()
    {
        ProjectFixture f;
        ConfigNode *outside = f.add("memorySignal", f.root());
        ConfigNode *source = f.add("pipe", f.root());
        ConfigNode *inner = f.add("folder", source);
        ConfigNode *deep = f.add("pipe", inner);
        f.set(deep, {{"next", idOf(source) + " " + idOf(deep)}, {"signal", idOf(outside)}});
        const auto check = [&](const ConfigNode &copy) {
            const ConfigNode *copiedDeep = copy.GetNodeAt(0)->GetNodeAt(0);
            QVERIFY(copiedDeep->IsLinked(NodeLink(&copy)) && !copiedDeep->IsLinked(source));
            QVERIFY(copiedDeep->IsLinked(copiedDeep) && copiedDeep->IsLinked(outside));
            QVERIFY(copy.GetId() != source->GetId() && copiedDeep->GetId() != deep->GetId());
        };
        ConfigNode *fromXml = f.add("pipe", f.root());
        QVERIFY(fromXml->DeserializeXML(source->SerializeXML()));
        check(*fromXml);
        ConfigNode *fromTree = f.add("pipe", f.root());
        QVERIFY(fromTree->DeserializePropTree(source->SerializePropTree()));
        check(*fromTree);
        NodesContainer packed;
        packed.Add(source);
        packed.Add(deep);
        NodesContainer unpacked;
        QVERIFY(f.project.Deserialize(f.project.Serialize(packed), unpacked));
        QCOMPARE(unpacked.size(), std::size_t(1));
        check(*unpacked.GetLinks()[0].GetNode());
        // What does not fit leaves the node as it was.
        const std::string before = fromXml->SerializeXML();
        QVERIFY(fromXml->DeserializeXML("<folder id=\"1\"/>") == Result::WrongType);
        QVERIFY(fromXml->DeserializeXML("<pipe") == Result::ParseError);
        QCOMPARE(fromXml->SerializeXML(), before);
    }
};

QTEST_APPLESS_MAIN(KindRoundTrips)
#include "tst_kind_round_trips.moc"
