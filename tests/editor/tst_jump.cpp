#include "OpenProject.h"

#include "editor/jump/JumpDialog.h"
#include "editor/jump/JumpModel.h"
#include "support/Rows.h"

#include <QAbstractItemModelTester>
#include <QAction>
#include <QLabel>
#include <QLineEdit>
#include <QtTest>

using Editor::JumpDialog;
using Editor::JumpModel;

namespace {

/// Commands beside the project of two boilers.
struct Jumps : OpenProject
{
    Jumps()
    {
        at("К2/T")->SetDescription("Температура за котлом");
        add("memorySignal", at("К2"), "Запуск насоса");
        add("memorySignal", at("К2"), "Насос, запуск");
        disabled.setEnabled(false);
    }
    JumpModel *model(const Nodes::NodeLinks &latest = {})
    {
        return new JumpModel(&project, latest,
                             {{&run, "Файл", "Запуск"}, {&disabled, "Вид/Вкладки", "Заперто"}},
                             &window);
    }

    QAction run{"Запуск"};
    QAction disabled{"Заперто"};
};

QString shown(const JumpModel &model)
{
    QStringList rows;
    for (int i = 0; i < model.rowCount(); ++i)
        rows << model.index(i, JumpModel::ColumnName).data().toString() + '@' +
                    model.index(i, JumpModel::ColumnPlace).data().toString();
    return rows.join("; ");
}

} // namespace

class JumpTest : public QObject
{
    Q_OBJECT

private slots:
    void offersTheNearestFirst_data()
    {
        const Rows<QString, QString> row("text", "shown");
        row("nothing", "  ", "");
        row("the name itself, not what holds it", "к1", "К1@");
        row("documents, then the rest", "композ", "Композиция@");
        row("a command that is called so, names that begin, names that have it", "запуск",
            "Запуск@Команда: Файл; Запуск насоса@К2; Насос, запуск@К2");
        row("commands only", "> ЗАП", "Запуск@Команда: Файл; Заперто@Команда: Вид/Вкладки");
        row("the menu of a command", "вкладк", "Заперто@Команда: Вид/Вкладки");
        row("all words, the shorter name first", "насос запуск",
            "Насос, запуск@К2; Запуск насоса@К2");
        row("a description", "за котлом", "T@К2");
        row("a path", "к2/p", "P@К2");
        row("nobody", "щщ", "");
    }

    void offersTheNearestFirst()
    {
        QFETCH(QString, text);
        Jumps f;
        JumpModel *model = f.model();
        const QAbstractItemModelTester tester(
            model, QAbstractItemModelTester::FailureReportingMode::QtTest);
        model->search(text);
        QTEST(shown(*model), "shown");
        QCOMPARE(model->count(), std::size_t(model->rowCount()));
    }

    void aNumberIsANode()
    {
        Jumps f;
        JumpModel *model = f.model();
        model->search('#' + QString::number(f.at("К1/Q")->GetId()));
        QCOMPARE(shown(*model), QString("Q@К1"));
    }

    void offersTheLatestThatAreLeft()
    {
        Jumps f;
        const Nodes::NodeLinks latest = f.links({"К2/P", "К1"});
        (void)f.at("К2")->RemoveNode(f.at("К2/P"));
        QCOMPARE(shown(*f.model(latest)), QString("К1@"));
    }

    void showsNoMoreThanCanBeLookedAt()
    {
        Jumps f;
        for (int i = 0; i < 1500; ++i)
            f.add("memorySignal", f.at("К1"), ("много " + std::to_string(i)).c_str());
        JumpModel *model = f.model();
        model->search("много");
        QCOMPARE(model->count(), std::size_t(1500));
        QCOMPARE(std::size_t(model->rowCount()), JumpModel::rowsAtMost);
        QCOMPARE(model->node(0).GetLinkName(true), std::string("К1/много 0"));
    }

    void survivesWhatGoesMeanwhile()
    {
        Jumps f;
        auto *action = new QAction("Мимолётное");
        JumpModel model(&f.project, {}, {{action, "Файл", "Мимолётное"}});
        model.search("P");
        QVERIFY(model.node(0).isValid());
        (void)f.root()->RemoveNode(f.at("К1"));
        (void)f.root()->RemoveNode(f.at("К2"));
        QVERIFY(!model.node(0).isValid());
        QVERIFY(!model.index(0, 0).data().isValid());
        model.search("мимо");
        delete action;
        QVERIFY(!model.command(0) && !(model.flags(model.index(0, 0)) & Qt::ItemIsEnabled));
        model.search("мимо");
        QCOMPARE(model.rowCount(), 0);
        JumpModel none(nullptr, {}, {});
        none.search("P");
        QCOMPARE(none.rowCount(), 0);
    }

    void isWorkedByKeys_data()
    {
        const Rows<QString, QString, QString> row("typed", "keys", "chosen");
        row("the first", "к2/", "Return", "node К2/T");
        row("further down", "к2/", "Down Return", "node К2/P");
        row("down and up", "к2/", "Down Down Up Return", "node К2/P");
        row("shown only", "к2/", "Ctrl+Return", "node К2/T shown");
        row("a command", ">запуск", "Return", "command Запуск");
        row("what is not possible stays", ">заперто", "Return", "none");
        row("nothing found", "щщ", "Return", "none");
        row("given up", "к2/", "Esc", "none");
    }

    void isWorkedByKeys()
    {
        QFETCH(QString, typed);
        QFETCH(QString, keys);
        Jumps f;
        JumpDialog dialog(f.model(), &f.window);
        dialog.show();
        QVERIFY(QTest::qWaitForWindowExposed(&dialog));
        auto *line = dialog.findChild<QLineEdit *>();
        line->setText(typed);
        for (const QString &key : keys.split(' ')) {
            const int code = QKeySequence(key)[0];
            QTest::keyClick(line, Qt::Key(code & ~Qt::KeyboardModifierMask),
                            Qt::KeyboardModifiers(code & Qt::KeyboardModifierMask));
        }
        QString chosen = "none";
        if (dialog.command())
            chosen = "command " + dialog.command()->text();
        else if (dialog.node().isValid())
            chosen = "node " + QString::fromStdString(dialog.node().GetLinkName(true)) +
                     (dialog.isToBeShown() ? " shown" : "");
        QTEST(chosen, "chosen");
    }
};

QTEST_MAIN(JumpTest)
#include "tst_jump.moc"
