#include "support/RuntimeProject.h"

#include "widgets/tools/problems/ProblemsView.h"

#include "nodes/serial/LoadReport.h"

#include <QAbstractItemModelTester>
#include <QHeaderView>
#include <QLineEdit>
#include <QSignalSpy>
#include <QTableView>

using namespace Widgets;

namespace {

constexpr const char *faulty = R"(
<window id="10" name="Насосы">
    <label id="11" name="Давление" signal="999"/>
    <label id="12" name="Расход" signal="14"/>
    <label id="13" name="Расход" signal="14"/>
</window>
<frame id="16" name="Экран" windows="10"/>
<folder id="15" name="Сигналы"><memorySignal id="14" name="Значение" type="double"/></folder>)";

} // namespace

class TestProblems : public QObject
{
    Q_OBJECT

private slots:
    void listsAllThatIsWrong()
    {
        RuntimeProject project(faulty);
        Nodes::LoadReport report;
        report.Add({Nodes::LoadMessage::Warning, "p.xml", 7, "project[P]", "Неизвестный атрибут"});
        project.core.SetLoadReport(report);
        ProblemsView view;
        const QAbstractItemModelTester tester(view.findChild<ProblemsModel *>());
        const QAbstractItemModelTester shown(view.table().model());
        view.check(&project.core);
        QTRY_VERIFY(view.summary().startsWith("Ошибок: 2, замечаний: 1"));
        const QAbstractItemModel &rows = *view.table().model();
        QCOMPARE(rows.rowCount(), 3);
        QVERIFY(rows.index(2, 0).data().toString().contains("Замечание"));
        QCOMPARE(rows.index(2, 1).data().toString(), QString("p.xml:7"));
        view.check(&project.core); // nothing stands twice
        QTRY_VERIFY(view.summary().startsWith("Ошибок: 2, замечаний: 1"));
    }

    void laysOutNoMoreRowsThanItMay_data()
    {
        QTest::addColumn<int>("count");
        QTest::addColumn<bool>("areFitted");
        QTest::newRow("few") << 3 << true;
        QTest::newRow("as many as nobody reads") << 3000 << false;
    }
    void laysOutNoMoreRowsThanItMay()
    {
        QFETCH(const int, count);
        RuntimeProject project(faulty);
        Nodes::LoadReport report;
        for (int line = 0; line < count; ++line)
            report.Add({Nodes::LoadMessage::Warning, "p.xml", line, "project[P]",
                        std::string(2000, 'w') + " as long as it gets"});
        project.core.SetLoadReport(report);
        ProblemsView view;
        view.check(&project.core);
        QTRY_VERIFY(view.summary().endsWith(QString::number(count)));
        const QTableView &table = view.table();
        QCOMPARE(table.model()->rowCount(), count + 2);
        const int last = count + 1;
        const int plain = table.verticalHeader()->defaultSectionSize();
        QCOMPARE(table.rowHeight(last), plain); // columns that nobody sees tell nothing
        view.resize(900, 400);
        view.show();
        QFETCH(const bool, areFitted);
        QTRY_COMPARE(table.rowHeight(last) > plain, areFitted);
        const QModelIndex text = table.model()->index(last, 2);
        QVERIFY(text.data(Qt::ToolTipRole).toString().contains("as long as it gets"));
    }

    void leadsToTheNode()
    {
        RuntimeProject project(faulty);
        ProblemsView view;
        view.check(&project.core);
        QTRY_VERIFY(view.summary().startsWith("Ошибок: 2"));
        view.findChild<QLineEdit *>()->setText("999");
        const QAbstractItemModel &rows = *view.table().model();
        QCOMPARE(rows.rowCount(), 1);
        std::vector<unsigned long> nodes;
        QString mended;
        connect(&view, &ProblemsView::nodeActivated, &view,
                [&](const Nodes::NodeLink &node, const QString &property) {
                    nodes.push_back(node.GetNodeId());
                    mended = property;
                });
        emit view.table().activated(rows.index(0, 2));
        QCOMPARE(nodes, std::vector<unsigned long>({11}));
        QCOMPARE(mended, QStringLiteral("signal"));
        QVERIFY(project.node(10)->RemoveNode(11));
        emit view.table().activated(rows.index(0, 2)); // leads nowhere any more
        QCOMPARE(nodes.size(), std::size_t(1));
    }

    void goesOnWhenNodesGo()
    {
        auto project = std::make_unique<RuntimeProject>(faulty);
        ProblemsCheck check;
        QSignalSpy finished(&check, &ProblemsCheck::finished);
        std::size_t found = 0;
        connect(&check, &ProblemsCheck::found, &check,
                [&found](const std::vector<Problem> &problems) { found += problems.size(); });
        check.start(&project->core);
        QVERIFY(project->node(1)->RemoveNode(16)); // its link would lead nowhere
        QVERIFY(project->node(1)->RemoveNode(10));
        QTRY_COMPARE(finished.size(), 1);
        QCOMPARE(found, std::size_t(0));
        check.start(nullptr);
        QTRY_COMPARE(finished.size(), 2);
    }
};

QTEST_MAIN(TestProblems)
#include "tst_problems.moc"
