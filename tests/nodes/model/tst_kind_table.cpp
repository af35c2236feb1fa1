#include "nodes/model/ConfigNode.h"
#include "nodes/model/KindBuilder.h"
#include "nodes/model/KindTable.h"
#include "nodes/visual/BasicWidget.h"
#include "nodes/visual/windows/BasicLayer.h"

#include "support/Rows.h"

#include <QtTest>

#include <stdexcept>

using namespace Nodes;

namespace {

class Gadget : public ConfigNode
{
public:
    static constexpr auto Code = NodeType::enNodeSubtype(0x2FE0);

    int number = 0;
    std::string text;
};

using LayerProp = BasicLayer::Prop;

} // namespace

class TestKindTable : public QObject
{
    Q_OBJECT

private slots:
    void slipsAreRefusedAtStart_data()
    {
        const Rows<unsigned, QByteArray, unsigned, QByteArray> row("code", "kind", "id",
                                                                   "property");
        row("code of another kind", unsigned(NodeType::SubtypeLayer), "gadget", 900001u, "number");
        row("key of another kind", unsigned(Gadget::Code), "layer", 900001u, "number");
        row("id with another meaning", unsigned(Gadget::Code), "gadget", unsigned(LayerProp::Mode),
            "number");
        row("id and name of another type", unsigned(Gadget::Code), "gadget",
            unsigned(BasicWidget::Prop::Visible), "visible");
    }

    void slipsAreRefusedAtStart()
    {
        QFETCH(unsigned, code);
        QFETCH(QByteArray, kind);
        QFETCH(unsigned, id);
        QFETCH(QByteArray, property);
        KindTable &table = KindTable::Instance();
        const std::size_t before = table.GetKinds().size();
        KindInfo gadget = KindBuilder::For<Gadget>(kind.constData(), "G", "Г")
                              .Property<&Gadget::number>({id, property.constData()}, "N", "Ч");
        gadget.type = NodeType(NodeType::enNodeSubtype(code));
        QVERIFY_EXCEPTION_THROWN(table.Add(std::move(gadget)), std::logic_error);
        QCOMPARE(table.GetKinds().size(), before);
    }

    void aHostsKindMayShareTheMeaningOfAnId()
    {
        const KindInfo *layer = KindTable::Instance().Find(NodeType(NodeType::SubtypeLayer));
        const PropertyDescriptor *mode = layer->FindProperty(LayerProp::Mode);
        KindTable::Instance().Add(KindBuilder::For<Gadget>("gadget", "Gadget", "Гаджет")
                                      .Property<&Gadget::number>(LayerProp::Mode, "Mode", "Режим"));
        const KindInfo *gadget = KindTable::Instance().FindByKey("gadget");
        QVERIFY(gadget && gadget->FindProperty(LayerProp::Mode)->IsSameAs(*mode));
    }
};

QTEST_GUILESS_MAIN(TestKindTable)
#include "tst_kind_table.moc"
