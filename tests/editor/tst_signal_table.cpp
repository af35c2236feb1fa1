#include "editor/SheetFixture.h"
#include "editor/signals/SheetPage.h"
#include "editor/signals/SheetView.h"
#include "editor/signals/SignalTable.h"

#include "nodes/archive/ArchivedSignals.h"
#include "nodes/archive/archiverGroup.h"
#include "nodes/archive/systemArchiver.h"
#include "nodes/model/KindTable.h"
#include "nodes/project/signals/SheetPlan.h"

#include <QAbstractItemModelTester>
#include <QApplication>
#include <QClipboard>
#include <QHeaderView>
#include <QLineEdit>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTableView>
#include <QToolBar>
#include <QtTest>

using namespace Editor;
using Nodes::ConfigNode;
using Nodes::NodeType;

class SignalTableTest : public QObject
{
    Q_OBJECT

private slots:
    void thousandsOfRowsAreOneStep()
    {
        SheetFixture p;
        const QAbstractItemModelTester tester(p.model.get());
        const std::string before = p.text();
        QString text = "Имя\tСмещение в группе\tЕдиница измерения\tМножитель\n";
        text += "Т02\t77\tбар\t0,5\n";
        for (int i = 0; i < 5000; ++i)
            text += QString("К%1/П%2\t%3\t°C\t1\n").arg(i % 4).arg(i).arg(i % 100);
        QVERIFY(p.paste(text).empty());
        QCOMPARE(p.session.undoStack().count(), 1);
        QTRY_COMPARE(p.model->rowCount(), 5003);
        QCOMPARE(p.cell(1, "offset"), QString("77"));
        QCOMPARE(p.cell(1, "Адрес"), QString("1077"));
        QCOMPARE(p.cell(5002, "unit"), QString("°C"));
        const std::string after = p.text();
        p.session.undoStack().undo();
        QTRY_COMPARE(p.model->rowCount(), 3);
        QVERIFY(p.text() == before);
        p.session.undoStack().redo();
        QVERIFY(p.text() == after);
    }

    void refusedCellsLoseNothingElse()
    {
        SheetFixture p;
        const auto refusals = p.paste("5\tint16\nмного\tfloat32\n7\tчто-то\n8\tbool\n");
        QCOMPARE(refusals.size(), std::size_t(3));
        QCOMPARE(refusals[0].row, std::size_t(2));
        QCOMPARE(refusals[0].text, std::string("много"));
        QCOMPARE(refusals[2].row, std::size_t(4)); // no fourth signal
        QCOMPARE(p.cell(0, "offset"), QString("5"));
        QCOMPARE(p.cell(1, "dataType"), QString("Вещественный 32 бит"));
        QCOMPARE(p.cell(2, "offset"), QString("7"));
        QCOMPARE(p.session.undoStack().count(), 1);
    }

    void decimalCommaIsNoSeparator()
    {
        SheetFixture p;
        QVERIFY(p.paste("0,25", 0, "scale").empty());
        QCOMPARE(p.cell(0, "scale"), QString("0,25"));
        QVERIFY(p.paste("Имя,Множитель\nТ03,2.5\n").empty()); // a file copied as a whole
        QCOMPARE(p.cell(2, "scale"), QString("2,5"));
        const int steps = p.session.undoStack().count();
        QVERIFY(p.paste("Имя;Множитель\nТ03;2,50\n").empty()); // the same, written otherwise
        QCOMPARE(p.session.undoStack().count(), steps);
    }

    void readOnlyProjectsStayAsTheyAre()
    {
        SheetFixture p;
        const std::string before = p.text();
        p.session.setReadOnly("занят");
        (void)p.paste("Имя\nНовый\n");
        (void)p.paste("9");
        QVERIFY(p.text() == before);
        QVERIFY(!(p.model->flags(p.model->index(0, 0)) & Qt::ItemIsEditable));
    }

