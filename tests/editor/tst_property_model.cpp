#include "PropertyFixture.h"

#include "nodes/visual/SharedProperties.h"
#include "support/Rows.h"

#include <QAbstractItemModelTester>
#include <QDataStream>
#include <QMimeData>
#include <QSignalSpy>
#include <QtTest>

using Editor::PropertyModel;
using Editor::PropertyRow;
using Nodes::NodeLink;

namespace {

struct Table : PropertyFixture
{
    Table() : model(push()), tester(&model, QAbstractItemModelTester::FailureReportingMode::QtTest)
    {
    }
    void show(std::initializer_list<Nodes::ConfigNode *> nodes)
    {
        model.setNodes(Nodes::NodeLinks(nodes.begin(), nodes.end()));
    }
    QString shown(const char *key) { return cell(model, key).data().toString(); }
    bool set(const char *key, const QString &text) { return model.setData(cell(model, key), text); }

    PropertyModel model;
    QAbstractItemModelTester tester;
};

QMimeData *dragged(const Nodes::ConfigNode *node)
{
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream << QString::number(node->GetId());
    auto *mime = new QMimeData;
    mime->setData("application/nodelink", bytes);
    return mime;
}

} // namespace

class PropertyModelTest : public QObject
{
    Q_OBJECT

private slots:
    void doesUndoesAndRedoes_data()
    {
        const Rows<QByteArray, QByteArray, QString, QString> row("kind", "key", "text", "refused");
        row("whole number", "label", "x", "37", "3.5");
        row("whole number in a range", "label", "width", "120", "-1");
        row("number", "bargraph", "maximum", "12.5", "много");
        row("limit that was none", "bargraph", "low", "10", "1e999");
        row("yes or no", "label", "visible", "false", "да");
        row("text", "label", "text", "две\nстроки", "");
        row("colour", "label", "color", "#11223344", "красный");
        row("choice", "label", "align", "right", "криво");
        row("link", "label", "signal", "SIGNAL", "x");
        row("links", "label", "onPress", "ACTION ACTION", "1 x");
        row("file", "image", "image", "images/a.svg", "");
        row("hash", "user", "passwordHash", "$argon2id$x", "");
        row("name", "label", "#name", "новое", "a/b");
        row("description", "label", "#description", "о нём", "");
    }

    void doesUndoesAndRedoes()
    {
        QFETCH(QByteArray, kind);
        QFETCH(QByteArray, key);
        QFETCH(QString, text);
        QFETCH(QString, refused);
        Table t;
        const bool isUser = kind == "user";
        Nodes::ConfigNode *node = t.add(kind, isUser ? t.add("folder", t.root()) : t.layer, "n");
        text.replace("SIGNAL", QString::fromStdString(idOf(t.signal)))
            .replace("ACTION", QString::fromStdString(idOf(t.action)));
        t.show({node});
        const auto value = [&] { return t.cell(t.model, key).data(Qt::EditRole).toString(); };
        const QString before = value();

        QVERIFY(t.set(key, before)); // changes nothing
        QCOMPARE(t.stack.count(), 0);
        QVERIFY(t.set(key, text));
        QCOMPARE(value(), text);
        QCOMPARE(t.stack.count(), 1);
        t.stack.undo();
        QTRY_COMPARE(value(), before);
        t.stack.redo();
        QTRY_COMPARE(value(), text);
        if (refused.isEmpty())
            return;
        const QSignalSpy told(&t.model, &PropertyModel::refused);
        QVERIFY(!t.set(key, refused));
        QCOMPARE(value(), text);
        QCOMPARE(t.stack.count(), 1);
        QVERIFY(!told.last()[0].toString().isEmpty());
        QCOMPARE(t.cell(t.model, key).data(PropertyModel::ErrorRole), told.last()[0]);
        QVERIFY(t.set(key, before)); // the error goes
        QVERIFY(t.cell(t.model, key).data(PropertyModel::ErrorRole).toString().isEmpty());
    }

