#include "editor/problems/ProblemsPanel.h"
#include "editor/project/ProjectSession.h"
#include "editor/workspace/Workspace.h"

#include "nodes/model/ConfigNode.h"
#include "nodes/model/KindInfo.h"
#include "nodes/model/NodesCollection.h"
#include "nodes/serial/ProjectWriter.h"
#include "support/Rows.h"
#include "utils/undo/ChangePropertyCommand.h"
#include "utils/undo/IUndo.h"

#include <QPushButton>
#include <QSignalSpy>
#include <QTableView>
#include <QTemporaryDir>
#include <QtTest>

using namespace Editor;
using Widgets::Problem;

class ProblemsPanelTest : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        write("<frame id=\"2\" name=\"F\" windows=\"10\"/><window id=\"10\" name=\"W\" odd=\"1\">"
              "<label id=\"11\" name=\"a\" signal=\"98\"/>"
              "<label id=\"12\" name=\"b\" signal=\"99\"/></window>");
        m_panel.setDelay(0);
        QVERIFY(m_session.open(m_directory.path()));
        QTRY_VERIFY(m_panel.view().summary().startsWith("Ошибок: 2, замечаний: 1"));
    }

    void followsEdits()
    {
        const QAbstractItemModel &rows = *m_panel.view().table().model();
        QModelIndex second;
        for (int row = 0; row < rows.rowCount(); ++row) {
            if (rows.index(row, 2).data().toString().contains("99"))
                second = rows.index(row, 0);
        }
        const QPersistentModelIndex chosen = second;
        m_panel.view().table().setCurrentIndex(second);
        const unsigned signal = m_session.project()
                                    ->FindNode(11)
                                    ->GetKind()
                                    ->FindProperty(std::string_view("signal"))
                                    ->valueId;
        auto *mend = new Utils::ChangePropertyCommand(Nodes::NodeLink(11, m_session.project()),
                                                      signal, Nodes::NodeLink());
        QVERIFY(Utils::IUndo::execute(mend));
        QTRY_VERIFY(m_panel.view().summary().startsWith("Ошибок: 1, замечаний: 1"));
        QVERIFY(chosen.isValid()); // what is wrong still keeps its row
        QCOMPARE(m_panel.view().table().currentIndex().row(), chosen.row());
        m_session.undoStack().undo();
        QTRY_VERIFY(m_panel.view().summary().startsWith("Ошибок: 2, замечаний: 1"));
    }

    void showsTheChosenSeverities()
    {
        const QAbstractItemModel &rows = *m_panel.view().table().model();
        m_panel.view().setShown(Problem::Remark, false);
        QCOMPARE(rows.rowCount(), 2);
        m_panel.view().setShown(Problem::Error, false);
        QCOMPARE(rows.rowCount(), 0);
        m_panel.view().setShown(Problem::Remark, true);
        QCOMPARE(rows.rowCount(), 1);
        m_panel.view().setShown(Problem::Error, true);
    }

    void leadsToTheNode()
    {
        std::vector<unsigned long> opened;
        connect(&m_workspace, &Workspace::openRequested, this,
                [&](const Nodes::NodeLink &node) { opened.push_back(node.GetNodeId()); });
        const QAbstractItemModel &rows = *m_panel.view().table().model();
        emit m_panel.view().table().activated(rows.index(0, 0));
        QCOMPARE(opened.size(), std::size_t(1));
    }

    void mendsWhatIsChosen_data()
    {
        const Rows<QString, int, QString, QString> row("elements", "problems", "gone", "kept");
        row("link to nothing",
            "<window id=\"2\" name=\"W\"><label id=\"3\" name=\"a\" signal=\"98\"/></window>", 1,
            "98", "label");
        row("one of several links",
            "<window id=\"2\" name=\"W\"/><frame id=\"3\" name=\"a\" windows=\"2 98 99\"/>", 2,
            "98", "windows=\"2\"");
        row("link to what does not fit",
            "<window id=\"2\" name=\"W\"><label id=\"3\" name=\"a\" signal=\"2\"/></window>", 1,
            "signal", "label");
        row("repeated names",
            "<window id=\"2\" name=\"W\"/><folder id=\"3\" name=\"a\"/><folder id=\"4\" "
            "name=\"a\"/>"
            "<folder id=\"5\" name=\"a\"/>",
            2, "id=\"4\" name=\"a\"", "id=\"3\" name=\"a\"");
        row("unknown attributes",
            "<window id=\"2\" name=\"W\"/><folder id=\"3\" name=\"a\" odd=\"1\" even=\"2\"/>", 2,
            "odd", "name=\"a\"");
        row("bad value",
            "<window id=\"2\" name=\"W\"><label id=\"3\" name=\"a\" x=\"far\" odd=\"1\"/></window>",
            2, "far", "odd");
    }

    void mendsWhatIsChosen()
    {
        QFETCH(QString, elements);
        QFETCH(int, problems);
        QFETCH(QString, gone);
        QFETCH(QString, kept);
        write("<frame id=\"9\" name=\"F\" windows=\"2\"/>" + elements.toUtf8());
        QVERIFY(m_session.open(m_directory.path()));
        const auto count = [this] { return m_panel.view().model().rowCount(); };
        QTRY_COMPARE(count(), problems);
        const auto text = [this] {
            return QString::fromStdString(Nodes::ProjectWriter::ToText(*m_session.project()));
        };
        const QString before = text();
        QVERIFY(!m_panel.mendButton().isEnabled()); // nothing is chosen
        QTableView &table = m_panel.view().table();
        const bool isOne = kept == "odd";
        for (int row = 0; row < problems; ++row) {
            if (!isOne || table.model()->index(row, 2).data().toString().contains(gone))
                table.selectionModel()->select(table.model()->index(row, 0),
                                               QItemSelectionModel::Select |
                                                   QItemSelectionModel::Rows);
        }
        m_panel.mendButton().click();
        const QString mended = text();
        QVERIFY2(!mended.contains(gone) && mended.contains(kept), qPrintable(mended));
        QTRY_COMPARE(count(), isOne ? 1 : 0);
        QCOMPARE(m_session.undoStack().count(), 1);
        m_session.undoStack().undo();
        QCOMPARE(text(), before);
        QTRY_COMPARE(count(), problems);
        m_session.undoStack().redo();
        QCOMPARE(text(), mended);
        m_session.setReadOnly("R");
        table.selectAll();
        QVERIFY(!m_panel.mendButton().isEnabled());
        m_session.abandon();
    }

    // What somebody has to think about is left to him.
    void mendsNoMore()
    {
        write("<frame id=\"9\" name=\"F\" windows=\"2\"/><window id=\"2\" name=\"W\"/>"
              "<window id=\"3\" name=\"nobody opens it\"/>");
        QVERIFY(m_session.open(m_directory.path()));
        QTRY_COMPARE(m_panel.view().model().rowCount(), 1);
        QTableView &table = m_panel.view().table();
        QKeyEvent key(QEvent::ShortcutOverride, Qt::Key_A, Qt::ControlModifier);
        key.ignore();
        QCoreApplication::sendEvent(&table, &key);
        QVERIFY(key.isAccepted()); // no menu takes it
        QTest::keyClick(&table, Qt::Key_A, Qt::ControlModifier);
        QCOMPARE(m_panel.view().chosen().size(), std::size_t(1));
        QVERIFY(!m_panel.mendButton().isEnabled());
    }

    void isEmptyWithoutAProject()
    {
        m_session.close();
        QTRY_COMPARE(m_panel.view().model().rowCount(), 0);
        QTRY_COMPARE(m_panel.view().summary(), QString("Проблем не найдено"));
    }

private:
    void write(const QByteArray &elements)
    {
        QFile project(m_directory.filePath("project.xml"));
        QVERIFY(project.open(QIODevice::WriteOnly));
        project.write("<project format=\"1\" id=\"1\" name=\"P\">" + elements + "</project>");
    }

    QTemporaryDir m_directory;
    QWidget m_window;
    ProjectSession m_session;
    Workspace m_workspace{m_session, m_window};
    ProblemsPanel m_panel{m_workspace, nullptr};
};

QTEST_MAIN(ProblemsPanelTest)
#include "tst_problems_panel.moc"
