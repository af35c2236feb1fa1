#include "support/EditedProject.h"
#include "support/Rows.h"

#include "widgets/scene/editing/arrange/Arrangement.h"
#include "widgets/scene/editing/arrange/HiddenElements.h"
#include "widgets/scene/editing/arrange/SceneEditTable.h"

#include "nodes/model/properties/PropertyDescriptor.h"

using Kind = Widgets::Arrangement::enKind;
using Rects = QVector<QRect>;
using Ids = QVector<int>;
using Widgets::SceneEditTable;

Q_DECLARE_METATYPE(Kind)
Q_DECLARE_METATYPE(Rects)

namespace {

// E is locked; B and "B" above share a name.
constexpr const char *nodes = R"(
<composition id="30" name="C"><layer id="31" name="low" zOrder="1">
  <label id="32" name="A" x="10" y="20" width="50" height="20"/>
  <label id="33" name="B" x="200" y="80" zOrder="3"/>
  <label id="34" name="D" x="120" y="300" width="20" height="40" zOrder="7"/>
  <label id="35" name="E" x="5" y="5" movable="false" visible="false"/></layer>
 <layer id="36" name="top" zOrder="2"><label id="37" name="B" x="1"/></layer></composition>)";

} // namespace

class ArrangeTest : public QObject
{
    Q_OBJECT

private slots:
    void geometry_data()
    {
        const Rects three{{10, 20, 50, 20}, {200, 80, 101, 31}, {121, 300, 20, 40}};
        const Rows<Kind, int, Rects, Rects> row("kind", "key", "before", "after");
        const auto places = [&](std::initializer_list<QPoint> corners) {
            Rects moved;
            for (const QPoint &corner : corners)
                moved.append(QRect(corner, three[moved.size()].size()));
            return moved;
        };
        row("left", Kind::AlignLeft, 1, three, places({{200, 20}, {200, 80}, {200, 300}}));
        row("centre", Kind::AlignCentre, 1, three, places({{226, 20}, {200, 80}, {241, 300}}));
        row("right", Kind::AlignRight, 0, three, places({{10, 20}, {-41, 80}, {40, 300}}));
        row("top", Kind::AlignTop, 2, three, places({{10, 300}, {200, 300}, {121, 300}}));
        row("middle", Kind::AlignMiddle, 0, three, places({{10, 20}, {200, 15}, {121, 10}}));
        row("bottom", Kind::AlignBottom, 0, three, places({{10, 20}, {200, 9}, {121, 0}}));
        row("gaps across", Kind::GapsAcross, 0, three, places({{10, 20}, {200, 80}, {120, 300}}));
        row("gaps down", Kind::GapsDown, 0, three, places({{10, 20}, {200, 155}, {121, 300}}));
        row("centres across", Kind::CentresAcross, 0, three,
            places({{10, 20}, {200, 80}, {133, 300}}));
        row("centres down", Kind::CentresDown, 0, three,
            places({{10, 20}, {200, 160}, {121, 300}}));
        row("width", Kind::SameWidth, 1, three,
            {{10, 20, 101, 20}, {200, 80, 101, 31}, {121, 300, 101, 40}});
        row("height", Kind::SameHeight, 0, three,
            {{10, 20, 50, 20}, {200, 80, 101, 20}, {121, 300, 20, 20}});
        row("size", Kind::SameSize, 2, three,
            {{10, 20, 20, 40}, {200, 80, 20, 40}, {121, 300, 20, 40}});
        row("overlapping", Kind::GapsAcross, 0, {{0, 0, 60, 9}, {10, 0, 60, 9}, {60, 0, 60, 9}},
            {{0, 0, 60, 9}, {30, 0, 60, 9}, {60, 0, 60, 9}});
        row("what does not divide", Kind::GapsAcross, 0,
            {{0, 0, 10, 9}, {1, 0, 10, 9}, {2, 0, 10, 9}, {41, 0, 10, 9}},
            {{0, 0, 10, 9}, {14, 0, 10, 9}, {27, 0, 10, 9}, {41, 0, 10, 9}});
        row("one", Kind::AlignLeft, 0, {{3, 4, 5, 6}}, {{3, 4, 5, 6}});
        row("no key", Kind::AlignLeft, -1, three, three);
    }

    void geometry()
    {
        QFETCH(Kind, kind);
        QFETCH(int, key);
        QFETCH(Rects, before);
        QTEST(Widgets::Arrangement::arranged(kind, before, key), "after");
    }