    void cellsAreEditedInPlace_data()
    {
        // shown: "" when it is refused
        QTest::addColumn<QString>("column");
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("shown");
        QTest::newRow("number") << "offset"
                                << "12"
                                << "12";
        QTest::newRow("beyond the range") << "offset"
                                          << "2000"
                                          << "";
        QTest::newRow("choice") << "dataType"
                                << "Бит регистра"
                                << "Бит регистра";
        QTest::newRow("yes") << "writable"
                             << "да"
                             << "да";
        QTest::newRow("name") << "Имя"
                              << "Давление"
                              << "Давление";
        QTest::newRow("name of another") << "Имя"
                                         << "Т03"
                                         << "";
        QTest::newRow("description") << "Описание"
                                     << "на входе"
                                     << "на входе";
    }
    void cellsAreEditedInPlace()
    {
        QFETCH(QString, column);
        QFETCH(QString, text);
        QFETCH(QString, shown);
        SheetFixture p;
        const std::string before = p.text();
        const QByteArray title = column.toUtf8();
        const QModelIndex index = p.model->index(1, p.model->columns().Find(title.toStdString()));
        const QSignalSpy told(&p.workspace, &Workspace::told);
        if (column == "Имя" && shown.isEmpty())
            QTest::ignoreMessage(QtWarningMsg, QRegularExpression("not done"));
        (void)p.model->setData(index, text);
        QCOMPARE(told.isEmpty(), !shown.isEmpty());
        if (!shown.isEmpty()) {
            QCOMPARE(p.cell(1, title), shown);
            p.session.undoStack().undo();
        }
        QVERIFY(p.text() == before);
    }

    void fillsDownAndIntoSelections()
    {
        SheetFixture p;
        const int unit = p.model->columns().Find("unit");
        const int scale = p.model->columns().Find("scale");
        (void)p.model->setData(p.model->index(0, unit), "бар");
        (void)p.model->setData(p.model->index(1, scale), "3");
        QVERIFY(SheetEdits::fillDown(p.workspace, *p.model,
                                     {{0, unit}, {2, unit}, {1, scale}, {2, scale}})
                    .empty());
        QCOMPARE(p.cell(1, "unit"), QString()); // was not selected
        QCOMPARE(p.cell(2, "unit"), QString("бар"));
        QCOMPARE(p.cell(2, "scale"), QString("3"));
        QVERIFY(p.paste("7", 0, "offset", {{0, scale}, {1, scale}, {2, scale}}).empty());
        for (int row = 0; row < 3; ++row)
            QCOMPARE(p.cell(row, "scale"), QString("7"));
        QCOMPARE(SheetEdits::copy(*p.model, {{0, scale}, {2, scale}}), std::string("7\n\n7\n"));
    }

    void namesPassFromOneToAnother()
    {
        SheetFixture p;
        const std::string before = p.text();
        QVERIFY(SheetEdits::rename(p.workspace, p.signalNodes, {"Т02", "Т01", "Р"}).empty());
        QCOMPARE(p.signalNodes[0]->GetName(), std::string("Т02"));
        QCOMPARE(p.signalNodes[1]->GetName(), std::string("Т01"));
        QCOMPARE(p.session.undoStack().count(), 1);
        p.session.undoStack().undo();
        QVERIFY(p.text() == before);
        QCOMPARE(SheetEdits::rename(p.workspace, {p.signalNodes[0]}, {"Т03"}).size(),
                 std::size_t(1));
        QCOMPARE(SheetEdits::rename(p.workspace, p.signalNodes, {"А", "А", "Б/В"}).size(),
                 std::size_t(2));
        QVERIFY(p.text() == before);
    }

    void patternsAddAndCount()
    {
        SheetFixture p;
        const auto *kind = Nodes::KindTable::Instance().Find(NodeType(Nodes::modbusSignal::Code));
        const auto refusals = SheetEdits::addNodes(p.workspace, *p.model, {"Т03", "К1/Д1", "К1/Д2"},
                                                   *kind, p.model->columns().Find("offset"), 10, 2);
        QCOMPARE(refusals.size(), std::size_t(1)); // Т03 is there and stays as it is
        QTRY_COMPARE(p.model->rowCount(), 5);
        QCOMPARE(p.cell(2, "offset"), QString("0"));
        QCOMPARE(p.cell(3, "Имя"), QString("К1/Д1"));
        QCOMPARE(p.cell(4, "offset"), QString("14"));
        p.session.undoStack().undo();
        QTRY_COMPARE(p.model->rowCount(), 3);
    }

    void exportedTablesComeBack()
    {
        SheetFixture p;
        (void)p.model->setData(p.model->index(0, p.model->columns().Find("Описание")),
                               "«подача»; \"вход\"");
        const auto table = SheetEdits::exportTable(*p.model);
        const std::string before = p.text();
        QVERIFY(SheetEdits::importTable(p.workspace, *p.model, table).empty());
        QVERIFY(p.text() == before);
        QCOMPARE(p.session.undoStack().count(), 1);
    }

