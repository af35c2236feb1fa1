#include "nodes/ProjectFixture.h"
#include "nodes/TestKind.h"

#include "nodes/project/ProjectDiff.h"
#include "nodes/serial/ProjectReader.h"
#include "nodes/serial/ProjectWriter.h"
#include "support/Rows.h"

#include <QtTest>

#include <random>

using namespace Nodes;

namespace {

std::unique_ptr<NodesCollection> read(const std::string &text)
{
    ProjectReader reader;
    std::unique_ptr<NodesCollection> project;
    if (!reader.ReadBuffer(text, "plant.xml", project))
        throw std::logic_error(reader.GetReport().GetMessages().back().ToString());
    return project;
}

std::unique_ptr<NodesCollection> readBody(const std::string &body)
{
    return read("<project format=\"1\" id=\"1\" name=\"P\">" + body + "</project>");
}

QString shown(const ProjectDiff &diff)
{
    QStringList lines;
    for (const NodeDifference &difference : diff.GetDifferences()) {
        for (const std::string &line : difference.ToLines())
            lines << QString::fromStdString(line);
    }
    return lines.join('\n');
}

/// Changes a project at random, one step at a time, and says what the difference must be.
class RandomEdit
{
public:
    explicit RandomEdit(unsigned seed) : m_random(seed) {}

    NodesCollection &grow(NodesCollection &project)
    {
        for (int i = 0; i < 40; ++i)
            add(project);
        return project;
    }

    QString step(NodesCollection &project)
    {
        switch (pick(4)) {
        case 0:
            return "+" + QString::number(add(project)->GetId());
        case 1:
            return remove(project);
        case 2:
            return rename(project);
        default:
            return move(project);
        }
    }

private:
    std::size_t pick(std::size_t count) { return m_random() % count; }
    /// A node that is not the root; null when there is none.
    ConfigNode *any(NodesCollection &project)
    {
        const NodeLinks all = project.GetRoot()->GetNodes(true);
        return all.empty() ? nullptr : all[pick(all.size())].GetNode();
    }
    ConfigNode *add(NodesCollection &project)
    {
        ConfigNode *parent = pick(3) == 0 ? project.GetRoot() : any(project);
        parent = parent ? parent : project.GetRoot();
        return project.CreateNode(NodeType(NodeType::SubtypeFolder), parent);
    }
    QString remove(NodesCollection &project)
    {
        const ConfigNode *node = any(project);
        if (!node)
            return {};
        const QString told = "-" + QString::number(node->GetId());
        (void)node->GetParent()->RemoveNode(node->GetNodeLink());
        return told;
    }
    QString rename(NodesCollection &project)
    {
        ConfigNode *node = any(project);
        if (!node)
            return {};
        node->SetDescription("again " + std::to_string(++m_count));
        return "~" + QString::number(node->GetId());
    }
    QString move(NodesCollection &project)
    {
        ConfigNode *node = any(project);
        ConfigNode *parent = any(project);
        if (!node || !parent || node->GetParent() == parent)
            return {};
        const QString told = ">" + QString::number(node->GetId());
        return node->GetParent()->MoveNode(node->GetNodeLink(), *parent) ? told : QString();
    }

    std::mt19937 m_random;
    int m_count = 0;
};

QString shortForm(const NodeDifference &difference)
{
    if (difference.isAdded)
        return "+" + QString::number(difference.after);
    if (difference.isRemoved)
        return "-" + QString::number(difference.before);
    return (difference.isMoved ? ">" : "~") + QString::number(difference.after);
}

} // namespace

