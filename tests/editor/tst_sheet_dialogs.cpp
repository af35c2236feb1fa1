#include "editor/project/ProjectSession.h"
#include "editor/signals/DataCommands.h"
#include "editor/signals/PatternDialog.h"
#include "editor/signals/RefusalsDialog.h"
#include "editor/signals/RenameDialog.h"
#include "editor/signals/SheetModel.h"
#include "editor/signals/SheetPage.h"
#include "editor/signals/SheetView.h"
#include "editor/workspace/Workspace.h"

#include "nodes/auth/systemAuthentication.h"
#include "nodes/drivers/modbus/modbusDriver.h"
#include "nodes/drivers/modbus/modbusGroup.h"
#include "nodes/drivers/modbus/modbusSignal.h"
#include "nodes/model/KindInfo.h"
#include "nodes/model/NodesCollection.h"

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QTableView>
#include <QTableWidget>
#include <QTemporaryDir>
#include <QtTest>

using namespace Editor;
using Nodes::ConfigNode;
using Nodes::NodeType;

namespace {

/// A new project with a device whose group has two signals.
struct Plant
{
    Plant()
    {
        if (!session.create(directory.filePath("p"), "П"))
            qFatal("no project");
        station = session.root()->GetNodeAt(0);
        device = add(Nodes::modbusDriver::Code, station, "ПЛК");
        group = add(Nodes::modbusGroup::Code, device, "Г1");
        first = add(Nodes::modbusSignal::Code, group, "К1.Т01");
        second = add(Nodes::modbusSignal::Code, group, "К1.Т02");
    }
    ConfigNode *add(NodeType::enNodeSubtype code, ConfigNode *parent, const char *name)
    {
        ConfigNode *node = session.project()->CreateNode(NodeType(code), parent);
        if (!node)
            qFatal("not created: %s", name);
        node->SetName(name);
        return node;
    }

    QTemporaryDir directory;
    QWidget window;
    ProjectSession session;
    Workspace workspace{session, window};
    ConfigNode *station;
    ConfigNode *device;
    ConfigNode *group;
    ConfigNode *first;
    ConfigNode *second;
};

const QPushButton *okOf(const QDialog &dialog)
{
    return dialog.findChild<QDialogButtonBox *>()->button(QDialogButtonBox::Ok);
}

} // namespace

class SheetDialogsTest : public QObject
{
    Q_OBJECT

private slots:
    void patternsAreCheckedWhileTyped_data()
    {
        QTest::addColumn<QString>("pattern");
        QTest::addColumn<int>("count"); // 0: cannot be accepted
        QTest::newRow("a few") << "К{1..2}/Т{01..20}" << 40;
        QTest::newRow("one") << "Т" << 1;
        QTest::newRow("none") << "  " << 0;
        QTest::newRow("broken") << "Т{1.." << 0;
        QTest::newRow("too many") << "{1..999}{1..999}" << 0;
    }
    void patternsAreCheckedWhileTyped()
    {
        QFETCH(QString, pattern);
        QFETCH(int, count);
        Plant p;
        const SheetModel model(p.workspace, p.group, NodeType::TypeSignal);
        PatternDialog dialog(model, nullptr);
        dialog.findChild<QLineEdit *>()->setText(pattern);
        QCOMPARE(okOf(dialog)->isEnabled(), count > 0);
        QVERIFY(count == 0 || int(dialog.names().size()) == count);
        QCOMPARE(dialog.kind().key, std::string("modbusSignal")); // as the others of the table
        QCOMPARE(dialog.column(), model.columns().Find("offset"));
    }

    void newSignalsGoWhereTheyAreRead()
    {
        Plant p;
        const SheetModel model(p.workspace, p.device, NodeType::TypeSignal);
        QCOMPARE(PatternDialog(model, nullptr).names().front(), std::string("Г1/Т01"));
    }

    void renamesAreShownBefore()
    {
        Plant p;
        RenameDialog dialog({p.first, p.second}, nullptr);
        const auto lines = dialog.findChildren<QLineEdit *>();
        lines[0]->setText("К1");
        lines[1]->setText("К2");
        QCOMPARE(dialog.names(), (std::vector<std::string>{"К2.Т01", "К2.Т02"}));
        lines[2]->setText("{имя}-{08}");
        const auto *table = dialog.findChild<QTableWidget *>();
        QCOMPARE(table->item(1, 0)->text(), QString("К1.Т02"));
        QCOMPARE(table->item(1, 1)->text(), QString("К2.Т02-09"));
        QCOMPARE(p.first->GetName(), std::string("К1.Т01")); // nothing is changed yet
    }

