#include "nodes/ProjectFixture.h"
#include "support/Rows.h"

#include <QtTest>

using namespace Nodes;

class TreeEditing : public QObject
{
    Q_OBJECT

private slots:
    void addingIndexesAndAnnounces()
    {
        ProjectFixture f;
        ConfigNode *layer = f.addLayer();
        NodeLinks announced;
        const Nodes::ScopedConnection added =
            layer->ConnectChildAdded([&](const NodeLink &link) { announced.push_back(link); });
        ConfigNode *last = f.add("label", layer);
        auto first = f.project.CreateDetached(f.kind("label"));
        const unsigned long id = first->GetId();
        QVERIFY(!f.project.FindNode(id));
        QVERIFY(layer->AddNode(first, 0));
        QVERIFY(!first);
        QCOMPARE(f.project.FindNode(id), layer->GetNodeAt(0));
        QCOMPARE(layer->IndexOf(last), 1);
        QCOMPARE(announced.size(), std::size_t(2));
        QCOMPARE(announced[1].GetNode(), layer->GetNodeAt(0));
    }

    void removedSubtreeComesBackWithItsIds()
    {
        ProjectFixture f;
        ConfigNode *layer = f.addLayer();
        ConfigNode *composition = layer->GetParent();
        const NodeLink label(f.add("label", layer));
        NodeLinks announced;
        const Nodes::ScopedConnection removed =
            f.root()->ConnectChildRemoved([&](const NodeLink &link) { announced.push_back(link); });
        std::unique_ptr<ConfigNode> taken = f.root()->RemoveNode(composition);
        QVERIFY(taken && !taken->GetParent() && !label.isValid());
        QCOMPARE(announced, NodeLinks{NodeLink(composition)});
        QVERIFY(!f.root()->RemoveNode(composition));
        QVERIFY(f.root()->AddNode(taken));
        QCOMPARE(label.GetNode(), layer->GetNodeAt(0));
    }

    void severalMoveTogether()
    {
        ProjectFixture f;
        ConfigNode *layer = f.addLayer();
        const NodeLink a(f.add("label", layer));
        const NodeLink b(f.add("label", layer));
        const NodeLink c(f.add("label", layer));
        auto taken = layer->RemoveNodes(NodesArray(NodeLinks{c, NodeLink(layer), a}));
        QCOMPARE(taken.size(), std::size_t(2));
        taken.insert(taken.begin() + 1, f.project.CreateDetached(f.kind("folder"))); // not allowed
        QCOMPARE(layer->AddNodes(taken, 0), 2);
        QVERIFY(!taken[0] && taken[1] && !taken[2]);
        QCOMPARE(layer->GetNodes(), (NodeLinks{c, a, b}));
    }

    void refusedNodeStaysWithTheCaller_data()
    {
        const Rows<QString, int> row("what", "result");
        row("kind not allowed", "kind", Result::InvalidArgument);
        row("id taken", "id", Result::Duplicate);
        row("other project", "project", Result::InvalidArgument);
        row("too deep", "depth", Result::LimitExceeded);
        row("no node", "null", Result::InvalidArgument);
    }

    void refusedNodeStaysWithTheCaller()
    {
        QFETCH(QString, what);
        ProjectFixture f;
        ProjectFixture other;
        ConfigNode *parent = f.root();
        std::unique_ptr<ConfigNode> node = f.project.CreateDetached(f.kind("folder"));
        if (what == "kind")
            node = f.project.CreateDetached(f.kind("layer"));
        else if (what == "id")
            node = f.project.CreateDetached(f.kind("folder"), f.root()->GetId());
        else if (what == "project")
            node = other.project.CreateDetached(f.kind("folder"));
        else if (what == "null")
            node.reset();
        for (int level = 1; what == "depth" && level < ConfigNode::MaximumDepth; ++level)
            parent = f.add("folder", parent);
        const ConfigNode *raw = node.get();
        const std::size_t count = f.project.GetNodeCount();
        QTEST(int(parent->AddNode(node).GetType()), "result");
        QCOMPARE(node.get(), raw);
        QCOMPARE(f.project.GetNodeCount(), count);
        QCOMPARE(parent->GetNodeCount(), 0);
    }

    void createdNodesTakeTheLowestFreeName()
    {
        ProjectFixture f;
        const std::string base = ProjectFixture::kind("folder").nameRu;
        const auto created = [&] { return f.add("folder", f.root())->GetName(); };
        for (const char *other : {" 02", " 2x", " ", " 0", " -1", "3", " 99999999999999999999"})
            f.add("folder", f.root(), (base + other).c_str()); // numbers to none of ours
        QCOMPARE(created(), base);
        for (int number = 1; number <= 12; ++number)
            QCOMPARE(created(), base + " " + std::to_string(number));
        for (const char *gone : {" 4", " 11", ""}) {
            QVERIFY(f.root()->DeleteNode(f.root()->GetSubObject(base + gone)->GetId()));
            QCOMPARE(created(), base + gone);
        }
        QCOMPARE(created(), base + " 13");
    }