    void limitsOfManyAlarmsAreOneTable()
    {
        SheetFixture p;
        SheetModel alarms(p.workspace, p.group, NodeType::TypeAlarm);
        const QAbstractItemModelTester tester(&alarms);
        const std::string text = "Имя\tВид\tlimit\tpriority\nТ01/Высокая\t\t95,5\t\n"
                                 "Т02/Высокая\t\t90\t\n";
        QVERIFY(SheetEdits::paste(p.workspace, alarms, text, 0, 0, {}).empty());
        QTRY_COMPARE(alarms.rowCount(), 2);
        QCOMPARE(alarms.text(0, alarms.columns().Find("limit")), QString("95,5"));
        QCOMPARE(p.signalNodes[0]->GetNodeCount(), 1);
    }

    void onlySignalsAreRows()
    {
        SheetFixture p;
        ConfigNode *folder =
            p.add(NodeType::SubtypeFolder, p.session.root()->GetNodeAt(0), "Шаблоны");
        ConfigNode *window = p.add(NodeType::SubtypeWindowTemplate, folder, "Насос");
        p.add(NodeType::SubtypeTemplateParameter, window, "Пуск");
        QVERIFY(!SignalTable::shows(*folder));
        QCOMPARE(SheetModel(p.workspace, folder, NodeType::TypeSignal).rowCount(), 0);
        QVERIFY(SignalTable::shows(*p.group));
    }

    void emptyFoldersOpenAsWhatTheyAreFor_data()
    {
        QTest::addColumn<QString>("path");
        QTest::addColumn<bool>("isTable");
        QTest::newRow("of signals") << "Сигналы" << true;
        QTest::newRow("in one of signals") << "Сигналы/Котёл" << true;
        QTest::newRow("of a device") << "ПЛК/Котёл" << true;
        QTest::newRow("of screens") << "Экраны" << false;
    }
    void emptyFoldersOpenAsWhatTheyAreFor()
    {
        QFETCH(QString, path);
        QFETCH(bool, isTable);
        SheetFixture p;
        ConfigNode *node = p.session.root()->GetNodeAt(0);
        for (const QString &name : path.split('/')) {
            ConfigNode *there = node->GetSubObject(name.toStdString());
            node = there ? there : p.add(NodeType::SubtypeFolder, node, name.toUtf8().constData());
        }
        QVERIFY(node->Children().empty());
        QCOMPARE(SignalTable::shows(*node), isTable);
    }

    void archiveIsACellLikeOthers()
    {
        SheetFixture p;
        ConfigNode *archiver = p.archiver();
        SheetModel model(p.workspace, p.group, NodeType::TypeSignal); // the archiver is elsewhere
        const QSignalSpy changed(&model, &QAbstractItemModel::dataChanged);
        const int archive = model.columns().Find("Архив");
        const int zone = model.columns().Find("Архив: Зона нечувствительности архива");
        const auto set = [&model](int row, int column, const char *text) {
            return model.setData(model.index(row, column), text);
        };
        const auto archived = [&p] { return Nodes::FindArchivedSignals(*p.group).size(); };
        QVERIFY(model.data(model.index(0, archive), SheetModel::ChoicesRole)
                    .toStringList()
                    .contains("да"));
        QVERIFY(set(0, archive, "да"));
        QCOMPARE(archived(), std::size_t(1));
        QVERIFY(set(1, zone, "0,5")); // what is set of it is archived
        QCOMPARE(archived(), std::size_t(2));
        QCOMPARE(model.text(1, archive), QString("да"));
        QCOMPARE(model.text(1, zone), QString("0,5"));
        QVERIFY(set(1, zone, "1"));
        QCOMPARE(archiver->Children().size(), std::size_t(2)); // the same source
        const QSignalSpy told(&p.workspace, &Workspace::told);
        QVERIFY(!set(1, zone, "-1"));
        QVERIFY(!set(1, archive, "никакой группы"));
        QCOMPARE(told.size(), 2);
        QCOMPARE(p.session.undoStack().count(), 3);
        QVERIFY(set(1, archive, "нет"));
        QCOMPARE(archived(), std::size_t(1));
        QCOMPARE(model.text(1, zone), QString());
        p.session.undoStack().undo();
        QCOMPARE(model.text(1, zone), QString("1"));
        QVERIFY(!changed.isEmpty());
    }

