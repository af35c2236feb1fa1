#include "editor/problems/ProblemsPanel.h"
#include "editor/project/ProjectSession.h"
#include "editor/workspace/Workspace.h"

#include "nodes/model/ConfigNode.h"
#include "nodes/model/KindInfo.h"
#include "nodes/model/NodesCollection.h"
#include "utils/undo/ChangePropertyCommand.h"
#include "utils/undo/IUndo.h"

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
        const QString file = m_directory.filePath("project.xml");
        QFile project(file);
        QVERIFY(project.open(QIODevice::WriteOnly));
        project.write("<project format=\"1\" id=\"1\" name=\"P\"><frame id=\"2\" name=\"F\" "
                      "windows=\"10\"/><window id=\"10\" name=\"W\" odd=\"1\">"
                      "<label id=\"11\" name=\"a\" signal=\"98\"/>"
                      "<label id=\"12\" name=\"b\" signal=\"99\"/></window></project>");
        project.close();
        m_panel.setDelay(0);
        QVERIFY(m_session.open(file));
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

    void isEmptyWithoutAProject()
    {
        m_session.close();
        QTRY_COMPARE(m_panel.view().model().rowCount(), 0);
        QTRY_COMPARE(m_panel.view().summary(), QString("Проблем не найдено"));
    }

private:
    QTemporaryDir m_directory;
    QWidget m_window;
    ProjectSession m_session;
    Workspace m_workspace{m_session, m_window};
    ProblemsPanel m_panel{m_workspace, nullptr};
};

QTEST_MAIN(ProblemsPanelTest)
#include "tst_problems_panel.moc"
