#include "editor/project/ProjectSession.h"
#include "editor/reports/ReportColumns.h"
#include "editor/reports/ReportDocument.h"
#include "editor/tables/DocumentTable.h"
#include "editor/workspace/Workspace.h"

#include "nodes/model/KindTable.h"
#include "nodes/model/NodesCollection.h"
#include "nodes/reports/BasicReport.h"
#include "nodes/reports/data/BasicReportSource.h"
#include "widgets/reports/engine/lrreportengine.h"

#include <QDir>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QtTest>

using namespace Editor;
using Nodes::ConfigNode;

namespace {

using Properties = std::vector<std::pair<const char *, const char *>>;

/// A new project with signals and an empty report.
struct Office
{
    Office()
    {
        if (!session.create(directory.filePath("p"), "П"))
            qFatal("no project");
        ConfigNode *station = session.root()->GetNodeAt(0);
        for (const char *name : {"К1.T", "К1.P", "Расход газа"})
            signalNodes.emplace_back(add("memorySignal", station, name, {{"unit", "бар"}}));
        report = add("report", station, "Сутки/1");
    }
    ConfigNode *add(const char *key, ConfigNode *parent, const char *name,
                    const Properties &properties = {})
    {
        const Nodes::KindInfo *kind = Nodes::KindTable::Instance().FindByKey(key);
        ConfigNode *node = session.project()->CreateNode(kind->type, parent);
        node->SetName(name);
        for (const auto &[property, text] : properties) {
            if (!node->SetPropertyText(property, text))
                qFatal("%s", property);
        }
        return node;
    }
    const Nodes::BasicReport &made() const
    {
        return dynamic_cast<const Nodes::BasicReport &>(*report);
    }

    QTemporaryDir directory;
    QWidget window;
    ProjectSession session;
    Workspace workspace{session, window};
    Nodes::NodeLinks signalNodes;
    ConfigNode *report;
};

} // namespace

class ReportDocumentTest : public QObject
{
    Q_OBJECT

private slots:
    void aReportIsMadeFromNothing()
    {
        Office o;
        const DocumentRow *row = FindDocument(*o.report);
        QVERIFY(row);
        const std::unique_ptr<DocumentView> view(row->make(o.workspace, o.report, nullptr));
        auto *document = qobject_cast<ReportDocument *>(view.get());
        QVERIFY(document);
        QVERIFY(document->note().contains("нет данных"));
        document->show();
        document->makeTemplate(); // of what? told, nothing written
        QVERIFY(o.made().GetFilePath().empty());
        QVERIFY(document->addTable(o.signalNodes));
        document->makeTemplate();
        QCOMPARE(o.session.undoStack().count(), 2);
        const QDir project(o.session.directory());
        const QString first = QString::fromStdString(o.made().GetFilePath());
        QVERIFY2(project.exists(first), qPrintable(first));
        auto *engine = document->findChild<LimeReport::ReportEngine *>();
        const QSignalSpy rendered(engine, &LimeReport::ReportEngine::renderFinished);
        QTRY_VERIFY(!rendered.isEmpty() && engine->pageCount() > 0);
        QCOMPARE(engine->lastError(), QString());
        QVERIFY2(document->note().contains("пример"), qPrintable(document->note()));
        document->makeTemplate(); // what somebody may have drawn on is kept
        QVERIFY(project.exists(first));
        QVERIFY(QString::fromStdString(o.made().GetFilePath()) != first);
        o.session.undoStack().undo();
        QCOMPARE(QString::fromStdString(o.made().GetFilePath()), first);
    }

    void everySourceHasATable_data()
    {
        QTest::addColumn<QByteArray>("kind");
        QTest::addColumn<QByteArray>("property");
        QTest::addColumn<QByteArray>("value");
        const auto row = [](const char *kind, const char *property, const char *value) {
            QTest::addRow("%s %s", kind, value)
                << QByteArray(kind) << QByteArray(property) << QByteArray(value);
        };
        for (const char *step : {"hour", "whole", "samples"})
            row("reportSignal", "step", step);
        for (const char *rows : {"hour", "signals"})
            row("reportSummary", "rows", rows);
        row("reportEvents", "of", "alarms");
        for (const char *content : {"measures", "frequent", "timeline", "areas", "shifts"})
            row("reportAlarms", "content", content);
    }
    void everySourceHasATable()
    {
        QFETCH(QByteArray, kind);
        QFETCH(QByteArray, property);
        QFETCH(QByteArray, value);
        Office o;
        ConfigNode *source =
            o.add(kind.constData(), o.report, "data", {{property.constData(), value.constData()}});
        if (kind == "reportSummary")
            o.add("reportSignal", source, "s1",
                  {{"signal", std::to_string(o.signalNodes[0].GetNodeId()).c_str()}});
        const auto &read = dynamic_cast<const Nodes::BasicReportSource &>(*source);
        QVERIFY(reportColumns(read).size() >= 2);
        ReportDocument document(o.workspace, o.report, nullptr);
        document.show();
        document.makeTemplate();
        auto *engine = document.findChild<LimeReport::ReportEngine *>();
        const QSignalSpy rendered(engine, &LimeReport::ReportEngine::renderFinished);
        QTRY_VERIFY(!rendered.isEmpty());
        QCOMPARE(engine->lastError(), QString()); // every column that it asks for is there
    }

    void whatOnlyIsLookedAtWritesNothing()
    {
        Office o;
        ReportDocument document(o.workspace, o.report, nullptr);
        QVERIFY(document.addTable(o.signalNodes));
        o.session.setReadOnly("проект изменяет Иванов");
        const QSignalSpy told(&o.workspace, &Workspace::told);
        document.makeTemplate();
        QCOMPARE(told.size(), 1);
        QVERIFY(!QDir(o.session.directory()).exists("reports"));
    }

    void pagesAreMadeWhenTheyAreLookedAt()
    {
        Office o;
        ReportDocument document(o.workspace, o.report, nullptr);
        QVERIFY(document.addTable(o.signalNodes));
        document.makeTemplate();
        auto *engine = document.findChild<LimeReport::ReportEngine *>();
        const QSignalSpy rendered(engine, &LimeReport::ReportEngine::renderFinished);
        QCoreApplication::sendPostedEvents();
        QVERIFY2(document.note().contains("нет данных"), qPrintable(document.note())); // of before
        document.show();
        QTRY_COMPARE(rendered.size(), 1);
        o.add("reportVariable", o.report, "v");
        QTRY_COMPARE(rendered.size(), 2);
    }

    void whatCannotBeReadIsTold()
    {
        Office o;
        QVERIFY(o.report->SetPropertyText("template", "reports/gone.lrxml"));
        const ReportDocument document(o.workspace, o.report, nullptr);
        QVERIFY2(document.note().contains("gone.lrxml"), qPrintable(document.note()));
    }
};

QTEST_MAIN(ReportDocumentTest)
#include "tst_report_document.moc"
