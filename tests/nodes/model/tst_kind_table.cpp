#include "nodes/model/ConfigNode.h"
#include "nodes/model/KindBuilder.h"
#include "nodes/model/KindTable.h"

#include "support/Rows.h"

#include <QtTest>

#include <stdexcept>

using namespace Nodes;

namespace {

class Gadget : public ConfigNode
{
public:
    int number = 0;
    std::string text;
};

constexpr unsigned ownCode = 0x2FE0;
constexpr unsigned layerMode = 13001;

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
        row("key of another kind", ownCode, "layer", 900001u, "number");
        row("id with another meaning", ownCode, "gadget", layerMode, "number");
        row("id and name of another type", ownCode, "gadget", 12097u, "visible");
    }

    void slipsAreRefusedAtStart()
    {
        QFETCH(unsigned, code);
        QFETCH(QByteArray, kind);
        QFETCH(unsigned, id);
        QFETCH(QByteArray, property);
        KindTable &table = KindTable::Instance();
        const std::size_t before = table.GetKinds().size();
        QVERIFY_EXCEPTION_THROWN(
            table.Add(
                KindBuilder::For<Gadget>(NodeType::enNodeSubtype(code), kind.constData(), "G", "Г")
                    .Property<&Gadget::number>(id, property.constData(), "N", "Ч")),
            std::logic_error);
        QCOMPARE(table.GetKinds().size(), before);
    }

    void aHostsKindMayShareTheMeaningOfAnId()
    {
        const KindInfo *layer = KindTable::Instance().Find(NodeType(NodeType::SubtypeLayer));
        const PropertyDescriptor *mode = layer->FindProperty(layerMode);
        KindTable::Instance().Add(
            KindBuilder::For<Gadget>(NodeType::enNodeSubtype(ownCode), "gadget", "Gadget", "Гаджет")
                .Property<&Gadget::number>(layerMode, mode->key.c_str(), "Mode", "Режим"));
        const KindInfo *gadget = KindTable::Instance().FindByKey("gadget");
        QVERIFY(gadget && gadget->FindProperty(layerMode)->IsSameAs(*mode));
    }
};

QTEST_GUILESS_MAIN(TestKindTable)
#include "tst_kind_table.moc"