    void edits_data()
    {
        const Rows<Ids, QString, QString> row("selected", "text", "attributes");
        row("alignLeft", {33, 32, 35}, "Выравнивание по левому краю", "32 x=200");
        row("gapsAcross", {32, 33, 34, 35}, "Равные промежутки по ширине", "34 x=120");
        row("sameWidth", {33, 35, 32}, "Одинаковая ширина", "32 width=100");
        row("toFront", {32, 33}, "Перемещение виджетов на передний план",
            "32 zOrder=8, 33 zOrder=9");
        row("toBack", {34, 33}, "Перемещение виджетов на задний план",
            "33 zOrder=-2, 34 zOrder=-1");
        row("orderUp", {32}, "Изменение порядка виджетов", "32 zOrder=1");
        row("lock", {32, 35}, "Блокировка виджетов", "32 movable=false");
        row("unlock", {32, 35}, "Снятие блокировки виджетов", "35 movable=true");
        row("hide", {32, 35}, "Скрытие виджетов", "32 visible=false");
        row("showHidden", {}, "Показ скрытых виджетов", "35 visible=true");
        row("layerUp", {32, 33}, "Перемещение виджетов в слой top", "33 parent=36, 33 name=B 2");
        row("layerDown", {37}, "Перемещение виджетов в слой low", "37 parent=31, 37 name=B 2");
    }

    void edits()
    {
        const QString id = QTest::currentDataTag();
        QFETCH(Ids, selected);
        EditedProject project(nodes);
        Widgets::EditedElements edited = project.elements({}, 0, 30);
        for (const int element : selected)
            edited.elements.push_back(project.node<Nodes::BasicWidget>(ulong(element)));
        const Widgets::SceneEditRow *row = SceneEditTable::find(id);
        QVERIFY(row && SceneEditTable::isPossible(*row, edited));
        if (id == "gapsAcross")
            project.set(34, "x", "130");
        QVERIFY(project.pushAndTakeBack(row->make(edited)));
        QTEST(project.stack.text(0), "text");
        QFETCH(QString, attributes);
        for (const QString &wanted : attributes.split(", ")) {
            const int space = wanted.indexOf(' ');
            const QStringList pair = wanted.mid(space + 1).split('=');
            QCOMPARE(textOf(*project.node(wanted.left(space).toULong()), pair[0]), pair[1]);
        }
        if (selected.contains(35) && id != "unlock")
            QCOMPARE(project.place(35).topLeft(), QPoint(5, 5)); // it is locked
    }

    void changesNothing_data()
    {
        const Rows<Ids> row("selected");
        row("alignLeft", {32});
        row("alignTop", {33, 35});
        row("toFront", {34});
        row("toBack", {32});
        row("unlock", {32, 33});
        row("hide", {35});
        row("layerUp", {37});
        row("layerDown", {32});
    }

    void changesNothing()
    {
        const QString id = QTest::currentDataTag();
        QFETCH(Ids, selected);
        const EditedProject project(nodes);
        project.set(35, "y", "80");
        project.set(35, "zOrder", "1"); // alone between the others
        Widgets::EditedElements edited = project.elements({}, 0, 30);
        for (const int element : selected)
            edited.elements.push_back(project.node<Nodes::BasicWidget>(ulong(element)));
        QCOMPARE(SceneEditTable::find(id)->make(edited), nullptr);
    }

    // The outermost layers have no next one; a window has no layers at all.
    void hiddenOnesAreListed()
    {
        const EditedProject project(nodes);
        const auto hidden = Widgets::HiddenElements::in(*project.node(30));
        QCOMPARE(hidden.size(), std::size_t(1));
        QCOMPARE(hidden[0]->GetId(), 35ul);
        QVERIFY(Widgets::HiddenElements::in(*project.node(36)).empty());
    }

    void tableIsUsable()
    {
        QSet<QString> ids;
        QSet<QString> shortcuts;
        for (const Widgets::SceneEditRow &row : SceneEditTable::rows()) {
            QVERIFY2(!ids.contains(row.id), row.id);
            ids.insert(row.id);
            const QString keys = QKeySequence(row.shortcut).toString();
            QVERIFY2(!QString(row.shortcut).isEmpty() == !keys.isEmpty(), row.id);
            QVERIFY2(keys.isEmpty() || !shortcuts.contains(keys), row.id);
            shortcuts.insert(keys);
            QVERIFY2(!SceneEditTable::isPossible(row, {}) || !row.make({}), row.id);
        }
        QCOMPARE(SceneEditTable::find("noSuchEdit"), nullptr);
    }

private:
    static QString textOf(const Nodes::ConfigNode &node, const QString &key)
    {
        if (key == "name")
            return QString::fromStdString(node.GetName());
        if (key == "parent")
            return QString::number(node.GetParent()->GetId());
        for (const Nodes::BasicProperty *property : node.GetProperties()) {
            if (property->GetDescriptor().key == key.toStdString())
                return QString::fromStdString(property->ToString());
        }
        return {};
    }
};

QTEST_MAIN(ArrangeTest)
#include "tst_arrange.moc"
