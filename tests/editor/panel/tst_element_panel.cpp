#include "editor/panel/ElementGroups.h"
#include "editor/panel/ElementModel.h"
#include "editor/panel/ElementPanel.h"
#include "editor/panel/PaletteView.h"

#include "editor/OpenProject.h"
#include "editor/resources/Resources.h"
#include "editor/tree/KindIcons.h"
#include "editor/workspace/DocumentView.h"

#include "nodes/visual/BasicWidget.h"
#include "widgets/scene/ProxyScene.h"
#include "widgets/scene/ProxyView.h"

#include <QAbstractItemModelTester>
#include <QDataStream>
#include <QMimeData>
#include <QPainter>
#include <QTreeView>
#include <QtTest>

#include <memory>
#include <set>

using namespace Editor;
using namespace Nodes;

namespace {

/// A tab that shows the composition of the project.
class SceneDocument : public DocumentView
{
public:
    SceneDocument(Workspace &workspace, const NodeLink &node)
        : DocumentView(workspace, node, nullptr), m_view(node.GetNode(), this)
    {
        m_scene = m_view.setScene(node.GetNode());
    }
    Widgets::ProxyScene *scene() const override { return m_scene; }

private:
    Widgets::ProxyView m_view;
    Widgets::ProxyScene *m_scene;
};

QStringList shownNames(const QAbstractItemModel &model)
{
    QStringList names;
    for (int group = 0; group < model.rowCount(); ++group) {
        const QModelIndex parent = model.index(group, 0);
        for (int row = 0; row < model.rowCount(parent); ++row)
            names << model.index(row, 0, parent).data().toString();
    }
    return names;
}

} // namespace

class TestElementPanel : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { InitResources(); }
    void offersEachKindOnceWithAPicture();
    void givesTheBytesThatScenesRead();
    void isDraggedByItsIcons();
    void finds();
    void servesAnOpenProjectLegibly();
    void addsToTheMiddleOfTheTopLayer();
};

void TestElementPanel::offersEachKindOnceWithAPicture()
{
    std::set<unsigned> offered;
    for (const ElementGroup &group : ElementGroups()) {
        QVERIFY(!group.types.isEmpty());
        for (const NodeType &type : group.types)
            QVERIFY2(offered.insert(type.GetCode()).second, type.ToString().c_str());
    }
    const QImage unknown = KindIcons::of(NodeType()).pixmap(24).toImage();
    for (const KindInfo &kind : KindTable::Instance().GetKinds()) {
        const bool isElement = kind.type.GetFamily() == NodeType::TypeWidget;
        QCOMPARE(offered.count(kind.type.GetCode()) != 0, isElement);
        const QPixmap picture = KindIcons::of(kind.type).pixmap(24);
        QVERIFY2(!picture.isNull(), kind.key.c_str());
        QVERIFY2(picture.toImage() != unknown, kind.key.c_str());
        // In a selected row it stands on a light ground, whatever the colour of the selection.
        QImage selected(24, 24, QImage::Format_RGB32);
        selected.fill(Qt::blue);
        QPainter painter(&selected);
        KindIcons::of(kind.type).paint(&painter, selected.rect(), Qt::AlignCenter, QIcon::Selected);
        painter.end();
        int light = 0;
        for (int i = 0; i < 24 * 24; ++i)
            light += selected.pixelColor(i % 24, i / 24).lightness() > 200 ? 1 : 0;
        QVERIFY2(light > 24 * 24 / 4, kind.key.c_str());
        if (isElement)
            QVERIFY2(!Widgets::ProxyView::getPixmapWidget(kind.type).isNull(), kind.key.c_str());
    }
}

void TestElementPanel::givesTheBytesThatScenesRead()
{
    const ElementModel model;
    const QModelIndex group = model.index(0, 0);
    const std::unique_ptr<QMimeData> data(
        model.mimeData({group, model.index(0, 0, group), model.index(1, 0, group)}));
    QDataStream stream(data->data("application/nodetype"));
    QStringList texts;
    while (!stream.atEnd()) {
        QString text;
        stream >> text;
        texts << text;
    }
    QCOMPARE(texts, QStringList({"label", "multiLabel"}));
    QVERIFY(!model.mimeData({group}));
}

