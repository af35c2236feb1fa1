#include "nodes/ProjectFixture.h"
#include "nodes/TestKind.h"

#include "nodes/model/validation/ValidationResults.h"
#include "support/Rows.h"

#include <QTemporaryDir>
#include <QtTest>

#include <filesystem>
#include <fstream>

using namespace Nodes;

class Validation : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { TestKind::Register(); }

    void finding_data()
    {
        // value: %1: id of a folder
        const Rows<QString, QString, int, QString> row("key", "value", "result", "said");
        row("sound", "count", "5", Result::Success, "");
        row("dangling", "signal", "4711", Result::NotFound, "4711");
        row("wrong family", "signal", "%1", Result::WrongType, "цель");
        row("dangling in a list", "next", "%1 4711", Result::NotFound, "Далее");
        row("no file", "picture", "no.png", Result::NotFound, "no.png");
        row("outside", "picture", "../x", Result::InvalidArgument, "../x");
        row("linked outside", "picture", "out/secret", Result::InvalidArgument, "ссылка");
        row("linked file outside", "picture", "secret", Result::InvalidArgument, "ссылка");
        row("linked inside", "picture", "in/pump.png", Result::Success, "");
    }

    void finding()
    {
        QFETCH(QString, key);
        QFETCH(QString, value);
        QFETCH(int, result);
        QFETCH(QString, said);
        const QTemporaryDir directory;
        const std::filesystem::path outside = directory.path().toStdString();
        const std::filesystem::path base = outside / "project";
        std::filesystem::create_directories(base / "pictures");
        std::ofstream(outside / "secret") << "x";
        std::ofstream(base / "pictures/pump.png") << "x";
        std::filesystem::create_directory_symlink(outside, base / "out");
        std::filesystem::create_symlink(outside / "secret", base / "secret");
        std::filesystem::create_directory_symlink("pictures", base / "in");
        ResourceLink::SetBaseDirectory(base.string());
        QCOMPARE(bool(ResourceLink(value.toStdString()).Load()),
                 key == "picture" && result == Result::Success && !value.isEmpty());
        ProjectFixture f;
        ConfigNode *pipe = f.add("pipe", f.root(), "труба");
        const ConfigNode *target = f.add("folder", f.root(), "цель");
        value = value.contains("%1") ? value.arg(target->GetId()) : value;
        QVERIFY(pipe->SetPropertyText(key.toStdString(), value.toStdString()));
        const ValidationResults results = pipe->isValid();
        QCOMPARE(int(results.size()), result == Result::Success ? 0 : 1);
        for (const ValidationMessage &message : results) {
            QCOMPARE(int(message.GetResult().GetType()), result);
            QCOMPARE(message.GetNodeLink().GetNode(), pipe);
            const QString text = QString::fromStdString(message.GetMessageStr());
            QVERIFY2(text.startsWith("труба: ") && text.contains(said), qPrintable(text));
        }
    }

    void circlesOfAnyLength_data()
    {
        const Rows<int> row("length");
        row("itself", 1);
        row("two", 2);
        row("a long chain", 50000);
    }

    void circlesOfAnyLength()
    {
        QFETCH(int, length);
        ProjectFixture f;
        std::vector<ConfigNode *> pipes;
        for (int i = 0; i < length; ++i) {
            std::unique_ptr<ConfigNode> pipe = f.project.CreateDetached(f.kind("pipe"));
            pipe->SetName(std::to_string(i));
            pipes.push_back(pipe.get());
            QVERIFY(f.root()->AddNode(pipe));
        }
        for (int i = 0; i < length; ++i) {
            const ConfigNode *next = pipes[std::size_t((i + 1) % length)];
            f.set(pipes[std::size_t(i)], {{"next", idOf(next)}});
        }
        // A tail that leads into the circle is not part of it.
        ConfigNode *tail = f.add("pipe", f.root(), "tail", {{"next", idOf(pipes[0])}});
        QVERIFY(tail->isValid().empty());
        QCOMPARE(pipes[0]->isValid().size(), std::size_t(1));
        QVERIFY(pipes[0]->isValid()[0].GetResult() == Result::Cycle);
    }

    void namesAndKindsOfChildren()
    {
        ProjectFixture f;
        ConfigNode *folder = f.add("folder", f.root());
        for (int i = 0; i < 2; ++i)
            f.add("folder", folder)->SetName("same");
        QCOMPARE(folder->isValid().size(), std::size_t(1));
        QVERIFY(folder->isValid()[0].GetResult() == Result::Duplicate);
        std::unique_ptr<ConfigNode> layer = f.project.CreateDetached(f.kind("layer"));
        QVERIFY(folder->AdoptNode(layer));
        QCOMPARE(folder->isValid().size(), std::size_t(2));
    }

    void whatNoDisplayShows_data()
    {
        const Rows<QString, QString, int> row("key", "height", "found");
        row("window of a wall", "window", "16384", 0);
        row("window", "window", "16385", 1);
        row("composed window", "windowComposed", "30000", 1);
        row("composition", "composition", "30000", 1);
    }

    void whatNoDisplayShows()
    {
        QFETCH(QString, key);
        QFETCH(QString, height);
        ProjectFixture f;
        const ConfigNode *node =
            f.add(qPrintable(key), f.root(), "мнемосхема", {{"height", height.toStdString()}});
        const ValidationResults results = node->isValid();
        QTEST(int(results.size()), "found");
        for (const ValidationMessage &message : results)
            QVERIFY(message.GetMessageStr().find(height.toStdString()) != std::string::npos);
    }

    void signalsStandBelowADriverOfTheirKind_data()
    {
        // owner: key of the kind the signal stands below; said: what the finding names, "" for none
        const Rows<QString, QString, QString> row("owner", "signal", "said");
        row("host", "hostDriver", "hostSignal", "");
        row("simulator", "simulatorDriver", "simulatorSignal", "");
        row("host below simulator", "simulatorDriver", "hostSignal", "«чужой»");
        row("simulator below host", "hostDriver", "simulatorSignal", "«чужой»");
        row("modbus below host", "hostDriver", "modbusSignal", "«чужой»");
        row("status below any", "simulatorDriver", "driverStatus", "");
        row("status below none", "folder", "driverStatus", "вне драйверов");
        row("own values below any", "simulatorDriver", "memorySignal", "");
    }

    void signalsStandBelowADriverOfTheirKind()
    {
        QFETCH(QString, owner);
        QFETCH(QString, signal);
        QFETCH(QString, said);
        ProjectFixture f;
        ConfigNode *above = f.add(qPrintable(owner), f.root(), "чужой");
        const ConfigNode *node = f.add(qPrintable(signal), f.add("folder", above), "сигнал");
        QString text;
        for (const ValidationMessage &message : node->isValid()) {
            const QString found = QString::fromStdString(message.GetMessageStr());
            text += found.contains("не получит значений") ? found : QString();
        }
        QCOMPARE(text.isEmpty(), said.isEmpty());
        QVERIFY2(text.contains(said), qPrintable(text));
    }

    void listedNodesAreCheckedToo()
    {
        ProjectFixture f;
        ConfigNode *pipe = f.add("pipe", f.root());
        pipe->AddForeignAttribute("count", "many");
        QVERIFY(f.root()->isValid().empty());
        const NodesArray nodes({NodeLink(f.root()), NodeLink(pipe), NodeLink(4711ul)});
        QCOMPARE(f.root()->isValid(&nodes).size(), std::size_t(1));
        QVERIFY(pipe->SetPropertyText("count", "4"));
        QVERIFY(f.root()->isValid(&nodes).empty());
    }
};

QTEST_APPLESS_MAIN(Validation)
#include "tst_validation.moc"
