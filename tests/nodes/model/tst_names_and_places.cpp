#include "nodes/ProjectFixture.h"
#include "nodes/model/ChangeBatch.h"
#include "nodes/model/NodeNotifications.h"
#include "nodes/signals/BasicSignal.h"
#include "nodes/values/ValueCell.h"
#include "support/Rows.h"

#include <QtTest>

using namespace Nodes;

namespace {

/// Folders A and B; in A: a, b, c, in B another b. Notes what the tree and two parents announce.
struct Folders : ProjectFixture
{
    Folders()
    {
        for (const char *name : {"a", "b", "c"})
            add("memorySignal", a, name);
        add("memorySignal", b, "b");
        m_connections.emplace_back(project.ConnectChanged([this](const NodeChange &change) {
            static const char *const words[] = {"name", "text", "set", "in", "out", "order"};
            const NodeLink about = change.child.isEmpty() ? change.node : change.child;
            heard << QString("%1 %2").arg(words[change.what]).arg(nameOf(about));
        }));
        for (ConfigNode *folder : {a, b}) {
            const auto note = [this](const char *word) {
                return [this, word](const NodeLink &link) {
                    own << QString("%1 %2").arg(word, nameOf(link));
                };
            };
            m_connections.emplace_back(folder->ConnectChildAdded(note("in")));
            m_connections.emplace_back(folder->ConnectChildRemoved(note("out")));
            m_connections.emplace_back(folder->ConnectChildMoved(note("order")));
            m_connections.emplace_back(folder->ConnectTextChanged(note("text")));
        }
    }
    // A node just taken out has no name to be asked for.
    static QString nameOf(const NodeLink &link)
    {
        return link.isValid() ? QString::fromStdString(link.GetLinkName()) : QString("-");
    }
    QString order(const ConfigNode *folder) const
    {
        QStringList names;
        for (const auto &child : folder->Children())
            names << QString::fromStdString(child->GetName());
        return names.join(' ');
    }

    ConfigNode *a = add("folder", root(), "A");
    ConfigNode *b = add("folder", root(), "B");
    QStringList heard;
    QStringList own;

private:
    std::vector<ScopedConnection> m_connections;
};

} // namespace

class NamesAndPlaces : public QObject
{
    Q_OBJECT

private slots:
    void renames_data()
    {
        const Rows<std::string, int, QString> row("name", "result", "text");
        row("free", "d", Result::Success, "Выполнено");
        row("its own", "a", Result::Success, "Выполнено");
        row("a sibling's", "b", Result::Duplicate,
            "Такое имя здесь уже есть у другого узла. Дайте другое имя.");
        row("none", "", Result::InvalidArgument, "Имя узла не может быть пустым и содержать «/»");
        row("a path", "x/y", Result::InvalidArgument,
            "Имя узла не может быть пустым и содержать «/»");
    }

    void renames()
    {
        QFETCH(std::string, name);
        Folders f;
        ConfigNode *node = f.a->GetNodeAt(0);
        const Result result = node->Rename(name);
        QTEST(int(result.GetType()), "result");
        QTEST(QString::fromStdString(result.GetResultTranslated()), "text");
        QCOMPARE(node->GetName(), result ? name : std::string("a"));
        QCOMPARE(f.heard.join(','), name == "d" ? QString("name d") : QString());
    }

    void textsAreAnnounced()
    {
        Folders f;
        f.a->SetName("Z");
        f.a->SetDescription("about");
        f.a->SetDescription("about");
        QCOMPARE(f.own.join(','), QString("text Z,text Z"));
        QCOMPARE(f.heard.join(','), QString("name Z,text Z"));
    }

    void moves_data()
    {
        const Rows<bool, int, int, int, QString, QString> row("isOther", "from", "to", "result",
                                                              "order", "announced");
        row("down", false, 0, 1, Result::Success, "b a c", "order a");
        row("up", false, 2, 0, Result::Success, "c a b", "order c");
        row("to the end", false, 0, -1, Result::Success, "b c a", "order a");
        row("where it is", false, 1, 1, Result::Success, "a b c", "");
        row("away", true, 0, 0, Result::Success, "b c|a b", "out -,in a");
        row("away to the end", true, 2, 9, Result::Success, "a b|b c", "out -,in c");
        row("name taken there", true, 1, 0, Result::Duplicate, "a b c|b", "");
    }

    void moves()
    {
        QFETCH(bool, isOther);
        QFETCH(int, from);
        QFETCH(int, to);
        Folders f;
        auto *signal = dynamic_cast<BasicSignal *>(f.a->GetNodeAt(from));
        signal->GetCell()->Publish(SignalValue(5.0));
        const NodeLink link(signal);
        QTEST(int(f.a->MoveNode(link, isOther ? *f.b : *f.a, to).GetType()), "result");
        QTEST(f.order(f.a) + (isOther ? "|" + f.order(f.b) : QString()), "order");
        QTEST(f.own.join(','), "announced");
        QTEST(f.heard.join(','), "announced");
        QCOMPARE(link.GetNode(), signal);
        QVERIFY(signal->GetValue().IsGood()); // whoever shows it sees no gap
    }

    void refusedMovesChangeNothing_data()
    {
        const Rows<QString, int> row("what", "result");
        row("below itself", "self", Result::Cycle);
        row("kind not allowed", "kind", Result::InvalidArgument);
        row("another project", "project", Result::InvalidArgument);
        row("no child", "child", Result::NotFound);
    }

    void refusedMovesChangeNothing()
    {
        QFETCH(QString, what);
        Folders f;
        Folders other;
        ConfigNode *below = f.add("folder", f.a, "below");
        ConfigNode *layer = f.addLayer();
        const std::string before = f.root()->SerializeXML();
        f.heard.clear();
        const Result result = what == "self"      ? f.root()->MoveNode(f.a, *below)
                              : what == "kind"    ? f.root()->MoveNode(f.a, *layer)
                              : what == "project" ? f.root()->MoveNode(f.a, *other.b)
                                                  : f.b->MoveNode(f.a, *layer);
        QTEST(int(result.GetType()), "result");
        QCOMPARE(f.root()->SerializeXML(), before);
        QVERIFY(f.heard.isEmpty());
    }

    void batchTellsEachNodeOnce()
    {
        Folders f;
        ConfigNode *layer = f.addLayer();
        ConfigNode *one = f.add("label", layer, "one");
        ConfigNode *two = f.add("label", layer, "two");
        ConfigNode *gone = f.add("label", layer, "gone");
        std::vector<BasicProperty *> told;
        const auto note = [&told](BasicProperty *property) { told.push_back(property); };
        const ScopedConnection connections[] = {one->ConnectPropertyChanged(note),
                                                two->ConnectPropertyChanged(note),
                                                gone->ConnectPropertyChanged(note)};
        f.heard.clear();
        {
            const ChangeBatch outer;
            for (const char *key : {"x", "y", "width", "height"})
                ProjectFixture::set(one, {{key, "7"}});
            {
                const ChangeBatch inner;
                ProjectFixture::set(two, {{"x", "8"}});
            }
            ProjectFixture::set(two, {{"x", "9"}});
            ProjectFixture::set(gone, {{"x", "9"}});
            QVERIFY(layer->RemoveNode(gone));
            QVERIFY(told.empty());
        }
        QCOMPARE(told, (std::vector<BasicProperty *>{nullptr, two->GetPropertyByValueId(11001)}));
        QCOMPARE(f.heard.join(','), QString("out -,set one,set two"));
    }
};

QTEST_APPLESS_MAIN(NamesAndPlaces)
#include "tst_names_and_places.moc"