class DiffOfProjects : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { TestKind::Register(); }

    void tells_data()
    {
        const Rows<std::string, std::string, QString> row("before", "after", "told");
        row("order of attributes and comments", "<folder id=\"2\" name=\"a\" description=\"d\"/>",
            "<!-- x --><folder description=\"d\" name=\"a\" id=\"2\"/>", "");
        row("added with what is below", "",
            "<folder id=\"2\" name=\"a\"><folder id=\"3\" name=\"b\"/></folder>",
            "добавлено: a (Папка), вложенных узлов: 1");
        row("removed from within",
            "<folder id=\"2\" name=\"a\"><folder id=\"3\" name=\"b\"/></folder>",
            "<folder id=\"2\" name=\"a\"/>", "удалено: a/b (Папка)");
        row("renamed", "<folder id=\"2\" name=\"a\"/>", "<folder id=\"2\" name=\"b\"/>",
            "изменено: b (Папка): «Имя»: «a» → «b»");
        row("number", "<pipe id=\"2\" name=\"a\"/>", "<pipe id=\"2\" name=\"a\" count=\"5\"/>",
            "изменено: a (Труба): «Количество»: 3 → 5");
        row("link", "<folder id=\"2\" name=\"a\"/><pipe id=\"3\" name=\"p\"/>",
            "<folder id=\"2\" name=\"a\"/><pipe id=\"3\" name=\"p\" next=\"2 9\"/>",
            "изменено: p (Труба): «Далее»: не задано → «a», узел 9, которого нет");
        row("link to the same under another number",
            "<folder id=\"2\" name=\"a\"/><pipe id=\"3\" name=\"p\" next=\"2\"/>",
            "<folder id=\"8\" name=\"a\"/><pipe id=\"3\" name=\"p\" next=\"8\"/>", "");
        row("secret", "<pipe id=\"2\" name=\"a\"/>", "<pipe id=\"2\" name=\"a\" secret=\"hush\"/>",
            "изменено: a (Труба): «Секрет»: не задано → задано (не показывается)");
        row("other secret", "<pipe id=\"2\" name=\"a\" secret=\"x\"/>",
            "<pipe id=\"2\" name=\"a\" secret=\"y\"/>",
            "изменено: a (Труба): «Секрет»: задано (не показывается) → задано (не показывается)");
        row("unknown attribute", "<folder id=\"2\" name=\"a\" odd=\"1\"/>",
            "<folder id=\"2\" name=\"a\"/>", "изменено: a (Папка): «атрибут odd»: «1» → пусто");
        row("moved", "<folder id=\"2\" name=\"a\"/><folder id=\"3\" name=\"b\"/>",
            "<folder id=\"2\" name=\"a\"><folder id=\"3\" name=\"b\"/></folder>",
            "перемещено: b → a/b (Папка)");
        row("out of what is removed",
            "<folder id=\"2\" name=\"a\"><folder id=\"3\" name=\"b\"/></folder>",
            "<folder id=\"3\" name=\"b\"/>", "перемещено: a/b → b (Папка)\nудалено: a (Папка)");
        row("one to the front",
            "<folder id=\"2\" name=\"a\"/><folder id=\"3\" name=\"b\"/><folder id=\"4\" "
            "name=\"c\"/>",
            "<folder id=\"4\" name=\"c\"/><folder id=\"2\" name=\"a\"/><folder id=\"3\" "
            "name=\"b\"/>",
            "изменён порядок: c (Папка)");
        row("same number, another kind", "<folder id=\"2\" name=\"a\"/>",
            "<pipe id=\"2\" name=\"a\"/>", "добавлено: a (Труба)\nудалено: a (Папка)");
        row("unknown kinds", "<gadget id=\"2\" x=\"1\"/>", "<gadget id=\"2\" x=\"1\"/>", "");
    }

    void tells()
    {
        QFETCH(std::string, before);
        QFETCH(std::string, after);
        QFETCH(QString, told);
        const auto left = readBody(before);
        const auto right = readBody(after);
        QCOMPARE(shown({*left, *right}), told);
        QCOMPARE(ProjectDiff(*right, *left).isEmpty(), told.isEmpty());
        QCOMPARE(ProjectDiff(*left, *right).GetSummary() == "различий нет", told.isEmpty());
    }

    void countsWhatChanged()
    {
        const auto left = readBody("<folder id=\"2\" name=\"a\"/><pipe id=\"3\" name=\"p\"/>");
        const auto right = readBody("<pipe id=\"3\" name=\"q\" count=\"5\"/>"
                                    "<folder id=\"4\" name=\"c\"><folder id=\"5\"/></folder>");
        QCOMPARE(ProjectDiff(*left, *right).GetSummary(),
                 std::string("добавлено узлов: 2, удалено: 1, изменено: 1"));
    }

    void findsEachRandomEdit_data()
    {
        QTest::addColumn<unsigned>("seed");
        for (unsigned seed = 1; seed <= 12; ++seed)
            QTest::newRow(std::to_string(seed).c_str()) << seed;
    }

    void findsEachRandomEdit()
    {
        QFETCH(unsigned, seed);
        RandomEdit edit(seed);
        ProjectFixture f;
        edit.grow(f.project);
        for (int i = 0; i < 60; ++i) {
            const auto before = read(ProjectWriter::ToText(f.project));
            const QString told = edit.step(f.project);
            const auto after = read(ProjectWriter::ToText(f.project));
            const ProjectDiff diff(*before, *after);
            QCOMPARE(diff.GetDifferences().size(), std::size_t(told.isEmpty() ? 0 : 1));
            if (!told.isEmpty())
                QCOMPARE(shortForm(diff.GetDifferences().front()), told);
        }
    }
};

QTEST_APPLESS_MAIN(DiffOfProjects)
#include "tst_project_diff.moc"
