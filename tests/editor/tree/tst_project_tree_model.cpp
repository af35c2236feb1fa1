#include "editor/tree/NodeMime.h"
#include "editor/tree/ProjectTreeModel.h"
#include "editor/tree/TreeEdits.h"

#include "nodes/ProjectFixture.h"
#include "support/Rows.h"
#include "utils/undo/ChangeTextCommand.h"
#include "utils/undo/CopyNodeWidgetGroupCommand.h"
#include "utils/undo/MoveNodesCommand.h"
#include "utils/undo/RemoveNodeLinkGroup.h"

#include <QAbstractItemModelTester>
#include <QDataStream>
#include <QLoggingCategory>
#include <QMimeData>
#include <QUndoStack>

#include <memory>
#include <random>

using namespace Editor;
using namespace Nodes;

namespace {

/// Every row of the model, a line each: depth and name.
QStringList rowsOf(const QAbstractItemModel &model, const QModelIndex &parent = {}, int depth = 0)
{
    QStringList rows;
    for (int row = 0; row < model.rowCount(parent); ++row) {
        const QModelIndex index = model.index(row, 0, parent);
        rows << QString(depth, QLatin1Char('.')) + index.data().toString();
        rows << rowsOf(model, index, depth + 1);
    }
    return rows;
}

QStringList rowsOf(const ConfigNode &node, int depth = 0)
{
    QStringList rows{QString(depth, QLatin1Char('.')) + QString::fromStdString(node.GetName())};
    for (const auto &child : node.Children())
        rows << rowsOf(*child, depth + 1);
    return rows;
}

QStringList texts(const QMimeData &data, const char *format)
{
    QStringList read;
    const QByteArray bytes = data.data(QString::fromLatin1(format));
    QDataStream stream(bytes);
    while (!stream.atEnd()) {
        QString text;
        stream >> text;
        read << text;
    }
    return read;
}

/// Notes what it is asked for, and takes what the kinds allow.
struct NotingEdits : TreeEdits
{
    bool isAllowed() const override { return allowed; }
    bool rename(const NodeLink &node, const QString &name) override
    {
        done << "rename " + QString::fromStdString(node.GetLinkName()) + " " + name;
        return true;
    }
    bool describe(const NodeLink &node, const QString &text) override
    {
        done << "describe " + QString::fromStdString(node.GetLinkName()) + " " + text;
        return true;
    }
    bool takes(const NodeLink &parent, const NodeLinks &nodes, bool) const override
    {
        return parent->GetKind()->AllowsChild(nodes.front().GetNodeType());
    }
    bool move(const NodeLinks &nodes, const NodeLink &parent, const NodeLink &before) override
    {
        note("move", nodes, parent, before);
        return true;
    }
    NodeLinks copyTo(const NodeLinks &nodes, const NodeLink &parent,
                     const NodeLink &before) override
    {
        note("copy", nodes, parent, before);
        return nodes;
    }
    void note(const char *what, const NodeLinks &nodes, const NodeLink &parent,
              const NodeLink &before)
    {
        QStringList names;
        for (const NodeLink &node : nodes)
            names << QString::fromStdString(node.GetLinkName());
        done << QString("%1 %2 to %3 before %4")
                    .arg(what, names.join(","), QString::fromStdString(parent.GetLinkName()),
                         QString::fromStdString(before.GetLinkName()));
    }

    bool allowed = true;
    QStringList done;
};

/// Two folders of signals and a layer of labels.
struct Tree : ProjectFixture
{
    Tree()
    {
        root()->SetName("project");
        first = add("folder", root(), "Котёл 1");
        for (const char *name : {"a", "b", "c"})
            signals_.push_back(add("memorySignal", first, name));
        second = add("folder", root(), "Котёл 2");
        signals_.push_back(add("memorySignal", second, "Давление"));
        signals_.back()->SetDescription("Насос подпитки");
        layer = addLayer();
        label = add("label", layer, "Надпись насоса");
        model.setProject(&project);
    }
    ConfigNode *anyNode(std::mt19937 &random)
    {
        const NodeLinks all = root()->GetNodes(true);
        return all.empty() ? root() : all[random() % all.size()].GetNode();
    }

