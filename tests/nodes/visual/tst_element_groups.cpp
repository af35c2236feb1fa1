// Groups of elements: how their paths read, and what the model keeps of them.
#include "nodes/ProjectFixture.h"
#include "nodes/serial/ProjectWriter.h"
#include "nodes/visual/BasicWidget.h"
#include "nodes/visual/GroupPath.h"
#include "support/Rows.h"

#include <QtTest>

using namespace Nodes;

namespace {

std::string groupOf(const NodeLink &link)
{
    return dynamic_cast<BasicWidget &>(*link.GetNode()).GetGroup();
}

} // namespace

class ElementGroupsTest : public QObject
{
    Q_OBJECT

private slots:
    void leadsInward_data()
    {
        const Rows<std::string, std::string, bool, std::string> row("outer", "path", "isIn",
                                                                    "step");
        row("outermost", "", "a/b", true, "a");
        row("next", "a", "a/b/c", true, "a/b");
        row("innermost", "a/b", "a/b", true, "");
        row("no group", "", "", true, "");
        row("a name that begins alike", "a", "ab/c", false, "");
        row("another group", "a/b", "a/c", false, "");
        row("the one around it", "a/b", "a", false, "");
        row("empty name", "", "/a", true, "");
        row("empty name inside", "a", "a//b", true, "");
        row("Cyrillic", "Котёл", "Котёл/Насос", true, "Котёл/Насос");
    }

    void leadsInward()
    {
        QFETCH(std::string, outer);
        QFETCH(std::string, path);
        const bool isIn = GroupPath::IsIn(outer, path);
        QTEST(isIn, "isIn");
        QTEST(GroupPath::Step(outer, path), "step");
        if (isIn && !outer.empty())
            QCOMPARE(GroupPath::Join(outer, GroupPath::Rest(outer, path)), path);
    }

    void leadsOutward()
    {
        QCOMPARE(GroupPath::Outside("a/b/c"), std::string("a/b"));
        QCOMPARE(GroupPath::Outside("a"), std::string());
        QCOMPARE(GroupPath::Name("a/b"), std::string("b"));
        QCOMPARE(GroupPath::Name("a"), std::string("a"));
    }

    // The project's file and copies keep it; elements without a group are written as ever.
    void isKept()
    {
        ProjectFixture fixture;
        ConfigNode *layer = fixture.addLayer();
        auto *grouped = fixture.add<BasicWidget>("label", layer, "L", {{"elementGroup", "a/b"}});
        auto *single = fixture.add<BasicWidget>("label", layer, "M");
        QCOMPARE(grouped->GetGroup(), std::string("a/b"));
        QCOMPARE(single->GetGroup(), std::string());
        const std::string text = ProjectWriter::ToText(fixture.project);
        QCOMPARE(QString::fromStdString(text).count("elementGroup"), 1);
        NodesArray clones;
        QVERIFY(fixture.project.CloneNodes(NodeLinks{NodeLink(grouped), NodeLink(single)}, clones,
                                           true));
        QCOMPARE(groupOf(clones[0]), std::string("a/b"));
        QVERIFY(grouped->SetProperty(BasicWidget::Prop::Group, std::string()));
        QCOMPARE(groupOf(clones[0]), std::string("a/b")); // its own
        QVERIFY(!ProjectWriter::ToText(fixture.project).empty());
        QVERIFY(ProjectWriter::ToText(fixture.project).find("elementGroup") == std::string::npos);
    }
};

QTEST_APPLESS_MAIN(ElementGroupsTest)
#include "tst_element_groups.moc"
