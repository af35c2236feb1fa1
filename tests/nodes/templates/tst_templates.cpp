#include "nodes/ProjectFixture.h"

#include "nodes/model/validation/ValidationResults.h"
#include "nodes/templates/TemplateBinding.h"
#include "support/Rows.h"

#include <QtTest>

using namespace Nodes;

namespace {

/// A faceplate for a pump: its signals hang below the parameter "pump", "header" has a default.
struct Faceplate : ProjectFixture
{
    Faceplate()
    {
        for (const char *name : {"P1", "P2"}) {
            ConfigNode *device = add("folder", root(), name);
            add("memorySignal", device, "run");
            add("memorySignal", device, "current");
        }
    }
    ConfigNode *node(const char *path) const { return project.GetNodesByPath(path).at(0); }
    void give(const char *name, const std::string &link)
    {
        add("templateArgument", action, name, {{"node", link}});
    }
    TemplateBinding binding() const
    {
        return TemplateBinding(*window, action->GetObjects(NodeType::TypeArgument));
    }

    ConfigNode *header = add("memorySignal", root(), "H");
    ConfigNode *window = add("windowTemplate", root(), "Pump");
    ConfigNode *pump = add("templateParameter", window, "pump");
    ConfigNode *run = add("templateParameter", pump, "run");
    ConfigNode *temperature = add("templateParameter", pump, "temperature");
    ConfigNode *pressure = add("templateParameter", window, "header", {{"default", idOf(header)}});
    ConfigNode *action =
        add("actionShowWindowTemplate", root(), "open", {{"window", idOf(window)}});
};

QString joined(const std::vector<std::string> &names)
{
    QStringList list;
    for (const std::string &name : names)
        list << QString::fromStdString(name);
    return list.join(' ');
}

} // namespace

class TestTemplates : public QObject
{
    Q_OBJECT

private slots:
    void binds_data()
    {
        // arguments: name=path or name=id
        // run: path of what the parameter stands for
        const Rows<QString, QString, QString, QString, QString> row("arguments", "run", "header",
                                                                    "missing", "title");
        row("a pump", "pump=P2", "P2/run", "H", "pump/temperature", "P2: run, H {x}");
        row("default replaced", "pump=P1;header=P1/run", "P1/run", "P1/run", "pump/temperature",
            "P1: run, run {x}");
        row("nothing given", "", "", "H", "pump pump/run pump/temperature", "?: ?, H {x}");
        row("vanished: no default either", "pump=P1;header=9999", "P1/run", "",
            "pump/temperature header", "P1: run, ? {x}");
        row("vanished pump", "pump=9999", "", "H", "pump pump/run pump/temperature", "?: ?, H {x}");
    }

    void binds()
    {
        QFETCH(QString, arguments);
        QFETCH(QString, run);
        QFETCH(QString, header);
        QFETCH(QString, missing);
        Faceplate f;
        for (const QString &argument : arguments.split(';', Qt::SkipEmptyParts)) {
            const QStringList parts = argument.split('=');
            const auto nodes = f.project.GetNodesByPath(parts[1].toStdString());
            f.give(qPrintable(parts[0]), nodes.empty() ? parts[1].toStdString() : idOf(nodes[0]));
        }
        f.give("stray", idOf(f.header));
        const TemplateBinding binding = f.binding();
        QCOMPARE(joined(binding.GetUnused()), QString("stray"));
        const IdMap ids = binding.GetIds();
        const auto pathOf = [&](const ConfigNode *parameter) {
            const auto found = ids.find(parameter->GetId());
            return found == ids.end()
                       ? QString()
                       : QString::fromStdString(NodeLink(found->second).GetLinkName(true));
        };
        QCOMPARE(pathOf(f.run), run);
        QCOMPARE(pathOf(f.pressure), header);
        QCOMPARE(joined(binding.GetMissing()), missing);
        QTEST(QString::fromStdString(binding.Fill("{pump}: {pump/run}, {header} {x}")), "title");
        // Validation tells the engineer of the same before an operator does.
        QVERIFY(int(f.action->isValid().size()) >= missing.count(QChar(0x20)) + 2);
    }

    void instancesStandApart()
    {
        Faceplate f;
        const std::size_t before = f.project.GetNodeCount();
        const int children = f.window->GetNodeCount();
        const unsigned long lastId = f.project.GetLastId();
        ConfigNode *first = f.project.Instantiate(*f.window, *f.window, "Pump_1", {});
        ConfigNode *second = f.project.Instantiate(*f.window, *f.window, "Pump_2", {});
        QVERIFY(first && second && first->GetId() != second->GetId());
        QCOMPARE(NodeLink(first->GetId()).GetNode(), first);
        QCOMPARE(f.project.GetLastId(), lastId); // which is saved
        QCOMPARE(QString::fromStdString(second->GetPath()), QString("Pump/Pump_2"));
        QCOMPARE(f.window->GetNodeCount(), children);
        QVERIFY(f.project.GetRoot()->SerializeXML().find("Pump_1") == std::string::npos);
        // Their template may be deleted while they are open, and come back by undo.
        ConfigNode *parent = f.window->GetParent();
        std::unique_ptr<ConfigNode> held = parent->RemoveNode(f.window);
        QCOMPARE(second->GetParent(), static_cast<ConfigNode *>(nullptr));
        QCOMPARE(QString::fromStdString(second->GetNodeAt(0)->GetPath()).count('/'), 0);
        QVERIFY(parent->AdoptNode(held));
        QCOMPARE(QString::fromStdString(second->GetPath()), QString("Pump/Pump_2"));
        f.project.TakeClone(NodeLink(first));
        f.project.TakeClone(NodeLink(second));
        QCOMPARE(f.project.GetNodeCount(), before);
    }

    void nestedTemplatesPassTheirParametersOn()
    {
        Faceplate f;
        ConfigNode *outer = f.add("windowTemplate", f.root(), "Outer");
        ConfigNode *parameter = f.add("templateParameter", outer, "any");
        ConfigNode *open = f.add("actionShowWindowTemplate", outer, "details");
        f.add("templateArgument", open, "pump", {{"node", idOf(parameter)}});
        const auto bind = [&](const IdMap &ids) {
            ConfigNode *instance = f.project.Instantiate(*outer, *outer, "Outer_1", ids);
            const ConfigNode *action = instance->GetSubObject("details");
            return TemplateBinding(*f.window, action->GetObjects(NodeType::TypeArgument)).GetIds();
        };
        const IdMap passed = bind({{parameter->GetId(), f.node("P2")->GetId()}});
        QCOMPARE(passed.at(f.run->GetId()), f.node("P2/run")->GetId());
        QCOMPARE(bind({}).count(f.pump->GetId()), std::size_t(0));
    }
};

QTEST_APPLESS_MAIN(TestTemplates)
#include "tst_templates.moc"