    void setsAllAsOneStep()
    {
        Table t;
        t.show({t.a, t.b, t.multi});
        QVERIFY(!t.model.find("text").isValid()); // not of a multi image
        QVERIFY(!t.model.find("#name").isValid());
        QCOMPARE(t.shown("x"), QStringLiteral("<разные>"));
        const QString tip = t.cell(t.model, "x").data(Qt::ToolTipRole).toString();
        for (const char *line : {"10: 1", "20: 1", "0: 1"})
            QVERIFY2(tip.contains(line), qPrintable(tip));
        QVERIFY(t.set("x", "10")); // what the first one has already
        QCOMPARE(textOf(*t.b, "x"), std::string("10"));
        QCOMPARE(textOf(*t.multi, "x"), std::string("10"));
        QCOMPARE(t.shown("x"), QStringLiteral("10"));
        QCOMPARE(t.stack.count(), 1);
        QCOMPARE(t.stack.text(0), QStringLiteral("Изменение свойства X у 3 узлов"));
        t.stack.undo();
        QTRY_COMPARE(t.shown("x"), QStringLiteral("<разные>"));
        QCOMPARE(textOf(*t.b, "x"), std::string("20"));
    }

    void mergesWhatIsSpun()
    {
        Table t;
        t.show({t.a, t.b});
        for (int spin = 0; spin < 2; ++spin) {
            t.model.beginInteraction();
            for (const int x : {1, 2, 3})
                QVERIFY(t.model.setData(t.cell(t.model, "x"), QString::number(x + 10 * spin),
                                        PropertyModel::StepRole));
            t.model.endInteraction();
            QCOMPARE(t.stack.count(), spin + 1);
        }
        t.model.beginInteraction();
        QVERIFY(t.model.setData(t.cell(t.model, "x"), "99", PropertyModel::StepRole));
        t.model.cancelInteraction();
        QCOMPARE(t.shown("x"), QStringLiteral("13"));
        t.stack.undo();
        QTRY_COMPARE(t.shown("x"), QStringLiteral("3"));
    }

    void givesDefaultsBack()
    {
        Table t;
        t.show({t.a, t.b});
        const auto isBold = [&](const char *key) {
            return t.model.find(key).data(Qt::FontRole).value<QFont>().bold();
        };
        QVERIFY(isBold("text") && !isBold("height"));
        QVERIFY(t.model.reset(t.cell(t.model, "text")));
        QCOMPARE(textOf(*t.b, "text"), std::string());
        QVERIFY(!t.model.reset(t.cell(t.model, "text")));
        QVERIFY(t.set("bold", "true") && t.set("fontSize", "20"));
        QVERIFY(isBold("#font12210"));
        const int steps = t.stack.count();
        QVERIFY(t.model.reset(t.model.find("#font12210")));
        QCOMPARE(t.stack.count(), steps + 1);
        QCOMPARE(textOf(*t.a, "bold"), std::string("false"));
    }

    void followsTheNodes()
    {
        Table t;
        t.show({t.a});
        const QSignalSpy reset(&t.model, &QAbstractItemModel::modelReset);
        const QSignalSpy changed(&t.model, &QAbstractItemModel::dataChanged);
        for (int x = 100; x < 200; ++x)
            QVERIFY(t.a->SetPropertyText("x", std::to_string(x)));
        QCOMPARE(changed.count(), 0);
        QTRY_COMPARE(t.shown("x"), QStringLiteral("199"));
        QCOMPARE(changed.count(), 3); // once for each cell of the row
        QVERIFY(t.a->Rename("другое"));
        QTRY_COMPARE(t.shown("#name"), QStringLiteral("другое"));
        t.show({t.b}); // has the same rows
        QCOMPARE(reset.count(), 0);
        QCOMPARE(t.shown("#name"), QStringLiteral("b"));
        QVERIFY(t.layer->DeleteNode(t.b->GetId()));
        QTRY_COMPARE(t.model.rowCount(), 0);
        QVERIFY(!t.set("x", "1"));
    }