    void refusalsCanBeCopied()
    {
        RefusalsDialog::tell({}, nullptr);
        QVERIFY(QApplication::topLevelWidgets().isEmpty() || !QApplication::activeModalWidget());
        RefusalsDialog dialog({{3, "Множитель", "2,5;x", "не число"}, {0, {}, {}, "нет имени"}},
                              nullptr);
        const auto *table = dialog.findChild<QTableWidget *>();
        QCOMPARE(table->rowCount(), 2);
        QCOMPARE(table->item(0, 0)->text(), QString("3"));
        QCOMPARE(table->item(1, 0)->text(), QString("—"));
        for (QPushButton *button : dialog.findChildren<QPushButton *>()) {
            if (button->text().startsWith("Копировать"))
                button->click();
        }
        const QStringList lines = QApplication::clipboard()->text().split('\n');
        QCOMPARE(lines.value(1), QString("3\tМножитель\t2,5;x\tне число"));
    }

    void keysOfTheTableMeanTheTable()
    {
        Plant p;
        SheetPage page(p.workspace, p.group, NodeType::TypeSignal, nullptr);
        QAction elsewhere(&page); // as a menu of the main window has
        elsewhere.setShortcut(QKeySequence(Qt::CTRL + Qt::Key_D));
        static_cast<QWidget &>(page).addAction(&elsewhere);
        const QSignalSpy stolen(&elsewhere, &QAction::triggered);
        page.show();
        page.activateWindow();
        page.table().setFocus();
        const int unit = page.model().columns().Find("unit");
        (void)page.model().setData(page.model().index(0, unit), "бар");
        page.table().selectionModel()->select(
            QItemSelection(page.model().index(0, unit), page.model().index(1, unit)),
            QItemSelectionModel::ClearAndSelect);
        QTest::keyClick(&page.table(), Qt::Key_D, Qt::ControlModifier);
        QCOMPARE(page.model().text(1, unit), QString("бар"));
        QCOMPARE(stolen.size(), 0);
        QTest::keyClick(&page.table(), Qt::Key_C, Qt::ControlModifier);
        QCOMPARE(QApplication::clipboard()->text(), QString("бар\nбар\n"));
        QApplication::clipboard()->setText("Па");
        QTest::keyClick(&page.table(), Qt::Key_V, Qt::ControlModifier);
        QCOMPARE(page.model().text(0, unit), QString("Па"));
        QTest::keyClick(&page.table(), Qt::Key_Delete); // by itself removes nothing
        QTest::keyClick(&page.table(), Qt::Key_Delete, Qt::ControlModifier);
        QTRY_COMPARE(page.model().rowCount(), 0);
        p.session.undoStack().undo();
        QTRY_COMPARE(page.model().rowCount(), 2);
    }

    void selectionOutlivesNewRows()
    {
        Plant p;
        SheetPage page(p.workspace, p.group, NodeType::TypeSignal, nullptr);
        QVERIFY(page.reveal(p.second));
        p.workspace.selection().select({p.device}, nullptr); // in the tree
        const auto refusals = SheetEdits::paste(p.workspace, page.model(), "Имя\nА\nБ\n", 0, 0, {});
        QVERIFY(refusals.empty());
        QTRY_COMPARE(page.model().rowCount(), 4);
        QCOMPARE(page.selectedNodes(), Nodes::NodeLinks{p.second});
        QCOMPARE(p.workspace.selection().nodes(), Nodes::NodeLinks{p.device});
        page.findChild<QLineEdit *>()->setText("т01");
        QCOMPARE(page.model().rowCount(), 1);
        QVERIFY(page.reveal(p.second)); // gives up the search
        QCOMPARE(page.model().rowCount(), 4);
    }