    ConfigNode *first = nullptr;
    ConfigNode *second = nullptr;
    ConfigNode *layer = nullptr;
    ConfigNode *label = nullptr;
    std::vector<ConfigNode *> signals_;
    ProjectTreeModel model;
    QAbstractItemModelTester tester{&model, QAbstractItemModelTester::FailureReportingMode::QtTest};
};

Utils::NodeCommand *randomCommand(Tree &tree, std::mt19937 &random)
{
    const NodeLink node(tree.anyNode(random));
    const NodeLink other(tree.anyNode(random));
    const NodeLink parent(tree.anyNode(random)->GetParent());
    switch (random() % 5) {
    case 0:
        return new Utils::ChangeTextCommand(node, Utils::ChangeTextCommand::Name,
                                            std::to_string(random() % 100));
    case 1:
        return new Utils::MoveNodesCommand({node, other}, node->GetParent(), {});
    case 2:
        return new Utils::MoveNodesCommand({node, other}, parent, NodeLink(tree.anyNode(random)));
    case 3:
        return new Utils::RemoveNodeLinkGroup(node->GetParent(), {node});
    default: {
        NodesArray clones;
        (void)tree.project.CloneNodes(NodesArray(NodeLinks{node, other}), clones, true);
        return new Utils::CopyNodeWidgetGroupCommand(node->GetParent(), clones, {});
    }
    }
}

} // namespace

class TestProjectTreeModel : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void followsWhateverIsEdited_data();
    void followsWhateverIsEdited();
    void hearsOfNodesBelowRowsNobodyAskedFor();
    void keepsTheRowOfANodeThatIsPassedByOthers();
    void findsByWords_data();
    void findsByWords();
    void foldsEveryLetterAsQtDoes();
    void showsWhatIsAddedWhileFiltered();
    void showsTexts();
    void givesTheBytesThatScenesRead();
    void leavesOutPathsThatLeadElsewhere();
    void takesDrops_data();
    void takesDrops();
    void handsOverWhatIsTyped();
    void outlivesItsProject();
};

void TestProjectTreeModel::initTestCase()
{
    QLoggingCategory::setFilterRules("station.undo=false"); // random commands may be refused
}

void TestProjectTreeModel::followsWhateverIsEdited_data()
{
    const Rows<unsigned, QString> add("seed", "filter");
    add("few", 1, "");
    add("others", 2, "");
    add("found ones", 3, "насос");
    add("all found", 4, "1");
}

void TestProjectTreeModel::followsWhateverIsEdited()
{
    QFETCH(unsigned, seed);
    QFETCH(QString, filter);
    Tree tree;
    QUndoStack stack;
    std::mt19937 random(seed);
    std::vector<std::pair<QPersistentModelIndex, NodeLink>> seen;
    tree.model.setFilter(filter);
    for (int step = 0; step < 400; ++step) {
        if (random() % 3 == 0)
            random() % 2 ? stack.undo() : stack.redo();
        else
            stack.push(randomCommand(tree, random));
        // Some rows are asked for, others wait for later changes.
        const NodeLink node(tree.anyNode(random));
        const QModelIndex index = tree.model.indexOf(node);
        if (index.isValid())
            seen.emplace_back(index, node);
        QVERIFY(!filter.isEmpty() || index.isValid());
        for (const auto &[place, link] : seen) {
            if (place.isValid())
                QCOMPARE(tree.model.nodeAt(place), link);
        }
    }
    if (filter.isEmpty())
        QCOMPARE(rowsOf(tree.model), rowsOf(*tree.root()));
    tree.model.setFilter({});
    QCOMPARE(rowsOf(tree.model), rowsOf(*tree.root()));
}

