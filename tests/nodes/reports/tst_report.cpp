#include "nodes/reports/BasicReport.h"

#include "nodes/ProjectFixture.h"
#include "nodes/model/validation/ValidationResults.h"
#include "nodes/reports/ReportSignalInfo.h"
#include "nodes/signals/BasicSignal.h"

#include <QtTest>

using namespace Nodes;

class ReportTest : public QObject
{
    Q_OBJECT

private slots:
    void childrenFillTheTemplate();
};

void ReportTest::childrenFillTheTemplate()
{
    ProjectFixture f;
    auto *report = dynamic_cast<BasicReport *>(f.add("report", f.add("folder", f.root())));
    f.add("reportSignal", report);
    const ConfigNode *signal = f.add("memorySignal", f.root());
    QVERIFY(f.add("reportSignal", report, "p")
                ->SetProperty(ReportSignalInfo::Prop::Signal, NodeLink(signal)));
    QVERIFY(f.add("reportVariable", report, "plant")->SetPropertyText("value", "№ 1"));
    using Variables = std::vector<std::pair<std::string, std::string>>;
    QCOMPARE(report->GetVariables(), (Variables{{"plant", "№ 1"}}));
    QCOMPARE(report->GetSignals().size(), std::size_t(2));
    QVERIFY(!report->GetSignals()[0]->GetSignal());
    QCOMPARE(report->GetSignals()[1]->GetSignal(), signal);
    QCOMPARE(report->isValid()[0].GetResult(), Result::NotFound); // no template
    QVERIFY(report->SetPropertyText("template", "day.lrxml"));
    QCOMPARE(report->GetFilePath(), std::string("day.lrxml"));
}

QTEST_APPLESS_MAIN(ReportTest)
#include "tst_report.moc"
