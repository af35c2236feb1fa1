#include "nodes/ProjectFixture.h"

#include "nodes/model/properties/BasicProperty.h"
#include "nodes/model/properties/PropertyProxy.h"
#include "support/Rows.h"

#include <QtTest>

using namespace Nodes;

class LinksAndClones : public QObject
{
    Q_OBJECT

private slots:
    void linkOutlivesNodeAndProject()
    {
        NodeLink link;
        QVERIFY(!link.isValid() && !link.GetNode());
        {
            ProjectFixture f;
            link = NodeLink(f.add("folder", f.root(), "x"));
            QCOMPARE(link.GetLinkName(), std::string("x"));
            QVERIFY(link != NodeLink() && link == NodeLink(link.GetNodeId()));
            QVERIFY(f.root()->DeleteNode(link.GetNodeId()));
            QVERIFY(!link.isValid());
            link = NodeLink(f.root());
        }
        QVERIFY(!link.GetNode() && !link.GetNodesCollection());
        const ProjectFixture next;
        QCOMPARE(next.root()->GetId(), link.GetNodeId());
        QVERIFY(!link.isValid());
    }

    void clonesGetIdsOfTheirOwnAndLinksFollow()
    {
        ProjectFixture f;
        ConfigNode *outside = f.add("memorySignal", f.root());
        ConfigNode *folder = f.add("folder", f.root());
        ConfigNode *signal = f.add("memorySignal", folder);
        ConfigNode *layer = f.add("layer", f.add("composition", folder));
        const ConfigNode *inner = f.add("label", layer, nullptr, {{"signal", idOf(signal)}});
        f.add("label", layer, nullptr, {{"signal", idOf(outside)}});
        NodesArray clones;
        // A descendant in the selection comes with its ancestor, not twice.
        QVERIFY(
            f.project.CloneNodes(NodesArray({NodeLink(folder), NodeLink(layer)}), clones, true));
        QCOMPARE(clones.size(), std::size_t(1));
        f.insert(clones[0], f.root());
        QVERIFY(!f.project.TakeClone(clones[0]));
        const ConfigNode *copy = clones[0].GetNode();
        const ConfigNode *copiedLayer = copy->GetNodeAt(1)->GetNodeAt(0);
        QVERIFY(copiedLayer->GetNodeAt(0)->IsLinked(copy->GetNodeAt(0)));
        QVERIFY(copiedLayer->GetNodeAt(1)->IsLinked(outside));
        QVERIFY(inner->IsLinked(signal));
    }

    void clonesAreRenamedWhereTheyAreInserted()
    {
        ProjectFixture f;
        ConfigNode *folder = f.add("folder", f.root(), "A");
        ConfigNode *other = f.add("folder", f.root(), "B");
        NodesArray clones;
        const NodesArray sources({NodeLink(folder)});
        QVERIFY(f.project.CloneNodes(sources, clones, true));
        QVERIFY(f.project.CloneNodes(sources, clones, true));
        QVERIFY(f.project.CloneNodes(sources, clones, false));
        const std::vector<ConfigNode *> parents{f.root(), other, f.root()};
        const std::vector<std::string> names{"A 2", "A", "A"};
        for (std::size_t i = 0; i < clones.size(); ++i) {
            f.insert(clones[i], parents[i]);
            QCOMPARE(clones[i]->GetName(), names[i]);
        }
    }

    void cloningNothingWhenOneIsMissing()
    {
        ProjectFixture f;
        const std::size_t count = f.project.GetNodeCount();
        NodesArray clones;
        const NodesArray sources({NodeLink(f.root()), NodeLink(4711ul)});
        QVERIFY(f.project.CloneNodes(sources, clones, true) == Result::NotFound);
        QVERIFY(clones.empty());
        QCOMPARE(f.project.GetNodeCount(), count);
    }

    void detachedCopyLeavesTheIndexAlone()
    {
        ProjectFixture f;
        ConfigNode *label = f.add("label", f.addLayer(), "L", {{"text", "t"}});
        label->AddForeignAttribute("later", "7");
        auto copy = NodesArray::CreateNodeCopy(label->GetNodeType(), label);
        QCOMPARE(copy->GetId(), label->GetId());
        QCOMPARE(textOf(*copy, "text"), std::string("t"));
        QCOMPARE(copy->GetForeignAttributes(), label->GetForeignAttributes());
        QVERIFY(copy->SetPropertyText("text", "u"));
        copy.reset();
        QCOMPARE(f.project.FindNode(label->GetId()), label);
        QCOMPARE(textOf(*label, "text"), std::string("t"));
        QVERIFY(!NodesArray::CreateNodeCopy(f.kind("layer").type, label));
    }