void TestProjectTreeModel::hearsOfNodesBelowRowsNobodyAskedFor()
{
    Tree tree;
    // Made anew: its tester asks for all rows.
    ProjectTreeModel model;
    model.setProject(&tree.project);
    const QModelIndex folder = model.indexOf(tree.second);
    QVERIFY(model.hasChildren(folder));
    QSignalSpy removed(&model, &QAbstractItemModel::rowsRemoved);
    const std::unique_ptr<ConfigNode> gone = tree.second->RemoveNode(tree.signals_.back());
    QCOMPARE(removed.count(), 1); // a view takes its expansion mark away
    QVERIFY(!model.hasChildren(folder));
    QSignalSpy inserted(&model, &QAbstractItemModel::rowsInserted);
    tree.add("memorySignal", tree.second);
    QCOMPARE(inserted.count(), 1);
    QCOMPARE(model.rowCount(folder), 1);
}

void TestProjectTreeModel::keepsTheRowOfANodeThatIsPassedByOthers()
{
    Tree tree;
    const QPersistentModelIndex moved = tree.model.indexOf(tree.signals_[0]);
    QSignalSpy moves(&tree.model, &QAbstractItemModel::rowsMoved);
    QVERIFY(tree.first->MoveNode(tree.signals_[0], *tree.first, 2));
    QCOMPARE(moves.count(), 1);
    QCOMPARE(moved.row(), 2);
}

void TestProjectTreeModel::findsByWords_data()
{
    const Rows<QString, QStringList> add("filter", "rows");
    const QStringList pressure{"project", ".Котёл 2", "..Давление"};
    const QStringList label{"project", ".Композиция", "..Слой", "...Надпись насоса"};
    add("a name in another case", "ДАВЛ", pressure);
    add("a description", "подпитки", pressure);
    add("two words in any order", "подпитки давление", pressure);
    add("words of two nodes", "давление надпись", {});
    add("several nodes", "насос", QStringList(pressure) << label.mid(1));
    add("the dots of a letter", "котел 2", pressure.mid(0, 2));
    add("a path", "котел 2/дав", pressure);
    add("all in a folder", "/котёл 2/", pressure);
    add("nothing such", "турбина", {});
    add("no words", "  ", {"*"});
}

void TestProjectTreeModel::findsByWords()
{
    QFETCH(QString, filter);
    QFETCH(QStringList, rows);
    Tree tree;
    tree.model.setFilter(filter);
    if (rows == QStringList{"*"})
        rows = rowsOf(*tree.root());
    QCOMPARE(rowsOf(tree.model), rows);

    tree.model.setFilter("#" + QString::number(tree.label->GetId()));
    QCOMPARE(tree.model.hits(), std::vector<unsigned long>{tree.label->GetId()});
    tree.label->SetName("Давление");
    tree.model.setFilter("давление");
    QCOMPARE(tree.model.hits().size(), 2u);
    tree.model.setFilter({});
    QCOMPARE(rowsOf(tree.model), rowsOf(*tree.root()));
}

void TestProjectTreeModel::foldsEveryLetterAsQtDoes()
{
    Tree tree;
    for (ushort code = 0x20; code < 0x530; ++code) {
        const QChar letter(code);
        if (!letter.isLetter())
            continue;
        tree.label->SetName(("я" + QString(letter) + "Z").toStdString());
        for (const QString &text : {QString(letter), QString(letter).toUpper(),
                                    QString(letter).toLower(), QString(letter).toCaseFolded()}) {
            tree.model.setFilter("Я" + text + "z");
            // Where upper case and back is another letter the text is another, too.
            if (text.toCaseFolded() == QString(letter).toCaseFolded())
                QVERIFY2(tree.model.hits().size() == 1, qPrintable(text));
        }
    }
}