void TestElementPanel::isDraggedByItsIcons()
{
    ElementModel model;
    QTreeView view;
    view.setModel(&model);
    view.setIconSize({20, 20});
    view.setSelectionMode(QAbstractItemView::ExtendedSelection);
    const QModelIndex group = model.index(0, 0);
    const auto picked = [&](std::initializer_list<QModelIndex> chosen) {
        view.clearSelection();
        for (const QModelIndex &index : chosen)
            view.selectionModel()->select(index, QItemSelectionModel::Select);
        return PaletteDrag::picture(view).toImage();
    };
    const QImage one = picked({model.index(0, 0, group)});
    const QImage other = picked({group, model.index(1, 0, group)});
    const QImage both = picked({model.index(0, 0, group), model.index(1, 0, group)});
    QCOMPARE(one.size(), QSize(20, 20));
    QVERIFY(one != other);
    QCOMPARE(both.copy(0, 0, 20, 20), one);
    QCOMPARE(both.copy(20, 0, 20, 20), other); // a group is not dragged
}

void TestElementPanel::finds()
{
    OpenProject project;
    ElementPanel panel(project.workspace, nullptr);
    QAbstractItemModel &model = *panel.view().model();
    const QAbstractItemModelTester tester(&model,
                                          QAbstractItemModelTester::FailureReportingMode::QtTest);
    const int all = shownNames(model).size();
    panel.setFilter("НАДПИСЬ");
    const QStringList found = shownNames(model);
    QVERIFY(found.contains("Надпись"));
    QVERIFY(found.size() < all);
    QVERIFY(panel.view().isExpanded(model.index(0, 0)));
    panel.setFilter("bargraph"); // the key of the kind in project files
    QCOMPARE(shownNames(model), QStringList("Столбиковый индикатор"));
    panel.setFilter({});
    QCOMPARE(shownNames(model).size(), all);
}

void TestElementPanel::servesAnOpenProjectLegibly()
{
    OpenProject project;
    ElementPanel panel(project.workspace, nullptr);
    QVERIFY(panel.isEnabled());
    const QTreeView &view = panel.view();
    const QModelIndex group = view.model()->index(0, 0);
    const int height = view.visualRect(view.model()->index(0, 0, group)).height();
    QVERIFY2(height > view.iconSize().height(), "pictures of neighbours touch");
    project.session.close();
    QVERIFY(!panel.isEnabled());
}

void TestElementPanel::addsToTheMiddleOfTheTopLayer()
{
    OpenProject project;
    ElementPanel panel(project.workspace, nullptr);
    const NodeType bargraph = OpenProject::kind("bargraph").type;
    QVERIFY(!panel.addToScene(bargraph)); // no scene is open
    QCOMPARE(project.told.size(), 1);

    ConfigNode *top = project.add("layer", project.at("Композиция"), "верхний", {{"zOrder", "5"}});
    project.add("layer", project.at("Композиция"), "скрытый",
                {{"zOrder", "9"}, {"visible", "false"}});
    SceneDocument document(project.workspace, NodeLink(project.at("Композиция")));
    project.workspace.setDocument(&document);
    const std::string before = project.text();
    QVERIFY(panel.addToScene(bargraph));
    QCOMPARE(top->GetNodeCount(), 1);
    const auto *element = dynamic_cast<BasicWidget *>(top->GetNodeAt(0));
    QVERIFY(element);
    const NRect box = element->GetGeometry();
    const QPointF middle = QRectF(box.x, box.y, box.width, box.height).center();
    QVERIFY((middle - document.scene()->sceneRect().center()).manhattanLength() <= 2);
    QCOMPARE(project.workspace.selection().nodes(), NodeLinks{NodeLink(element)});
    project.session.undoStack().undo();
    QCOMPARE(project.text(), before);

    project.session.setReadOnly("занят");
    QVERIFY(!panel.addToScene(bargraph));
    QCOMPARE(project.text(), before);
    project.workspace.setDocument(nullptr);
}

QTEST_MAIN(TestElementPanel)
#include "tst_element_panel.moc"
