#include "PropertyFixture.h"

#include "editor/properties/children/ChildrenModel.h"
#include "editor/properties/children/ChildrenWindow.h"
#include "support/Rows.h"

#include <QAbstractItemModelTester>
#include <QPushButton>
#include <QSignalSpy>
#include <QTableView>
#include <QtTest>

using Editor::ChildFamily;
using Editor::ChildrenModel;

namespace {

constexpr auto states = Nodes::NodeType::TypeState;

/// A picture with three states, and their table.
struct States : PropertyFixture
{
    States()
    {
        for (const char *name : {"стоп", "пуск", "отказ"})
            add("state", multi, name);
        model = std::make_unique<ChildrenModel>(
            multi, Editor::childFamilies(*multi->GetKind()).front(), push());
        tester = std::make_unique<QAbstractItemModelTester>(
            model.get(), QAbstractItemModelTester::FailureReportingMode::QtTest);
    }
    QString names() const
    {
        QStringList all;
        for (int row = 0; row < model->rowCount(); ++row)
            all << model->index(row, 0).data().toString();
        return all.join(QLatin1Char(' '));
    }
    QModelIndex cell(int row, const char *title) const
    {
        for (int column = 0; column < model->columnCount(); ++column) {
            if (model->headerData(column, Qt::Horizontal, Qt::DisplayRole) == QString(title))
                return model->index(row, column);
        }
        return {};
    }

    std::unique_ptr<ChildrenModel> model;
    std::unique_ptr<QAbstractItemModelTester> tester;
};

using Step = std::function<QString(ChildrenModel &)>;

} // namespace
Q_DECLARE_METATYPE(Step)

class ChildrenTableTest : public QObject
{
    Q_OBJECT

private slots:
    void knowsTheListsOfAKind_data()
    {
        const Rows<QByteArray, QString> row("kind", "lists");
        row("states", "multiImage", "Состояния");
        row("choices", "comboBox", "Варианты");
        row("columns", "eventList", "Столбцы");
        row("alarms", "memorySignal", "Тревоги");
        row("no list", "label", "");
        row("holds nodes of any sort", "folder", "");
        row("holds elements", "layer", "");
    }

    void knowsTheListsOfAKind()
    {
        QFETCH(QByteArray, kind);
        QFETCH(QString, lists);
        QStringList titles;
        for (const ChildFamily &family : Editor::childFamilies(ProjectFixture::kind(kind)))
            titles << family.title;
        QCOMPARE(titles.join(QLatin1Char(' ')), lists);
    }

    void changesTheList_data()
    {
        QTest::addColumn<Step>("step");
        QTest::addColumn<QString>("names");
        const auto row = [](const char *name, const char *names, const Step &step) {
            QTest::newRow(name) << step << QString::fromUtf8(names);
        };
        row("added", "стоп пуск отказ Состояние",
            [](ChildrenModel &m) { return m.add(*m.family().kinds.front()); });
        row("copies behind the last", "стоп пуск стоп 2 пуск 2 отказ", [](ChildrenModel &m) {
            return m.duplicate({1, 0});
        });
        row("removed", "пуск", [](ChildrenModel &m) { return m.remove({0, 2}); });
        row("up", "пуск стоп отказ", [](ChildrenModel &m) { return m.move({1}, -1); });
        row("down as a block", "отказ стоп пуск", [](ChildrenModel &m) {
            return m.move({0, 1}, 1);
        });
    }

    void changesTheList()
    {
        QFETCH(Step, step);
        QFETCH(QString, names);
        States s;
        const QString before = s.names();
        QCOMPARE(step(*s.model), QString());
        QCOMPARE(s.names(), names);
        QCOMPARE(s.stack.count(), 1);
        s.stack.undo();
        QTRY_COMPARE(s.names(), before);
        s.stack.redo();
        QTRY_COMPARE(s.names(), names);
        s.model->setReadOnly(QStringLiteral("занят"));
        QCOMPARE(step(*s.model), QStringLiteral("занят"));
        QCOMPARE(s.names(), names);
    }

    void staysAtTheEnds()
    {
        States s;
        QCOMPARE(s.model->move({0, 1}, -1), QString());
        QCOMPARE(s.model->move({2}, 1), QString());
        QCOMPARE(s.stack.count(), 0);
    }

    void editsCells()
    {
        States s;
        const QModelIndex text = s.cell(1, "Текст");
        QVERIFY(s.model->setData(text, "ПУСК"));
        QCOMPARE(textOf(*s.model->node(1).GetNode(), "text"), std::string("ПУСК"));
        QVERIFY(s.model->setData(s.cell(1, "Свой цвет текста"), Qt::Checked, Qt::CheckStateRole));
        QCOMPARE(textOf(*s.model->node(1).GetNode(), "ownColor"), std::string("true"));
        const QSignalSpy refused(s.model.get(), &ChildrenModel::refused);
        QVERIFY(!s.model->setData(s.model->index(1, 0), "a/b"));
        QVERIFY(!refused.last()[0].toString().isEmpty());
        QCOMPARE(s.stack.count(), 2);
        QVERIFY(s.model->isUsed(text.column()));
        QVERIFY(!s.model->isUsed(s.cell(1, "Рисунок").column()));
    }

    void showsADashWhereAKindHasNoSuchProperty()
    {
        States s;
        s.add("alarmLimit", s.signal, "H");
        s.add("alarmQuality", s.signal, "Q");
        ChildrenModel alarms(s.signal, Editor::childFamilies(*s.signal->GetKind()).front(),
                             s.push());
        int dashes = 0;
        for (int column = 0; column < alarms.columnCount(); ++column) {
            const QModelIndex cell = alarms.index(1, column);
            if (cell.data() != QStringLiteral("—"))
                continue;
            ++dashes;
            QVERIFY(!(cell.flags() & Qt::ItemIsEditable));
            QVERIFY(!alarms.setData(cell, "1"));
        }
        QVERIFY(dashes > 0);
    }

    void windowFollowsAndCloses()
    {
        States s;
        Editor::ChildrenWindow window(s.multi, states, {s.push()}, QString(), nullptr);
        window.show();
        const auto press = [&](const char *text) {
            for (QPushButton *button : window.findChildren<QPushButton *>()) {
                if (button->text() == QString(text))
                    button->click();
            }
        };
        press("Добавить");
        QCOMPARE(window.children().rowCount(), 4);
        QCOMPARE(window.table().currentIndex().row(), 3);
        press("Выше");
        QCOMPARE(window.table().currentIndex().row(), 2);
        press("Удалить");
        QCOMPARE(window.children().rowCount(), 3);
        QVERIFY(s.layer->DeleteNode(s.multi->GetId()));
        QTRY_VERIFY(!window.isVisible());
    }
};

QTEST_MAIN(ChildrenTableTest)
#include "tst_children_table.moc"
