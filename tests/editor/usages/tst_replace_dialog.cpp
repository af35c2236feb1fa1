#include "editor/usages/ReplaceDialog.h"
#include "editor/usages/ReplaceModel.h"

#include "editor/OpenProject.h"
#include "support/Rows.h"

#include <QAbstractItemModelTester>
#include <QLabel>

using namespace Editor;
using namespace Nodes;

namespace {

/// "who property: now -> then (note)", ticked ones with a "+" in front.
QStringList rowsOf(const ReplaceModel &model)
{
    QStringList rows;
    for (int row = 0; row < model.rowCount(); ++row) {
        const auto cell = [&](int column) { return model.index(row, column).data().toString(); };
        const bool isTicked = model.index(row, 0).data(Qt::CheckStateRole).toInt() == Qt::Checked;
        rows << QString("%1%2: %3 -> %4 (%5)")
                    .arg(isTicked ? "+" : "", cell(ReplaceModel::ColumnWho).section('/', -1),
                         cell(ReplaceModel::ColumnFrom), cell(ReplaceModel::ColumnTo),
                         cell(ReplaceModel::ColumnNote));
    }
    return rows;
}

} // namespace

class TestReplaceDialog : public QObject
{
    Q_OBJECT

private slots:
    void plans_data();
    void plans();
    void replacesWhatIsTicked();
    void replacesOneNode();
};

void TestReplaceDialog::plans_data()
{
    const Rows<QString, QString, std::string, QStringList> add("oldText", "newText", "scope",
                                                               "rows");
    const QString none = " (Нет узла с таким путём)";
    add("all", "К1/", "К2/", "",
        {"+a: К1/T -> К2/T ()", "+b: К1/T -> К2/T ()", "c: К1/Q -> К2/Q" + none});
    add("within a node", "К1/", "К2/", "Композиция/Слой/b", {"+b: К1/T -> К2/T ()"});
    add("a part of a name", "Q", "P", "", {"+c: К1/Q -> К1/P ()"});
    add("to a node of another kind", "К1/T", "К2", "Композиция/Слой/a",
        {"a: К1/T -> К2 (Свойство не принимает узлы такого вида)"});
    add("to nothing", "К1/T", "", "Композиция/Слой/a", {"a: К1/T -> " + none});
    add("what nobody has", "К7/", "К2/", "", {});
    add("another case", "к1/", "К2/", "", {});
    add("no text", "", "К2/", "", {});
}

void TestReplaceDialog::plans()
{
    QFETCH(QString, oldText);
    QFETCH(QString, newText);
    QFETCH(std::string, scope);
    OpenProject project;
    const std::string before = project.text();
    const NodeLinks selected = !scope.empty() ? project.links({scope.c_str()}) : NodeLinks();
    ReplaceDialog dialog(project.workspace, ReplaceDialog::ModePattern, {}, selected);
    const QAbstractItemModelTester tester(&dialog.model(),
                                          QAbstractItemModelTester::FailureReportingMode::QtTest);
    dialog.setWholeProject(selected.empty());
    dialog.setTexts(oldText, newText);
    QTEST(rowsOf(dialog.model()), "rows");
    QCOMPARE(project.text(), before);
}

void TestReplaceDialog::replacesWhatIsTicked()
{
    OpenProject project;
    ReplaceDialog dialog(project.workspace, ReplaceDialog::ModePattern, {}, {});
    dialog.setTexts("К1/", "К2/");
    ReplaceModel &model = dialog.model();
    QVERIFY(model.setData(model.index(0, 0), Qt::Unchecked, Qt::CheckStateRole));
    QVERIFY(!model.setData(model.index(2, 0), Qt::Checked, Qt::CheckStateRole)); // no such node
    dialog.accept();
    const auto shown = [&] {
        return QStringList{QString::fromStdString(project.signalOf("Композиция/Слой/a")),
                           QString::fromStdString(project.signalOf("Композиция/Слой/b")),
                           QString::fromStdString(project.signalOf("Композиция/Слой/c"))};
    };
    QCOMPARE(shown(), QStringList({"К1/T", "К2/T", "К1/Q"}));
    QCOMPARE(project.session.undoStack().count(), 1);
    project.session.undoStack().undo();
    QCOMPARE(shown(), QStringList({"К1/T", "К1/T", "К1/Q"}));
}

void TestReplaceDialog::replacesOneNode()
{
    OpenProject project;
    ReplaceDialog dialog(project.workspace, ReplaceDialog::ModeNode, NodeLink(project.at("К1/T")),
                         project.links({"Композиция/Слой/b", "Композиция/Слой/c"}));
    QCOMPARE(dialog.model().rowCount(), 0);
    const auto tells = [&dialog](const QString &text) {
        for (const QLabel *label : dialog.findChildren<QLabel *>()) {
            if (label->text().contains(text))
                return true;
        }
        return false;
    };
    QVERIFY(!tells("найдено")); // nothing was looked for
    dialog.accept();            // nothing to do yet
    QCOMPARE(project.session.undoStack().count(), 0);
    dialog.setNodes(NodeLink(project.at("К1/T")), NodeLink(project.at("К2/P")));
    QCOMPARE(dialog.model().rowCount(), 2);
    QVERIFY(tells("найдено: 2"));
    dialog.setWholeProject(false);
    QCOMPARE(rowsOf(dialog.model()), QStringList{"+b: К1/T -> К2/P ()"});
    dialog.accept();
    QCOMPARE(project.signalOf("Композиция/Слой/a"), std::string("К1/T"));
    QCOMPARE(project.signalOf("Композиция/Слой/b"), std::string("К2/P"));
}

QTEST_MAIN(TestReplaceDialog)
#include "tst_replace_dialog.moc"
