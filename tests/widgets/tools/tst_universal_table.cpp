#include "support/Rows.h"
#include "support/RuntimeProject.h"

#include "widgets/tools/UniversalTableView.h"

#include <QAbstractItemModelTester>
#include <QHeaderView>

using namespace Widgets;

namespace {

QList<FileInfoData> someFiles()
{
    const QDateTime noon(QDate(2026, 3, 1), QTime(12, 0));
    return {{"б.sqlite", 1048576, noon, noon},
            {"А.sqlite", 1572864, noon, noon.addSecs(60)},
            {"в.sqlite", 123456789, noon, noon.addSecs(-60)},
            {"г.sqlite", 0, noon, noon.addDays(1)}};
}

QStringList column(const QAbstractItemModel &model, int number)
{
    QStringList texts;
    for (int row = 0; row < model.rowCount(); ++row)
        texts << model.index(row, number).data().toString();
    return texts;
}

} // namespace

class TestUniversalTable : public QObject
{
    Q_OBJECT

private slots:
    void showsFiles()
    {
        UniversalTableModel model(someFiles(), UniversalTableFiles);
        const QAbstractItemModelTester tester(&model);
        QCOMPARE(column(model, 0), QStringList({"1", "2", "3", "4"}));
        QCOMPARE(column(model, 2), QStringList({"1", "1.5", "118", "0"}));
        QCOMPARE(model.index(1, 3).data().toDateTime(), someFiles()[1].changed);
        QStringList titles;
        for (int section = 0; section < model.columnCount(); ++section) {
            titles << model.headerData(section, Qt::Horizontal).toString();
            QVERIFY(!model.headerData(section, Qt::Horizontal, Qt::UserRole).isValid());
        }
        QCOMPARE(titles,
                 QStringList({"№", "Имя файла", "Размер (МБ)", "Время последнего изменения"}));
        QCOMPARE(model.index(2, 1).data(Qt::UserRole).value<UniversalTableItem *>(),
                 model.getItem(2));
        QVERIFY(!model.removeRows(3, 2) && model.removeRows(2, 2));
        QCOMPARE(column(model, 1), QStringList({"б.sqlite", "А.sqlite"}));
        model.setColumnCount(2);
        QCOMPARE(model.columnCount(), 2);
    }

    void sortsByValue_data()
    {
        const Rows<int, QString> row("column", "names");
        row("name", 1, "А б в г");
        row("size", 2, "г б А в");
        row("time", 3, "в б А г");
    }
    void sortsByValue()
    {
        QFETCH(int, column);
        UniversalTableSortModel model(someFiles(), UniversalTableFiles);
        const QAbstractItemModelTester tester(&model);
        model.sort(column);
        QString names;
        for (const QString &name : ::column(model, 1))
            names += (names.isEmpty() ? "" : " ") + name.left(1);
        QTEST(names, "names");
        QCOMPARE(::column(model, 0), QStringList({"1", "2", "3", "4"}));
    }

    void followsTheNodeInFront()
    {
        RuntimeProject project(R"(<folder id="10" name="А"/><folder id="11" name="Б"/>)");
        UniversalTableView view;
        Nodes::NodesArray nodes;
        nodes.push_back(10);
        nodes.push_back(11);
        view.makeModel(nodes, UniversalTableNodes, &view);
        const QAbstractItemModelTester tester(view.model());
        QCOMPARE(view.model()->headerData(2, Qt::Horizontal).toString(), QString("Описание"));
        QCOMPARE(view.horizontalHeader()->sectionResizeMode(0), QHeaderView::Fixed);
        std::vector<unsigned long> told;
        connect(&view, &UniversalTableView::showArchivatorFiles, &view,
                [&told](const Nodes::NodeLink &node) { told.push_back(node.GetNodeId()); });
        view.setCurrentIndex(view.model()->index(0, 1));
        QTest::keyClick(&view, Qt::Key_Down);
        QCOMPARE(told, std::vector<unsigned long>({11}));
        QTest::keyClick(&view, Qt::Key_Down); // no row there
        QTest::keyClick(&view, Qt::Key_PageUp);
        QCOMPARE(told.size(), std::size_t(1));
        const QPoint first = view.visualRect(view.model()->index(0, 1)).center();
        QTest::mouseClick(view.viewport(), Qt::LeftButton, {}, first);
        QCOMPARE(told.back(), 10ul);
        QTest::mouseClick(view.viewport(), Qt::RightButton, {}, first);
        QCOMPARE(told.size(), std::size_t(2));
    }
};

QTEST_MAIN(TestUniversalTable)
#include "tst_universal_table.moc"
