#include "nodes/ProjectFixture.h"

#include "nodes/model/ChangeBatch.h"
#include "nodes/model/properties/PropertyProxy.h"
#include "nodes/model/properties/PropertyValue.h"
#include "nodes/visual/BasicWidget.h"
#include "nodes/visual/elements/widgetLabel.h"
#include "support/Rows.h"

#include <QtTest>

using namespace Nodes;

namespace {

using Prop = widgetLabel::Prop;

/// Two labels and a multi image on a layer.
struct Selected : ProjectFixture
{
    Selected()
        : layer(addLayer()),
          first(add("label", layer, "a", {{"text", "T"}, {"x", "10"}})),
          second(add("label", layer, "b", {{"text", "T"}, {"x", "20"}})),
          other(add("multiImage", layer, "c", {{"x", "10"}}))
    {
        for (const ConfigNode *node : {first, second, other})
            proxy.AddNode(node);
    }

    ConfigNode *layer;
    ConfigNode *first;
    ConfigNode *second;
    ConfigNode *other;
    PropertyProxy proxy;
};

bool has(const PropertyProxy &proxy, unsigned valueId)
{
    for (const PropertyDescriptor *d : proxy.GetDescriptors()) {
        if (d->valueId == valueId)
            return true;
    }
    return false;
}

} // namespace

class PropertyProxyTest : public QObject
{
    Q_OBJECT

private slots:
    void hasWhatAllHave()
    {
        Selected s;
        QVERIFY(has(s.proxy, Prop::X) && has(s.proxy, Prop::BorderColor));
        QVERIFY(!has(s.proxy, Prop::Text)); // a multi image has none
        PropertyProxy labels;
        labels.AddNode(s.first);
        labels.AddNode(s.second);
        labels.AddNode(s.first);
        QCOMPARE(labels.GetNodes().size(), std::size_t(2));
        QVERIFY(has(labels, Prop::Text));
    }

    void sumsUp_data()
    {
        const Rows<unsigned, std::string, int, bool, bool> row("id", "text", "count", "isMixed",
                                                               "isDefault");
        row("differs", Prop::X, "10", 3, true, false);
        row("equal by default", Prop::Y, "0", 3, false, true);
        row("of some kinds only", Prop::Text, "T", 2, false, false);
        row("of none", 4711, "", 0, false, false);
    }

    void sumsUp()
    {
        QFETCH(unsigned, id);
        QFETCH(std::string, text);
        QFETCH(int, count);
        QFETCH(bool, isMixed);
        QFETCH(bool, isDefault);
        const Selected s;
        const PropertySummary summary = s.proxy.GetSummary(id);
        QCOMPARE(summary.text, text);
        QCOMPARE(int(summary.count), count);
        QCOMPARE(summary.isMixed, isMixed);
        QCOMPARE(summary.isDefault, isDefault);
    }

    void sumsUpTextsAndForgetsTheDeleted()
    {
        Selected s;
        s.second->SetDescription("насос");
        QVERIFY(s.proxy.GetNameSummary().isMixed);
        QVERIFY(s.proxy.GetDescriptionSummary().isMixed);
        QVERIFY(s.layer->DeleteNode(s.first->GetId()));
        QVERIFY(s.layer->DeleteNode(s.other->GetId()));
        QCOMPARE(s.proxy.GetNameSummary().text, std::string("b"));
        QCOMPARE(s.proxy.GetDescriptionSummary().text, std::string("насос"));
        QCOMPARE(s.proxy.GetSummary(Prop::X).text, std::string("20"));
    }

    void countsValues()
    {
        const Selected s;
        const auto all = s.proxy.CountValues(Prop::X, 5);
        QCOMPARE(all.size(), std::size_t(2));
        QCOMPARE(all[0], std::make_pair(std::string("10"), std::size_t(2)));
        QCOMPARE(s.proxy.CountValues(Prop::X, 1).size(), std::size_t(1));
    }

    void hearsOfItsNodesOnly()
    {
        Selected s;
        ConfigNode *stranger = s.add("label", s.layer, "d");
        std::vector<PropertyProxy::Change> heard;
        ScopedConnection connection = s.proxy.ConnectChanged(
            [&](const PropertyProxy::Change &change) { heard.push_back(change); });
        QVERIFY(stranger->SetProperty(Prop::X, 1));
        QVERIFY(heard.empty());
        QVERIFY(s.first->SetProperty(Prop::X, 1));
        QCOMPARE(heard.size(), std::size_t(1));
        QCOMPARE(heard[0].valueId, unsigned(Prop::X));
        QVERIFY(s.second->Rename("z"));
        QCOMPARE(heard.back().what, PropertyProxy::Change::Text);
        s.add("state", s.other);
        QCOMPARE(heard.back().what, PropertyProxy::Change::Children);
        QVERIFY(s.layer->DeleteNode(stranger->GetId()));
        QCOMPARE(heard.back().what, PropertyProxy::Change::Removed);
        const std::size_t count = heard.size();
        connection.Disconnect();
        QVERIFY(s.first->SetProperty(Prop::X, 2));
        QCOMPARE(heard.size(), count);
    }

    void readsTextsOfEveryProperty()
    {
        const NodesCollection project;
        for (const KindInfo &kind : KindTable::Instance().GetKinds()) {
            for (const PropertyDescriptor &d : kind.properties) {
                const boost::any value = ReadPropertyValue(d, d.defaultText, &project);
                const std::unique_ptr<ConfigNode> node = kind.create();
                QVERIFY2(!value.empty() && d.binding.set(*node, value),
                         (kind.key + "." + d.key).c_str());
                QCOMPARE(d.binding.format(d, *node), d.defaultText);
            }
        }
        const PropertyDescriptor &width =
            *ProjectFixture::kind("label").FindProperty(std::string_view("width"));
        QVERIFY(ReadPropertyValue(width, "-5", &project).empty());
        QVERIFY(ReadPropertyValue(width, "five", &project).empty());
    }
};

QTEST_GUILESS_MAIN(PropertyProxyTest)
#include "tst_property_proxy.moc"