    void detachedNodesOutliveTheProject()
    {
        std::unique_ptr<ConfigNode> copy; // as a queued action holds it over a reload
        std::unique_ptr<ConfigNode> removed;
        {
            ProjectFixture f;
            ConfigNode *folder = f.add("folder", f.root(), "F");
            ConfigNode *timer = f.add("operationTimer", folder, "T");
            copy = NodesArray::CreateNodeCopy(timer->GetNodeType(), timer);
            QCOMPARE(copy->GetPath(), std::string("F/T"));
            QVERIFY(f.root()->DeleteNode(folder->GetId()));
            QCOMPARE(copy->GetPath(), std::string());
            removed = f.root()->RemoveNode(NodeLink(f.add("folder", f.root())));
            QCOMPARE(copy->GetNodesCollection(), &f.project);
        }
        for (ConfigNode *node : {copy.get(), removed.get()}) {
            QVERIFY(!node->GetNodesCollection() && !node->GetCore() && !node->GetStation());
            QVERIFY(!node->GetParent());
            QVERIFY(node->DeserializeXML("<folder/>") == Result::NotAvailable);
        }
    }

    void proxyChangesAllOrNothing()
    {
        ProjectFixture f;
        ConfigNode *layer = f.addLayer();
        ConfigNode *label = f.add("label", layer);
        ConfigNode *states = f.add("multiLabel", layer);
        PropertyProxy proxy;
        for (const ConfigNode *node : {states, label})
            proxy.AddNode(node);
        const unsigned width = f.kind("label").FindProperty(std::string_view("width"))->valueId;
        // Only the first of the two has it, so the first is changed and must be changed back.
        const unsigned own =
            f.kind("multiLabel").FindProperty(std::string_view("visibility"))->valueId;
        QVERIFY(proxy.SetProperty(width, 321));
        QCOMPARE(textOf(*states, "width"), std::string("321"));
        QVERIFY(proxy.SetProperty(width, -5) == Result::OutOfRange);
        QVERIFY(proxy.SetProperty(width, std::string("5")) == Result::WrongType);
        QVERIFY(proxy.SetProperty(own, 1) == Result::NotFound);
        QCOMPARE(textOf(*states, "visibility"), std::string("always"));
        for (const BasicProperty *property : proxy.GetProperties())
            QVERIFY(property->GetValueId() != own);
    }

    void findsNodesOfTheType_data()
    {
        const Rows<std::string, bool, int> row("type", "isFamily", "count");
        row("kind", "memorySignal", false, 1);
        row("family", "memorySignal", true, 2);
        row("family with the root", "station", true, 2);
        row("none", "frame", true, 0);
    }

    void findsNodesOfTheType()
    {
        QFETCH(std::string, type);
        QFETCH(bool, isFamily);
        ProjectFixture f;
        ConfigNode *station = f.add("station", f.root());
        f.add("memorySignal", station);
        f.add("simulatorSignal", f.add("folder", station));
        const NodeType wanted = f.kind(type.c_str()).type;
        NodeLinks found{NodeLink(station)}; // found ones are appended
        QTEST(f.project.FindNodes(isFamily ? NodeType(wanted.GetFamily()) : wanted, &found),
              "count");
        QTEST(int(found.size()) - 1, "count");
    }

    void kindsAreFoundByTheirText()
    {
        for (const KindInfo &kind : KindTable::Instance().GetKinds()) {
            QCOMPARE(NodeType(std::string_view(kind.key)), kind.type);
            QCOMPARE(NodeType(std::string_view(kind.type.ToString())), kind.type);
            QCOMPARE(unsigned(kind.type.GetFamily()), unsigned(kind.type.GetSubtype()) >> 12);
        }
        QVERIFY(NodeType(std::string_view("0xZZ")).isEmpty());
    }
};

QTEST_APPLESS_MAIN(LinksAndClones)
#include "tst_links_and_clones.moc"