    void archiveIsPastedForManyAndLeavesGroups()
    {
        SheetFixture p;
        ConfigNode *archiver = p.archiver();
        ConfigNode *whole = p.add(Nodes::archiverGroup::Code, archiver, "Все");
        QVERIFY(whole->SetPropertyText("scope", std::to_string(p.group->GetId())));
        QVERIFY(whole->SetPropertyText("days", "30"));
        SheetModel model(p.workspace, p.group, NodeType::TypeSignal);
        const int archive = model.columns().Find("Архив");
        const int days = model.columns().Find("Архив: Хранить значения, суток");
        QCOMPARE(model.text(0, archive), QString("Все"));
        QCOMPARE(model.text(0, days), QString("30"));
        const auto paste = [&](const char *text) {
            return SheetEdits::paste(p.workspace, model, text, 0, 0, {});
        };
        const auto refused = paste("Имя\tАрхив\nТ01\tнет\n"); // its folder is archived
        QCOMPARE(refused.size(), std::size_t(1));
        QVERIFY(refused[0].reason.find("«Все»") != std::string::npos);
        const auto none = paste("Имя\tАрхив\tАрхив: Зона нечувствительности архива\n"
                                "Т01\tда\t0,5\nТ02\tда\t\nНовый\tда\t2\n");
        QVERIFY(none.empty());
        QCOMPARE(p.session.undoStack().count(), 1);
        QCOMPARE(archiver->Children().size(), std::size_t(4));
        QTRY_COMPARE(model.rowCount(), 4);
        QCOMPARE(model.text(0, archive), QString("да"));
        QCOMPARE(model.text(0, days), QString("30")); // as the group had it
        QCOMPARE(model.text(3, archive), QString("да"));
        p.session.undoStack().undo();
        QCOMPARE(archiver->Children().size(), std::size_t(1));
    }

    void sourcesOfNamesakesHaveNamesOfTheirOwn()
    {
        SheetFixture p;
        const ConfigNode *archiver = p.archiver();
        SheetModel model(p.workspace, p.group, NodeType::TypeSignal);
        const char *text = "Имя\tАрхив\nНасос 1/Ток\tда\nНасос 2/Ток\tда\nНасос 3/Ток\tда\n";
        QVERIFY(SheetEdits::paste(p.workspace, model, text, 0, 0, {}).empty());
        QSet<QString> names;
        for (const auto &source : archiver->Children())
            names << QString::fromStdString(source->GetName());
        QCOMPARE(names.size(), 3); // the project check calls a repeated name an error
        QCOMPARE(Nodes::FindArchivedSignals(*p.group).size(), std::size_t(3));
    }

    void addressIsCountedFromTheGroup()
    {
        SheetFixture p;
        SheetModel model(p.workspace, p.group, NodeType::TypeSignal);
        const int address = model.columns().Find("Адрес");
        const int offset = model.columns().Find("offset");
        const int first = model.text(0, address).toInt() - model.text(0, offset).toInt();
        QVERIFY(model.setData(model.index(0, address), QString::number(first + 2)));
        QCOMPARE(model.text(0, offset), QString("2"));
        for (const char *wrong : {"-1", "65536", "abc", "1,5"})
            QVERIFY2(!model.setData(model.index(0, address), wrong), wrong);
        QCOMPARE(p.session.undoStack().count(), 1);
    }

    void cellsGoToTheColumnsThatAreSeen()
    {
        SheetFixture p;
        SignalTable document(p.workspace, p.group, nullptr);
        document.resize(500, 300);
        document.show();
        SheetPage &page = document.signalPage();
        SheetView &table = page.table();
        const int offset = page.model().columns().Find("offset");
        const int scale = page.model().columns().Find("scale");
        const int unit = page.model().columns().Find("unit");
        QHeaderView &header = *table.horizontalHeader();
        header.moveSection(header.visualIndex(unit), header.visualIndex(offset) + 1);
        for (int column = 1; column < page.model().columnCount(); ++column)
            table.setColumnHidden(column, column != offset && column != unit && column != scale);
        QApplication::clipboard()->setText("7\tбар\t0,5\n8\tм\t2\n");
        table.setCurrentIndex(page.model().index(1, offset));
        page.paste();
        QCOMPARE(page.model().text(1, unit), QString("бар"));
        QCOMPARE(page.model().text(2, scale), QString("2"));
        table.selectionModel()->select(
            {page.model().index(1, 1), page.model().index(2, std::max(unit, scale))},
            QItemSelectionModel::ClearAndSelect);
        page.copy();
        QVERIFY(QApplication::clipboard()->text().startsWith("7\tбар"));
        table.selectRow(0);
        page.copy();
        QCOMPARE(QApplication::clipboard()->text().count('\t'), 3); // the hidden stay there
    }