    void previewsWhatIsDragged()
    {
        Table t;
        t.show({t.a});
        const QSignalSpy changed(&t.model, &QAbstractItemModel::dataChanged);
        t.model.setPreview({{Nodes::GeometryProp::X, "123"}, {Nodes::GeometryProp::Y, "45"}});
        QCOMPARE(t.shown("x"), QStringLiteral("123"));
        QCOMPARE(t.cell(t.model, "x").data(Qt::EditRole).toString(), QStringLiteral("10"));
        QCOMPARE(changed.count(), 2);
        t.model.setPreview({{Nodes::GeometryProp::X, "123"}, {Nodes::GeometryProp::Y, "45"}});
        QCOMPARE(changed.count(), 2);
        t.model.setPreview({});
        QCOMPARE(t.shown("x"), QStringLiteral("10"));
        QCOMPARE(t.stack.count(), 0);
    }

    void changesNothingReadOnly()
    {
        Table t;
        t.show({t.a});
        t.model.setReadOnly(QStringLiteral("занят"));
        QVERIFY(!(t.cell(t.model, "x").flags() & Qt::ItemIsEditable));
        QVERIFY(!(t.cell(t.model, "visible").flags() & Qt::ItemIsUserCheckable));
        QVERIFY(!t.set("x", "5") && !t.model.reset(t.cell(t.model, "text")));
        QCOMPARE(textOf(*t.a, "x"), std::string("10"));
        QCOMPARE(t.cell(t.model, "x").data(PropertyModel::ErrorRole).toString(),
                 QStringLiteral("занят"));
        t.model.setReadOnly(QString());
        QVERIFY(t.set("x", "5"));
    }

    void takesDroppedNodes()
    {
        Table t;
        t.show({t.a});
        const std::unique_ptr<QMimeData> signal(dragged(t.signal));
        const std::unique_ptr<QMimeData> action(dragged(t.action));
        const auto drop = [&](const QMimeData *mime, const char *key) {
            return t.model.dropMimeData(mime, Qt::CopyAction, -1, -1, t.cell(t.model, key));
        };
        QVERIFY(!drop(action.get(), "signal") && !drop(signal.get(), "x"));
        QVERIFY(drop(signal.get(), "signal"));
        QCOMPARE(textOf(*t.a, "signal"), idOf(t.signal));
        QVERIFY(drop(action.get(), "onPress") && drop(action.get(), "onPress"));
        QCOMPARE(textOf(*t.a, "onPress"), idOf(t.action) + " " + idOf(t.action));
    }

    void everyKindHasItsRows()
    {
        Table t;
        for (const Nodes::KindInfo &kind : Nodes::KindTable::Instance().GetKinds()) {
            if (kind.type.GetSubtype() == Nodes::NodeType::SubtypeProject)
                continue;
            const NodeLink node(t.project.CreateNode(kind.type, nullptr));
            t.model.setNodes({node});
            QVERIFY2(t.model.find("#name").isValid(), kind.key.c_str());
            for (const Nodes::PropertyDescriptor &d : kind.properties) {
                const QModelIndex row = t.model.find(QString::fromStdString(d.key));
                QVERIFY2(row.isValid(), (kind.key + "." + d.key).c_str());
                QVERIFY(!row.data(Qt::ToolTipRole).toString().isEmpty());
                QVERIFY(!row.parent().data().toString().isEmpty());
            }
        }
    }

    void showsTenThousand()
    {
        Table t;
        Nodes::NodeLinks nodes;
        for (int i = 0; i < 10000; ++i)
            nodes.emplace_back(t.project.CreateNode(t.kind("label").type, t.layer));
        t.model.setNodes(nodes);
        QCOMPARE(t.shown("#kind"), QStringLiteral("Надпись (10000)"));
        QVERIFY(t.set("width", "33"));
        QCOMPARE(textOf(*nodes.back().GetNode(), "width"), std::string("33"));
        QCOMPARE(t.stack.count(), 1);
        t.stack.undo();
        const auto *width = PropertyModel::row(t.model.find("width"));
        QTRY_VERIFY(width->value.isDefault && !width->value.isMixed);
    }
};

QTEST_MAIN(PropertyModelTest)
#include "tst_property_model.moc"