    void manySignalsGetAlarmsAtOnce()
    {
        Plant p;
        SheetPage page(p.workspace, p.group->GetNodeLink(), NodeType::TypeSignal, nullptr);
        auto *first = page.model().node(0).GetNode();
        QVERIFY(first->SetPropertyText("minimum", "-50") &&
                first->SetPropertyText("maximum", "150"));
        first->SetDescription("Подшипник");
        auto *second = page.model().node(1).GetNode();
        QVERIFY(second->SetPropertyText("maximum", "0")); // its range tells no share
        page.table().selectAll();
        const auto fill = [] {
            QTimer::singleShot(0, [] {
                QWidget *dialog = QApplication::activeModalWidget();
                auto *ok = dialog->findChild<QDialogButtonBox *>()->button(QDialogButtonBox::Ok);
                const bool isIdle = !ok->isEnabled();
                dialog->findChild<QCheckBox *>("H")->click();
                dialog->findChild<QCheckBox *>("LL")->click();
                dialog->findChild<QLineEdit *>("LL.limit")->setText("-12,5");
                dialog->findChild<QLineEdit *>("deadband")->setText("0,5");
                (isIdle ? ok
                        : dialog->findChild<QDialogButtonBox *>()->button(QDialogButtonBox::Cancel))
                    ->click();
            });
        };
        fill();
        page.setAlarms();
        QVERIFY(page.findChild<RefusalsDialog *>());
        QCOMPARE(p.session.undoStack().count(), 1);
        const auto *high = first->GetSubObject(std::string_view("H"));
        const auto *low = first->GetSubObject(std::string_view("LL"));
        QVERIFY(high && low);
        const auto text = [](const Nodes::ConfigNode *node, const char *key) {
            const auto *d = node->GetKind()->FindProperty(std::string_view(key));
            return d->binding.format(*d, *node);
        };
        QCOMPARE(text(high, "limit"), std::string("120")); // 85 % of -50 to 150
        QCOMPARE(text(high, "text"), std::string("Подшипник: высокое значение"));
        QCOMPARE(text(low, "limit"), std::string("-12.5"));
        QCOMPARE(text(low, "deadband"), std::string("0.5"));
        QCOMPARE(text(low, "onDelay"), std::string("3000"));
        QVERIFY(!second->GetSubObject(std::string_view("H"))); // nothing is made up
        QVERIFY(second->GetSubObject(std::string_view("LL")));
        fill(); // again: those that are there are changed, not doubled
        page.setAlarms();
        QCOMPARE(first->Children().size(), std::size_t(2));
        p.session.undoStack().undo();
        QVERIFY(first->Children().empty());
    }

    void menusOpenTablesAndUsers()
    {
        Plant p;
        Nodes::NodeLink opened;
        connect(&p.workspace, &Workspace::openRequested, this,
                [&opened](const Nodes::NodeLink &node) { opened = node; });
        DataCommands::openSignals(p.workspace);
        QCOMPARE(opened, p.station->GetNodeLink());
        p.workspace.selection().select({p.first}, this);
        DataCommands::openSignals(p.workspace);
        QCOMPARE(opened, p.group->GetNodeLink());
        Nodes::NodeLinks users;
        const NodeType kind(Nodes::systemAuthentication::Code);
        p.session.project()->FindNodes(kind, &users);
        for (const Nodes::NodeLink &node : users)
            node->GetParent()->RemoveNode(node).reset();
        const auto answer = [](const char *text) {
            QTimer::singleShot(0, [text] {
                for (QPushButton *button :
                     QApplication::activeModalWidget()->findChildren<QPushButton *>()) {
                    if (button->text() == text)
                        return button->click();
                }
                QApplication::activeModalWidget()->close();
            });
        };
        opened = {};
        answer("Отмена"); // looking changes nothing
        DataCommands::openUsers(p.workspace);
        QVERIFY(opened.isEmpty() && !p.session.isModified());
        answer("Завести"); // to be taken back
        DataCommands::openUsers(p.workspace);
        QCOMPARE(opened.GetNodeType(), kind);
        p.session.undoStack().undo();
        QVERIFY(!opened.isValid());
        p.session.close();
        QVERIFY(!DataCommands::hasStation(p.workspace));
        DataCommands::openSignals(p.workspace);
    }
};

QTEST_MAIN(SheetDialogsTest)
#include "tst_sheet_dialogs.moc"