    void deletingCaresForReferences_data()
    {
        const Rows<bool, bool, int, bool> row("references", "force", "result", "isKept");
        row("with references", true, false, Result::Success, false);
        row("refused", false, false, Result::Refused, true);
        row("forced", false, true, Result::Success, false);
    }

    void deletingCaresForReferences()
    {
        ProjectFixture f;
        ConfigNode *folder = f.add("folder", f.root());
        const std::string id = idOf(f.add("memorySignal", folder));
        const ConfigNode *label = f.add("label", f.addLayer(), nullptr, {{"signal", id}});
        QFETCH(bool, references);
        QFETCH(bool, force);
        // The reference is to a descendant of what is deleted.
        const Result deleted = f.root()->DeleteNode(folder->GetId(), references, force);
        QTEST(int(deleted.GetType()), "result");
        QCOMPARE(textOf(*label, "signal"), references ? std::string() : id);
        QTEST(f.project.FindNode(std::stoul(id)) != nullptr, "isKept");
    }

    void deletingManyTakesDescendantsOnce()
    {
        ProjectFixture f;
        ConfigNode *layer = f.addLayer();
        ConfigNode *label = f.add("label", layer);
        ConfigNode *signal = f.add("memorySignal", f.root());
        const ConfigNode *other = f.add("label", f.addLayer(), nullptr, {{"signal", idOf(signal)}});
        const std::size_t before = f.project.GetNodeCount();
        NodesArray nodes({NodeLink(layer), NodeLink(label), NodeLink(f.root()), NodeLink(987654ul),
                          NodeLink(signal)});
        QCOMPARE(f.root()->DeleteNodes(nodes), 2);
        QCOMPARE(f.project.GetNodeCount(), before - 3);
        QCOMPARE(textOf(*other, "signal"), std::string());
    }

    void linksAreReplacedByLinkAndPath()
    {
        ProjectFixture f;
        ConfigNode *one = f.add("memorySignal", f.root(), "one");
        ConfigNode *two = f.add("memorySignal", f.add("folder", f.root(), "tags"), "two");
        ConfigNode *label = f.add("label", f.addLayer(), nullptr, {{"signal", idOf(one)}});
        int announced = 0;
        const Nodes::ScopedConnection changed =
            label->ConnectPropertyChanged([&](BasicProperty *) { ++announced; });
        QCOMPARE(label->ReplaceLink(one, std::string("tags/nobody")), 0);
        QCOMPARE(label->ReplaceLink(one, std::string("tags/two")), 1);
        QVERIFY(label->IsLinked(two) && !label->IsLinked(one));
        QCOMPARE(label->ReplaceLink(one, NodeLink(two)), 0);
        QCOMPARE(two->RemoveReferences(), 1);
        QVERIFY(!label->IsLinked(two));
        QCOMPARE(announced, 2);
    }

    void dropping_data()
    {
        const Rows<QString, QString, int, int> row("dropped", "target", "flags", "result");
        const int link = ConfigNode::DropLink;
        const int copy = ConfigNode::DropCopy;
        row("signal on label", "s", "label", link, Result::Success);
        row("layer on label", "layer", "label", link, Result::InvalidArgument);
        row("label copied", "label", "layer", copy, Result::Success);
        row("signal into layer", "s", "layer", copy, Result::InvalidArgument);
        row("layer into itself", "layer", "layer", copy, Result::Cycle);
    }

    void dropping()
    {
        ProjectFixture f;
        ConfigNode *layer = f.addLayer();
        ConfigNode *label = f.add("label", layer, "label");
        const std::map<QString, ConfigNode *> nodes{
            {"s", f.add("memorySignal", f.root())}, {"layer", layer}, {"label", label}};
        QFETCH(QString, dropped);
        QFETCH(QString, target);
        QFETCH(int, flags);
        QFETCH(int, result);
        const NodeLink node(nodes.at(dropped));
        const auto how = static_cast<ConfigNode::enDropFlags>(flags);
        QCOMPARE(int(nodes.at(target)->CanDropNode(node, how).GetType()), result);
        const std::size_t count = f.project.GetNodeCount();
        QCOMPARE(nodes.at(target)->DropNode(node, how), result == Result::Success ? 1 : 0);
        const bool isCopied = result == Result::Success && flags == ConfigNode::DropCopy;
        QCOMPARE(f.project.GetNodeCount(), count + (isCopied ? 1 : 0));
        QCOMPARE(label->IsLinked(node), result == Result::Success && flags == ConfigNode::DropLink);
        if (isCopied)
            QCOMPARE(layer->GetNodeAt(1)->GetName(), std::string("label 2"));
    }
};

QTEST_APPLESS_MAIN(TreeEditing)
#include "tst_tree_editing.moc"
