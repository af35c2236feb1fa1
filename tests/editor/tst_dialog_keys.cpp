// Every dialog and panel of the configurator as the keyboard goes through it.
#include "FocusChain.h"
#include "OpenProject.h"

#include "editor/compare/CompareDialog.h"
#include "editor/help/AboutDialog.h"
#include "editor/help/DocumentsWindow.h"
#include "editor/help/KeysDialog.h"
#include "editor/jump/JumpDialog.h"
#include "editor/jump/JumpModel.h"
#include "editor/picker/NodePicker.h"
#include "editor/properties/PropertyModel.h"
#include "editor/properties/children/ChildrenWindow.h"
#include "editor/properties/font/FontWindow.h"
#include "editor/properties/links/LinksWindow.h"
#include "editor/properties/values/SecretWindow.h"
#include "editor/properties/values/TextWindow.h"
#include "editor/sceneview/PasteReportDialog.h"
#include "editor/shell/NewProjectDialog.h"
#include "editor/signals/AlarmsDialog.h"
#include "editor/signals/PatternDialog.h"
#include "editor/signals/RefusalsDialog.h"
#include "editor/signals/RenameDialog.h"
#include "editor/signals/SheetModel.h"
#include "editor/tables/PanelTable.h"
#include "editor/templates/TemplateDialog.h"
#include "editor/usages/RemovalDialog.h"
#include "editor/usages/ReplaceDialog.h"
#include "editor/users/PasswordDialog.h"
#include "editor/wizard/ChoiceDialog.h"
#include "editor/wizard/NewWindowDialog.h"

#include "widgets/scene/editing/paste/PasteReport.h"

#include <QVBoxLayout>
#include <QtTest>

#include <functional>

using namespace Editor;

namespace {

/// A project, and what dialogs about its properties ask for.
struct Desk : OpenProject
{
    Desk() { model.setNodes(links({"Композиция/Слой/a"})); }
    static bool any(const Nodes::ConfigNode &) { return true; }

    PropertyEdits::Push push = [](QUndoCommand *) { return false; };
    PropertyHost host{push, {}};
    PropertyModel model{push};
    SheetModel sheet{workspace, Nodes::NodeLink(root()), Nodes::NodeType::TypeSignal};
};

using Make = std::function<QWidget *(Desk &)>;

template <class Dialog, class... Arguments> QWidget *make(Desk &desk, Arguments &&...arguments)
{
    return new Dialog(std::forward<Arguments>(arguments)..., &desk.window);
}

QWidget *makePasteReport(Desk &desk)
{
    Widgets::PasteReport report;
    report.rows.append({Nodes::NodeLink(desk.at("К1")), "a", "Сигнал", "К3/T", {}});
    return new PasteReportDialog(desk.workspace, report);
}

/// In a window around it, as in a dock.
QWidget *makePanel(const PanelRow &row, Desk &desk)
{
    auto *around = new QWidget(&desk.window);
    auto *layout = new QVBoxLayout(around);
    layout->addWidget(row.make(desk.workspace, around));
    return around;
}

std::vector<std::pair<const char *, Make>> dialogs()
{
    return {
        {"new project", [](Desk &d) { return make<NewProjectDialog>(d); }},
        {"new window", [](Desk &d) { return make<NewWindowDialog>(d, "Окно"); }},
        {"choice",
         [](Desk &d) {
             return make<ChoiceDialog>(d, "Сигналы", d.links({"К1/T", "К1/P"}), true);
         }},
        {"password", [](Desk &d) { return make<PasswordDialog>(d, "ivanov"); }},
        {"secret", [](Desk &d) { return make<SecretWindow>(d); }},
        {"template", [](Desk &d) { return make<TemplateDialog>(d); }},
        {"pattern", [](Desk &d) { return make<PatternDialog>(d, d.sheet); }},
        {"rename",
         [](Desk &d) {
             return make<RenameDialog>(d, d.links({"К1/T", "К1/P"}));
         }},
        {"alarms", [](Desk &d) { return make<AlarmsDialog>(d, 3); }},
        {"refusals",
         [](Desk &d) {
             return make<RefusalsDialog>(
                 d, std::vector<Nodes::SheetRefusal>{{3, "Имя", "x", "не число"}});
         }},
        {"comparison", [](Desk &d) { return make<CompareDialog>(d); }},
        {"removal",
         [](Desk &d) {
             const Nodes::NodeLinks nodes = d.links({"К1"});
             return new RemovalDialog(d.workspace, nodes, FindUsagesFromOutside(nodes));
         }},
        {"replace a node",
         [](Desk &d) {
             return new ReplaceDialog(d.workspace, ReplaceDialog::ModeNode,
                                      Nodes::NodeLink(d.at("К1/T")), d.links({"Композиция"}));
         }},
        {"replace by pattern",
         [](Desk &d) {
             return new ReplaceDialog(d.workspace, ReplaceDialog::ModePattern, {},
                                      d.links({"Композиция"}));
         }},
        {"node picker",
         [](Desk &d) { return make<NodePicker>(d, &d.project, "Узел", &Desk::any); }},
        {"jump", [](Desk &d) { return make<JumpDialog>(d, new JumpModel(&d.project, {}, {})); }},
        {"keys", [](Desk &d) { return make<KeysDialog>(d); }},
        {"documents", [](Desk &d) { return make<DocumentsWindow>(d, STATION_SOURCE_DIR "/docs"); }},
        {"about", [](Desk &d) { return make<AboutDialog>(d); }},
        {"text", [](Desk &d) { return make<TextWindow>(d); }},
        {"children",
         [](Desk &d) {
             return make<ChildrenWindow>(d, Nodes::NodeLink(d.root()), Nodes::NodeType::TypeSignal,
                                         d.host, QString());
         }},
        {"font", [](Desk &d) { return make<FontWindow>(d, d.model, "font"); }},
        {"list of links", [](Desk &d) { return make<LinksWindow>(d, d.model, "onPress", d.host); }},
        {"paste report", &makePasteReport},
    };
}

} // namespace

class DialogKeysTest : public QObject
{
    Q_OBJECT

private slots:
    void areInReadingOrderAndNamed_data()
    {
        QTest::addColumn<Make>("make");
        for (const auto &dialog : dialogs())
            QTest::newRow(dialog.first) << dialog.second;
        for (const PanelRow &row : PanelTable())
            QTest::newRow(row.key) << Make([&row](Desk &d) { return makePanel(row, d); });
    }

    void areInReadingOrderAndNamed()
    {
        QFETCH(Make, make);
        Desk desk;
        const std::unique_ptr<QWidget> shown(make(desk));
        shown->setWindowFlag(Qt::Window);
        shown->resize(shown->sizeHint().expandedTo({700, 500}));
        shown->show();
        QVERIFY(QTest::qWaitForWindowExposed(shown.get()));
        const FocusChain chain(*shown);
        QVERIFY(chain.count() > 0);
        QCOMPARE(chain.outOfOrder().join('\n'), QString());
        QCOMPARE(chain.nameless().join('\n'), QString());
    }
};

Q_DECLARE_METATYPE(Make)

QTEST_MAIN(DialogKeysTest)
#include "tst_dialog_keys.moc"