void TestProjectTreeModel::showsWhatIsAddedWhileFiltered()
{
    Tree tree;
    tree.model.setFilter("подпитки");
    const QStringList before = rowsOf(tree.model);
    tree.add("memorySignal", tree.first, "новый");
    QCOMPARE(rowsOf(tree.model),
             QStringList({"project", ".Котёл 1", "..новый", ".Котёл 2", "..Давление"}));
    (void)tree.root()->RemoveNode(tree.first);
    QCOMPARE(rowsOf(tree.model), before);
}

void TestProjectTreeModel::showsTexts()
{
    Tree tree;
    const auto cell = [&](int column, int role) {
        return tree.model.indexOf(tree.signals_.back(), column).data(role);
    };
    QCOMPARE(cell(ProjectTreeModel::ColumnKind, Qt::DisplayRole).toString(),
             QString("Внутренний сигнал"));
    QCOMPARE(cell(ProjectTreeModel::ColumnDescription, Qt::DisplayRole).toString(),
             QString("Насос подпитки"));
    QSignalSpy changed(&tree.model, &QAbstractItemModel::dataChanged);
    tree.second->SetName("<К2>");
    tree.signals_.back()->SetDescription("другой");
    QCOMPARE(changed.count(), 2);
    // Names are no markup, and the path follows a rename of what is above.
    QVERIFY(cell(0, Qt::ToolTipRole).toString().contains("&lt;К2&gt;/Давление"));
    tree.model.setCut({tree.second});
    QVERIFY(tree.model.indexOf(tree.second).data(Qt::ForegroundRole).isValid());
    tree.model.setCut({});
    QVERIFY(!tree.model.indexOf(tree.second).data(Qt::ForegroundRole).isValid());
}

void TestProjectTreeModel::givesTheBytesThatScenesRead()
{
    Tree tree;
    QModelIndexList indexes;
    for (const int which : {2, 0, 3}) {
        for (int column = 0; column < ProjectTreeModel::ColumnCount; ++column)
            indexes << tree.model.indexOf(tree.signals_[std::size_t(which)], column);
    }
    const std::unique_ptr<QMimeData> data(tree.model.mimeData(indexes));
    QCOMPARE(texts(*data, "application/nodelinkpath"),
             QStringList({"Котёл 1/a", "Котёл 1/c", "Котёл 2/Давление"}));
    QStringList ids;
    for (const int which : {0, 2, 3})
        ids << QString::number(tree.signals_[std::size_t(which)]->GetId());
    QCOMPARE(texts(*data, "application/nodelink"), ids);
}

void TestProjectTreeModel::leavesOutPathsThatLeadElsewhere()
{
    Tree tree;
    tree.signals_[1]->SetName("a"); // as a file may have it
    const std::unique_ptr<QMimeData> twin(
        tree.model.mimeData({tree.model.indexOf(tree.signals_[1])}));
    QVERIFY(!twin->hasFormat("application/nodelinkpath"));
    QCOMPARE(texts(*twin, "application/nodelink"),
             QStringList{QString::number(tree.signals_[1]->GetId())});
    const std::unique_ptr<QMimeData> found(
        tree.model.mimeData({tree.model.indexOf(tree.signals_[0])}));
    QVERIFY(found->hasFormat("application/nodelinkpath"));
}

void TestProjectTreeModel::takesDrops_data()
{
    const Rows<int, int, bool, QString> add("action", "row", "isFiltered", "done");
    const QString last = "move a to Котёл 2 before ";
    add("on the folder", Qt::MoveAction, -1, false, last);
    add("before its first", Qt::MoveAction, 0, false, last + "Давление");
    add("after its last", Qt::MoveAction, 2, false, last);
    add("with Ctrl", Qt::CopyAction, 0, false, "copy a to Котёл 2 before Давление");
    // "z" stands below the last row in sight, and the node dropped comes between them.
    add("after the last in sight", Qt::MoveAction, 1, true, last + "z");
}

