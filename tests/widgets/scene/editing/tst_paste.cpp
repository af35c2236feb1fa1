#include "support/EditedProject.h"
#include "support/Rows.h"

#include "widgets/scene/editing/ElementClipboard.h"
#include "widgets/scene/editing/paste/CopiedTemplates.h"
#include "widgets/scene/editing/paste/ElementCopies.h"
#include "widgets/scene/editing/paste/LinkPaths.h"
#include "widgets/scene/editing/paste/PasteReport.h"
#include "widgets/scene/editing/paste/PropertyPaste.h"

#include "nodes/templates/widgetInstance.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>

using Widgets::CopiedTemplates;
using Widgets::ElementClipboard;
using Widgets::PasteReport;

namespace {

// The press action stands below the label: a link within what is copied.
constexpr const char *source = R"(
<folder id="10" name="S"><memorySignal id="11" name="T"/><memorySignal id="12" name="P"/></folder>
<window id="30" name="W"><label id="31" name="A" x="10" y="20" signal="11" color="#FF0000FF"
    fontSize="20" text="a" onPress="40 41"/>
  <label id="32" name="B" x="50" y="60" signal="12"/></window>
<actionWriteValue id="40" name="W1" signal="11"/><actionWriteValue id="41" name="W2"/>)";

// T is there under another number, P is missing, W1 is of another kind.
constexpr const char *target = R"(
<project format="1" id="1" name="Q"><folder id="2" name="S"><memorySignal id="500" name="T"/>
  <memorySignal id="12" name="Other"/></folder><folder id="40" name="W1"/>
  <actionWriteValue id="3" name="W2"/></project>)";

std::unique_ptr<Nodes::NodesCollection> readProject(const char *text)
{
    std::unique_ptr<Nodes::NodesCollection> project;
    Nodes::ProjectReader reader;
    const Nodes::Result read = reader.ReadBuffer(text, "target", project);
    if (!read)
        qFatal("%s", read.ToString().c_str());
    return project;
}

const Nodes::BasicWidget &elementOf(const Nodes::NodesArray &nodes, std::size_t index)
{
    return dynamic_cast<const Nodes::BasicWidget &>(*nodes[index].GetNode());
}

QStringList rowsOf(const PasteReport &report)
{
    QStringList rows;
    for (const PasteReport::Row &row : report.rows)
        rows << QStringList{row.elementName, row.property, row.wanted,
                            row.state == PasteReport::Row::Missing ? "missing" : "doubtful"}
                    .join('|');
    return rows;
}

/// Its name when it is in no tree yet, else its id.
QString templateOf(const Nodes::ConfigNode &instance)
{
    const auto &shown = dynamic_cast<const Nodes::widgetInstance &>(instance);
    const Nodes::ConfigNode *found = shown.GetTemplate();
    if (!found)
        return "none";
    return found->GetParent() ? QString::number(found->GetId())
                              : QString::fromStdString(found->GetName());
}

void copy(const EditedProject &project, std::initializer_list<unsigned long> ids)
{
    Nodes::NodeLinks links;
    for (const unsigned long id : ids)
        links.push_back(Nodes::NodeLink(project.node(id)));
    ElementClipboard::put(*project.core.GetNodesCollection(), links);
}

} // namespace

class PasteTest : public QObject
{
    Q_OBJECT

private slots:
    void sameProjectKeepsEveryLink()
    {
        const EditedProject project(source);
        copy(project, {31, 32});
        project.core.GetNodesCollection()->GetRoot()->GetSubObject(10)->SetName("Renamed");
        PasteReport report;
        const Nodes::NodesArray pasted =
            ElementClipboard::take(*project.core.GetNodesCollection(), report);
        QCOMPARE(pasted.size(), std::size_t(2));
        QVERIFY(report.isClean());
        QCOMPARE(elementOf(pasted, 0).GetSignalLink().GetNodeId(), 11ul);
        QCOMPARE(elementOf(pasted, 0).GetActionLists().onPress.size(), std::size_t(2));
    }

    // A deletion can be undone: the link waits for it.
    void sameProjectTellsOfWhatIsDeleted()
    {
        const EditedProject project(source);
        copy(project, {32});
        QVERIFY(project.node(10)->DeleteNode(12));
        PasteReport report;
        const Nodes::NodesArray pasted =
            ElementClipboard::take(*project.core.GetNodesCollection(), report);
        QCOMPARE(rowsOf(report), QStringList{"B|Сигнал|S/P|missing"});
        QCOMPARE(elementOf(pasted, 0).GetSignalLink().GetNodeId(), 12ul);
    }

