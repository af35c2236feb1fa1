#include "editor/tree/TreeMemory.h"

#include "utils/settings/Configurator.h"

#include <QFile>
#include <QtTest>

using Editor::TreeMemory;

class TestTreeMemory : public QObject
{
    Q_OBJECT

private slots:
    void init() { QFile::remove(Utils::Configurator("", fileName).settingsPath()); }
    void keepsTheProjectsOpenedLast()
    {
        const TreeMemory memory(fileName);
        QVERIFY(memory.recall("a").isEmpty());
        const quint64 highest = (1ull << 52) - 1; // as high as ids go
        memory.keep("a", {1, highest});
        for (int i = 1; i < TreeMemory::KeptProjects; ++i)
            memory.keep("p" + QString::number(i), {quint64(i)});
        QCOMPARE(memory.recall("a"), QSet<quint64>({1, highest}));
        memory.keep("a", {2});
        memory.keep("new", {});
        QCOMPARE(memory.recall("a"), QSet<quint64>{2});
        QVERIFY(memory.recall("p1").isEmpty()); // the one not opened for the longest time
        QCOMPARE(memory.recall("p2"), QSet<quint64>{2});
    }
    void keepsNoMoreThanItShould()
    {
        const TreeMemory memory(fileName);
        QSet<quint64> many;
        for (int i = 0; i < 3 * TreeMemory::KeptNodes; ++i)
            many.insert(quint64(i));
        memory.keep("a", many);
        QCOMPARE(memory.recall("a").size(), TreeMemory::KeptNodes);
    }
    void survivesADamagedFile()
    {
        QFile file(Utils::Configurator("", fileName).settingsPath());
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write("{ not json");
        file.close();
        const TreeMemory memory(fileName);
        QVERIFY(memory.recall("a").isEmpty());
        memory.keep("a", {7});
        QCOMPARE(memory.recall("a"), QSet<quint64>{7});
    }

private:
    const QString fileName = QStringLiteral("tst-tree-memory.json");
};

QTEST_GUILESS_MAIN(TestTreeMemory)
#include "tst_tree_memory.moc"