void TestProjectTreeModel::takesDrops()
{
    QFETCH(int, action);
    QFETCH(int, row);
    QFETCH(bool, isFiltered);
    Tree tree;
    Tree other;
    NotingEdits edits;
    tree.model.setEdits(&edits);
    tree.add("memorySignal", tree.second, "z");
    const std::unique_ptr<QMimeData> dragged(
        tree.model.mimeData({tree.model.indexOf(tree.signals_[0])}));
    if (isFiltered)
        tree.model.setFilter("давление");
    const auto how = Qt::DropAction(action);
    const auto can = [&](const ConfigNode *target) {
        return tree.model.canDropMimeData(dragged.get(), how, row, 0, tree.model.indexOf(target));
    };
    QVERIFY(can(tree.second));
    QVERIFY(!can(tree.layer)); // takes no signals
    QVERIFY(!tree.model.canDropMimeData(dragged.get(), how, row, 0, {}));
    QMimeData foreign;
    foreign.setData("application/nodelink", dragged->data("application/nodelink"));
    QVERIFY(!tree.model.canDropMimeData(&foreign, how, row, 0, tree.model.indexOf(tree.second)));
    const QString own = "application/x-operatorstation-tree";
    foreign.setData(own, dragged->data(own).left(16) + QByteArray(64, '\xfe')); // damaged
    QVERIFY(!tree.model.canDropMimeData(&foreign, how, row, 0, tree.model.indexOf(tree.second)));
    NotingEdits others;
    other.model.setEdits(&others);
    QVERIFY(
        !other.model.dropMimeData(dragged.get(), how, row, 0, other.model.indexOf(other.second)));
    edits.allowed = false;
    QVERIFY(!can(tree.second));
    edits.allowed = true;
    // False: or the view would take away the rows that have gone there.
    QVERIFY(!tree.model.dropMimeData(dragged.get(), how, row, 0, tree.model.indexOf(tree.second)));
    QFETCH(QString, done);
    QCOMPARE(edits.done, QStringList{done});
    QVERIFY(others.done.isEmpty());
}

void TestProjectTreeModel::handsOverWhatIsTyped()
{
    Tree tree;
    NotingEdits edits;
    const auto type = [&](int column, const QString &text) {
        return tree.model.setData(tree.model.indexOf(tree.first, column), text, Qt::EditRole);
    };
    const auto isEditable = [&](int column) {
        const QModelIndex index = tree.model.indexOf(tree.first, column);
        return bool(tree.model.flags(index) & Qt::ItemIsEditable);
    };
    QVERIFY(!type(ProjectTreeModel::ColumnName, "x"));
    QVERIFY(!isEditable(ProjectTreeModel::ColumnName));
    tree.model.setEdits(&edits);
    QVERIFY(isEditable(ProjectTreeModel::ColumnName));
    QVERIFY(!isEditable(ProjectTreeModel::ColumnKind));
    QVERIFY(type(ProjectTreeModel::ColumnName, "x"));
    QVERIFY(type(ProjectTreeModel::ColumnDescription, "y"));
    QCOMPARE(edits.done, QStringList({"rename Котёл 1 x", "describe Котёл 1 y"}));
    edits.allowed = false;
    QVERIFY(!isEditable(ProjectTreeModel::ColumnName));
}

void TestProjectTreeModel::outlivesItsProject()
{
    ProjectTreeModel model;
    QPersistentModelIndex kept;
    {
        ProjectFixture project;
        project.add("folder", project.root());
        model.setProject(&project.project);
        kept = model.index(0, 0, model.index(0, 0));
        QVERIFY(kept.isValid());
    }
    QVERIFY(!kept.data().isValid());
    QVERIFY(model.nodeAt(kept).isEmpty());
    model.setFilter("x");
    QCOMPARE(model.rowCount(), 0);
    model.setProject(nullptr);
    QCOMPARE(model.rowCount(), 0);
}

QTEST_MAIN(TestProjectTreeModel)
#include "tst_project_tree_model.moc"
