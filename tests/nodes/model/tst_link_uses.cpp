#include "nodes/ProjectFixture.h"
#include "nodes/model/links/CutLinks.h"
#include "nodes/model/links/LinkWalk.h"
#include "nodes/model/links/ResourceLink.h"

#include <QtTest>

#include <map>
#include <random>

using namespace Nodes;

namespace {

using Uses = std::map<unsigned long, std::vector<std::pair<unsigned long, unsigned>>>;

void walk(const ConfigNode &node, Uses &uses)
{
    const PropertyDescriptor *last = nullptr;
    VisitLinks(node, *node.GetKind(), [&](const PropertyDescriptor &d, const NodeLink &to) {
        auto &list = uses[to.GetNodeId()];
        if (list.empty() || list.back() != std::make_pair(node.GetId(), d.valueId))
            list.emplace_back(node.GetId(), d.valueId);
        last = &d;
    });
    for (const auto &child : node.Children())
        walk(*child, uses);
}

/// A tree in which everything refers to everything, edited at random.
struct Tangle : ProjectFixture
{
    explicit Tangle(unsigned seed) : random(seed)
    {
        for (int i = 0; i < 3; ++i)
            add("folder", root());
        for (int i = 0; i < 40; ++i)
            step();
    }
    int pick(int count) { return std::uniform_int_distribution<int>(0, count - 1)(random); }
    ConfigNode *any()
    {
        const NodeLinks all = root()->GetNodes(true);
        return all[std::size_t(pick(int(all.size())))].GetNode();
    }
    ConfigNode *anyFolder()
    {
        NodeLinks folders;
        project.FindNodes(NodeType(NodeType::SubtypeFolder), &folders);
        return folders.empty() ? root() : folders[std::size_t(pick(int(folders.size())))].GetNode();
    }
    void step()
    {
        ConfigNode *node = any();
        ConfigNode *parent = node->GetParent();
        switch (pick(9)) {
        case 0:
            add("actionWriteValue", anyFolder());
            add("operationTimer", anyFolder(), nullptr,
                {{"actions", idOf(node) + " " + idOf(any())}});
            break;
        case 1: {
            ConfigNode *layer = add("layer", add("composition", anyFolder()));
            add("label", layer, nullptr,
                {{"signal", idOf(node)}, {"onPress", idOf(node) + " " + idOf(any())}});
            add("image", layer, nullptr, {{"onEnter", idOf(layer)}});
            break;
        }
        case 2:
            add("memorySignal", anyFolder());
            break;
        case 3:
            if (node->GetKind()->FindProperty("signal"))
                set(node, {{"signal", idOf(any())}});
            break;
        case 4:
            (void)parent->MoveNode(node, *anyFolder(), pick(4));
            break;
        case 5:
            (void)parent->DeleteNode(node->GetId(), pick(2) == 0);
            break;
        case 6:
            held = parent->RemoveNode(node);
            if (pick(3) != 0)
                (void)parent->AdoptNode(held, pick(3));
            break;
        case 7: {
            NodesArray clones;
            (void)project.CloneNodes(NodesArray({NodeLink(node)}), clones, true);
            auto clone = project.TakeClone(clones[0]);
            (void)parent->AddNode(clone);
            break;
        }
        default:
            (void)node->RemoveReferences();
            break;
        }
        if (root()->GetNodes(true).size() < 5)
            add("folder", root());
    }

    std::mt19937 random;
    std::unique_ptr<ConfigNode> held;
};

} // namespace

class LinkUses : public QObject
{
    Q_OBJECT

private slots:
    void followEveryEdit()
    {
        for (unsigned seed = 1; seed <= 12; ++seed) {
            Tangle f(seed);
            for (int step = 0; step < 120; ++step) {
                f.step();
                Uses walked;
                walk(*f.root(), walked);
                for (auto &[target, list] : walked)
                    std::sort(list.begin(), list.end());
                std::size_t total = 0;
                for (const NodeLink &target : f.root()->GetNodes(true)) {
                    Uses::mapped_type found;
                    for (const LinkUse &use : f.project.FindUses(target))
                        found.emplace_back(use.node.GetNodeId(), use.valueId);
                    std::sort(found.begin(), found.end());
                    total += found.size();
                    QVERIFY2(found == walked[target.GetNodeId()],
                             qPrintable(QString("seed %1, step %2").arg(seed).arg(step)));
                }
                QVERIFY(step < 60 || total > 0 || !walked.empty());
            }
        }
    }

    void instancesAndClonesDoNotCount()
    {
        ProjectFixture f;
        const NodeLink signal(f.add("memorySignal", f.root()));
        ConfigNode *window = f.add("windowTemplate", f.root());
        ConfigNode *label =
            f.add("label", window, nullptr, {{"signal", std::to_string(signal.GetNodeId())}});
        QCOMPARE(f.project.FindUses(signal), (std::vector<LinkUse>{{NodeLink(label), 12001}}));
        const unsigned long revision = f.project.GetRevision();
        NodesArray clones;
        QVERIFY(f.project.CloneNodes(NodesArray({NodeLink(label)}), clones, true));
        ConfigNode *instance = f.project.Instantiate(*window, *window, "I", {});
        ConfigNode *copy = instance->GetNodeAt(0);
        QCOMPARE(f.project.GetOriginal(copy->GetId()), label->GetId());
        QVERIFY(copy->IsLinked(signal));
        QVERIFY(copy->SetProperty(12001, NodeLink()) && copy->SetProperty(12001, signal));
        QVERIFY(clones[0]->SetProperty(12001, NodeLink(window)));
        QCOMPARE(f.project.FindUses(signal).size(), std::size_t(1));
        QVERIFY(f.project.FindUses(NodeLink(window)).empty());
        f.project.TakeClone(NodeLink(instance));
        QCOMPARE(f.project.FindUses(signal).size(), std::size_t(1));
        QCOMPARE(f.project.GetRevision(), revision);
        f.insert(clones[0], window);
        QCOMPARE(f.project.FindUses(NodeLink(window)).size(), std::size_t(1));
        QVERIFY(f.project.GetRevision() != revision);
    }

    void filesAreFoundByPath()
    {
        ProjectFixture f;
        ConfigNode *layer = f.addLayer();
        ConfigNode *image = f.add("image", layer, nullptr, {{"image", "pump.svg"}});
        const ResourceLink file("pump.svg");
        QCOMPARE(f.project.FindUses(file).size(), std::size_t(1));
        f.set(image, {{"image", "fan.svg"}});
        QVERIFY(f.project.FindUses(file).empty());
        QCOMPARE(f.project.FindUses(ResourceLink("fan.svg")).front().node, NodeLink(image));
    }

    // Another document may have edited what the cut emptied.
    void restoredLinksGiveWayToNewerOnes()
    {
        ProjectFixture f;
        const NodeLink signal(f.add("memorySignal", f.root()));
        const NodeLink other(f.add("memorySignal", f.root()));
        ConfigNode *layer = f.addLayer();
        const ProjectFixture::Properties shown{{"signal", std::to_string(signal.GetNodeId())}};
        ConfigNode *changed = f.add("label", layer, nullptr, shown);
        ConfigNode *left = f.add("label", layer, nullptr, shown);
        CutLinks links;
        links.Cut(NodesArray({signal}));
        QVERIFY(changed->SetProperty(12001, other));
        QCOMPARE(int(links.Restore().GetType()), int(Result::Refused));
        QVERIFY(changed->IsLinked(other) && left->IsLinked(signal));
    }
};

QTEST_APPLESS_MAIN(LinkUses)
#include "tst_link_uses.moc"