    void otherProjectBindsByPath()
    {
        const EditedProject project(source);
        copy(project, {31, 32});
        const auto other = readProject(target);
        PasteReport report;
        const Nodes::NodesArray pasted = ElementClipboard::take(*other, report);
        QCOMPARE(pasted.size(), std::size_t(2));
        QCOMPARE(elementOf(pasted, 0).GetSignalLink().GetNodeId(), 500ul);
        QCOMPARE(rowsOf(report), (QStringList{"A|При нажатии|W1|missing", "B|Сигнал|S/P|missing"}));
        QCOMPARE(report.rows[1].element, pasted[1]);
        // Number 12 is somebody else here.
        const Nodes::NodeLink lost = elementOf(pasted, 1).GetSignalLink();
        QVERIFY(!lost.isEmpty() && !lost.isValid() && lost.GetNodeId() != 12);
        const Nodes::NodeLinks press = elementOf(pasted, 0).GetActionLists().onPress;
        QCOMPARE(press.size(), std::size_t(2));
        QVERIFY(!press[0].isValid());
        QCOMPARE(press[1].GetNodeId(), 3ul);
        QVERIFY(report.summary().contains("ссылок без цели: 2"));
    }

    void otherProjectGetsTheTemplatesItLacks_data()
    {
        const Rows<QByteArray, QStringList, QString> row("known", "brought", "shown");
        row("neither is there", "", {"Outer", "Inner"}, "Outer Inner");
        row("the inner one is there", R"(<windowTemplate id="600" name="Inner"/>)", {"Outer"},
            "Outer 600");
        row("both are there",
            R"(<windowTemplate id="600" name="Inner"/><windowTemplate id="601" name="Outer"/>)", {},
            "601");
        row("a window of that name", R"(<window id="600" name="Inner"/>)", {"Outer", "Inner"},
            "Outer Inner");
    }
    void otherProjectGetsTheTemplatesItLacks()
    {
        QFETCH(QByteArray, known);
        const EditedProject project(R"(
<memorySignal id="11" name="T"/>
<windowTemplate id="20" name="Outer"><label id="21" name="L" signal="11"/>
  <symbol id="23" name="S" source=":/symbols/pump.svg"/>
  <instance id="22" name="I" template="24"/></windowTemplate>
<windowTemplate id="24" name="Inner"><label id="25" name="L"/></windowTemplate>
<window id="30" name="W"><instance id="31" name="A" template="20"/></window>)");
        copy(project, {31});
        PasteReport same;
        QVERIFY(!CopiedTemplates::take(*project.core.GetNodesCollection(), same));
        const QByteArray text = QByteArray(R"(<project format="1" id="1" name="Q">)") + known +
                                R"(<memorySignal id="500" name="T"/></project>)";
        const auto other = readProject(text.constData());
        PasteReport report;
        const auto pasted = CopiedTemplates::take(*other, report);
        QTEST(report.templates, "brought");
        QFETCH(QString, shown);
        if (!pasted) { // the text finds them by path
            const Nodes::NodesArray clones = ElementClipboard::take(*other, report);
            QCOMPARE(templateOf(*clones[0].GetNode()), shown);
            return;
        }
        QCOMPARE(pasted->elements.size(), std::size_t(1));
        QString way = templateOf(*pasted->elements[0].GetNode());
        const Nodes::ConfigNode &outer = *pasted->templates[0].GetNode();
        way += ' ' + templateOf(*outer.GetSubObject("I"));
        QCOMPARE(way, shown);
        QVERIFY(report.rows.isEmpty());
        const auto &label = dynamic_cast<const Nodes::BasicWidget &>(*outer.GetSubObject("L"));
        QCOMPARE(label.GetSignalLink().GetNodeId(), 500ul); // as all links, by path
    }

    void damagedTemplatesAreLeftOut()
    {
        const auto other = readProject(target);
        for (const QByteArray &bytes : {QByteArray(), QByteArray("\0\0\xff\xff", 4)}) {
            auto *data = new QMimeData;
            data->setData("application/x-operatorstation-templates", bytes);
            QGuiApplication::clipboard()->setMimeData(data);
            PasteReport report;
            QVERIFY(!CopiedTemplates::take(*other, report));
        }
    }

    // What is pasted never gets the number that a link of it names.
    void freshIdsMeetNoLink()
    {
        const EditedProject project(source);
        copy(project, {31, 32});
        const auto other = readProject(R"(<project format="1" id="1" name="Q"/>)");
        PasteReport report;
        const Nodes::NodesArray pasted = ElementClipboard::take(*other, report);
        QCOMPARE(report.rows.size(), 4);
        for (const Nodes::NodeLink &link : pasted)
            QVERIFY(link.GetNodeId() > 41);
    }

    void textAloneLeavesLinksDoubtful()
    {
        const EditedProject project(source);
        copy(project, {31});
        QGuiApplication::clipboard()->setText(QGuiApplication::clipboard()->text() + "\n");
        const auto other = readProject(target);
        other->ReserveIds(600);
        PasteReport report;
        const Nodes::NodesArray pasted = ElementClipboard::take(*other, report);
        QCOMPARE(pasted.size(), std::size_t(1));
        QCOMPARE(rowsOf(report),
                 (QStringList{"A|Сигнал|узел № 11|missing", "A|При нажатии|узел № 40|missing",
                              "A|При нажатии|узел № 41|missing"}));
        const auto same = ElementClipboard::take(*project.core.GetNodesCollection(), report);
        QCOMPARE(elementOf(same, 0).GetSignalLink().GetNodeId(), 11ul);
        QCOMPARE(rowsOf(report)[3], QString("A|Сигнал|S/T|doubtful"));
    }

