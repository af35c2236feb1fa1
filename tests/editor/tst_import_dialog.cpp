#include "editor/SheetFixture.h"
#include "editor/signals/ImportDialog.h"
#include "editor/signals/TableText.h"

#include "support/Rows.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QLabel>
#include <QPushButton>
#include <QTableView>
#include <QTableWidget>

using namespace Editor;

namespace {

/// The dialog for a text, with what a person would look at and press.
struct Asked
{
    Asked(const SheetFixture &plant, const QByteArray &bytes) : dialog(*plant.model, bytes, nullptr)
    {
        dialog.show();
    }
    QComboBox *box(const char *name) const { return dialog.findChild<QComboBox *>(name); }
    QComboBox *column(int index) const
    {
        auto *mapping = dialog.findChild<QTableWidget *>("mapping");
        return qobject_cast<QComboBox *>(mapping->cellWidget(0, index + 1));
    }
    QString shown(int row, int column) const
    {
        const QAbstractItemModel *model = dialog.findChild<QTableView *>("preview")->model();
        return model->index(row, column).data().toString();
    }
    int rows() const { return dialog.findChild<QTableView *>("preview")->model()->rowCount(); }
    bool mayImport() const
    {
        return dialog.findChild<QDialogButtonBox *>()->button(QDialogButtonBox::Ok)->isEnabled();
    }
    QString label(const char *name) const { return dialog.findChild<QLabel *>(name)->text(); }

    ImportDialog dialog;
};

} // namespace

class ImportDialogTest : public QObject
{
    Q_OBJECT

private slots:
    void textsAreReadInTheirEncoding_data()
    {
        const Rows<QByteArray> row("bytes");
        row("UTF-8", "Имя;°C");
        row("UTF-8 with a mark", "\xEF\xBB\xBFИмя;°C");
        row("Windows", "\xC8\xEC\xFF;\xB0\x43");
        row("UTF-16", QByteArray("\xFF\xFE\x18\x04\x3C\x04\x4F\x04;\0\xB0\0C\0", 14));
    }
    void textsAreReadInTheirEncoding()
    {
        QFETCH(QByteArray, bytes);
        QCOMPARE(TableText::decode(bytes, TableText::guess(bytes)), std::string("Имя;°C"));
    }

    void columnsAreGuessedAndChosen()
    {
        SheetFixture p;
        const std::string before = p.text();
        const QByteArray bytes =
            "Шкаф;Позиция;unit;Множитель\r\n1;Т01;бар;0,5\r\n2;Новый;\"м\";1\r\n";
        {
            const Asked asked(p, bytes);
            QVERIFY(!asked.mayImport());
            QVERIFY(asked.label("summary").contains("имя"));
            asked.column(1)->setCurrentText("Имя");
            QVERIFY(asked.mayImport());
            QCOMPARE(asked.shown(0, 0), QString("2: ≠ изменится"));
            QCOMPARE(asked.shown(0, 3), QString("(пусто) → бар"));
            QCOMPARE(asked.shown(1, 0), QString("3: + новый"));
            asked.column(0)->setCurrentText("Множитель"); // is chosen already
            QVERIFY(!asked.mayImport());
        }
        QVERIFY(p.text() == before); // looking changes nothing
        QCOMPARE(p.session.undoStack().count(), 0);
        Asked asked(p, bytes);
        asked.column(1)->setCurrentText("Имя");
        Nodes::SheetPlan plan = asked.dialog.takePlan();
        QVERIFY(SheetEdits::carryOut(p.workspace, plan, "Импорт"));
        QTRY_COMPARE(p.model->rowCount(), 4);
        QCOMPARE(p.cell(0, "unit"), QString("бар"));
        QCOMPARE(p.cell(0, "scale"), QString("0,5"));
    }

    void readingOtherwiseLooksAgain()
    {
        SheetFixture p;
        const Asked asked(p, "Имя,unit\nТ01,\"бар\"\nТ02;м,а\n");
        QCOMPARE(asked.shown(0, 2), QString("(пусто) → бар"));
        asked.box("separator")->setCurrentIndex(1);
        QVERIFY(!asked.mayImport());
        asked.box("separator")->setCurrentIndex(2);
        auto *header = asked.dialog.findChild<QCheckBox *>();
        header->setChecked(false);
        QCOMPARE(asked.rows(), 3);
        QCOMPARE(asked.shown(0, 0), QString("1: + новый")); // "Имя" is a signal now
        const Asked torn(p, "Имя;unit\nТ01;\"бар\n");
        QVERIFY(!torn.mayImport());
        QVERIFY(torn.label("trouble").contains("кавычки"));
    }

    void troublesAreShownApart()
    {
        SheetFixture p;
        const Asked asked(p, "Имя;Смещение в группе\nТ01;7\nТ02;много\n;5\nТ03;0\n");
        QCOMPARE(asked.shown(3, 0), QString("5: = как есть"));
        asked.box("shown")->setCurrentIndex(2);
        QCOMPARE(asked.rows(), 2);
        QCOMPARE(asked.shown(0, 0), QString("3: ✗ ничего не взято"));
        asked.dialog.findChild<QTableView *>("preview")->selectRow(0);
        QVERIFY(asked.label("trouble").contains("«много»"));
        asked.box("shown")->setCurrentIndex(1);
        QCOMPARE(asked.rows(), 1);
    }
};

QTEST_MAIN(ImportDialogTest)
#include "tst_import_dialog.moc"
