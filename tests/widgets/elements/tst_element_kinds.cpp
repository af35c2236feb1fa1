// What every kind has to have on the operator's side, whoever adds it.
#include "widgets/actions/ActionFactoryTable.h"
#include "widgets/elements/IWidget.h"
#include "widgets/scene/ElementFactory.h"

#include "nodes/model/KindTable.h"
#include "nodes/visual/BasicWidget.h"

#include <QtTest>

#include <QWidget>

using Nodes::KindInfo;
using Nodes::NodeType;

Q_DECLARE_METATYPE(const KindInfo *)

class TestElementKinds : public QObject
{
    Q_OBJECT

private slots:
    void everyKindIsShownOrRun_data();
    void everyKindIsShownOrRun();
};

void TestElementKinds::everyKindIsShownOrRun_data()
{
    QTest::addColumn<const KindInfo *>("kind");
    for (const KindInfo &kind : Nodes::KindTable::Instance().GetKinds())
        QTest::newRow(kind.key.c_str()) << &kind;
}

void TestElementKinds::everyKindIsShownOrRun()
{
    QFETCH(const KindInfo *, kind);
    const NodeType::enNodeType family = kind->type.GetFamily();
    const std::unique_ptr<Nodes::ConfigNode> node = kind->create();
    const std::unique_ptr<QWidget> element(
        Widgets::ElementFactory::create(dynamic_cast<Nodes::BasicWidget *>(node.get()), nullptr));
    QCOMPARE(dynamic_cast<IWidget *>(element.get()) != nullptr, family == NodeType::TypeWidget);
    QCOMPARE(Widgets::ActionFactoryTable().knows(kind->type),
             family == NodeType::TypeAction || family == NodeType::TypeArchiverAction);
}

QTEST_MAIN(TestElementKinds)
#include "tst_element_kinds.moc"