    void foreignTextsSaySo_data()
    {
        const Rows<QString, bool> row("text", "isCut");
        row("empty", "", false);
        row("prose", "Насос 1", false);
        row("foreign bytes", "deadbeef", false);
        row("odd digits", "abc", false);
        row("cut short", "", true);
    }

    void foreignTextsSaySo()
    {
        QFETCH(QString, text);
        QFETCH(bool, isCut);
        const EditedProject project(source);
        const std::size_t before = project.core.GetNodesCollection()->GetNodeCount();
        copy(project, {31, 32});
        const QString whole = QGuiApplication::clipboard()->text();
        QGuiApplication::clipboard()->setText(isCut ? whole.left(whole.size() / 4 * 2) : text);
        PasteReport report;
        QVERIFY(!ElementClipboard::hasElements(*project.core.GetNodesCollection()));
        QVERIFY(ElementClipboard::take(*project.core.GetNodesCollection(), report).empty());
        QVERIFY(report.failure.startsWith("Не вставлено: "));
        QCOMPARE(report.summary(), report.failure);
        QCOMPARE(project.core.GetNodesCollection()->GetNodeCount(), before);
    }

    void damagedPathsAreNoPaths_data()
    {
        const Rows<QByteArray> row("bytes");
        row("nothing", "");
        row("no object", "[1, 2]");
        row("no links", R"({"source": "x"})");
        row("no number", R"({"source": "x", "links": {"a": {"path": "S/T"}}})");
    }

    void damagedPathsAreNoPaths()
    {
        QFETCH(QByteArray, bytes);
        QVERIFY(!Widgets::LinkPaths::fromBytes(bytes));
    }

    void missingFilesAreListed()
    {
        const EditedProject project(R"(<window id="30" name="W">
            <image id="31" name="I" image="pictures/pump.svg"/></window>)");
        copy(project, {31});
        const auto other = readProject(target);
        PasteReport report;
        (void)ElementClipboard::take(*other, report);
        QCOMPARE(report.rows.size(), 1);
        QCOMPARE(report.rows[0].wanted, QString("pictures/pump.svg"));
    }

    void duplicates()
    {
        EditedProject project(source);
        const Nodes::ConfigNode &window = *project.node(30);
        QVERIFY(
            project.pushAndTakeBack(Widgets::ElementCopies::duplicate(project.elements({32, 31}))));
        QCOMPARE(project.stack.text(0), QString("Копирование группы виджетов"));
        QCOMPARE(window.GetNodeCount(), 4);
        const auto *copyOfB = dynamic_cast<Nodes::BasicWidget *>(window.GetNodeAt(2));
        QCOMPARE(copyOfB->GetPosition().x, 66);
        QCOMPARE(copyOfB->GetPosition().y, 76);
        QCOMPARE(copyOfB->GetSignalLink().GetNodeId(), 12ul);
        QCOMPARE(Widgets::ElementCopies::duplicate({}), nullptr);
    }

    void pastesProperties_data()
    {
        const Rows<bool, unsigned long> row("withLinks", "signal");
        row("looks", false, 12ul);
        row("with links", true, 11ul);
    }

    void pastesProperties()
    {
        QFETCH(bool, withLinks);
        EditedProject project(source);
        copy(project, {31});
        const auto what =
            withLinks ? Widgets::PropertyPaste::LooksAndLinks : Widgets::PropertyPaste::Looks;
        const auto paste = [&] {
            return Widgets::PropertyPaste::fromClipboard(project.elements({32}), what);
        };
        const std::size_t before = project.core.GetNodesCollection()->GetNodeCount();
        QVERIFY(project.pushAndTakeBack(paste()));
        QCOMPARE(project.stack.text(0), QString("Вставка свойств"));
        const auto *b = project.node<Nodes::BasicWidget>(32);
        const std::string xml = b->SerializeXML();
        QVERIFY(xml.find("fontSize=\"20\"") != std::string::npos);
        QVERIFY(xml.find("text=") == std::string::npos);
        QCOMPARE(project.place(32).topLeft(), QPoint(50, 60));
        QTEST(b->GetSignalLink().GetNodeId(), "signal");
        QCOMPARE(paste(), nullptr); // it has all that now
        QGuiApplication::clipboard()->setText("x");
        QCOMPARE(paste(), nullptr);
        QCOMPARE(project.core.GetNodesCollection()->GetNodeCount(), before);
    }
};

QTEST_MAIN(PasteTest)
#include "tst_paste.moc"
