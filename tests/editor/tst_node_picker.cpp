#include "PropertyFixture.h"

#include "editor/picker/NodePicker.h"
#include "editor/picker/NodePickerModel.h"
#include "editor/properties/PropertyDrop.h"
#include "support/Rows.h"

#include <QAbstractItemModelTester>
#include <QDialogButtonBox>
#include <QLineEdit>
#include <QPushButton>
#include <QTreeView>
#include <QtTest>

using Editor::NodePicker;
using Editor::NodePickerModel;

namespace {

/// Signals in folders, beside the drawing.
struct Tree : PropertyFixture
{
    Tree() : folder(add("folder", root(), "Котёл")), pressure(add("memorySignal", folder, "P1"))
    {
        add("memorySignal", folder, "T1")->SetDescription("Температура ВОДЫ");
        add("folder", root(), "пустая");
    }
    const Nodes::PropertyDescriptor &property(const char *key) const
    {
        return *kind("label").FindProperty(std::string_view(key));
    }

    Nodes::ConfigNode *folder;
    Nodes::ConfigNode *pressure;
};

QStringList names(const QAbstractItemModel &model, const QModelIndex &parent = {})
{
    QStringList all;
    for (int i = 0; i < model.rowCount(parent); ++i) {
        const QModelIndex index = model.index(i, 0, parent);
        all << index.data().toString();
        all += names(model, index);
    }
    return all;
}

} // namespace

class NodePickerTest : public QObject
{
    Q_OBJECT

private slots:
    void showsWhatFits_data()
    {
        const Rows<QByteArray, QString, QString, int> row("property", "search", "shown", "count");
        row("all signals", "signal", "", "Проект давление Котёл P1 T1", 3);
        row("by name", "signal", "p1", "Проект Котёл P1", 1);
        row("by description", "signal", " воды ", "Проект Котёл T1", 1);
        row("not by what holds it", "signal", "котёл", "", 0);
        row("by path", "signal", "котёл/t", "Проект Котёл T1", 1);
        row("actions", "onPress", "", "Проект пуск", 1);
        row("none", "onPress", "P1", "", 0);
    }

    void showsWhatFits()
    {
        QFETCH(QByteArray, property);
        QFETCH(QString, search);
        QFETCH(QString, shown);
        QFETCH(int, count);
        Tree t;
        t.root()->SetName("Проект");
        const Nodes::PropertyDescriptor &descriptor = t.property(property);
        NodePickerModel model(&t.project, [&](const Nodes::ConfigNode &node) {
            return Editor::PropertyDrop::fits(descriptor, node);
        });
        const QAbstractItemModelTester tester(
            &model, QAbstractItemModelTester::FailureReportingMode::QtTest);
        model.search(search);
        QCOMPARE(names(model).join(QLatin1Char(' ')), shown);
        QCOMPARE(model.count(), count);
        QCOMPARE(model.first().isValid(), count > 0);
        QCOMPARE(model.find(t.pressure->GetId()).isValid(), shown.contains("P1"));
        model.search(QString());
        QVERIFY(model.count() >= count);
    }

    void picksOneByKeyboard()
    {
        Tree t;
        auto *picker = new NodePicker(&t.project, t.property("signal"), nullptr);
        Nodes::NodeLinks nodes;
        connect(picker, &NodePicker::picked, this,
                [&](const Nodes::NodeLinks &picked) { nodes = picked; });
        picker->show();
        auto *line = picker->findChild<QLineEdit *>();
        auto *view = picker->findChild<QTreeView *>();
        auto *take = picker->findChild<QDialogButtonBox *>()->buttons().first();
        QVERIFY(!take->isEnabled());
        view->setCurrentIndex(view->model()->index(0, 0)); // the project: it does not fit
        QVERIFY(!take->isEnabled());
        QTest::keyClicks(line, "1");
        QVERIFY(take->isEnabled());
        QTest::keyClick(line, Qt::Key_Down); // from P1 to T1
        QTest::keyClick(line, Qt::Key_Return);
        QCOMPARE(nodes.size(), std::size_t(1));
        QCOMPARE(nodes[0].GetLinkName(), std::string("T1"));
    }

    void picksNothingOfAProjectThatIsGone()
    {
        Tree t;
        auto *picker = new NodePicker(&t.project, t.property("signal"), nullptr);
        picker->setCurrent(t.pressure->GetId());
        bool isPicked = false;
        connect(picker, &NodePicker::picked, this, [&] { isPicked = true; });
        t.owned.reset();
        picker->findChild<QDialogButtonBox *>()->accepted();
        QVERIFY(!isPicked);
        delete picker;
    }
};

QTEST_MAIN(NodePickerTest)
#include "tst_node_picker.moc"