    void namesStayInSight()
    {
        SheetFixture p;
        SignalTable document(p.workspace, p.group, nullptr);
        document.resize(500, 300);
        document.show();
        SheetView &table = document.signalPage().table();
        const QAbstractItemModel &model = document.signalPage().model();
        const int before = table.columnWidth(0);
        QVERIFY(p.paste("Имя\nНасосная станция второго подъёма/Пуск\n").empty());
        QTRY_VERIFY(table.columnWidth(0) > before); // fitted anew
        QTRY_COMPARE(table.frozen().width(), table.columnWidth(0));
        table.scrollTo(model.index(0, model.columnCount() - 1));
        QVERIFY(table.horizontalScrollBar()->value() > 0);
        QCOMPARE(table.frozen().columnViewportPosition(0), 0);
        for (int column = model.columnCount() - 1; column > 0; --column) {
            table.scrollTo(model.index(0, column)); // as the arrow keys do
            QVERIFY(table.visualRect(model.index(0, column)).left() >= table.columnWidth(0) ||
                    table.horizontalScrollBar()->value() == 0);
        }
        const int scrolled = table.horizontalScrollBar()->maximum();
        table.horizontalScrollBar()->setValue(scrolled);
        QTest::mouseClick(table.frozen().viewport(), Qt::LeftButton, {},
                          table.frozen().visualRect(model.index(1, 0)).center());
        QCOMPARE(table.currentIndex(), model.index(1, 0));
        QCOMPARE(table.horizontalScrollBar()->value(), scrolled);
        QTest::keyClick(&table, Qt::Key_F2); // is typed where it is seen
        auto *line = table.frozen().viewport()->findChild<QLineEdit *>();
        QVERIFY(line && line->isVisible());
        line->setText("Т77");
        QTest::keyClick(line, Qt::Key_Return);
        QTRY_COMPARE(p.signalNodes[1].GetLinkName(), std::string("Т77"));
        table.setColumnWidth(0, 77);
        QVERIFY(p.paste("Имя\nЕщё один длинный путь к сигналу/Пуск\n").empty());
        QTRY_COMPARE(model.rowCount(), 5);
        QCOMPARE(table.columnWidth(0), 77); // as somebody dragged it
    }

    void whatIsUsedMostStaysInSightOnNarrowWindows()
    {
        SheetFixture p;
        SignalTable document(p.workspace, p.group, nullptr);
        document.resize(500, 400);
        document.show();
        const auto *bar = document.signalPage().findChild<QToolBar *>();
        QStringList seen;
        for (QAction *action : bar->actions()) {
            if (bar->widgetForAction(action)->isVisible())
                seen << action->text();
        }
        for (const char *text : {"Добавить…", "Удалить", "Копировать", "Вставить"})
            QVERIFY2(seen.contains(QString(text)), text);
    }

    void pageCopiesPastesAndArchives()
    {
        SheetFixture p;
        p.add(Nodes::systemArchiver::Code, p.session.root()->GetNodeAt(0), "Архив");
        SignalTable document(p.workspace, p.group, nullptr);
        document.resize(900, 500);
        document.show();
        SheetPage &page = document.signalPage();
        QVERIFY(document.reveal(p.signalNodes[1]));
        QCOMPARE(p.workspace.selection().nodes(), Nodes::NodeLinks{p.signalNodes[1]});
        page.copy();
        QVERIFY(QApplication::clipboard()->text().startsWith("Т02\t"));
        page.archiveSelected();
        QCOMPARE(Nodes::FindArchivedSignals(*p.group).size(), std::size_t(1));
        page.table().selectAll();
        page.archiveSelected();
        QCOMPARE(Nodes::FindArchivedSignals(*p.group).size(), std::size_t(3));
        const int archive = page.model().columns().Find("Архив");
        QCOMPARE(page.model().text(2, archive), QString("Архив сигналов"));
        QCOMPARE(p.session.undoStack().count(), 2);

        page.model().setFilter("т03");
        QCOMPARE(page.model().rowCount(), 1);
        QVERIFY(!page.reveal(p.signalNodes[0]));
        p.session.undoStack().undo();
        page.model().setFilter({});
        QCOMPARE(page.model().text(2, archive), QString("нет"));
        Nodes::NodeLink(p.group)->GetParent()->RemoveNode(p.group).reset();
        QTRY_COMPARE(page.model().rowCount(), 0); // the table outlives its node
        page.paste();
    }
};

QTEST_MAIN(SignalTableTest)
#include "tst_signal_table.moc"
